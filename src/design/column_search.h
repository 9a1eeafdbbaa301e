#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "design/column_loads.h"
#include "design/design_rules.h"
#include "model/jx_struct.h"

namespace qvx {

/// A candidate with its interaction surface.
struct ColumnCandidate
{
    const jxConcreteSection* section = nullptr;
    const P_M_Sect* surface = nullptr;
};

/// Choice of the sections of columns from the surfaces of a run. Members do not touch each other: any thread may design
/// any, once the candidates of all criteria are known.
class ColumnSearch
{
public:
    /// Candidates of every material, section and criterion of the model's columns, in the order in which they are tried.
    explicit ColumnSearch(const CjxStruct& model);

    /// A column that is designed.
    struct Choice
    {
        jxColRcResult result;
        bool hasNoCandidates = false;
        std::wstring difference;  ///< from the consistent rules; empty for none, and where it was not asked for
    };

    /// The first candidate that carries all combinations; the last one when none does, with a ratio above 1.
    /// @param rules  consistent: candidates are tried by their steel, else by the number of bars and the size's text
    /// @return       nothing for a member that is no concrete column
    std::optional<Choice> Of(const jxBm& beam, DesignRules rules) const;

    /// The same by the usual rules, compared with the consistent ones.
    std::optional<Choice> Compared(const jxBm& beam) const;

    /// Candidates of a column in the order of the rules.
    std::vector<ColumnCandidate> CandidatesOf(const jxBm& beam, DesignRules rules) const;

private:
    std::vector<ColumnCandidate> SortedByName(const jxBm& beam) const;

    const CjxStruct& model_;
    /// Surfaces are found by the name of their section, as the manager gives both back.
    std::map<std::wstring, ColumnCandidate> byName_;
    std::map<std::vector<int>, std::vector<ColumnCandidate>>
        candidates_;  ///< by ids of material, section, criterion; each by name
};

/// Candidates of a column's material, section and criterion, by the current bars; none for another shape than Rect or
/// Round.
std::vector<jxConcreteSection> ColumnSectionsOf(const CjxStruct& model, const jxMat& material, const jxSect& section,
                                                const jxColRcCrit& criterion);

}  // namespace qvx
