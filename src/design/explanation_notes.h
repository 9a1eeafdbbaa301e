#pragma once

#include <string>
#include <utility>

#include "design/design_rules.h"
#include "design/explanation.h"
#include "tools/design_trace.h"

namespace qvx {

/// Writes down what a check tells, as a group of an explanation.
class NotingTrace : public DesignTrace
{
public:
    explicit NotingTrace(std::string title) { group_.title = std::move(title); }

    void Note(const DesignFigure& figure) override
    {
        group_.figures.push_back({figure.name, figure.value, {}, figure.clause, figure.equation});
    }
    /// Data that no check forms.
    void Data(std::string name, double value, std::string about = {})
    {
        group_.figures.push_back({std::move(name), value, {}, {}, std::move(about)});
    }
    void Text(std::string name, std::wstring text)
    {
        group_.figures.push_back({std::move(name), 0, std::move(text), {}, {}});
    }
    ExplainedGroup& Group() { return group_; }

private:
    ExplainedGroup group_;
};

/// The combination with its terms: "1 "DL + LL": 1.2 DL + 1.6 LL".
std::wstring CombinationText(const CjxStruct& model, int comb);

/// Size, strengths and density of a concrete member.
NotingTrace ConcreteData(const CjxStruct& model, const jxBm& beam);

/// Each kind by one set of rules; the model is in design units.
///@{
DesignExplanation ExplainFlexure(const CjxStruct& model, const jxBm& beam, DesignRules rules);
DesignExplanation ExplainShear(const CjxStruct& model, const jxBm& beam, DesignRules rules);
DesignExplanation ExplainColumn(const CjxStruct& model, const jxBm& beam, DesignRules rules);
DesignExplanation ExplainSteel(const CjxStruct& model, const jxBm& beam, DesignRules rules);
///@}

}  // namespace qvx
