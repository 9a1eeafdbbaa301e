#include "model/jx_struct.h"

namespace {

void CopyDocument(CjxStruct& to, const CjxStruct& from)
{
    to.documentPath = from.documentPath;
    to.units = from.units;
    to.bInSolution = from.bInSolution;
    to.modelName = from.modelName;
    to.company = from.company;
    to.engineer = from.engineer;
    to.reserved = from.reserved;
    to.origin = from.origin;
    to.gridPlane = from.gridPlane;
    for (int i = 0; i < 3; ++i) {
        to.gridLists[i] = from.gridLists[i];
        to.notes[i] = from.notes[i];
    }
    to.gridNodes = from.gridNodes;
}

void CopySettings(CjxStruct& to, const CjxStruct& from)
{
    to.bThinPlate = from.bThinPlate;
    to.bIncompatibleMembrane = from.bIncompatibleMembrane;
    to.bShearDeformation = from.bShearDeformation;
    to.bRigidDiaphragms = from.bRigidDiaphragms;
    to.bStiffnessFactors = from.bStiffnessFactors;
    to.maxNonlinearIterations = from.maxNonlinearIterations;
    to.pDeltaTolerance = from.pDeltaTolerance;
    to.bAverageStresses = from.bAverageStresses;
    to.eigenTolerance = from.eigenTolerance;
    to.numberOfModes = from.numberOfModes;
    to.maxSubspaceIterations = from.maxSubspaceIterations;
    to.iterationVectors = from.iterationVectors;
    to.bLoadsToMasses = from.bLoadsToMasses;
    to.modelType = from.modelType;
    for (int dof = 0; dof < kDofCount; ++dof)
        to.dofSuppressed[dof] = from.dofSuppressed[dof];
    to.mergeTolerance = from.mergeTolerance;
    to.numberOfSegments = from.numberOfSegments;
    to.roundOffThreshold = from.roundOffThreshold;
    to.shellOzFactor = from.shellOzFactor;
    to.diaphragmStiffnessFactor = from.diaphragmStiffnessFactor;
    to.bOutOfCore = from.bOutOfCore;
    to.massLoadComb = from.massLoadComb;
    to.currentLoadCase = from.currentLoadCase;
    to.selfWeightCase = from.selfWeightCase;
    to.selfWeightDir = from.selfWeightDir;
    to.selfWeightFactor = from.selfWeightFactor;
    to.bLockModel = from.bLockModel;
    to.solverType = from.solverType;
    to.bZVertical = from.bZVertical;
    to.bSignedShearAngle = from.bSignedShearAngle;
    to.bConsistentMechanics = from.bConsistentMechanics;
    to.bReactivateOneWay = from.bReactivateOneWay;
    to.bContinueAfterFailure = from.bContinueAfterFailure;
}

// Without links and derivedMasses: a run generates them anew.
void CopyModel(CjxStruct& to, const CjxStruct& from)
{
    to.selectedMaterial = from.selectedMaterial;
    to.selectedSection = from.selectedSection;
    to.selectedThickness = from.selectedThickness;
    to.materials = from.materials;
    to.sections = from.sections;
    to.thicknesses = from.thicknesses;
    to.namedLengths = from.namedLengths;
    to.supports = from.supports;
    to.nodes = from.nodes;
    to.beams = from.beams;
    to.shell4s = from.shell4s;
    to.shell3s = from.shell3s;
    to.bricks = from.bricks;
    to.nodalSprings = from.nodalSprings;
    to.coupledSprings = from.coupledSprings;
    to.beamSprings = from.beamSprings;
    to.shell3Springs = from.shell3Springs;
    to.shell4Springs = from.shell4Springs;
    to.releases = from.releases;
    to.masterSlaves = from.masterSlaves;
    to.loadCases = from.loadCases;
    to.loadCombs = from.loadCombs;
    to.caseLoads = from.caseLoads;
    to.additionalMasses = from.additionalMasses;
    to.diaphragms = from.diaphragms;
    to.multiDofConstraints = from.multiDofConstraints;
    to.namedSelections = from.namedSelections;
}

// Without rebarDatabases: every model reads them from their file.
void CopyDesignAndSpectra(CjxStruct& to, const CjxStruct& from)
{
    to.currentRebarDatabase = from.currentRebarDatabase;
    to.design = from.design;
    to.beamRcCriteria = from.beamRcCriteria;
    to.columnRcCriteria = from.columnRcCriteria;
    to.plateRcCriteria = from.plateRcCriteria;
    to.steelCriteria = from.steelCriteria;
    to.bSignedModalResults = from.bSignedModalResults;
    to.bPerformSpectrum = from.bPerformSpectrum;
    to.dampingRatio = from.dampingRatio;
    to.modalCombination = from.modalCombination;
    for (int direction = 0; direction < 3; ++direction) {
        to.spectrumFactor[direction] = from.spectrumFactor[direction];
        to.spectra[direction] = from.spectra[direction];
    }
    to.mesh = from.mesh;
}

}  // namespace

CjxStruct& CjxStruct::copy_input(const CjxStruct& other)
{
    if (this == &other)
        return *this;
    CopyDocument(*this, other);
    CopySettings(*this, other);
    CopyModel(*this, other);
    CopyDesignAndSpectra(*this, other);
    return *this;
}

void CjxStruct::SaveInputData()
{
    savedInput_.reset();  // first, so that two copies of a large model never stand side by side
    auto saved = std::make_unique<CjxStruct>();
    saved->copy_input(*this);
    savedInput_ = std::move(saved);
}

void CjxStruct::RestoreInputData()
{
    if (savedInput_)
        copy_input(*savedInput_);
}
