#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/jx_struct.h"
#include "platform/export.h"
#include "rc/interaction_surface.h"

namespace qvx {

/// What of a member's design is explained.
enum class DesignKind { Flexure, Column, Shear, Steel };

/// "flexure", "column", "shear", "steel".
QVXFEM_API const char* NameOf(DesignKind kind);
/// The kind of this name; nothing for another word.
QVXFEM_API std::optional<DesignKind> DesignKindOf(const std::string& name);

/// One figure of an explanation: a number, or a text where `text` is not empty.
struct ExplainedFigure
{
    std::string name;  ///< symbol and unit: "As [in^2]"
    double value = 0;
    std::wstring text;     ///< such as the label of a section; empty for a number
    std::string clause;    ///< of the edition; empty for data
    std::string equation;  ///< number of the equation, or the formula where it has none
};

/// Figures of one subject, in the order in which the check forms them.
struct ExplainedGroup
{
    std::string title;
    std::vector<ExplainedFigure> figures;
};

/// A column's chosen section with every load that it was checked for.
struct ColumnPicture
{
    jxConcreteSection section;
    P_M_Sect surface;
    std::vector<jxSectionLoad> loads;  ///< magnified, of all combinations and stations
    jxSectionLoad governing;
    double ratio = 0;
};

/// How the design of a member came about at its governing station. kip, inch and ksi; moments kip-ft.
struct DesignExplanation
{
    DesignKind kind = DesignKind::Flexure;
    int member = 0;
    bool isConsistent = false;  ///< by the rules of bConsistentDesign 1
    bool isOfModel = true;      ///< by the rules that the model has set
    std::wstring edition;       ///< "ACI 318-19"
    std::vector<ExplainedGroup> groups;
    std::string verdict;  ///< result and limit in one sentence
    std::optional<ColumnPicture> picture;
};

/// Why a member's design of a kind cannot be explained: half a sentence with the member as its subject. Empty when it can.
/// @param model  in its own units
/// @throws jxException "error finding <name> <id>" for a missing record
QVXFEM_API std::wstring WhyNotExplained(const CjxStruct& model, const jxBm& beam, DesignKind kind);

/// Explains the design of a member by the rules that the model has set and then by the other ones.
///
/// The functions that design are called once more with a listener: no figure is formed a second time. For the time of the
/// call the model is in design units; its results come back to rounding, its input to the bit, also after an exception.
/// @param model  designed: ExecuteConcreteDesign, or ExecuteSteelDesign for steel, has returned 1
/// @param kind   one that WhyNotExplained has nothing against
/// @throws jxException when a record is missing or the member has no curves in any combination that is marked for design
QVXFEM_API std::vector<DesignExplanation> ExplainDesign(CjxStruct& model, int member, DesignKind kind);

}  // namespace qvx
