#include "loose_members.h"

#include <fmt/format.h>

#include "model/find_record.h"

namespace qvx::app {
namespace {

// Whether what is released in one plane leaves the member no two holds to carry a force across itself.
bool IsLooseInPlane(const jxRels& rels, std::size_t shear, std::size_t moment)
{
    const bool shears[] = {rels.start[shear] == L'1', rels.end[shear] == L'1'};
    const int released = shears[0] + shears[1] + (rels.start[moment] == L'1') + (rels.end[moment] == L'1');
    return released > 2 || (shears[0] && shears[1]);
}

bool IsReleasedTwice(const jxRels& rels, std::size_t dof)
{
    return rels.start[dof] == L'1' && rels.end[dof] == L'1';
}

template <class Rule>
std::string MembersReleased(const CjxStruct& m, Rule isSo)
{
    constexpr std::size_t kMostNames = 10;
    std::size_t count = 0;
    std::string names;
    for (const jxRels& rels : m.releases)
        if (FindOrNull(m.beams, rels.id) != nullptr && isSo(rels) && ++count <= kMostNames)
            names += (names.empty() ? "" : ", ") + std::to_string(rels.id);
    return count > kMostNames ? fmt::format("{} and {} more", names, count - kMostNames) : names;
}

}  // namespace

std::vector<std::string> MembersLooseInThemselves(const CjxStruct& m)
{
    std::vector<std::string> lines;
    const std::string across = MembersReleased(
        m, [](const jxRels& rels) { return IsLooseInPlane(rels, kY, kOZ) || IsLooseInPlane(rels, kZ, kOY); });
    if (!across.empty())
        lines.push_back("members cannot carry a force across themselves, with shear released at both ends or three of "
                        "shear and moment in one plane; their forces are no results: " +
                        across);
    const std::string along =
        MembersReleased(m, [](const jxRels& rels) { return IsReleasedTwice(rels, kX) || IsReleasedTwice(rels, kOX); });
    if (!along.empty())
        lines.push_back("axial force or torsion is released at both ends; the members keep that stiffness: " + along);
    return lines;
}

}  // namespace qvx::app
