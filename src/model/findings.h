#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/jx_struct.h"
#include "model/records/finding.h"
#include "platform/export.h"

namespace qvx {

/// What there is to find; the catalogue says what each means.
enum class FindingCode {
    // of the reader
    ImportLoss,
    UnitsLeftOut,
    Value2LeftOut,
    CombinationsAdded,
    // of a model operation
    AreaWithoutLoad,
    // of the input check
    MassCombinationReset,
    NoMassCombination,
    ModelTypeMismatch,
    FewSegments,
    NoLoadCase,
    SelfWeightCaseMissing,
    NoSelfWeight,
    GravityNotVertical,
    NoBoundaryConditions,
    ForcedDisplacementIgnored,
    ConstraintInvalid,
    MaterialInvalid,
    SectionInvalid,
    ThicknessInvalid,
    DuplicateNodes,
    OrphanedNode,
    CrackingFactorInvalid,
    StiffnessFactorInvalid,
    MemberSameNodes,
    NodeOnMember,
    MemberLengthVariation,
    ShellLengthVariation,
    PoorShellShape,
    FactorsNotApplied,
    ShellSameNodes,
    LineLoadNoLength,
    NoCombination,
    TooFewIterations,
    DiaphragmSoft,
    DiaphragmInvalid,
    QuadRecommended,
    AnsweredNo,
    TermWithoutLoadCase,
    LoadCaseLabelTwice,
    LoadCaseUnused,
    LoadOnMissingElement,
    LoadOffMember,
    LoadWithoutEquation,
    ProjectedSurfaceLoad,
    WeightlessMaterial,
    NoExpansion,
    SelfWeightLifts,
    BelongsToMissingElement,
    AreaLoadNotConverted,
    Shell3Ignored,
    FieldWithoutEffect,
    DiaphragmOffPlane,
    DiaphragmHoldsNode,
    DiaphragmBends,
    MemberLooseAcross,
    MemberReleasedTwice,
    MemberNearlyVertical,
    StrongAxisFlat,
    TrussMemberBends,
    ShellNearlyRectangle,
    ShellNearlyHorizontal,
    AngleInDegrees,
    ShellCornerInvalid,
    BrickCornerInvalid,
    SettingLimited,
    // of the frequency run
    NoMass,
    MassAtRest,
    LittleMassMoved,
    ModesNotConverged,
    ModesMiscounted,
    // of the run
    Unstable,
    DigitsLost,
    ZeroLoad,
    Buckled,
    NotConverged,
    CombinationFailed,
    AnalysisFailed,
    ResultOutOfRange,
    LargeMotion,
    SupportYields,
    CoarsePDelta,
    OneWayOff,
    OneWayWouldAct,
    OutOfBalance,
    // of the concrete design
    ConcreteInputInvalid,
    ConcreteInputDoubtful,
    LightweightWithoutDensity,
    ConcreteRulesDiffer,
    BeamFails,
    ColumnFails,
    ShearFails,
    PlateFails,
    NoColumnCandidates,
    ColumnInPieces,
    ColumnMagnifiedTwice,
    ConcreteTorsionLeftOut,
    ConcreteCriterionUnused,
    // of the steel design
    SteelInputInvalid,
    SteelInputDoubtful,
    SteelRulesDiffer,
    SteelMemberFails,
    NoSteelCandidate,
    UnknownSteelFamily,
    SteelSectionUnknown,
    SteelMemberInPieces,
    SteelMagnifiedTwice,
    SteelTorsionLeftOut,
    SteelCriterionUnused,
    Count
};

/// One line of the catalogue: the home of what a code means.
struct FindingKind
{
    FindingCode id;
    const char* code;  ///< stable word
    Severity severity;
    FindingStage stage;
    bool isReliable;      ///< false: marks its combination as not to be relied on
    const char* meaning;  ///< for docs/findings.md
    const char* remedy;
};

/// All kinds of findings, in the order of FindingCode. docs/findings.md lists them.
QVXFEM_API std::span<const FindingKind> FindingCatalogue();
QVXFEM_API const char* SeverityWord(Severity severity);

/// A finding of this kind, about no record yet.
QVXFEM_API Finding MakeFinding(FindingCode code, std::wstring text);

/// Forgets the findings of the codes from first to last, such as those of one design.
QVXFEM_API void DropFindings(FindingList& findings, FindingCode first, FindingCode last);

/// Runs the input check of a static run without asking anything, and returns the findings of the model. Settings out of
/// range are limited, window and log are told, as CheckInputData does it.
QVXFEM_API const FindingList& CheckModel(CjxStruct& model);

/// Whether a run refuses the model although the input check passes it: shells and bricks whose
/// corners are no corners.
QVXFEM_API bool HasRefusedShapes(const CjxStruct& model);

/// Whether a load combination may be relied on as far as is known: no finding speaks against it, nor, where it has a
/// spectrum factor, against the modes.
/// @param comb  index
QVXFEM_API bool IsReliable(const CjxStruct& model, std::size_t comb);
/// Whether all may.
QVXFEM_API bool AreAllReliable(const CjxStruct& model);

/// Lines that tell a finding to a reader: "warning: text [code]", then, indented, the records and the remedy.
/// Texts of the model stand as they are; whoever prints them makes control characters visible.
QVXFEM_API std::vector<std::wstring> LinesOf(const Finding& finding, const CjxStruct& model);

}  // namespace qvx
