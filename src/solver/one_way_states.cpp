#include "solver/one_way_states.h"

#include <algorithm>
#include <cassert>

namespace qvx {

OneWayStates::OneWayStates(CjxStruct& model) : model_(&model)
{
    for (jxBm& beam : model.beams)
        if (IsOneWay(beam))
            links_.push_back({.beam = &beam, .spring = nullptr, .dof = 0, .nodes = {}});
    ForEachSpring(model, [&](jxSpring& spring, const wchar_t*, const std::vector<int>& nodes) {
        for (int dof = 0; dof < kDofCount; ++dof)
            if (IsOneWay(spring, dof))
                links_.push_back({.beam = nullptr, .spring = &spring, .dof = dof, .nodes = nodes});
    });
}

bool OneWayStates::IsOff(const Link& link)
{
    return link.beam != nullptr ? link.beam->failed != 0 : link.spring->bFailed[link.dof] != 0;
}

void OneWayStates::Set(const Link& link, bool isOff)
{
    if (link.beam != nullptr)
        link.beam->failed = isOff ? 1 : 0;
    else
        link.spring->bFailed[link.dof] = isOff ? 1 : 0;
}

OneWayStates::States OneWayStates::Current() const
{
    States states;
    for (const Link& link : links_)
        states.push_back(IsOff(link));
    return states;
}

void OneWayStates::Apply(const States& states)
{
    assert(states.size() == links_.size() && "one state per link");
    for (std::size_t i = 0; i < links_.size(); ++i)
        Set(links_[i], states[i]);
}

double OneWayStates::SizeOf(const Link& link, const OneWayLaw& law) const
{
    if (link.beam != nullptr)
        return IsOff(link) ? law.Closing(*link.beam) : law.Opening(*link.beam);
    return IsOff(link) ? law.Closing(*link.spring, link.dof, link.nodes)
                       : law.Opening(*link.spring, link.dof, link.nodes);
}

OneWayStates::States OneWayStates::Changed(const std::vector<std::size_t>& links) const
{
    States states = answered_;
    for (const std::size_t link : links)
        states[link] = !states[link];
    return states;
}

std::vector<std::size_t> OneWayStates::ChangesByRule() const
{
    assert(!offences_.empty());
    std::vector<std::size_t> links;
    for (const Offence& offence : offences_)
        links.push_back(offence.link);
    if (rule_ == Rule::Worst)
        links.resize(1);
    if (rule_ == Rule::First)
        links = {*std::min_element(links.begin(), links.end())};
    return links;
}

OneWayStates::Verdict OneWayStates::Judge(int comb, bool isSettled)
{
    answered_ = Current();
    retreats_.clear();
    const OneWayLaw law(*model_, comb);
    std::vector<Offence> all;
    for (std::size_t i = 0; i < links_.size(); ++i)
        all.push_back({.link = i, .size = SizeOf(links_[i], law)});
    std::stable_sort(all.begin(), all.end(), [](const Offence& a, const Offence& b) { return a.size > b.size; });
    offences_.assign(all.begin(), std::find_if(all.begin(), all.end(), [](const Offence& o) { return !(o.size > 1); }));
    if (offences_.empty())
        return Verdict::Hold;
    if (rule_ != Rule::AllAtOnce && !isSettled)
        return Verdict::Changed;
    seen_.insert(answered_);
    States next = Changed(ChangesByRule());
    while (seen_.contains(next)) {
        if (rule_ == Rule::First)
            return Verdict::Repeat;
        rule_ = rule_ == Rule::AllAtOnce ? Rule::Worst : Rule::First;
        seen_ = {answered_};
        next = Changed(ChangesByRule());
    }
    PlanRetreats(all);
    Apply(next);
    return Verdict::Changed;
}

/// What may be tried in place of all changes at once, the best first: all that come back and ever fewer of those that go
/// off, then each of them alone, then each of them with one more that comes back, the one nearest to acting first.
/// @param all  links, the worst first
void OneWayStates::PlanRetreats(const std::vector<Offence>& all)
{
    std::vector<std::size_t> leaving, returning, waiting;
    for (const Offence& offence : all) {
        const bool isOff = answered_[offence.link];
        if (offence.size > 1)
            (isOff ? returning : leaving).push_back(offence.link);
        else if (isOff)
            waiting.push_back(offence.link);
    }
    const auto plan = [&](const std::vector<std::size_t>& others) {
        std::vector<std::size_t> links = returning;
        links.insert(links.end(), others.begin(), others.end());
        retreats_.push_back(Changed(links));
    };
    for (std::size_t count = leaving.size() / 2; count > 0; count /= 2)
        plan({leaving.begin(), leaving.begin() + static_cast<std::ptrdiff_t>(count)});
    for (std::size_t i = 1; i < leaving.size(); ++i)
        plan({leaving[i]});
    for (const std::size_t out : leaving)
        for (const std::size_t in : waiting)
            plan({out, in});
    std::reverse(retreats_.begin(), retreats_.end());
}

bool OneWayStates::Retreat()
{
    while (!retreats_.empty()) {
        const States next = std::move(retreats_.back());
        retreats_.pop_back();
        if (seen_.contains(next) || next == answered_)
            continue;
        Apply(next);
        return true;
    }
    return false;
}

}  // namespace qvx
