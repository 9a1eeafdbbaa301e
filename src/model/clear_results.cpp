#include "model/jx_struct.h"
#include "model/leading_result.h"
#include "platform/host_services.h"

#include <cassert>

void jxCombResult::clear()
{
    *this = {};
}

void CjxStruct::ClearSolverData()
{
    numberOfEquations = 0;
    loadVectors = {};  // a new vector, so that the memory goes too
    for (std::vector<int>& row : idTable)
        row = {};
}

void CjxStruct::ClearStaticResult()
{
    ClearSolverData();
    combResults.clear();
    combResults.resize(loadCombs.size());
    assert(combResults.size() == loadCombs.size() && !HasStaticSolution());
    combOutcomes.clear();
    digitsLost = 0;
    findings.Drop(qvx::FindingStage::Run);
    concreteEnvelope.clear();
    woodArmer.clear();
    modalResult.clear();
    ClearConcreteResult();
    ClearSteelResult();
    if (!documentPath.IsEmpty())
        qvx::Host().DeleteFile(documentPath.Text() + L".uni");
}

void CjxStruct::ClearFrequencyResult()
{
    eigenResults.clear();
    ClearResponseSpectrumResult();
}

void CjxStruct::ClearResponseSpectrumResult()
{
    spectrumResults.clear();
}

/// Envelope and plate moments, from which the concrete design starts, belong to the static run and stay.
void CjxStruct::ClearConcreteResult()
{
    concreteBeams.clear();
    concreteColumns.clear();
    concreteSections.clear();
    interactionSurfaces.clear();
    concreteShear.clear();
    concretePlates.clear();
}

void CjxStruct::ClearSteelResult()
{
    steelResults.clear();
}

void CjxStruct::ClearResult()
{
    ClearStaticResult();
    ClearFrequencyResult();
}

bool CjxStruct::HasStaticSolution() const
{
    return qvx::LeadingResult(*this) != nullptr;
}

bool CjxStruct::EigenSolution() const
{
    return !eigenResults.empty();
}

bool CjxStruct::ResponseSpectrumSolution() const
{
    return !spectrumResults.empty();
}
