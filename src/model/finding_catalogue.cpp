#include <algorithm>
#include <cassert>
#include <iterator>
#include <string>
#include <utility>

#include "model/findings.h"

namespace qvx {
namespace {

using enum FindingCode;
using enum Severity;
using enum FindingStage;

constexpr bool kReliable = true;
constexpr bool kUnreliable = false;

// clang-format off
constexpr FindingKind kCatalogue[] = {
    {ImportLoss, "import-loss", Note, Reading, kReliable,
     "The file holds something that the reader does not take over.",
     "Enter what is missing in the model file."},
    {UnitsLeftOut, "units-left-out", Warning, Reading, kReliable,
     "Length or Force is given, and quantities composed of them stay in inch and pound.",
     "Name a system, such as \"units\": \"kN-m\", or give every quantity its unit."},
    {Value2LeftOut, "value2-left-out", Warning, Reading, kReliable,
     "A line load has a value1 and no value2, which is 0: the load is a triangle.",
     "Set value2; the same value makes the load uniform."},
    {CombinationsAdded, "combinations-added", Note, Reading, kReliable,
     "The model file has no load combinations; each load case gets one of its own.",
     "Add the combinations that are wanted."},
    {MassCombinationReset, "mass-combination-reset", Warning, Check, kReliable,
     "massLoadComb lies beyond the last load combination and is set to 0.",
     "Set massLoadComb to the index of a load combination."},
    {ModelTypeMismatch, "model-type-mismatch", Warning, Check, kReliable,
     "The model has elements whose degrees of freedom its type leaves out.",
     "Choose the modelType that has them, or take the elements out."},
    {FewSegments, "few-segments", Note, Check, kReliable,
     "Members are looked at in fewer than 20 stations.",
     "Set numberOfSegments to 20 or more where the shape of the curves counts."},
    {NoLoadCase, "no-load-case", Error, Check, kReliable,
     "There is nothing to be solved without a load case.",
     "Add a load case and a combination of it."},
    {SelfWeightCaseMissing, "self-weight-case-missing", Error, Check, kReliable,
     "selfWeightCase lies beyond the last load case.",
     "Set selfWeightCase to the index of a load case."},
    {NoSelfWeight, "no-self-weight", Note, Check, kReliable,
     "No load case carries the weight of the structure.",
     "Set selfWeightFactor to -1 if the weight is to act."},
    {GravityNotVertical, "gravity-not-vertical", Warning, Check, kReliable,
     "Self weight acts along another axis than the vertical one.",
     "Set selfWeightDir to 1, or to 2 where bZVertical is 1."},
    {NoBoundaryConditions, "no-boundary-conditions", Error, Check, kReliable,
     "Nothing holds the structure.",
     "Add supports or springs."},
    {ForcedDisplacementIgnored, "forced-displacement-ignored", Warning, Check, kReliable,
     "Prescribed displacements of supports take no part in a frequency analysis.",
     "None is needed if only the modes are wanted."},
    {ConstraintInvalid, "constraint-invalid", Error, Check, kReliable,
     "A multi-DOF constraint joins no two degrees of freedom of existing nodes.",
     "Correct its nodes, degrees of freedom and factors."},
    {MaterialInvalid, "material-invalid", Error, Check, kReliable,
     "A property of a material is out of its range: E above 0, nu from 0 to below 0.5, Wc at least 0, Tc above 0.",
     "Correct the property; a material that does not expand gets a very small Tc."},
    {SectionInvalid, "section-invalid", Error, Check, kReliable,
     "A property of a section is out of its range: A, Iz, Iy, J above 0, Ay and Az at least 0.",
     "Correct the property; Ay and Az of 0 leave out shear deformation."},
    {ThicknessInvalid, "thickness-invalid", Error, Check, kReliable,
     "A thickness is not above 0.",
     "Correct it."},
    {DuplicateNodes, "duplicate-nodes", Warning, Check, kReliable,
     "Nodes stand nearer to one another than mergeTolerance: elements look connected and are not.",
     "Merge the nodes, or reduce mergeTolerance if they are meant to be apart."},
    {OrphanedNode, "orphaned-node", Error, Check, kReliable,
     "A node belongs to no member, shell, brick or constraint.",
     "Connect the node, remove it, or support it with \"111111\"."},
    {CrackingFactorInvalid, "cracking-factor-invalid", Error, Check, kReliable,
     "A cracking factor is not above 0 and at most 1.",
     "Correct it; 1 is uncracked."},
    {StiffnessFactorInvalid, "stiffness-factor-invalid", Error, Check, kReliable,
     "A stiffness modification factor is not above 0.",
     "Correct it; 1 leaves the stiffness as it is."},
    {MemberSameNodes, "member-same-nodes", Error, Check, kReliable,
     "A member starts and ends at one node.",
     "Correct its nodes."},
    {NodeOnMember, "node-on-member", Warning, Check, kReliable,
     "A node lies on a member that does not end there: they look connected and are not.",
     "Split the member at the node if they are to be connected."},
    {MemberLengthVariation, "member-length-variation", Warning, Check, kReliable,
     "The longest member is more than 100 times as long as the shortest.",
     "Look at both members; digits are lost where the stiffness varies that much."},
    {ShellLengthVariation, "shell-length-variation", Warning, Check, kReliable,
     "The longest edge of the shells is more than 20 times as long as the shortest.",
     "Look at both shells; refine the mesh gradually."},
    {PoorShellShape, "poor-shell-shape", Warning, Check, kReliable,
     "A shell is not convex.",
     "Order its nodes around the shell, or change the mesh."},
    {FactorsNotApplied, "factors-not-applied", Warning, Check, kReliable,
     "Cracking and stiffness factors are given and not used.",
     "Set bStiffnessFactors to 1 if they are to be used."},
    {ShellSameNodes, "shell-same-nodes", Error, Check, kReliable,
     "A shell names a node more than once.",
     "Correct its nodes; three-node shells take no part in the analysis."},
    {LineLoadNoLength, "line-load-no-length", Warning, Check, kReliable,
     "A line load ends where it begins, or before.",
     "Set distance1 below distance2."},
    {NoCombination, "no-combination", Error, Check, kReliable,
     "There is nothing to be solved without a load combination.",
     "Add a load combination."},
    {TooFewIterations, "too-few-iterations", Warning, Check, kReliable,
     "A combination has to be iterated and may not be.",
     "Set maxNonlinearIterations to 10 or more."},
    {DiaphragmSoft, "diaphragm-soft", Warning, Check, kReliable,
     "The links of rigid diaphragms are not stiff beside the structure.",
     "Set diaphragmStiffnessFactor to 1000 or more."},
    {DiaphragmInvalid, "diaphragm-invalid", Error, Check, kReliable,
     "A rigid diaphragm cannot be formed.",
     "Correct its nodes."},
    {QuadRecommended, "quad-recommended", Note, Check, kReliable,
     "Rigid diaphragms are stiff beside the structure, which costs digits.",
     "Compare with --solver quad where results look odd."},
    {AnsweredNo, "answered-no", Error, Check, kReliable,
     "The question whether to go on was answered with No.",
     "Correct the model, or answer Yes."},
    {TermWithoutLoadCase, "term-without-load-case", Error, Check, kUnreliable,
     "A term of a load combination names no load case; it counts as nothing.",
     "Correct the label of the term, or take it out."},
    {LoadCaseLabelTwice, "load-case-label-twice", Warning, Check, kReliable,
     "Two load cases have one label; a term of it takes the first.",
     "Give each load case a label of its own."},
    {LoadCaseUnused, "load-case-unused", Note, Check, kReliable,
     "A load case is in no combination; its loads never act.",
     "Add it to a combination if it is to act."},
    {LoadOnMissingElement, "load-on-missing-element", Warning, Check, kReliable,
     "A load acts on a member, shell or brick that is not in the model; it counts as nothing.",
     "Correct the id of the load, or take it out."},
    {LoadOffMember, "load-off-member", Warning, Check, kReliable,
     "A point or line load lies beyond the ends of its member.",
     "Set bAbsoluteDistance to 1 for a distance in the unit of Length; 0 takes it as a fraction of the length."},
    {LoadWithoutEquation, "load-without-equation", Warning, Check, kReliable,
     "A load acts on a degree of freedom that the model type or a support flag of '2' leaves out; it counts as nothing.",
     "Change its direction, the modelType or the support."},
    {ProjectedSurfaceLoad, "projected-surface-load", Warning, Check, kReliable,
     "Projected loads of shells count as global ones: per area of the shell, not of its projection.",
     "Multiply the value by the cosine of the slope and set coordSys to 1."},
    {WeightlessMaterial, "weightless-material", Warning, Check, kReliable,
     "Self weight is wanted of an element whose material has no weight density.",
     "Set Wc of the material, or selfWeight of the element to 1, which leaves its weight out."},
    {SelfWeightLifts, "self-weight-lifts", Warning, Check, kReliable,
     "Self weight acts upward.",
     "Set selfWeightFactor to -1."},
    {BelongsToMissingElement, "belongs-to-missing-element", Warning, Check, kReliable,
     "A release or spring belongs to an element that is not in the model.",
     "Correct its id, or take it out."},
    {AreaLoadNotConverted, "area-load-not-converted", Warning, Check, kReliable,
     "Area loads take no part in the analysis until they are converted to loads on members.",
     "Enter the loads on the members or shells that carry them."},
    {Shell3Ignored, "shell3-ignored", Warning, Check, kReliable,
     "Three-node shells take no part in the analysis: no stiffness, no load.",
     "Replace them by four-node shells."},
    {FieldWithoutEffect, "field-without-effect", Warning, Check, kReliable,
     "A field that the engine keeps and does not use holds something.",
     "Take it out, or model it by other means."},
    {DiaphragmOffPlane, "diaphragm-off-plane", Warning, Check, kReliable,
     "Nodes lie off the plane of their rigid diaphragm, and its links hold them out of the plane too.",
     "Move the nodes into the plane, or reduce mergeTolerance."},
    {MemberLooseAcross, "member-loose-across", Warning, Check, kReliable,
     "Released ends leave a member no hold across itself; its forces are no results.",
     "Keep shear at one end, and one of the moments or the other shear, in each plane."},
    {MemberReleasedTwice, "member-released-twice", Warning, Check, kReliable,
     "Axial force or torsion is released at both ends; the member keeps that stiffness.",
     "Keep it at one end."},
    {MemberNearlyVertical, "member-nearly-vertical", Warning, Check, kReliable,
     "A member leans from the vertical by less than a thousandth, and its local y and z differ from those of vertical members.",
     "Correct the coordinates of its nodes."},
    {StrongAxisFlat, "strong-axis-flat", Warning, Check, kReliable,
     "Z points up and local axes take global Y for the vertical: the strong axis of beams lies flat.",
     "Set the angle of the members to pi/2, or exchange Iz and Iy."},
    {TrussMemberBends, "truss-member-bends", Warning, Check, kReliable,
     "A member of a truss model is not released at both ends; it bends between nodes that do not turn.",
     "Release it with start \"000011\" and end \"000111\", or choose a frame as modelType."},
    {ShellNearlyRectangle, "shell-nearly-rectangle", Warning, Check, kReliable,
     "A shell is a rectangle but for less than a thousandth, and its local axes are not those of rectangles.",
     "Correct the coordinates of its nodes."},
    {ShellCornerInvalid, "shell-corner-invalid", Error, Check, kReliable,
     "Corners of a shell coincide, lie in line or turn inward.",
     "Correct its nodes: four corners around a convex shape."},
    {BrickCornerInvalid, "brick-corner-invalid", Error, Check, kReliable,
     "Corners of a brick coincide or lie flat, or the brick is inside out.",
     "Correct its nodes: 1 to 4 around one face, 5 to 8 above them, counterclockwise as seen from 5 to 8."},
    {SettingLimited, "setting-limited", Warning, Check, kReliable,
     "A setting was out of its range and has been set to the nearest value.",
     "Correct the setting."},
    {Unstable, "unstable", Error, Run, kReliable,
     "Nothing holds these degrees of freedom: the structure is a mechanism, or close to one.",
     "Add supports, or take releases out, at the nodes named."},
    {DigitsLost, "digits-lost", Warning, Run, kReliable,
     "The factorisation lost most of the digits of the numbers: stiff and soft parts differ that much.",
     "Use --solver quad, or lessen the contrast of stiffness."},
    {ZeroLoad, "zero-load", Warning, Run, kReliable,
     "A load combination has no load at all.",
     "Correct its terms and the loads of its load cases."},
    {Buckled, "buckled", Error, Run, kUnreliable,
     "The stiffness under the axial forces is not positive: the state is past buckling.",
     "Stiffen the structure or reduce the load."},
    {NotConverged, "not-converged", Error, Run, kUnreliable,
     "The iteration stopped before its states and forces had settled.",
     "Raise maxNonlinearIterations, or look for members and springs that change back and forth."},
    {CombinationFailed, "combination-failed", Error, Run, kUnreliable,
     "A load combination could not be solved and has no results.",
     "Correct what the text names."},
    {AnalysisFailed, "analysis-failed", Error, Run, kReliable,
     "The analysis ended without results.",
     "Correct what the text names."},
    {ResultOutOfRange, "result-out-of-range", Error, Run, kReliable,
     "A result is not a number, infinite or too large to be one.",
     "Look for loads, stiffnesses or lengths far out of range and for collapsed elements."},
    {LargeMotion, "large-motion", Warning, Run, kReliable,
     "A linear run turns a node by more than 0.5 rad or moves one by more than a tenth of the model.",
     "Look for wrong units, missing supports and soft parts; linear theory does not hold for such motions."},
    {SupportYields, "support-yields", Warning, Run, kReliable,
     "A support, which is a stiff spring, gives way by more than 1e-4 of the largest displacement.",
     "Set penaltyFactor higher, or the support flag to '2', which takes the degree of freedom out."},
    {CoarsePDelta, "coarse-p-delta", Warning, Run, kReliable,
     "A member in one piece carries more than 0.05 of its Euler load; P-Delta moves its ends, not its bow between them.",
     "Divide the member into two or more."},
    {OneWayOff, "one-way-off", Note, Run, kReliable,
     "One-way members or springs are off in the end.",
     "None is needed; look whether they are those expected."},
    {OneWayWouldAct, "one-way-would-act", Error, Run, kUnreliable,
     "A one-way member or spring is off, and by the displacements of the answer it would act.",
     "Set bReactivateOneWay to 1, or take the member or spring out."},
};
// clang-format on

constexpr bool IsInOrder()
{
    for (std::size_t i = 0; i < std::size(kCatalogue); ++i)
        if (static_cast<std::size_t>(kCatalogue[i].id) != i)
            return false;
    return std::size(kCatalogue) == static_cast<std::size_t>(FindingCode::Count);
}
static_assert(IsInOrder(), "a kind stands at the place of its code");

}  // namespace

std::span<const FindingKind> FindingCatalogue()
{
    return kCatalogue;
}

Finding MakeFinding(FindingCode code, std::wstring text)
{
    assert(code < FindingCode::Count && "a code of the catalogue");
    const FindingKind& kind = kCatalogue[static_cast<std::size_t>(code)];
    Finding finding;
    finding.severity = kind.severity;
    finding.stage = kind.stage;
    finding.code = kind.code;
    finding.isReliable = kind.isReliable;
    std::replace(text.begin(), text.end(), L'\n', L' ');
    finding.text = std::move(text);
    finding.remedy.assign(kind.remedy, kind.remedy + std::char_traits<char>::length(kind.remedy));
    return finding;
}

}  // namespace qvx
