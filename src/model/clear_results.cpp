#include "model/findings.h"
#include "model/jx_struct.h"
#include "platform/host_services.h"

#include <cassert>

void jxCombResult::clear()
{
    *this = {};
}

void CjxStruct::ClearSolverData()
{
    // Load vectors of a solved run are its displacements in all digits: a large model keeps gigabytes in them.
    numberOfEquations = 0;
    loadVectors = {};  // a new vector, so that the memory goes too
    for (std::vector<int>& row : idTable)
        row = {};
}

void CjxStruct::ClearStaticResult()
{
    ClearSolverData();
    combResults.clear();
    // One empty record per combination, as the lists of a host and of a file count on.
    combResults.resize(loadCombs.size());
    assert(combResults.size() == loadCombs.size() && !HasStaticSolution());
    combOutcomes.clear();
    digitsLost = 0;
    // What the check found is about the input and stays; what a run found goes with its results.
    findings.Drop(qvx::FindingStage::Run);
    concreteEnvelope.clear();
    woodArmer.clear();
    modalResult.clear();
    envelopeReport.clear();
    ClearConcreteResult();
    ClearSteelResult();
    if (!documentPath.IsEmpty())
        qvx::Host().DeleteFile(documentPath.Text() + L".uni");
}

void CjxStruct::ClearFrequencyResult()
{
    eigenResults.clear();
    frequencyOutcome = {};
    findings.Drop(qvx::FindingStage::Modes);
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
    // The input check of the design comes before its results are cleared, and what it found stays.
    qvx::DropFindings(findings, qvx::FindingCode::ConcreteRulesDiffer, qvx::FindingCode::ConcreteCriterionUnused);
}

void CjxStruct::ClearSteelResult()
{
    steelResults.clear();
    qvx::DropFindings(findings, qvx::FindingCode::SteelRulesDiffer, qvx::FindingCode::SteelCriterionUnused);
}

void CjxStruct::ClearResult()
{
    ClearStaticResult();
    ClearFrequencyResult();
}

bool CjxStruct::HasStaticSolution() const
{
    return !combResults.empty() && !combResults.front().displacements.empty();
}

bool CjxStruct::EigenSolution() const
{
    return !eigenResults.empty();
}

bool CjxStruct::ResponseSpectrumSolution() const
{
    return !spectrumResults.empty();
}
