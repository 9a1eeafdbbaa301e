#pragma once

#include "model/findings.h"
#include "model/jx_struct.h"

namespace qvx {

/// Checks of the input of a concrete design, in design units. Every stage logs its name and its faults and goes on, so
/// that all faults come at once.
class ConcreteCheck
{
public:
    explicit ConcreteCheck(CjxStruct& model) : model_(model) {}

    /// Current criteria and sustained combination.
    void Settings();
    /// Bars of the criteria in the current table.
    void Rebars();
    /// Code, steps of the surfaces, ratios of steel.
    void Parameters();
    /// Lengths and effective length factors of columns; warnings about P-Delta.
    void Criteria();
    void Plates();
    void Materials();
    void Sections();
    void Members();

    /// Whether no stage refused.
    bool IsValid() const { return isValid_; }

private:
    /// Bars of the current database; none when there is no such database.
    const jxBarDatabase* Bars() const;
    bool HasBar(int index) const;
    void BeamBars(const jxBmRcCrit& criterion);
    void ColumnBars(const jxColRcCrit& criterion);
    void ColumnCriterion(const jxColRcCrit& criterion);
    void Warnings();
    void Material(const jxMat& material);
    void Section(const jxSect& section);
    void Member(const jxBm& beam);
    void Cover(const jxBm& beam, const jxSect& section);
    void Plate(const jxShell4& shell);

    /// A line of the log and a finding.
    /// @param kind  of the record that it is about, with its id; empty for none
    void Fault(const CString& text, const wchar_t* kind = L"", int id = 0,
               FindingCode code = FindingCode::ConcreteInputInvalid);
    /// A list line and a finding; the design goes on.
    void Warn(const CString& text);
    /// Ends a stage: one list line when it had a fault.
    void End(const wchar_t* text);

    CjxStruct& model_;
    bool isValid_ = true;
    bool hasFault_ = false;  ///< in the stage
};

}  // namespace qvx
