#pragma once

#include <fstream>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "model/records/comb_result.h"
#include "model/records/design_criteria.h"
#include "model/records/design_result.h"
#include "model/records/element.h"
#include "model/records/envelope.h"
#include "model/records/host_data.h"
#include "model/records/load.h"
#include "model/records/node.h"
#include "model/records/property.h"
#include "model/records/spring.h"
#include "model/records/unit.h"
#include "platform/cstring.h"
#include "platform/cwnd.h"
#include "platform/export.h"
#include "quad/double128.h"
#include "tools/jx_exception.h"
#include "tools/jx_point.h"

class CjxBmGroup;
class CjxShell4Group;
class CjxBrickGroup;
struct jxSolutionData;
namespace qvx {
class DirectSolver;
class MessageRecorder;
class StaticRun;
struct RecordedMessage;
}  // namespace qvx

enum SolverType : int { DoubleSkyline = 0, QuadSkyline = 1, DoubleSparse = 2 };

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
/// units while the host edits, in inch, pound, radian, degree F during a run (bInSolution). Analysis entries return 1
/// on success and 0 when the input is refused; every other failure leaves as jxException and leaves the model in
/// internal units with the saved input in place, for RestoreInputData to bring back.
class QVXFEM_API CjxStruct
{
public:
    CjxStruct();
    CjxStruct(const CjxStruct&) = delete;
    CjxStruct& operator=(const CjxStruct&) = delete;

    // --- Host hooks -----------------------------------------------------------------------------------------------
    virtual bool IsEmptyDocument() const;
    virtual void OnAddMoreLoadCase();         ///< resizes caseLoads to the number of load cases
    virtual void OnAddMoreLoadCombination();  ///< resizes combResults to the number of load combinations
    virtual ~CjxStruct();

    // --- Host channel (model/messages.cpp) ------------------------------------------------------------------------
    unsigned char bInteractive = 1;  ///< message boxes may be shown
    int bEmptyDocument = 1;          ///< of the host: nothing was entered yet

    /// Sets the window that receives messages, resets counter and abort flag, posts and logs an empty status line.
    /// Nothing is posted without a window or after an abort; the log goes on.
    void set_solver_wnds(CWnd* window);
    void clear_solver_wnds();
    /// Posts "[HH:MM:SS] text" and status as a list line (message 1124) and logs "text - status", or text alone when
    /// there is no status.
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
    void ClearCounterString();
    /// Starts a log entry with "[date time]: " and returns the stream; the host opens it (fileLog).
    std::ofstream& GetFileLog();
    /// One whole log entry: prefix, text, end of line, flush.
    void LogLine(const wchar_t* text);
    /// Lists physical memory, total and available, and what the run needs, in MB. Returns 1; refuses nothing.
    int memcheck(std::ofstream& log, int kilobytes);
    int GetNumberOfCPUs() const;
    std::ofstream fileLog;  ///< opened by the host before the first analysis
    CString documentPath;

    // --- Saved input, clearing, repair (model/saved_input.cpp, clear_results.cpp, repair.cpp) -----------------------
    /// Copies what the host entered: no links, no derived masses, no bar databases, nothing of results or channels.
    /// units and bInSolution come along: they tell in which units the copied numbers are.
    CjxStruct& copy_input(const CjxStruct& other);
    /// Keeps one copy of the input, in the units it has now; the copy before is dropped.
    void SaveInputData();
    /// Copies the saved input back, if there is one, and nothing else. After a failed run the input is again in the
    /// model's units and bInSolution 0. Results that the run left are in internal units still: clear them.
    void RestoreInputData();
    bool HasSavedInput() const { return savedInput_ != nullptr; }
    void ClearResult();
    /// Load vectors and all that followed from them, and the file "<documentPath>.uni" of the host.
    void ClearStaticResult();
    void ClearFrequencyResult();
    void ClearResponseSpectrumResult();
    void ClearConcreteResult();
    void ClearSteelResult();
    void ClearSolverData();
    bool HasStaticSolution() const;
    bool EigenSolution() const;
    bool ResponseSpectrumSolution() const;
    int GetSolver() const { return solverType; }
    void SetSolverType(int type) { solverType = type; }
    /// Clears all results, adds missing default records (label "Default", id 1), drops records that refer to nothing
    /// and resets stored indices beyond the end of their vector to 0.
    void RepaireData();
    /// Input checks; 1 when the model may be solved. Derives bNonlinear and linearCombCount.
    /// @param mode     0 static, 1 frequency
    /// @param bSilent  leaves the length variation questions out
    int CheckInputData(int mode, bool bSilent);

    // --- Static run (solver/) ---------------------------------------------------------------------------------------
    int ExecuteStatic();
    void AutoRenumberNodesAndElements();
    int ProcessElementConnectivity(jxSolutionData& data);
    void GetIds();
    void FindSuppressedDofs();
    /// Node id and 1-based DOF of an equation; both stay as they are when the equation is not found.
    void FindDof(int& node, int& dof, int nNodes, int equation) const;
    void AllocateStiffnessMemory(jxSolutionData& data, int mode, int nTerms);
    void ProcessElementGroupStiffness(jxSolutionData& data, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br,
                                      int comb);
    double ComputeMaxStiffnessTerm(jxSolutionData& data) const;
    void CheckDiagonalStiffnessTerm(jxSolutionData& data);
    void CheckSolutionStability(jxSolutionData& data);
    void ProcessBoundary(jxSolutionData& data, qvx::double128 penalty, int comb);
    void ProcessForcedDisplacements(jxSolutionData& data, qvx::double128 penalty, int comb);
    void ProcessNodalAndElementLoads(int comb, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br);
    void ProcessNdLoads(int comb);
    static void GetCoupledSpringStiffness(double k[6][6], const jxCoupledSpring& spring);
    bool CheckNonzeroLoadVector(qvx::double128* load);
    /// Equation of a node's DOF (position from 1, dof from 0), 0 when it has none.
    int Equation(int nodePosition, int dof) const;
    /// Index of the load case with this label, exact, first match; -1 when there is none.
    int FindLoadCase(const wchar_t* label) const;

    void InitializeComb(int comb);
    bool CheckNonlinearStop(int iteration, int comb, CjxBmGroup& bm);
    bool IsSpringFailed(jxSpring& spring, int dof, jxResult6Val& displacement, bool bHaveResult);
    void SetNonlinearElementsFailed(int changed) { bElementStateChanged = changed; }
    double GetBeamAverageAxialForce(int comb);

    void Output_All(int comb, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br);
    void AllDisplacement(int comb);
    void AllSuptReactions(qvx::double128 penalty, int comb);
    void AllMultiDofConstraintForces(qvx::double128 penalty, int comb);
    void AllNodalSpringReactions(int comb);
    void AllNodalCoupledSpringReactions(int comb);
    void AllBeamSpringReactions(int comb);
    void AllShell4SpringReactions(int comb);
    void _SuptReactions(double r[6], const jxSupt& support, qvx::double128 penalty, int comb);
    void _MultiDofConstraintForces(jxMultiDofConstraintForce& out, const jxMultiDofConstraint& constraint,
                                   qvx::double128 penalty, int comb);
    void _SpringReactions(double r[6], int* nodes, int nNodes, const jxSpring& spring, int comb);
    void CalcModalCombinationResult();  ///< nothing until a spectrum run has filled its results
    /// Envelope of the member curves over the selected combinations, one record per member.
    void CalcMaxBeamVMD(std::vector<jxMaxBmVMD>& out, const std::vector<bool>& selection) const;
    jxMaxVMD GetMaxVMD_At(const std::vector<jxMaxVMD>& curve, double x) const;
    void CalcRcBeamEnvelop();  ///< concreteEnvelope over the combinations marked for concrete
    void CalcRcWoodArmerMoment();

    // --- Sparse run (solver/sparse_*.cpp) -----------------------------------------------------------------------------
    int ExecuteStaticSparse();
    /// Threads (profile integer SolverCPUs) and, out of core, the solver's configuration file in the current folder.
    void configure_pardiso();
    int SolverThreads() const { return solverThreads_; }  ///< of the last sparse run; 1 before
    /// Hands out the compressed stiffness, arrays that belong to data, and returns its largest term, 0 at least.
    double prepare_pardiso(double*& a, int*& ia, int*& ja, jxSolutionData& data);
    int pardiso_factorize(jxSolutionData& data, int n, double* a, int* ia, int* ja);
    int pardiso_substitution(double* a, int* ia, int* ja, qvx::double128* load);
    /// The same for several load vectors at once.
    int pardiso_substitution_many(double* a, int* ia, int* ja, const std::vector<qvx::double128*>& loads);
    int pardiso_delete(int* ia, int* ja);
    CString get_pardiso_error(int error) const;
    void ProcessBoundarySparse(jxSolutionData& data, double* a, int* ia, double penalty, int comb);
    void CheckDiagonalStiffnessTermSparse(jxSolutionData& data, double* a, int* ia);
    double ComputeMaxStiffnessTermSparse(jxSolutionData& data) const;
    double PreProcessMultiDofConstraintStiffness(jxSolutionData& data);
    void PreProcessCoupledSpringStiffness(jxSolutionData& data);
    /// The callback opens a progress window in its own time and stores it in progressWindow: the factorisation waits for
    /// it, then posts message 1125 once and 1124 with percent and thread as it goes on.
    void SetPardisoFactorizationStartedCallback(void (*callback)(CjxStruct*));
    CWnd* progressWindow = nullptr;
    /// Library behind the last sparse run, "PARDISO" or "MUMPS"; empty before one.
    CString SparseSolverName() const;

    // --- Element results and loads (elements/) ------------------------------------------------------------------------
    void GetBeamLoads(std::vector<jxPtLoad>& pts, std::vector<jxLnLoad>& lines, int id, int comb) const;
    void ConvertAllLocalLoadsToGlobalLoads();
    void AllBeamEndForces(CjxBmGroup& group, int comb);
    void AllBeamSegmental(int comb);
    /// Normal stresses of the members whose section is regular or in a table; the others are left out.
    /// @param comb  combination index, -1 for the modal result
    std::vector<jxBmStress> GetBeamStresses(int comb) const;
    jxVMD GetVMD_At(std::vector<jxVMD> curve, double x) const;
    void AllShell4Stresses(CjxShell4Group& group, int comb);
    void AverageShellStresses(CjxShell4Group& group, int comb);
    void AllBrickStresses(CjxBrickGroup& group, int comb);
    void AverageBrickStresses(CjxBrickGroup& group, int comb);

    // --- Rigid diaphragms and rigid links (operations/) --------------------------------------------------------------
    /// Nodes on the level of a diaphragm in a coordinate plane, in the order of the model.
    /// @param axis  receives the coordinate held constant (0 X, 1 Y, 2 Z); stays as it is for an unknown type
    void GetRegularDiaphragmNodes(std::vector<jxNd>& levelNodes, jxNd& reference, int& axis,
                                  const jxDiaphragm& d) const;
    /// Section of members that act as rigid links ("RIGID_LINK"): 100,000 times the model's largest area and inertia.
    jxSect GetRigidLinkSection() const;
    /// Adds the section "RIGID_LINK"; false when the model has one.
    bool SafeCreateRigidLinkSection();

    // --- Document ---------------------------------------------------------------------------------------------------
    jxUnit units;
    int bInSolution = 0;  ///< numbers are in internal units
    CString modelName;
    CString company;
    CString engineer;
    CString reserved;
    jxPoint origin;        ///< of the host's drawing grid [length]
    int gridPlane = 2;     ///< of the host's drawing grid
    CString gridLists[3];  ///< distances of the host's grid lines, "count@value,..." [length]
    CString notes[3];
    std::vector<jxNd> gridNodes;  ///< of the host's drawing grid [length]

    // --- Analysis settings ------------------------------------------------------------------------------------------
    int bThinPlate = 0;
    int bIncompatibleMembrane = 1;
    int bShearDeformation = 1;
    int bRigidDiaphragms = 1;
    int bStiffnessFactors = 0;
    int maxNonlinearIterations = 10;
    double pDeltaTolerance = 0.5;  ///< [%]
    int bAverageStresses = 1;      ///< 0 none, 1 all shells at a node, 2 shells of equal axes
    double eigenTolerance = 0.001;
    int numberOfModes = 1;
    int maxSubspaceIterations = 18;
    int iterationVectors = 8;
    int bLoadsToMasses = 1;
    int modelType = Frame3D;
    int dofSuppressed[6] = {};
    double mergeTolerance = 0.01;  ///< [length]
    int numberOfSegments = 20;
    double roundOffThreshold = 1e-10;
    double shellOzFactor = 1e-7;
    double diaphragmStiffnessFactor = 10000.0;
    int bOutOfCore = 0;
    int massLoadComb = 0;
    int currentLoadCase = 0;
    int selfWeightCase = 0;         ///< index of the load case that carries self weight
    int selfWeightDir = 1;          ///< 0 X, 1 Y, 2 Z
    double selfWeightFactor = 0.0;  ///< its sign is the sign of the load along selfWeightDir
    int bLockModel = 0;
    int solverType = DoubleSparse;
    int bZVertical = 0;
    int bSignedShearAngle = 0;      ///< MITC4 shear directions by signed angles at the point itself
    int bConsistentMechanics = 0;   ///< releases, heating and constraints as the mechanics have them
    int bReactivateOneWay = 0;      ///< one-way members and springs come back when they would act
    int bContinueAfterFailure = 0;  ///< a combination that fails does not end the run

    // --- Model ------------------------------------------------------------------------------------------------------
    int selectedMaterial = 0;
    int selectedSection = 0;
    int selectedThickness = 0;
    std::vector<jxMat> materials;
    std::vector<jxSect> sections;
    std::vector<jxThick> thicknesses;
    std::vector<jxThick> namedLengths;  ///< t in [length]
    std::vector<jxSupt> supports;
    std::vector<jxNd> nodes;
    std::vector<jxBm> beams;
    std::vector<jxShell4> shell4s;
    std::vector<jxShell3> shell3s;
    std::vector<jxBrick> bricks;
    std::vector<jxLink> links;  ///< generated
    std::vector<jxSpring> nodalSprings;
    std::vector<jxCoupledSpring> coupledSprings;
    std::vector<jxSpring> beamSprings;
    std::vector<jxSpring> shell3Springs;
    std::vector<jxSpring> shell4Springs;
    std::vector<jxRels> releases;
    std::vector<jxMasterSlave> masterSlaves;
    std::vector<jxLoadCase> loadCases;
    std::vector<jxLoadComb> loadCombs;
    std::vector<jxCaseLoad> caseLoads;
    std::vector<jxNdLoad> derivedMasses;     ///< generated by a frequency run
    std::vector<jxNdLoad> additionalMasses;  ///< [force s^2/length], [force s^2 length]
    std::vector<jxDiaphragm> diaphragms;
    std::vector<jxMultiDofConstraint> multiDofConstraints;
    std::vector<jxNamedSelection> namedSelections;

    // --- Design criteria and settings -------------------------------------------------------------------------------
    jxDesignSettings design;
    std::vector<jxBmRcCrit> beamRcCriteria;
    std::vector<jxColRcCrit> columnRcCriteria;
    std::vector<jxPlateRcCrit> plateRcCriteria;
    std::vector<jxSteelCrit> steelCriteria;
    std::vector<jxBarDatabase> rebarDatabases;
    int currentRebarDatabase = -1;

    // --- Spectra ----------------------------------------------------------------------------------------------------
    int bSignedModalResults = 0;  ///< modal rules get the dominant mode of each direction
    int bPerformSpectrum = 0;     ///< a frequency run goes on to the response to the spectra
    double dampingRatio = 0.05;
    double spectrumFactor[3] = {1.0, 0.0, 0.3};  ///< of X, Y, Z; a direction takes part when it is not 0
    int modalCombination = 0;                    ///< 0 CQC, 1 SRSS, 2 absolute sum
    jxSpectrum spectra[3];
    jxMesh mesh;

    // --- Solver state -----------------------------------------------------------------------------------------------
    double penaltyFactor = 100000.0;
    qvx::double128 penaltyStiffness;
    int numberOfEquations = 0;
    std::vector<int> idTable[6];                           ///< per DOF: equation by 1-based node position, or 0
    std::vector<std::vector<qvx::double128>> loadVectors;  ///< per combination, 1-based; displacements after a solve
    int bNonlinear = 0;
    int linearCombCount = 0;
    int bElementStateChanged = 0;

    // --- Results ----------------------------------------------------------------------------------------------------
    std::vector<jxCombResult> combResults;
    std::vector<jxCombOutcome> combOutcomes;  ///< per combination of the last static run
    int digitsLost = 0;                       ///< in the worst factorisation of the last static run
    std::vector<jxMaxBmVMD> concreteEnvelope;
    std::vector<jxWoodArmer> woodArmer;
    std::vector<jxBmRcResult> concreteBeams;
    std::vector<jxColRcResult> concreteColumns;
    std::vector<jxRcShearResult> concreteShear;
    std::vector<jxPlateRcResult> concretePlates;
    std::vector<jxSteelResult> steelResults;
    std::vector<jxEigenResult> eigenResults;
    std::vector<jxResponseSpectrumResult> spectrumResults;
    jxCombResult modalResult;

protected:
    /// Rewrites every number of model, loads and results from one unit set to the other; the units themselves stay.
    void ConvertUnits(const jxUnit& from, const jxUnit& to);
    /// Rebuilds links, the stiff bars that stand for the rigid diaphragms.
    /// @throws jxException when a diaphragm names a missing node or has no plane footprint
    void CreateDiaphragmLinks();
    void CreateLinks(const std::vector<jxNd>& levelNodes, int& count, const jxPoint& normal);
    void ProcessDiaphragmStiffness(jxSolutionData& data);

private:
    friend class ConvertUnitsAccess;  // tests of the conversion alone
    friend class qvx::StaticRun;
    friend class qvx::MessageRecorder;

    bool MayPost() const { return solverWindow_ != nullptr && !bAborted_; }
    bool Record(int kind, const wchar_t* text, const wchar_t* status);

    void WaitForProgressWindow();
    void PostFactorizationPercent(int percent, int thread);
    bool IsToGoOn();
    void ThrowIfAborted() const;

    CWnd* solverWindow_ = nullptr;
    int messageCounter_ = 0;
    bool bAborted_ = false;
    std::mutex counterLock_;
    std::map<int, std::unique_ptr<CString>> counterStrings_;
    std::unique_ptr<CjxStruct> savedInput_;
    std::vector<qvx::RecordedMessage>* recording_ = nullptr;
    void (*factorizationStarted_)(CjxStruct*) = nullptr;
    int solverThreads_ = 1;
    std::unique_ptr<qvx::DirectSolver> directSolver_;
};
