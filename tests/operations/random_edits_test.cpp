// Random sequences of operations on a model that has every kind of record: whatever is done to it, nothing refers to
// what is not there, and lists stand by id.
#include <algorithm>
#include <functional>
#include <random>
#include <type_traits>

#include <gtest/gtest.h>

#include "operations/record_references.h"
#include "support/static_model.h"

namespace qvx::test {
namespace {

class RandomEdits : public testing::Test, public StaticModel
{
protected:
    explicit RandomEdits() { model.mergeTolerance = 0.3; }

    int Some(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
    template <class Record>
    int SomeId(const std::vector<Record>& records)
    {
        return records[random_() % records.size()].id;
    }

    // Nodes on a coarse lattice, some beside others, with every kind of record on them.
    void Build()
    {
        for (int i = 0; i < 40; ++i)
            Node(Some(5) + (Some(4) == 0 ? 0.2 : 0), Some(4), Some(3));
        for (int id = 1; id <= 40; ++id) {
            const auto node = [this] { return SomeId(model.nodes); };
            model.beams.push_back({.id = id, .node1 = node(), .node2 = node()});
            model.shell4s.push_back({.id = id, .node = {node(), node(), node(), node()}});
            if (id <= 10) {
                model.shell3s.push_back({.id = id, .node = {node(), node(), node()}});
                model.bricks.push_back(
                    {.id = id, .node = {node(), node(), node(), node(), node(), node(), node(), node()}});
            }
        }
        for (int i = 0; i < 20; ++i)
            AddBelongings();
        SortLists(model);
        model.RepaireData();
        SortLists(model);
    }

    // What hangs on nodes and elements, and what is made of nodes beside elements.
    void AddBelongings()
    {
        const int node = SomeId(model.nodes);
        const int beam = SomeId(model.beams);
        const int shell = SomeId(model.shell4s);
        const int brick = SomeId(model.bricks);
        const int shell3 = SomeId(model.shell3s);
        jxCaseLoad& loads = model.caseLoads[0];
        model.supports.push_back({.id = node, .flag = L"111000"});
        model.nodalSprings.push_back({.id = node});
        model.coupledSprings.push_back({.id = node});
        model.beamSprings.push_back({.id = beam});
        model.shell3Springs.push_back({.id = shell3});
        model.shell4Springs.push_back({.id = shell});
        model.releases.push_back({.id = beam, .start = L"000011"});
        loads.ndLoads.push_back({.id = node, .value = 1});
        loads.ptLoads.push_back({.id = beam, .dir = kY, .value = 1, .distance = 0.1 * Some(11)});
        loads.lnLoads.push_back({.id = beam, .dir = kY, .distance1 = 0.1 * Some(5), .value1 = 1, .value2 = 2});
        loads.bmThermalLoads.push_back({.id = beam, .dT = 1});
        loads.shell4ThermalLoads.push_back({.id = shell, .dT = 1});
        loads.brickThermalLoads.push_back({.id = brick, .dT = 1});
        loads.shell3SurfaceLoads.push_back({.id = shell3, .value = 1});
        loads.shell4SurfaceLoads.push_back({.id = shell, .value = 1});
        if (Some(4) == 0) {
            const auto other = [this] { return SomeId(model.nodes); };
            loads.areaLoads.push_back({.node = {node, other(), other(), other()}, .dir = kY, .value = 1});
            model.diaphragms.push_back({.id = 1, .type = 1, .node = {node, 0, 0, 0}});
            model.multiDofConstraints.push_back({.id = 1, .node = {node, other()}});
            model.masterSlaves.push_back({.id = node, .slave = other()});
            model.namedSelections.push_back(
                {.nodes = {node}, .beams = {beam}, .shell3s = {shell3}, .shell4s = {shell}, .bricks = {brick}});
        }
        model.derivedMasses.push_back({.id = node, .value = 1});
        model.additionalMasses.push_back({.id = node, .value = 1});
    }

    template <class Record>
    void SelectSome(std::vector<Record>& records)
    {
        for (Record& record : records)
            record.bSelected = static_cast<unsigned char>(Some(5) == 0);
    }

    // New ids in a random order, with gaps.
    template <class Record>
    void Shuffle(std::vector<Record>& records)
    {
        std::vector<int> ids;
        for (int i = 0; i < static_cast<int>(records.size()); ++i)
            ids.push_back(2 * i + 1 + Some(2));
        std::shuffle(ids.begin(), ids.end(), random_);
        for (std::size_t i = 0; i < records.size(); ++i)
            records[i].no = ids[i];
    }

    void CutSome()
    {
        model.SelectAll(0, 0);
        if (model.beams.size() > 300)
            return;
        SelectSome(model.beams);
        std::vector<double> pieces{0.5, 0.7};
        switch (Some(4)) {
        case 0:
            return model.ExplodeBeam(pieces, 0);
        case 1:
            return model.ExplodeBeam(pieces, 1);
        case 2:
            return model.CreateBeamRigidOffset(0.1, 0.2, 1);
        default:
            model.ExplodeSelectedBeamsAtNodes();
        }
    }

    void EditOnce()
    {
        int counts[3];
        switch (Some(14)) {
        case 0:
            model.MergeNodes();
            break;
        case 1:
            model.MergeBeams();
            break;
        case 2:
            model.MergeShell4s();
            break;
        case 3:
            model.MergeBricks();
            break;
        case 4:
            model.Merge(2);
            break;
        case 5:
            Shuffle(model.nodes);
            model.RenumberNodes();
            break;
        case 6:
            Shuffle(model.beams);
            model.RenumberBeams();
            break;
        case 7:
            Shuffle(model.shell4s);
            model.RenumberShells();
            break;
        case 8:
            Shuffle(model.bricks);
            model.RenumberBricks();
            break;
        case 9:
            model.RemoveInvalidElements(counts[0], counts[1], counts[2]);
            break;
        case 10:
            model.RemoveOrphanedNodes();
            break;
        case 11:
            SelectSome(model.beams);
            SelectSome(model.shell4s);
            model.ReverseNodeOrder();
            break;
        case 12:
            if (model.nodes.size() < 200)
                model.InsertNodesAtBeamIntersectionsForBeams(model.beams);
            break;
        default:
            CutSome();
        }
    }

    // Ids of records in their lists, by what a reference names.
    bool Exists(Reference names, int id) const
    {
        switch (names) {
        case Reference::Node:
            return FindOrNull(model.nodes, id) != nullptr;
        case Reference::Member:
            return FindOrNull(model.beams, id) != nullptr;
        case Reference::Shell3:
            return FindOrNull(model.shell3s, id) != nullptr;
        case Reference::Shell4:
            return FindOrNull(model.shell4s, id) != nullptr;
        case Reference::Brick:
            return FindOrNull(model.bricks, id) != nullptr;
        default:
            return true;
        }
    }

    int CountLost()
    {
        int nLost = 0;
        ForEachRecordList(model, [&](auto& records, const ValueRule& rule) {
            if constexpr (requires { records.front().id; })
                if (rule.isSortedById)
                    nLost += !std::is_sorted(records.begin(), records.end());
            for (auto& record : records)
                VisitReferences(record, rule, [&](int& id, Reference names, Hold) { nLost += !Exists(names, id); });
        });
        return nLost;
    }

    std::size_t CountRecords()
    {
        std::size_t n = 0;
        ForEachRecordList(model, [&n](auto& records, const ValueRule&) { n += records.size(); });
        return n;
    }

    std::mt19937_64 random_{2026};
};

TEST_F(RandomEdits, LeaveNoReferenceToWhatIsNotThere)
{
    for (int round = 0; round < 25; ++round) {
        CjxStruct fresh;
        model.copy_input(fresh);
        model.derivedMasses.clear();
        model.loadCases.push_back({.id = 1, .label = L"LOAD"});
        model.caseLoads.emplace_back();
        model.mergeTolerance = 0.3;
        model.bInteractive = 0;
        Build();
        ASSERT_EQ(CountLost(), 0);
        for (int edit = 0; edit < 400; ++edit) {
            EditOnce();
            ASSERT_EQ(CountLost(), 0) << "round " << round << ", edit " << edit;
        }
        const std::size_t before = CountRecords();
        model.RepaireData();
        EXPECT_EQ(CountRecords(), before) << "nothing was there to be dropped";
    }
}

}  // namespace
}  // namespace qvx::test
