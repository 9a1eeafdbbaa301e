#pragma once

#include <fstream>
#include <map>
#include <memory>
#include <vector>

#include "model/records/comb_result.h"
#include "model/records/design_criteria.h"
#include "model/records/design_result.h"
#include "model/records/element.h"
#include "model/records/envelope.h"
#include "model/records/finding.h"
#include "model/records/frequency_outcome.h"
#include "model/records/host_data.h"
#include "model/records/load.h"
#include "model/records/node.h"
#include "model/records/operation_result.h"
#include "model/records/property.h"
#include "model/records/spring.h"
#include "model/records/unit.h"
#include "platform/cstring.h"
#include "platform/cwnd.h"
#include "platform/export.h"
#include "quad/double128.h"
#include "rc/interaction_surface.h"
#include "tools/jx_exception.h"
#include "tools/jx_point.h"

class CjxBmGroup;
class CjxShell4Group;
class CjxBrickGroup;
struct jxSolutionData;
namespace qvx {
class DesignRun;
class DirectSolver;
class InputCheck;
class SolverWindow;
struct RunContext;
}  // namespace qvx

/// Codes of CjxStruct::solverType.
enum SolverType : int { DoubleSkyline = 0, QuadSkyline = 1, DoubleSparse = 2 };

/// Codes of CjxStruct::modelType: which degrees of freedom a node has.
enum ModelType : int {
    Frame3D = 0,         ///< "3D Frame & Shell (6-DOF)"
    Frame2D = 1,         ///< "2D Frame (X, Y, OZ)"
    Truss3D = 2,         ///< "3D Truss (X, Y, Z)"
    Truss2D = 3,         ///< "2D Truss (X, Y)"
    PlateBending2D = 4,  ///< "2D Plate Bending (Z, OX, OY)"
    PlaneStress2D = 5,   ///< "2D Plane Stress (X, Y)"
    Brick3D = 6,         ///< "3D Brick (X, Y, Z)"
    Grillage2D = 7,      ///< "2D Grillage (Y, OX, OZ)"
};

/// The one object of a structural model: input, settings, results and the channels to the host.
///
/// Record vectors are sorted by id, load cases excepted; a record refers to another by id. Numbers are in the model's
/// units while the host edits, in inch, pound, radian, degree F during a run (bInSolution). Angles are radians always.
/// Nodal forces, displacements and reactions are positive along the global axes, moments and rotations by the
/// right-hand rule; reactions are the actions on the structure. One thread at a time uses an object,
/// GetNextCounterString excepted. Combinations are named by index from 0, the combination index -1 is the modal result
/// where a function says so. Analysis entries return 1 on success and 0 when the input is refused; every other failure
/// leaves as jxException and leaves the model in internal units with the saved input in place, for RestoreInputData to
/// bring back.
class QVXFEM_API CjxStruct
{
public:
    // --- Making and host hooks --------------------------------------------------------------------------------------
    /// An empty model with the defaults below, in inch and pound, and the tables of bars from RcSections.ini beside the
    /// executable or installed. Without that file a message box says so and the model has no bars. The profile integer
    /// bUseZAsVertical makes Z vertical. Throws nothing of its own.
    CjxStruct();
    CjxStruct(const CjxStruct&) = delete;
    CjxStruct& operator=(const CjxStruct&) = delete;
    virtual ~CjxStruct();                     ///< frees everything, saved input and message strings too
    virtual bool IsEmptyDocument() const;     ///< bEmptyDocument as a bool
    virtual void OnAddMoreLoadCase();         ///< resizes caseLoads to the number of load cases
    virtual void OnAddMoreLoadCombination();  ///< resizes combResults to the number of load combinations
    /// Whether a record with this flag byte (bSelected) is selected and not hidden.
    static bool IsShowSelected(unsigned char flags) { return (flags & 3) == 1; }

    // --- Analyses ---------------------------------------------------------------------------------------------------
    /// Solves every load combination by solverType and fills combResults, combOutcomes, digitsLost, the envelopes.
    /// Success (1): input and units as before, changes of CheckInputData excepted; results in the model's units, and
    /// loadVectors hold the displacements. A combination whose elements could not be formed has an empty result and its
    /// reason in combOutcomes; the others stand, the run still returns 1.
    /// Refused (0): RepaireData has run, there are no results, units as before.
    /// @throws jxException  unstable structure, no memory, abort by the user, solver not to be had: internal units,
    ///                      bInSolution 1, no results; RestoreInputData brings input and units back
    int ExecuteStatic();
    /// What ExecuteStatic calls when solverType is DoubleSparse; only then.
    int ExecuteStaticSparse();
    /// Designs concrete members and plates by the envelopes of a static run; 0: refused, told in a message box. After a
    /// refused check or an exception the model is in design units (inch, kip, kip-ft), bInSolution 1: RestoreInputData.
    int ExecuteConcreteDesign();
    /// Steel design of the members from static results into steelResults. Success (1): input and units as before, results
    /// in the model's units. Refused (0), told in a message box: nothing has changed without static results; after a check
    /// that refuses, and after an exception, the model is in design units (kip, inch, moments kip-ft), bInSolution 1:
    /// RestoreInputData brings the input back, results are to be cleared.
    /// @throws jxException  "error finding <record> <id>", abort by the user
    int ExecuteSteelDesign();
    /// Natural modes under the stiffness and the masses of the combination massLoadComb: eigenResults, derivedMasses,
    /// frequencyOutcome; with bPerformSpectrum also spectrumResults. Static results stay as they are.
    /// Success (1): as ExecuteStatic. numberOfModes is clamped to the mass degrees of freedom, and stays so.
    /// Refused (0): RepaireData has run; or there is no mass, then the model is left as by an exception.
    /// @param massOnly      derivedMasses are formed and nothing is solved
    /// @throws jxException  as ExecuteStatic, and of an iteration that failed, with advice
    int ExecuteFrequency(bool massOnly);
    /// Checks the input and puts settings out of range right. All faults are listed and logged, none throws. Changes:
    /// clamped settings, bSelected of nodes that nothing holds, bNonlinear, linearCombCount, links, the section
    /// "RIGID_LINK". No units, no results.
    /// @param mode     0 static, 1 frequency
    /// @param bSilent  leaves the length variation questions out
    /// @return         1 when the model may be solved, 0 when an error stands or the user said No
    int CheckInputData(int mode, bool bSilent);
    /// Clears all results, adds missing default records (label "Default", id 1), drops records that refer to nothing
    /// and resets stored indices beyond the end of their vector to 0. Throws nothing.
    void RepaireData();

    // --- Saved input and clearing -----------------------------------------------------------------------------------
    /// Copies what the host entered; links, derived masses, bar databases, results and channels stay as they are here.
    /// units and bInSolution come along: they tell in which units the copied numbers are.
    /// @return  this object; a copy of itself changes nothing
    CjxStruct& copy_input(const CjxStruct& other);
    /// Keeps one copy of the input, in the units it has now; the copy before is dropped.
    void SaveInputData();
    /// Copies the saved input back, if there is one, and nothing else. After a failed run the input is again in the
    /// model's units and bInSolution 0. Results that the run left are in internal units still: clear them.
    void RestoreInputData();
    bool HasSavedInput() const { return savedInput_ != nullptr; }  ///< RestoreInputData has something to bring back
    /// All results. Input, units and saved input stay; so with every function of this family.
    void ClearResult();
    /// Load vectors and all that followed from them, and the file "<documentPath>.uni" of the host.
    void ClearStaticResult();
    void ClearFrequencyResult();                         ///< eigenResults, and what followed from them
    void ClearResponseSpectrumResult();                  ///< spectrumResults
    void ClearConcreteResult();                          ///< results of the concrete design; the envelopes stay
    void ClearSteelResult();                             ///< results of the steel design
    void ClearSolverData();                              ///< equations, id table and load vectors, with their memory
    bool HasStaticSolution() const;                      ///< the first combination has displacements
    bool EigenSolution() const;                          ///< there are modes
    bool ResponseSpectrumSolution() const;               ///< there are responses to spectra
    int GetSolver() const { return solverType; }         ///< a SolverType
    void SetSolverType(int type) { solverType = type; }  ///< @param type a SolverType; not checked

    // --- Results of a combination -----------------------------------------------------------------------------------
    /// Normal stresses along the members whose section is regular or in a table; the others are left out.
    /// @param comb  combination index with a result, -1 for the governing curves of envelopeReport
    /// @return      in the order of the member curves, tension positive [stress]; empty without curves
    std::vector<jxBmStress> GetBeamStresses(int comb) const;
    /// Station of a member curve at x, interpolated linearly between its neighbours.
    /// @param curve  stations ascending
    /// @param x      0 to 1 [part of the length]; beyond the last station jxException "Invalid distance in GetVMD_At()"
    jxVMD GetVMD_At(std::vector<jxVMD> curve, double x) const;
    /// The same of an envelope; an interpolated station belongs to no combination (-1).
    /// @throws jxException  "Invalid distance in GetMaxVMD_At()" beyond the last station
    jxMaxVMD GetMaxVMD_At(const std::vector<jxMaxVMD>& curve, double x) const;
    /// Envelope of the member curves over the selected combinations, one record per member in the order of beams.
    /// @param out        replaced; empty without a static solution. Equal extremes keep the earlier combination.
    /// @param selection  per combination; shorter ones leave the rest out
    void CalcMaxBeamVMD(std::vector<jxMaxBmVMD>& out, const std::vector<bool>& selection) const;
    /// The same with the deflections.
    void CalcBeamEnvelopVMD(std::vector<jxEnvelopeBmVMD>& out, const std::vector<bool>& selection) const;
    /// Envelope of the displacements over the selected combinations, one record per node.
    void CalcNodalDisplacementEnvelope(std::vector<jxEnvelopeValue6>& out, const std::vector<bool>& selection) const;
    /// Of the reactions, one record per support that has one.
    void CalcSupportReactionEnvelope(std::vector<jxEnvelopeValue6>& out, const std::vector<bool>& selection) const;
    /// Fills envelopeReport with all three and with the governing curves of the members.
    void CalcEnvelopeReport(const std::vector<bool>& selection);
    /// After a frequency run with spectra: makes a load case and a combination per direction and mode out of the modal
    /// forces, or refills those that stand; a static run then solves them and combines the modes.
    void ConvertInertiaForces();
    bool IsPerformingSpectrumAnalysisInDirection(int direction) const { return spectrumFactor[direction] != 0; }
    bool HasResponseSpectrumLoadCombination() const;
    bool IsResponseSpectrumLoadCombination(int comb) const;  ///< false beyond the list
    /// Library behind the last sparse run, "PARDISO" or "MUMPS"; empty before one.
    CString SparseSolverName() const;
    int SolverThreads() const { return solverThreads_; }  ///< of the last sparse run; 1 before

    // --- Model operations -------------------------------------------------------------------------------------------
    // The operations below carry each change into every record that refers to what they change; results are the host's
    // to clear. Those on "selected" elements take bit 0 of bSelected. What takes an end of a member throws jxException
    // "error finding node <id>", before anything is changed. Message boxes appear when bInteractive is set.

    /// Joins nodes nearer to each other than mergeTolerance: of each such pair the one farther from the origin stays.
    /// Of supports, nodal springs and coupled springs that so come to stand side by side at one node the first stays.
    /// @return  the removed nodes by id, with the id of the one that stands for them in no
    std::vector<jxNd> MergeNodes();
    std::vector<jxBm> MergeBeams();        ///< joins members between the same nodes, either way round; the last stays
    std::vector<jxShell4> MergeShell4s();  ///< joins shells of the same corners in the same turn; the last stays
    std::vector<jxShell3> MergeShell3s();  ///< nothing is joined
    std::vector<jxBrick> MergeBricks();    ///< joins bricks of the same eight nodes in order; the last stays
    /// All four, and RemoveInvalidElements.
    /// @param messages  0 tells of what was found, 1 tells always, any other number nothing
    jxMergedInfo Merge(int messages = 0);
    void RenumberNodes();   ///< gives each node the id that stands in its no
    void RenumberBeams();   ///< likewise
    void RenumberShells();  ///< likewise, of the four-node shells
    void RenumberBricks();  ///< likewise
    /// Removes elements that name one node twice, with their loads, springs and releases. The counts are returned.
    void RemoveInvalidElements(int& members, int& shell4s, int& bricks);
    /// Removes nodes that no element, diaphragm, constraint or area load names, with what belongs to them.
    /// @return  their ids
    std::vector<int> RemoveOrphanedNodes();
    /// Turns the selected elements round: their first end becomes the last, shells and bricks turn over. Loads stay.
    void ReverseNodeOrder();
    /// Sets bit 0 of bSelected of nodes and elements to select, or inverts it with reverse; hidden ones (bit 1) stay. A
    /// select of 0 clears, or inverts, that of supports, springs, releases, loads, masses, diaphragms, constraints too.
    void SelectAll(int select, int reverse);

    /// Cuts each selected member into pieces of the given lengths, or into as many equal ones; loads, line springs and
    /// releases go along. The first piece keeps the id, new ids follow the largest. The list is cut off, or filled up by
    /// one more piece, where it does not fit a member.
    void ExplodeBeam(std::vector<double>& pieces, int equal);
    /// Cuts stiff ends off the selected members; an offset that is not positive is none.
    /// @param rigidSection  id of the section of the ends
    void CreateBeamRigidOffset(double startOffset, double endOffset, int rigidSection);
    /// Cuts the selected members into pieces of one section each, in steps of a taper. The sections are added.
    void NonPrismaticBeam(std::vector<double>& pieces, const std::vector<jxSect>& sections);
    /// Cuts the selected members at the nodes on them, nearer than mergeTolerance. Line springs stay on the first piece.
    /// @return  ids of the members that were cut
    std::vector<int> ExplodeSelectedBeamsAtNodes();
    /// The same for these members, which stay selected.
    std::vector<int> ClearSelectionAndExplodeBeamsAtNodesForSpecifiedBeams(const std::vector<int>& beams);
    /// Adds a node where two of the members cross within their lengths; the members are not cut.
    std::vector<jxIntersectionNode> InsertNodesAtBeamIntersectionsForBeams(const std::vector<int>& beams);
    /// The same for members given as records; only their ids and ends are looked at.
    std::vector<jxIntersectionNode> InsertNodesAtBeamIntersectionsForBeams(const std::vector<jxBm>& beams);

    bool HasAreaLoads() const;  ///< some load case has an area load
    /// Turns the area loads of a load case into line loads on the members within each footprint.
    /// @param loadCase         index; outside the list nothing is converted
    /// @param removeAreaLoads  takes the area loads out
    /// @param mergeFirst       runs Merge before
    /// @return  true when every footprint is loaded whole; what got no load is told in lines and among the findings
    /// @throws jxException  a footprint without a plane or an area, a corner that is no node: no loads are added
    bool ConvertAreaLoads(int loadCase, bool removeAreaLoads, bool mergeFirst);

    /// Turns span and surface loads along local axes into loads along global ones, of the same resultant, in place.
    /// @throws jxException  "error finding <record> <id>" for a load on no element; lists of loads before its own are
    /// turned by then
    void ConvertAllLocalLoadsToGlobalLoads();
    /// Section of members that act as rigid links ("RIGID_LINK"): 100,000 times the model's largest area and inertia.
    jxSect GetRigidLinkSection() const;
    /// Adds the section "RIGID_LINK", without values; false, and no change, when the model has one.
    bool SafeCreateRigidLinkSection();
    /// Nodes on the level of a diaphragm in a coordinate plane, in the order of the model.
    /// @param axis  receives the coordinate held constant (0 X, 1 Y, 2 Z); stays as it is for an unknown type
    /// @throws jxException  "error finding node <id>" without the reference node; levelNodes stay
    void GetRegularDiaphragmNodes(std::vector<jxNd>& levelNodes, jxNd& reference, int& axis,
                                  const jxDiaphragm& d) const;
    /// Index of the load case with this label, exact, first match; -1 when there is none.
    int FindLoadCase(const wchar_t* label) const;

    // Growth from a pattern: copy c of a record has its id plus c times an increment and all else of it, elements that
    // join a copy to the one before count up from an id. They take the material of the pattern's element; section or
    // thickness is 1, and the material too where a node has none. Lists are sorted by id afterwards; whether new ids
    // are free is the caller's concern. The pattern may be a list of this model. A failure changes nothing: jxException
    // for an id beyond 1 to 2147483647, "error finding node <id>" for an element whose nodes are not copied with it.

    /// Copies nodes along a direction and joins each to its next copy by a member.
    /// @param steps            distances between copies [length]; without one nothing is made
    /// @param direction        unit vector, the way of the steps
    /// @param memberIncrement  id of the first member; the others count up, step by step
    void ExtrudeNodes(const std::vector<jxNd>& nodes, const std::vector<double>& steps, jxPoint direction,
                      int nodeIncrement, int memberIncrement);
    /// Copies members with their nodes; shells that count from shellIncrement join them, node 1 and 2 of the earlier
    /// member, 2 and 1 of the later.
    void ExtrudeBeams(const std::vector<jxNd>& nodes, const std::vector<jxBm>& beams, const std::vector<double>& steps,
                      jxPoint direction, int nodeIncrement, int beamIncrement, int shellIncrement);
    /// Copies shells with their nodes; bricks that count from brickIncrement join them, the earlier shell first.
    void ExtrudeShell4s(const std::vector<jxNd>& nodes, const std::vector<jxShell4>& shells,
                        const std::vector<double>& steps, jxPoint direction, int nodeIncrement, int shellIncrement,
                        int brickIncrement);
    /// Copies members about the Y axis in equal angles, joined as ExtrudeBeams joins them.
    ///
    /// A copy stands at the distance of its node from the axis, at the angle from +X towards -Z: the pattern is meant to
    /// lie at angle 0, where its own bearing is not looked at. A full turn, 360 degrees within 0.001, makes one copy
    /// less: its last ring ends on the pattern. A node on the axis has coincident copies, which Merge joins.
    /// @param startAngle, endAngle  [degree]; the last copy stands at the end
    /// @param copies                below 1, and 1 of a full turn, nothing is made
    void RevolveBeams(const std::vector<jxNd>& nodes, const std::vector<jxBm>& beams, double startAngle,
                      double endAngle, int copies, int nodeIncrement, int beamIncrement, int shellIncrement);
    /// The same of shells, joined as ExtrudeShell4s joins them.
    void RevolveShell4s(const std::vector<jxNd>& nodes, const std::vector<jxShell4>& shells, double startAngle,
                        double endAngle, int copies, int nodeIncrement, int shellIncrement, int brickIncrement);

    // --- Host channel -----------------------------------------------------------------------------------------------
    unsigned char bInteractive = 1;  ///< message boxes may be shown
    int bEmptyDocument = 1;          ///< of the host: nothing was entered yet

    /// Sets the window that receives messages, resets counter and abort flag, posts and logs an empty status line.
    /// Nothing is posted without a window or after an abort; the log goes on. The window is not owned.
    void set_solver_wnds(CWnd* window);
    void clear_solver_wnds();  ///< nothing is posted any more
    /// Posts "[HH:MM:SS] text" and status as a list line (message 1124) and logs "text - status", or text alone when
    /// there is no status (null or empty).
    void list_msg(const wchar_t* text, const wchar_t* status);
    /// list_msg, and "text - status" once more in the log.
    void list_msg0(const wchar_t* text, const wchar_t* status);
    /// list_msg, and "text;  status" in the log.
    void list_msg_and_log(const wchar_t* text, const wchar_t* status);
    /// Posts a status line (message 1126) and logs it.
    void status_msg(const wchar_t* text);
    /// Asks the user when the abort key is down; on Yes posts nothing more and throws jxException "SOLUTION ABORTED!".
    void peek_msg();
    /// Next string of the message table, from any thread. It lives until ClearCounterString, so that a window can read
    /// it after PostMessageW returned; after set_solver_wnds the strings are handed out anew.
    CString* GetNextCounterString();
    void ClearCounterString();  ///< frees the strings; takes no lock: no run, no window may hold one
    /// Starts a log entry with "[date time]: " and returns the stream; the host opens it (fileLog).
    std::ofstream& GetFileLog();
    /// One whole log entry: prefix, text, end of line, flush. Nothing when the log is not open.
    void LogLine(const wchar_t* text);
    /// Lists physical memory, total and available, and what the run needs, in MB. Returns 1; refuses nothing.
    int memcheck(std::ofstream& log, int kilobytes);
    int GetNumberOfCPUs() const;  ///< that the operating system reports
    /// The callback opens a progress window in its own time and stores it in progressWindow: the factorisation waits
    /// for it, then posts message 1125 once and 1124 with percent and thread as it goes on. Null for none.
    void SetPardisoFactorizationStartedCallback(void (*callback)(CjxStruct*));
    CWnd* progressWindow = nullptr;  ///< of the host
    std::ofstream fileLog;           ///< opened by the host before the first analysis
    CString documentPath;            ///< of the host's document; the report and "<documentPath>.uni" stand beside it

    // --- Document ---------------------------------------------------------------------------------------------------
    jxUnit units;         ///< of every number while bInSolution is 0
    int bInSolution = 0;  ///< numbers are in internal units
    CString modelName;    ///< title lines of the host's document, down to reserved
    CString company;
    CString engineer;
    CString reserved;
    jxPoint origin;               ///< of the host's drawing grid [length]
    int gridPlane = 2;            ///< of the host's drawing grid
    CString gridLists[3];         ///< distances of the host's grid lines, "count@value,..." [length]
    CString notes[3];             ///< free text
    std::vector<jxNd> gridNodes;  ///< of the host's drawing grid [length]

    // --- Analysis settings; CheckInputData clamps those with a range -------------------------------------------------
    int bThinPlate = 0;                ///< thin plate bending for rectangular shells, else MITC4
    int bIncompatibleMembrane = 1;     ///< incompatible modes in the membrane of shells
    int bShearDeformation = 1;         ///< members deform in shear
    int bRigidDiaphragms = 1;          ///< diaphragms are made into links
    int bStiffnessFactors = 0;         ///< stiffness modification and cracking factors act
    int maxNonlinearIterations = 10;   ///< 1 to 1000
    double pDeltaTolerance = 0.5;      ///< change of axial forces that ends a P-Delta iteration, 0.001 to 100 [%]
    int bAverageStresses = 1;          ///< 0 none, 1 all shells at a node, 2 shells of equal axes
    double eigenTolerance = 0.001;     ///< relative, on eigenvalues
    int numberOfModes = 1;             ///< natural modes asked for
    int maxSubspaceIterations = 18;    ///< of the eigensolver
    int iterationVectors = 8;          ///< of the eigensolver
    int bLoadsToMasses = 1;            ///< loads of massLoadComb are masses
    int modelType = Frame3D;           ///< a ModelType
    int dofSuppressed[6] = {};         ///< from modelType: 1 when no node has the DOF
    double mergeTolerance = 0.01;      ///< nodes nearer than this are one [length]
    int numberOfSegments = 20;         ///< of member curves, 1 to 127
    double roundOffThreshold = 1e-10;  ///< smaller values print as 0 in the report
    double shellOzFactor = 1e-7;       ///< drilling stiffness of a shell over its membrane stiffness
    double diaphragmStiffnessFactor = 10000.0;  ///< links over the stiffest section; 1000 at least
    int bOutOfCore = 0;                         ///< the sparse solver keeps its factor on disk
    int massLoadComb = 0;                       ///< index of the combination that makes the masses
    int currentLoadCase = 0;                    ///< index that the host edits
    int selfWeightCase = 0;                     ///< index of the load case that carries self weight
    int selfWeightDir = 1;                      ///< 0 X, 1 Y, 2 Z
    double selfWeightFactor = 0.0;              ///< its sign is the sign of the load along selfWeightDir
    int bLockModel = 0;             ///< for the host: set after a run when the profile integer LockModel is 1
    int solverType = DoubleSparse;  ///< a SolverType
    int bZVertical = 0;             ///< Z points up, else Y
    int bSignedShearAngle = 0;      ///< MITC4 shear directions by signed angles at the point itself
    int bConsistentMechanics = 0;   ///< releases, heating and constraints as the mechanics have them
    int bReactivateOneWay = 0;      ///< one-way members and springs come back when they would act
    int bContinueAfterFailure = 0;  ///< a combination that fails does not end the run

    // --- Model: records sorted by id ----------------------------------------------------------------------------------
    int selectedMaterial = 0;   ///< index that the host shows
    int selectedSection = 0;    ///< index that the host shows
    int selectedThickness = 0;  ///< index that the host shows
    std::vector<jxMat> materials;
    std::vector<jxSect> sections;
    std::vector<jxThick> thicknesses;
    std::vector<jxThick> namedLengths;  ///< of the host; t in [length]
    std::vector<jxSupt> supports;
    std::vector<jxNd> nodes;
    std::vector<jxBm> beams;
    std::vector<jxShell4> shell4s;
    std::vector<jxShell3> shell3s;  ///< of the host; no part of the analysis
    std::vector<jxBrick> bricks;
    std::vector<jxLink> links;  ///< generated from the diaphragms by CheckInputData
    std::vector<jxSpring> nodalSprings;
    std::vector<jxCoupledSpring> coupledSprings;
    std::vector<jxSpring> beamSprings;    ///< along members, per length
    std::vector<jxSpring> shell3Springs;  ///< of the host; no part of the analysis
    std::vector<jxSpring> shell4Springs;  ///< under shells, per area
    std::vector<jxRels> releases;
    std::vector<jxMasterSlave> masterSlaves;  ///< of the host
    std::vector<jxLoadCase> loadCases;        ///< in the order of the host
    std::vector<jxLoadComb> loadCombs;        ///< in the order of the host; terms name load cases by label
    std::vector<jxCaseLoad> caseLoads;        ///< one per load case, at its index
    std::vector<jxNdLoad> derivedMasses;      ///< generated by a frequency run
    std::vector<jxNdLoad> additionalMasses;   ///< [force s^2/length], [force s^2 length]
    std::vector<jxDiaphragm> diaphragms;
    std::vector<jxMultiDofConstraint> multiDofConstraints;
    std::vector<jxNamedSelection> namedSelections;  ///< of the host

    // --- Design criteria and settings -------------------------------------------------------------------------------
    jxDesignSettings design;
    std::vector<jxBmRcCrit> beamRcCriteria;
    std::vector<jxColRcCrit> columnRcCriteria;
    std::vector<jxPlateRcCrit> plateRcCriteria;
    std::vector<jxSteelCrit> steelCriteria;
    std::vector<jxBarDatabase> rebarDatabases;  ///< from RcSections.ini
    int currentRebarDatabase = -1;              ///< index; -1 none

    // --- Spectra ----------------------------------------------------------------------------------------------------
    int bSignedModalResults = 0;                 ///< modal rules get the dominant mode of each direction
    int bPerformSpectrum = 0;                    ///< a frequency run goes on to the response to the spectra
    double dampingRatio = 0.05;                  ///< of critical
    double spectrumFactor[3] = {1.0, 0.0, 0.3};  ///< of X, Y, Z; a direction takes part when it is not 0
    int modalCombination = 0;                    ///< 0 CQC, 1 SRSS, 2 absolute sum
    jxSpectrum spectra[3];                       ///< of X, Y, Z
    jxMesh mesh;                                 ///< of the host

    // --- Solver state -----------------------------------------------------------------------------------------------
    double penaltyFactor = 100000.0;                       ///< penalties over the largest stiffness term
    qvx::double128 penaltyStiffness;                       ///< of the supports in the last run
    int numberOfEquations = 0;                             ///< counted from 1
    std::vector<int> idTable[6];                           ///< per DOF: equation by 1-based node position, or 0
    std::vector<std::vector<qvx::double128>> loadVectors;  ///< per combination, 1-based; displacements after a solve
    int bNonlinear = 0;                                    ///< derived: some spring or member acts one way
    int linearCombCount = 0;                               ///< derived: combinations that share one factor
    int bElementStateChanged = 0;                          ///< a one-way member or spring asks for another iteration

    // --- Results ----------------------------------------------------------------------------------------------------
    std::vector<jxCombResult> combResults;                  ///< per combination
    std::vector<jxCombOutcome> combOutcomes;                ///< per combination of the last static run
    int digitsLost = 0;                                     ///< in the worst factorisation of the last static run
    std::vector<jxMaxBmVMD> concreteEnvelope;               ///< member curves over the concrete combinations
    std::vector<jxWoodArmer> woodArmer;                     ///< per shell
    std::vector<jxBmRcResult> concreteBeams;                ///< of the concrete design, per beam
    std::vector<jxColRcResult> concreteColumns;             ///< of the concrete design, per column
    std::vector<jxRcShearResult> concreteShear;             ///< of the concrete design, per member
    std::vector<jxPlateRcResult> concretePlates;            ///< of the concrete design, per shell
    std::vector<jxSteelResult> steelResults;                ///< of the steel design, per member
    std::vector<jxEigenResult> eigenResults;                ///< per mode
    std::vector<jxResponseSpectrumResult> spectrumResults;  ///< per mode
    jxCombResult modalResult;                               ///< modes combined by modalCombination
    qvx::FindingList findings;                              ///< of reader, last check, last run (model/findings.h)

    // --- Of the last concrete design, in its units ------------------------------------------------------------------
    std::vector<jxConcreteSection> concreteSections;  ///< candidates of its columns, by name
    std::vector<P_M_Sect> interactionSurfaces;        ///< theirs, in kip and kip-ft
    std::map<int, std::vector<int>> nodeBeams;        ///< members meeting at a node
    jxFrequencyOutcome frequencyOutcome;              ///< course of the last frequency run
    jxEnvelopeReport envelopeReport;                  ///< of CalcEnvelopeReport

    // --- Stages of a run --------------------------------------------------------------------------------------------
    // Called by ExecuteStatic in its order, in internal units; each leaves units, saved input and the other results as
    // they are. comb is a combination index, -1 for the linear stage, which all linear combinations share. Equations,
    // load vectors and skyline arrays count from 1. Each may throw jxException "error finding <record> <id>".

    /// What the driver of a run gets of the model's inside (model/run_context.h). It refers to this model: not beyond it.
    qvx::RunContext Context();

    /// Positions (no, from 1) of nodes and elements in the order of their vectors; nothing is moved.
    void AutoRenumberNodesAndElements();
    /// Numbers the equations and builds location tables, column heights and diagonal addresses of data.
    /// @return  terms of the skyline; in a sparse run without meaning
    /// @throws jxException  no degree of freedom, or a skyline beyond 2^31 - 1 terms
    int ProcessElementConnectivity(jxSolutionData& data);
    /// Fills the id table, which stands allocated and at zero, and counts numberOfEquations node by node.
    void GetIds();
    void FindSuppressedDofs();  ///< dofSuppressed from modelType
    /// Node id and 1-based DOF of an equation; both stay as they are when the equation is not found.
    void FindDof(int& node, int& dof, int nNodes, int equation) const;
    /// Equation of a node's DOF (position from 1, dof from 0), 0 when it has none.
    int Equation(int nodePosition, int dof) const;
    /// Makes the skyline arrays of data, at zero.
    /// @param mode  0 static, 1 eigen run: a second matrix too
    /// @throws jxException  with advice to renumber, when there is no memory
    void AllocateStiffnessMemory(jxSolutionData& data, int mode, int nTerms);

    /// Adds the stiffness of all elements and diaphragm links to the matrix of data; axial forces and failed members
    /// count in a nonlinear comb. Puts diaphragmStiffnessFactor beyond 0 to 1e20 back to 10000.
    void ProcessElementGroupStiffness(jxSolutionData& data, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br,
                                      int comb);
    /// Largest diagonal term of the stiffness, 0 at least: the base of the penalty.
    double ComputeMaxStiffnessTerm(jxSolutionData& data) const;
    /// Keeps the diagonals for the digit count and logs every equation that nothing holds.
    /// @throws jxException  after the last of them, when there is one: the structure is unstable
    void CheckDiagonalStiffnessTerm(jxSolutionData& data);
    /// Lists the digits that the factorisation lost and raises digitsLost; too many are asked about.
    /// @throws jxException  when the user says No
    void CheckSolutionStability(jxSolutionData& data);
    /// Adds constraints, springs, coupled springs and supports to the matrix of data, the penalties of supports last.
    /// One-way springs that the last displacements of comb show on their free side are discarded.
    void ProcessBoundary(jxSolutionData& data, qvx::double128 penalty, int comb);
    /// Adds penalty times each prescribed displacement to the load vector of comb.
    void ProcessForcedDisplacements(jxSolutionData& data, qvx::double128 penalty, int comb);
    /// Adds all loads of comb to its load vector; stores member load records and the sum of the applied forces.
    void ProcessNodalAndElementLoads(int comb, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br);
    void ProcessNdLoads(int comb);  ///< adds the nodal loads of comb to its load vector
    /// Full symmetric matrix of a coupled spring from its 21 upper terms, row by row.
    static void GetCoupledSpringStiffness(double k[6][6], const jxCoupledSpring& spring);
    /// True when every term of the load vector is 0, which is listed as a warning.
    bool CheckNonzeroLoadVector(qvx::double128* load);

    /// Undeformed, complete structure: axial forces 0, no member or spring failed. comb is not looked at.
    void InitializeComb(int comb);
    /// Tells after an iteration (from 1) whether its result stands; refreshes displacements and axial forces.
    bool CheckNonlinearStop(int iteration, int comb, CjxBmGroup& bm);
    /// Whether a one-way spring is out in a DOF; discards and logs it when the displacement shows its free side.
    /// bElementStateChanged is set by a discard, and without a result by any one-way spring.
    bool IsSpringFailed(jxSpring& spring, int dof, jxResult6Val& displacement, bool bHaveResult);
    void SetNonlinearElementsFailed(int changed) { bElementStateChanged = changed; }  ///< 1: a further iteration
    /// Axial forces of the members, tension positive, from the end forces of comb.
    /// @return  largest change over the largest force; 0, and no refresh, without axial forces
    double GetBeamAverageAxialForce(int comb);

    // Recovery: each reads the displacements in loadVectors[comb] and replaces one vector of combResults[comb].
    void Output_All(int comb, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br);  ///< all of them, told
    void AllDisplacement(int comb);  ///< a row per node; 0 where there is no equation
    /// Reactions of supports with a flag '1', a row per support.
    void AllSuptReactions(qvx::double128 penalty, int comb);
    void AllMultiDofConstraintForces(qvx::double128 penalty, int comb);  ///< a row per constraint
    void AllNodalSpringReactions(int comb);                              ///< a row per spring, node id
    void AllNodalCoupledSpringReactions(int comb);                       ///< a row per spring, node id
    /// A row per spring that is not all zero [force/length]; zeros on an excluded member.
    void AllBeamSpringReactions(int comb);
    /// A row per spring that is not all zero [force/area]; zeros on an excluded shell.
    void AllShell4SpringReactions(int comb);
    /// -(u - prescribed) * penalty where the flag is '1' and there is an equation; the other r stay.
    void _SuptReactions(double r[6], const jxSupt& support, qvx::double128 penalty, int comb);
    /// Forces on both nodes, -penalty * g * grad g with g = f1 u1 - f2 u2.
    void _MultiDofConstraintForces(jxMultiDofConstraintForce& out, const jxMultiDofConstraint& constraint,
                                   qvx::double128 penalty, int comb);
    /// r = minus mean displacement of the nodes (positions from 1) times stiffness; 0 where the spring failed.
    void _SpringReactions(double r[6], int* nodes, int nNodes, const jxSpring& spring, int comb);
    /// Loads on member id: its span loads times the factors of comb, each along the axes it was entered in, then its
    /// end forces, once there are some.
    void GetBeamLoads(std::vector<jxPtLoad>& pts, std::vector<jxLnLoad>& lines, int id, int comb) const;
    void AllBeamEndForces(CjxBmGroup& group, int comb);  ///< a record per member; zeros when it takes no part
    /// Curves with stations at segments, loads and extremes; of a member that takes no part its two ends, at zero.
    void AllBeamSegmental(int comb);
    /// Forces and stresses of each shell by itself; a record of zeros for an excluded one.
    void AllShell4Stresses(CjxShell4Group& group, int comb);
    /// The same with corner values averaged over the shells at a node (bAverageStresses 2: of equal axes).
    void AverageShellStresses(CjxShell4Group& group, int comb);
    void AllBrickStresses(CjxBrickGroup& group, int comb);  ///< of each brick by itself; zeros for an excluded one
    /// Corner stresses averaged over the bricks at a node, excluded ones too, which keep zeros themselves.
    void AverageBrickStresses(CjxBrickGroup& group, int comb);

    // After the last combination.
    void CalcModalCombinationResult();  ///< both below, into an empty modalResult
    /// Combines the results of the inertia combinations mode by mode and direction by direction into modalResult, unless
    /// that stands already. False when there are no spectrum results.
    bool GetResponseSpectrumResults();
    /// Adds rsFactor times the modal result to each combination. Always true.
    /// @throws jxException  "error finding <record> <id>" when the modal result lacks a record
    bool AddResponseSpectrumResults();
    void CalcRcBeamEnvelop();      ///< concreteEnvelope over the combinations marked for concrete
    void CalcRcWoodArmerMoment();  ///< woodArmer over the same combinations; zeros for a shell left out

    // Of a concrete design, in design units.
    int CheckRcDesignInputData();  ///< 1 when the model may be designed; all faults are logged
    void GetNodeBeamsMap();        ///< nodeBeams from the members
    /// Width of the member that supports this one at its start (end 0) or end (1), 0 without one; at most 0.35 lengths.
    void CalcBeamSupportWidth(double& width, const jxBm& bm, int end) const;
    void BeamConcreteDesign();  ///< concreteBeams: steel of every beam at its stations
    /// Adds the candidates of a column by name; tells the user when there are none.
    void GenerateColumnSections(std::map<CString, jxConcreteSection>& out, const jxMat& material, const jxSect& section,
                                const jxColRcCrit& criterion);
    void GenerateAllColumnSections();  ///< concreteSections of all columns, by name
    void ColumnConcreteDesign();       ///< concreteColumns: the candidate of every column with its governing load
    void ConcreteShearDesign();        ///< concreteShear: stirrups of beams and columns at their stations
    void PlateConcreteDesign();        ///< concretePlates: steel by Wood-Armer moments

    // Of the sparse run: the matrix is data.sparseK; a, ia, ja are its arrays, which prepare_pardiso hands out.
    /// Threads (profile integer SolverCPUs) and, out of core, the solver's configuration file in the current folder.
    /// @throws jxException  when the file cannot be written or the solver asked for is not installed
    void configure_pardiso();
    /// Penalty blocks of the constraints, on the largest term that the elements left, which it returns.
    double PreProcessMultiDofConstraintStiffness(jxSolutionData& data);
    void PreProcessCoupledSpringStiffness(jxSolutionData& data);  ///< adds the coupled springs
    /// Hands out the compressed stiffness, arrays that belong to data, and returns its largest term, 0 at least.
    double prepare_pardiso(double*& a, int*& ia, int*& ja, jxSolutionData& data);
    /// ProcessBoundary without constraints and coupled springs, which are in the matrix by then.
    void ProcessBoundarySparse(jxSolutionData& data, double* a, int* ia, double penalty, int comb);
    void CheckDiagonalStiffnessTermSparse(jxSolutionData& data, double* a, int* ia);  ///< as its namesake above
    double ComputeMaxStiffnessTermSparse(jxSolutionData& data) const;                 ///< largest term held, 0 at least
    /// Analyses the pattern once a run and factorises. Returns 0.
    /// @throws jxException  with get_pardiso_error's text; a bad pivot is listed with node and DOF before
    int pardiso_factorize(jxSolutionData& data, int n, double* a, int* ia, int* ja);
    /// Replaces the load vector by the displacements. Returns 0. After a jxException the vector is as it was.
    int pardiso_substitution(double* a, int* ia, int* ja, qvx::double128* load);
    int pardiso_delete(int* ia, int* ja);        ///< frees the factor; returns 0, without one too
    CString get_pardiso_error(int error) const;  ///< text of an error number of the solver

    // --- Stages of a design run, in design units ----------------------------------------------------------------------
    /// Checks settings, criteria and materials of steel design; all faults are logged. 1 when all are valid.
    int CheckSteelDesignInputData();
    /// Fills steelResults member by member, on the threads of the solver with the results of one.
    /// @throws jxException  "error finding <record> <id>", abort by the user
    void MemberSteelDesign();
    /// Whether loads of a combination act across a member.
    /// @param flags  flags[0] along local y, flags[1] along local z: 1 or 0. A load in local axes counts even when it is
    ///               0, one in other axes when it has something along the axis; self weight counts, moments do not
    void CheckTransverseLoad(int* flags, const jxBm& bm, int comb) const;
    /// Cm of a member's end moments, 0.4 to 1: 1 with transverse load or without moments, else 0.6 + 0.4 of the smaller
    /// over the larger where they have one sign (single curvature), 0.6 - 0.4 of it where not (AISC 360-16, A-8-4).
    double CalcCm(double m1, double m2, int transverse) const;
    /// Cb of the unbraced segment in which x lies, 1 to 3; braces stand Lb apart from the start. Lb 0: one segment.
    /// @param curve  stations from 0 to 1
    /// @param L      length of the member, x in the same unit
    double CalcCb(const jxBmVMD& curve, double L, double Lb, double x) const;
    /// Cb of the segment from x1 to x2 by the moments at its quarter points, 1 to 3. They enter with their signs, which
    /// in double curvature gives more than AISC 360-16, F1-1, whose magnitudes stand with bConsistentDesign.
    double CalcSegmentCb(const jxBmVMD& curve, double L, double x1, double x2) const;

protected:
    /// Rewrites every number of model, loads and results from one unit set to the other; the units themselves stay.
    void ConvertUnits(const jxUnit& from, const jxUnit& to);
    /// Rebuilds links, the stiff bars that stand for the rigid diaphragms.
    /// @throws jxException when a diaphragm names a missing node or has no plane footprint
    void CreateDiaphragmLinks();
    /// Appends the links of one diaphragm: each of the first three nodes with every later one; none below two nodes.
    /// @param count   last link id given out, raised
    /// @param normal  of the diaphragm's plane, unit vector
    void CreateLinks(const std::vector<jxNd>& levelNodes, int& count, const jxPoint& normal);
    /// Adds the stiffness of the links to the matrix of data, when bRigidDiaphragms is set.
    void ProcessDiaphragmStiffness(jxSolutionData& data);
    /// Findings of the input check that take the elements' own rules: their axes, ends and shapes.
    void FindInElements(qvx::InputCheck& check);

private:
    friend class ConvertUnitsAccess;  // tests of the conversion alone
    friend class qvx::DesignRun;

    std::unique_ptr<qvx::SolverWindow> window_;
    std::unique_ptr<CjxStruct> savedInput_;
    void (*factorizationStarted_)(CjxStruct*) = nullptr;
    int solverThreads_ = 1;
    std::unique_ptr<qvx::DirectSolver> directSolver_;
};
