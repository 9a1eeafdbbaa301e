#include "tools/wood_armer.h"

#include <cassert>

#include "model/find_record.h"
#include "model/jx_struct.h"
#include "model/leading_result.h"

namespace {

/// Widens the record of a shell by the moments of one combination. Equal values keep the earlier combination.
void Widen(jxWoodArmer& record, const jxShellStress& shell, int comb)
{
    for (int point = 0; point < 5; ++point) {
        const double(&P)[5] = shell.P[point];  // Mxx, Myy, Mxy, Vxx, Vyy
        double moments[4];                     // top x, top y, bottom x, bottom y
        CalcPlateTopMu1(moments[0], moments[1], P[0], P[1], P[2]);
        CalcPlateBotMu1(moments[2], moments[3], P[0], P[1], P[2]);
        for (int k = 0; k < 4; ++k) {
            double& stored = record.moments[point][k];
            assert((k < 2 ? !(moments[k] < 0) : !(moments[k] > 0)) && "tops resist positive, bottoms negative moments");
            if (k < 2 ? moments[k] > stored : moments[k] < stored) {
                stored = moments[k];
                record.combs[point][k] = comb;
            }
        }
    }
}

/// Moments of a shell in a combination; throws jxException when it has none.
const jxShellStress& MomentsOf(const jxCombResult& result, int shell)
{
    const jxShellStress* moments = qvx::FindOrNull(result.shell4Stresses, shell);
    if (moments == nullptr)
        qvx::ThrowMissingRecord(L"shell stress", shell);
    return *moments;
}

}  // namespace

/// Envelope of the Wood-Armer moments of each shell over the concrete combinations. A shell that is left out of the
/// design keeps a record of zeros; a combination that failed has no moments to add.
void CjxStruct::CalcRcWoodArmerMoment()
{
    woodArmer.clear();
    if (const jxCombResult* leading = qvx::LeadingResult(*this); leading == nullptr || leading->shell4Stresses.empty())
        return;
    assert(combResults.size() <= loadCombs.size() && "results belong to combinations");
    woodArmer.reserve(shell4s.size());
    for (const jxShell4& shell : shell4s) {
        jxWoodArmer record;
        record.id = shell.id;
        for (std::size_t comb = 0; shell.bConcreteSkip == 0 && comb < combResults.size(); ++comb)
            if (loadCombs[comb].bConcrete != 0 && !combResults[comb].shell4Stresses.empty())
                Widen(record, MomentsOf(combResults[comb], shell.id), static_cast<int>(comb));
        woodArmer.push_back(record);
    }
}
