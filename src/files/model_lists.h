#pragma once

#include "model/fields/design_fields.h"
#include "model/fields/load_fields.h"
#include "model/jx_struct.h"

namespace qvx {

/// How the records of a list are ordered in the model.
enum class Order { ById, AsInTheFile };
/// Whether two records of a list may have the same id.
enum class SameIds { Refused, Allowed };

/// A vector of records of the model and its key in the file.
template <class Record>
struct RecordList
{
    std::string_view key;
    std::vector<Record> CjxStruct::*records;
    Order order = Order::ById;
    SameIds sameIds = SameIds::Refused;
    Reference idRefersTo = Reference::None;  ///< of lists whose records belong to a node
};

/// Lists of the model, in the order in which they are written.
inline constexpr auto kModelLists = std::make_tuple(
    RecordList<jxMat>{"materials", &CjxStruct::materials}, RecordList<jxSect>{"sections", &CjxStruct::sections},
    RecordList<jxThick>{"thicknesses", &CjxStruct::thicknesses},
    RecordList<jxThick>{"namedLengths", &CjxStruct::namedLengths}, RecordList<jxNd>{"nodes", &CjxStruct::nodes},
    RecordList<jxSupt>{"supports", &CjxStruct::supports, Order::ById, SameIds::Allowed},
    RecordList<jxBm>{"beams", &CjxStruct::beams}, RecordList<jxShell4>{"shell4s", &CjxStruct::shell4s},
    RecordList<jxShell3>{"shell3s", &CjxStruct::shell3s}, RecordList<jxBrick>{"bricks", &CjxStruct::bricks},
    RecordList<jxRels>{"releases", &CjxStruct::releases, Order::ById, SameIds::Allowed},
    RecordList<jxSpring>{"nodalSprings", &CjxStruct::nodalSprings, Order::ById, SameIds::Allowed, Reference::Node},
    RecordList<jxCoupledSpring>{"coupledSprings", &CjxStruct::coupledSprings, Order::ById, SameIds::Allowed},
    RecordList<jxSpring>{"beamSprings", &CjxStruct::beamSprings, Order::ById, SameIds::Allowed},
    RecordList<jxSpring>{"shell3Springs", &CjxStruct::shell3Springs, Order::ById, SameIds::Allowed},
    RecordList<jxSpring>{"shell4Springs", &CjxStruct::shell4Springs, Order::ById, SameIds::Allowed},
    RecordList<jxDiaphragm>{"diaphragms", &CjxStruct::diaphragms, Order::ById, SameIds::Allowed},
    RecordList<jxMultiDofConstraint>{"multiDofConstraints", &CjxStruct::multiDofConstraints, Order::ById,
                                     SameIds::Allowed},
    RecordList<jxMasterSlave>{"masterSlaves", &CjxStruct::masterSlaves, Order::AsInTheFile, SameIds::Allowed},
    RecordList<jxLoadCase>{"loadCases", &CjxStruct::loadCases, Order::AsInTheFile},
    RecordList<jxCaseLoad>{"caseLoads", &CjxStruct::caseLoads, Order::AsInTheFile, SameIds::Allowed},
    RecordList<jxLoadComb>{"loadCombs", &CjxStruct::loadCombs, Order::AsInTheFile, SameIds::Allowed},
    RecordList<jxNdLoad>{"additionalMasses", &CjxStruct::additionalMasses, Order::ById, SameIds::Allowed},
    RecordList<jxBmRcCrit>{"beamRcCriteria", &CjxStruct::beamRcCriteria},
    RecordList<jxColRcCrit>{"columnRcCriteria", &CjxStruct::columnRcCriteria},
    RecordList<jxPlateRcCrit>{"plateRcCriteria", &CjxStruct::plateRcCriteria},
    RecordList<jxSteelCrit>{"steelCriteria", &CjxStruct::steelCriteria},
    RecordList<jxNamedSelection>{"namedSelections", &CjxStruct::namedSelections, Order::AsInTheFile, SameIds::Allowed},
    RecordList<jxNd>{"gridNodes", &CjxStruct::gridNodes, Order::ById, SameIds::Allowed});

/// Text and drawing grid of the document: members of the file's object itself.
inline constexpr auto kDocumentFields =
    std::make_tuple(Always("name", &CjxStruct::modelName), Always("company", &CjxStruct::company),
                    Always("engineer", &CjxStruct::engineer), Always("notes", &CjxStruct::notes),
                    Always("reserved", &CjxStruct::reserved), Always("origin", &CjxStruct::origin),
                    Always("gridPlane", &CjxStruct::gridPlane), Always("gridLists", &CjxStruct::gridLists));

/// Members of the file's object that follow the lists.
inline constexpr auto kClosingFields =
    std::make_tuple(Always("spectra", &CjxStruct::spectra), Always("mesh", &CjxStruct::mesh));

/// Analysis and spectrum settings: members of the object "settings".
inline constexpr auto kAnalysisSettings = std::make_tuple(
    Always("modelType", &CjxStruct::modelType), Always("solverType", &CjxStruct::solverType, {.least = 0, .most = 2}),
    Always("bThinPlate", &CjxStruct::bThinPlate, rule::kFlag),
    Always("bIncompatibleMembrane", &CjxStruct::bIncompatibleMembrane, rule::kFlag),
    Always("bShearDeformation", &CjxStruct::bShearDeformation, rule::kFlag),
    Always("bRigidDiaphragms", &CjxStruct::bRigidDiaphragms, rule::kFlag),
    Always("bStiffnessFactors", &CjxStruct::bStiffnessFactors, rule::kFlag),
    Always("maxNonlinearIterations", &CjxStruct::maxNonlinearIterations),
    Always("pDeltaTolerance", &CjxStruct::pDeltaTolerance),
    Always("bAverageStresses", &CjxStruct::bAverageStresses, {.least = 0, .most = 2}),
    Always("bSignedShearAngle", &CjxStruct::bSignedShearAngle, rule::kFlag),
    Always("eigenTolerance", &CjxStruct::eigenTolerance), Always("numberOfModes", &CjxStruct::numberOfModes),
    Always("maxSubspaceIterations", &CjxStruct::maxSubspaceIterations),
    Always("iterationVectors", &CjxStruct::iterationVectors),
    Always("bLoadsToMasses", &CjxStruct::bLoadsToMasses, rule::kFlag),
    Always("dofSuppressed", &CjxStruct::dofSuppressed, rule::kFlag),
    Always("mergeTolerance", &CjxStruct::mergeTolerance), Always("numberOfSegments", &CjxStruct::numberOfSegments),
    Always("roundOffThreshold", &CjxStruct::roundOffThreshold), Always("shellOzFactor", &CjxStruct::shellOzFactor),
    Always("diaphragmStiffnessFactor", &CjxStruct::diaphragmStiffnessFactor),
    Always("bOutOfCore", &CjxStruct::bOutOfCore, rule::kFlag),
    Always("massLoadComb", &CjxStruct::massLoadComb, rule::kIndex),
    Always("currentLoadCase", &CjxStruct::currentLoadCase),
    Always("selfWeightCase", &CjxStruct::selfWeightCase, rule::kIndex),
    Always("selfWeightDir", &CjxStruct::selfWeightDir, rule::kAxis),
    Always("selfWeightFactor", &CjxStruct::selfWeightFactor), Always("bLockModel", &CjxStruct::bLockModel, rule::kFlag),
    Always("bZVertical", &CjxStruct::bZVertical, rule::kFlag),
    Always("selectedMaterial", &CjxStruct::selectedMaterial, rule::kIndex),
    Always("selectedSection", &CjxStruct::selectedSection, rule::kIndex),
    Always("selectedThickness", &CjxStruct::selectedThickness, rule::kIndex),
    Always("currentRebarDatabase", &CjxStruct::currentRebarDatabase, {.least = -1}),
    Always("bPerformSpectrum", &CjxStruct::bPerformSpectrum, rule::kFlag),
    Always("bSignedModalResults", &CjxStruct::bSignedModalResults, rule::kFlag),
    Always("dampingRatio", &CjxStruct::dampingRatio), Always("spectrumFactor", &CjxStruct::spectrumFactor),
    Always("modalCombination", &CjxStruct::modalCombination, {.least = 0, .most = 2}));

}  // namespace qvx
