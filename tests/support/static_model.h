#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "support/model_builder.h"
#include "support/model_log.h"
#include "support/recording_host.h"

namespace qvx::test {

/// Host that a model needs from its construction on.
struct HostFirst
{
    RecordingHost host;
};

/// A model under test with its host, window and log. One material and one section stand ready; the units are the
/// internal ones (inch, pound), so that numbers pass unconverted.
class StaticModel : public HostFirst, public ModelBuilder
{
public:
    explicit StaticModel(int solverType = DoubleSkyline)
    {
        model.solverType = solverType;
        model.mergeTolerance = 1e-6;
        Material(1000, 0.25);
        Section({.A = 10, .Iz = 100, .Iy = 50, .J = 20});
        model.OnAddMoreLoadCombination();
        model.set_solver_wnds(&window);
    }

    using ModelBuilder::Node;
    int Node(const jxPoint& p) { return Node(p.x, p.y, p.z); }
    jxBm& Beam(int id) { return model.beams.at(static_cast<std::size_t>(id) - 1); }
    jxSupt& SupportAt(int node)
    {
        return *std::find_if(model.supports.begin(), model.supports.end(), [&](auto& s) { return s.id == node; });
    }
    /// @param springs  nodalSprings, beamSprings or shell4Springs of the model
    jxSpring& Spring(std::vector<jxSpring>& springs, int id, const std::vector<double>& k,
                     const wchar_t* flag = L"000000")
    {
        jxSpring spring{.id = id};
        SetText(spring.flag, flag);
        std::copy(k.begin(), k.end(), spring.k);
        return InsertSorted(springs, spring);
    }
    jxCoupledSpring& CoupledSpring(int node) { return InsertSorted(model.coupledSprings, jxCoupledSpring{.id = node}); }
    /// factor1 * u(node1, dof1) = factor2 * u(node2, dof2)
    void Constraint(int node1, int dof1, double factor1, int node2, int dof2, double factor2)
    {
        const int id = static_cast<int>(model.multiDofConstraints.size()) + 1;
        model.multiDofConstraints.push_back(
            {.id = id, .node = {node1, node2}, .dof = {dof1, dof2}, .factor = {factor1, factor2}});
    }

    /// Runs the model: text of the exception that leaves the run; empty when there is none.
    std::wstring FaultOfRun()
    {
        try {
            model.ExecuteStatic();
        } catch (const jxException& fault) {
            return fault.GetText();
        }
        return L"";
    }
    const jxCombResult& Result(std::size_t comb = 0) const { return model.combResults.at(comb); }
    /// Value of the record with this id in a family of results; not a number when there is none.
    static double ValueOf(const std::vector<jxResult6Val>& family, int id, int dof)
    {
        const auto it = std::find_if(family.begin(), family.end(), [id](const jxResult6Val& r) { return r.id == id; });
        return it == family.end() ? std::nan("") : it->value[dof];
    }

    RecordingWindow window;
    ModelLog log{model};

private:
    template <class Record>
    static Record& InsertSorted(std::vector<Record>& records, const Record& record)
    {
        return *records.insert(std::upper_bound(records.begin(), records.end(), record), record);
    }
};

}  // namespace qvx::test
