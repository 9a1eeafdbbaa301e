#pragma once

#include "model/records/design_criteria.h"
#include "platform/export.h"
#include "tools/design_trace.h"

/// Bits of the status word of a concrete design. The calculators add bits and never clear them.
enum RcStatus : int {
    COMPRESSION_STEEL = 0x01,  ///< compression steel was needed
    OVER_REINFORCED = 0x02,    ///< the section fails in bending
    MINIMUM_STEEL = 0x04,      ///< the least flexural steel governs
    SHEAR_TOO_LARGE = 0x10,    ///< Vs above 8 sqrt(f'c) b d: the section fails in shear
    MINIMUM_STIRRUPS = 0x20,   ///< the least stirrups govern
    MAXIMUM_SPACING = 0x40,    ///< the largest spacing of stirrups governs
    NO_CONCRETE_SHEAR = 0x80,  ///< the concrete carries no shear, and stirrups are needed
};

/// What the calculators of concrete sections have in common: code, bars, material and the status word.
/// Units of all of them: kip, inch, ksi, moments in kip-ft.
class QVXFEM_API CConcrete
{
public:
    explicit CConcrete(int code) : code_(code) {}
    virtual ~CConcrete() = default;

    int Code() const { return code_; }
    /// Listener of the values that are formed; null for none.
    void SetTrace(qvx::DesignTrace* listener) { trace_ = listener; }

    const jxBarDatabase* bars = nullptr;  ///< the current database; its numbers are inches
    double fc = 0;                        ///< [ksi]
    double fy = 0;                        ///< of the longitudinal bars [ksi]
    int status = 0;                       ///< RcStatus bits; the caller clears them

    /// Tells a value to the listener and returns it.
    /// @param name    symbol and unit
    /// @param clause  of 318-14 and 318-19; "" for what follows by statics
    /// @param before  the same clause in the editions before
    double Note(const char* name, double value, const char* clause, const char* before, const char* equation) const;

private:
    int code_;
    qvx::DesignTrace* trace_ = nullptr;
};
