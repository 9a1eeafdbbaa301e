#pragma once

#include <functional>
#include <vector>

#include "model/records/design_criteria.h"
#include "model/records/design_result.h"
#include "platform/export.h"
#include "rc/interaction_surface.h"

/// Door to the concrete design library: tables of bars, and the interaction surfaces of all sections of a run.
class QVXFEM_API CjxRcManager
{
public:
    using Message = std::function<void(const wchar_t*)>;
    using ListMessage = std::function<void(const wchar_t*, const wchar_t*)>;

    /// @param status  progress of Execute
    /// @param list    what it begins and ends
    void SetCallbacks(Message status, ListMessage list);
    void SetCode(int code) { rules_.code = code; }
    /// @param angleSteps   curves of a surface, around the section
    /// @param upperSteps   points of a curve from pure compression to the tension-controlled limit
    /// @param lowerSteps   and from there to pure tension
    void SetSolverSteps(int angleSteps, int upperSteps, int lowerSteps);
    void SetExcludeDisplaced(int isExcluded) { rules_.isDisplacedExcluded = isExcluded != 0; }
    /// @throws std::out_of_range when there is no such table
    void SetCurrentBarDatabase(int current, const std::vector<jxBarDatabase>& databases);
    /// Threads of Execute; the surfaces are those of one thread.
    void SetThreads(int threads) { threads_ = threads; }
    void AddSection(const jxConcreteSection& section) { sections_.push_back(section); }
    /// Forms the surface of every section. Between batches of them status is called: it may throw to stop.
    void Execute();
    std::vector<P_M_Sect>& GetPM_Sect() { return surfaces_; }
    /// The sections in the order of their surfaces, areas of their bars as the current table has them.
    std::vector<jxConcreteSection>& GetSect() { return sections_; }

    /// Whether a load lies within the surface.
    /// @param ratio  demand over capacity on the ray through the load, or over the cap of pure compression; 999.9 when
    ///               the ray meets no surface
    static bool CheckCapacity(double& ratio, const std::vector<P_M_Int>& surface, const jxSectionLoad& load);

    /// Reads the tables of reinforcing bars from a file (ReadBarTables).
    /// @param databases  receives the tables in the order of the file, in inches
    /// @param current    receives the index of the table in use, -1 when the file has no table
    /// @return           false, with both as they were, when the file or one of its lines cannot be read
    static bool bLoadBarDatabase(std::vector<jxBarDatabase>& databases, int& current, const wchar_t* path);

private:
    void TakeBarAreas();

    Message status_;
    ListMessage list_;
    qvx::SurfaceRules rules_;
    int threads_ = 1;
    jxBarDatabase bars_;
    std::vector<jxConcreteSection> sections_;
    std::vector<P_M_Sect> surfaces_;
};
