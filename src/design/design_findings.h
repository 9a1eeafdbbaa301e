#pragma once

#include <string>

#include "model/findings.h"
#include "model/jx_struct.h"

namespace qvx {

/// Findings about members or shells one by one, each with a text of its own; from the 21st on they share one.
class PlaceFindings
{
public:
    PlaceFindings(FindingList& findings, FindingCode code);
    ~PlaceFindings();  ///< tells those that share a finding
    PlaceFindings(const PlaceFindings&) = delete;
    PlaceFindings& operator=(const PlaceFindings&) = delete;

    /// @param text  half a sentence with the record as its subject, said as "Member 7: <text>"; empty: nothing to tell
    /// @param comb  index of the combination that it comes from; -1 for none
    void Add(const wchar_t* kind, int id, const std::wstring& text, int comb = -1);

private:
    FindingList& findings_;
    FindingCode code_;
    std::size_t told_ = 0;
    Finding rest_;
};

/// What the results of a concrete design and the model say that its author should know: failures, columns in pieces,
/// slenderness counted twice, torsion, criteria without use. The model is in design units, its design done.
void FindInConcreteDesign(CjxStruct& model);

/// The same of a steel design.
void FindInSteelDesign(CjxStruct& model);

/// Whether a member goes on in line with another one of its section beyond a node that nothing else holds: it is a piece
/// of a longer one. The map nodeBeams is up to date.
bool IsPieceOfMember(const CjxStruct& model, const jxBm& beam);

/// Largest torsion of a member over the combinations.
struct LargestTorsion
{
    double torsion = 0;  ///< magnitude [kip-ft]
    int comb = -1;
};
/// @param isMarked  whether a combination takes part in the design
LargestTorsion LargestTorsionOf(const CjxStruct& model, int member, bool (*isMarked)(const jxLoadComb&));

}  // namespace qvx
