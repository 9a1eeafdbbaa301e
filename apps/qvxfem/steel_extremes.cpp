#include <cassert>
#include <fmt/format.h>

#include "extremes.h"

namespace qvx::app {

std::string SteelSummary(const CjxStruct& model)
{
    const jxSteelResult* worst = nullptr;
    std::size_t count = 0, failed = 0;
    for (const jxSteelResult& member : model.steelResults) {
        if (member.sections.empty() || member.sections.front().comb < 0)
            continue;  // out of the analysis, or no combination for steel
        // The first section of a member is its own; candidates behind it say nothing about the structure as it is.
        ++count;
        const double ratio = member.sections.front().ratio;
        failed += ratio > 1 ? 1 : 0;
        if (worst == nullptr || ratio > worst->sections.front().ratio)
            worst = &member;
    }
    if (worst == nullptr)
        return model.steelResults.empty() ? "" : "no member was checked";
    const jxSteelSectionResult& s = worst->sections.front();
    assert(count > 0 && failed <= count);
    std::string text =
        fmt::format("{} checked, largest ratio {:.3g}: member {} ({}), combination {} at {:g} of its length", count,
                    s.ratio, worst->id, ToUtf8(s.label), s.comb + 1, s.distance);
    if (failed > 0)
        text += fmt::format("; {} above 1", failed);
    return text;
}

}  // namespace qvx::app
