#pragma once

#include "model/fields/design_fields.h"
#include "model/fields/load_fields.h"
#include "model/fields/result_fields.h"
#include "model/jx_struct.h"

// The members of the model itself, by what they are to a run: input (copied with the input, in the model file), generated
// from it, results, state. tests/model/field_catalogue_test.cpp finds a member that stands in none of the lists.

namespace qvx {

// clang-format off

/// Text and drawing grid of the document: members of the model file's object itself.
inline constexpr auto kDocumentFields = RecordFields(
    Always("name", &CjxStruct::modelName, "of the model"),
    Always("company", &CjxStruct::company, ""),
    Always("engineer", &CjxStruct::engineer, ""),
    Always("notes", &CjxStruct::notes, ""),
    Always("reserved", &CjxStruct::reserved, "of the host"),
    Always("origin", &CjxStruct::origin, "of the host's drawing grid", In(kLength)),
    Always("gridPlane", &CjxStruct::gridPlane, "of the host's drawing grid"),
    Always("gridLists", &CjxStruct::gridLists, "distances of the host's grid lines, \"count@value,...\"", In(measure::kGridList)));

/// Analysis and spectrum settings: members of the model file's object "settings", beside those of FieldsOf<jxDesignSettings>.
inline constexpr auto kAnalysisSettings = RecordFields(
    Always("modelType", &CjxStruct::modelType, "0 3D frame and shell, 1 2D frame, 2 3D truss, 3 2D truss, 4 2D plate bending, 5 2D plane stress, 6 3D brick, 7 2D grillage", {.least = 0, .most = 7}),
    Always("solverType", &CjxStruct::solverType, "0 double skyline, 1 quad skyline, 2 double sparse", {.least = DoubleSkyline, .most = DoubleSparse}),
    Always("bThinPlate", &CjxStruct::bThinPlate, "thin plate bending of rectangular shells", rule::kFlag),
    Always("bIncompatibleMembrane", &CjxStruct::bIncompatibleMembrane, "incompatible modes of shells and bricks", rule::kFlag),
    Always("bShearDeformation", &CjxStruct::bShearDeformation, "shear deformation of members", rule::kFlag),
    Always("bRigidDiaphragms", &CjxStruct::bRigidDiaphragms, "rigid diaphragms take part", rule::kFlag),
    Always("bStiffnessFactors", &CjxStruct::bStiffnessFactors, "stiffness modification and cracking factors apply", rule::kFlag),
    Always("maxNonlinearIterations", &CjxStruct::maxNonlinearIterations, ""),
    Always("pDeltaTolerance", &CjxStruct::pDeltaTolerance, "% of the largest axial force"),
    Always("bAverageStresses", &CjxStruct::bAverageStresses, "0 none, 1 all elements at a node, 2 shells of equal axes", {.least = 0, .most = 2}),
    Always("bSignedShearAngle", &CjxStruct::bSignedShearAngle, "shear directions of shells by signed angles at the point itself", rule::kFlag),
    Always("bConsistentMechanics", &CjxStruct::bConsistentMechanics, "loads of members released across are condensed, members that can slide heat without force, diaphragm links pass over rigid links", rule::kFlag),
    Always("eigenTolerance", &CjxStruct::eigenTolerance, "of a frequency run"),
    Always("numberOfModes", &CjxStruct::numberOfModes, "of a frequency run"),
    Always("maxSubspaceIterations", &CjxStruct::maxSubspaceIterations, "of a frequency run"),
    Always("iterationVectors", &CjxStruct::iterationVectors, "of a frequency run"),
    Always("bLoadsToMasses", &CjxStruct::bLoadsToMasses, "masses from the loads of massLoadComb", rule::kFlag),
    Always("dofSuppressed", &CjxStruct::dofSuppressed, "set by modelType", rule::kFlag),
    Always("mergeTolerance", &CjxStruct::mergeTolerance, "", In(kLength)),
    Always("numberOfSegments", &CjxStruct::numberOfSegments, "stations along members"),
    Always("roundOffThreshold", &CjxStruct::roundOffThreshold, "reported as 0 below"),
    Always("shellOzFactor", &CjxStruct::shellOzFactor, "drilling stiffness of shells"),
    Always("diaphragmStiffnessFactor", &CjxStruct::diaphragmStiffnessFactor, ""),
    Always("bOutOfCore", &CjxStruct::bOutOfCore, "sparse solver keeps its factor on disk", rule::kFlag),
    Always("massLoadComb", &CjxStruct::massLoadComb, "", {.least = 0, .refersTo = Reference::CombinationIndex}),
    Always("currentLoadCase", &CjxStruct::currentLoadCase, "of the host", {.refersTo = Reference::LoadCaseIndex}),
    Always("selfWeightCase", &CjxStruct::selfWeightCase, "carries the self weight", {.least = 0, .refersTo = Reference::LoadCaseIndex}),
    Always("selfWeightDir", &CjxStruct::selfWeightDir, "0 X, 1 Y, 2 Z", rule::kAxis),
    Always("selfWeightFactor", &CjxStruct::selfWeightFactor, "multiplier; its sign is that of the load"),
    Always("bLockModel", &CjxStruct::bLockModel, "of the host", rule::kFlag),
    Always("bZVertical", &CjxStruct::bZVertical, "of the host", rule::kFlag),
    Always("selectedMaterial", &CjxStruct::selectedMaterial, "of the host, index", rule::kIndex),
    Always("selectedSection", &CjxStruct::selectedSection, "of the host, index", rule::kIndex),
    Always("selectedThickness", &CjxStruct::selectedThickness, "of the host, index", rule::kIndex),
    Always("currentRebarDatabase", &CjxStruct::currentRebarDatabase, "table of bars, index; -1 the one that the bar file names", {.least = -1, .isDefaultOpen = true}),
    Always("bPerformSpectrum", &CjxStruct::bPerformSpectrum, "a frequency run goes on to the response to the spectra", rule::kFlag),
    Always("bSignedModalResults", &CjxStruct::bSignedModalResults, "modal rules get the dominant mode of each direction", rule::kFlag),
    Always("dampingRatio", &CjxStruct::dampingRatio, ""),
    Always("spectrumFactor", &CjxStruct::spectrumFactor, "of X, Y, Z; a direction takes part when it is not 0"),
    Always("modalCombination", &CjxStruct::modalCombination, "0 CQC, 1 SRSS, 2 absolute sum", {.least = 0, .most = 2}));

/// Lists of records in the model file, in the order in which they are written.
inline constexpr auto kModelLists = RecordFields(
    Always("materials", &CjxStruct::materials, "materials"),
    Always("sections", &CjxStruct::sections, "sections of members"),
    Always("thicknesses", &CjxStruct::thicknesses, "thicknesses of shells", In(kDimension)),
    Always("namedLengths", &CjxStruct::namedLengths, "kept for the host", In(kLength)),
    Always("nodes", &CjxStruct::nodes, "nodes"),
    Always("supports", &CjxStruct::supports, "supports of nodes", {.mayRepeatIds = true}),
    Always("beams", &CjxStruct::beams, "members"),
    Always("shell4s", &CjxStruct::shell4s, "four-node shells"),
    Always("shell3s", &CjxStruct::shell3s, "three-node shells: kept for the host, not analysed"),
    Always("bricks", &CjxStruct::bricks, "eight-node solids"),
    Always("releases", &CjxStruct::releases, "end releases of members", {.mayRepeatIds = true}),
    Always("nodalSprings", &CjxStruct::nodalSprings, "springs of nodes", {.measure = measure::SixByDof(kNodalTranslationalSpring, kNodalRotationalSpring), .mayRepeatIds = true, .idRefersTo = Reference::Node}),
    Always("coupledSprings", &CjxStruct::coupledSprings, "full 6 x 6 springs of nodes", {.mayRepeatIds = true}),
    Always("beamSprings", &CjxStruct::beamSprings, "springs along members, per length", {.measure = measure::SixByDof({.of = kLineTranslationalSpring}, measure::kPlain), .mayRepeatIds = true, .idRefersTo = Reference::Member}),
    Always("shell3Springs", &CjxStruct::shell3Springs, "kept for the host", {.measure = measure::SixByDof({.of = kSurfaceTranslationalSpring}, measure::kPlain), .mayRepeatIds = true, .idRefersTo = Reference::Shell3}),
    Always("shell4Springs", &CjxStruct::shell4Springs, "springs under shells, per area", {.measure = measure::SixByDof({.of = kSurfaceTranslationalSpring}, measure::kPlain), .mayRepeatIds = true, .idRefersTo = Reference::Shell4}),
    Always("diaphragms", &CjxStruct::diaphragms, "rigid diaphragms", {.mayRepeatIds = true}),
    Always("multiDofConstraints", &CjxStruct::multiDofConstraints, "relations between two displacements", {.mayRepeatIds = true}),
    Always("masterSlaves", &CjxStruct::masterSlaves, "kept for the host", {.isSortedById = false, .mayRepeatIds = true}),
    Always("loadCases", &CjxStruct::loadCases, "load cases", {.isSortedById = false}),
    Always("caseLoads", &CjxStruct::caseLoads, "loads, one object per load case in the same order", {.isSortedById = false, .mayRepeatIds = true}),
    Always("loadCombs", &CjxStruct::loadCombs, "load combinations", {.isSortedById = false, .mayRepeatIds = true}),
    Always("additionalMasses", &CjxStruct::additionalMasses, "masses of nodes", {.measure = measure::ByDof(measure::kMass, measure::kRotationalMass), .mayRepeatIds = true}),
    Always("beamRcCriteria", &CjxStruct::beamRcCriteria, "of concrete beams"),
    Always("columnRcCriteria", &CjxStruct::columnRcCriteria, "of concrete columns"),
    Always("plateRcCriteria", &CjxStruct::plateRcCriteria, "of concrete plates"),
    Always("steelCriteria", &CjxStruct::steelCriteria, "of steel members"),
    Always("namedSelections", &CjxStruct::namedSelections, "kept for the host", {.isSortedById = false, .mayRepeatIds = true}),
    Always("gridNodes", &CjxStruct::gridNodes, "of the host's drawing grid", {.mayRepeatIds = true}));

/// Members of the model file's object that follow the lists.
inline constexpr auto kClosingFields = RecordFields(
    Always("spectra", &CjxStruct::spectra, "response spectra of X, Y, Z"),
    Always("mesh", &CjxStruct::mesh, "mesh settings of the host"));

/// Input that the model file shows otherwise or not at all. A setting that nothing acts on yet stands here: the reader
/// refuses it. It moves to the settings above with the code that acts on it.
inline constexpr auto kUnlistedInput = RecordFields(
    InMemory("documentPath", &CjxStruct::documentPath, "file of the host's document"),
    InMemory("units", &CjxStruct::units, "units and number formats"),
    InMemory("bInSolution", &CjxStruct::bInSolution, "numbers are in internal units"),
    InMemory("design", &CjxStruct::design, "settings of the design runs"),
    InMemory("bReactivateOneWay", &CjxStruct::bReactivateOneWay, "one-way members and springs come back when they would act", rule::kFlag),
    InMemory("bContinueAfterFailure", &CjxStruct::bContinueAfterFailure, "a combination that fails does not end the run", rule::kFlag));

/// What a run or the construction makes anew: not copied with the input.
inline constexpr auto kGenerated = RecordFields(
    InMemory("links", &CjxStruct::links, "stiff bars of the diaphragms"),
    InMemory("rebarDatabases", &CjxStruct::rebarDatabases, "tables of bars, read from their file"));

/// Lists of results in the results file, in the order in which they are written.
inline constexpr auto kResultLists = RecordFields(
    Always("eigen", &CjxStruct::eigenResults, "natural modes"),
    Always("derivedMasses", &CjxStruct::derivedMasses, "masses of a frequency run per translation", In(measure::Of(measure::kMass))),
    Always("responseSpectrum", &CjxStruct::spectrumResults, "response of each mode to the spectra"),
    Always("concreteEnvelope", &CjxStruct::concreteEnvelope, "extremes along members over the combinations for concrete"),
    Always("woodArmer", &CjxStruct::woodArmer, "design moments of shells"),
    Always("concreteBeams", &CjxStruct::concreteBeams, "flexural steel of beams"),
    Always("concreteColumns", &CjxStruct::concreteColumns, "layouts of columns"),
    Always("concreteShear", &CjxStruct::concreteShear, "stirrups"),
    Always("concretePlates", &CjxStruct::concretePlates, "steel of plates"),
    Always("steel", &CjxStruct::steelResults, "sections of steel members"));

/// Results that the results file shows combination by combination.
inline constexpr auto kCombinationResults = RecordFields(
    InMemory("combinations", &CjxStruct::combResults, "per combination"),
    InMemory("modal", &CjxStruct::modalResult, "the modal combination"));

/// Results of operations on results, which no file shows.
inline constexpr auto kReportResults = RecordFields(
    InMemory("envelopeReport", &CjxStruct::envelopeReport, "envelopes over chosen combinations"));

/// State of a run, and how its combinations went.
inline constexpr auto kRunState = RecordFields(
    InMemory("penaltyFactor", &CjxStruct::penaltyFactor, "penalty over the largest diagonal stiffness"),
    InMemory("penaltyStiffness", &CjxStruct::penaltyStiffness, ""),
    InMemory("numberOfEquations", &CjxStruct::numberOfEquations, ""),
    InMemory("idTable", &CjxStruct::idTable, "equations by node position"),
    InMemory("loadVectors", &CjxStruct::loadVectors, "per combination; displacements after a solve"),
    InMemory("bNonlinear", &CjxStruct::bNonlinear, ""),
    InMemory("linearCombCount", &CjxStruct::linearCombCount, ""),
    InMemory("bElementStateChanged", &CjxStruct::bElementStateChanged, ""),
    InMemory("combOutcomes", &CjxStruct::combOutcomes, "per combination"),
    InMemory("digitsLost", &CjxStruct::digitsLost, ""),
    InMemory("frequencyOutcome", &CjxStruct::frequencyOutcome, "of the last frequency run"));

// clang-format on

/// All that the host enters.
inline constexpr auto kInput =
    std::tuple_cat(kUnlistedInput, kDocumentFields, kAnalysisSettings, kModelLists, kClosingFields);
/// All that may hold numbers with units.
inline constexpr auto kConverted =
    std::tuple_cat(kInput, kGenerated, kResultLists, kCombinationResults, kReportResults);

}  // namespace qvx
