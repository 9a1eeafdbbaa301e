#pragma once

#include <vector>

#include "model/find_record.h"
#include "model/jx_struct.h"

namespace qvx {

inline constexpr unsigned char kSelectedBit = 1;

/// Which rows a report shows: all, or those of selected nodes, members, shells and bricks. What belongs to one of them
/// (a support, a load, a result) goes with it; constraints, diaphragms and area loads have a flag of their own.
/// @throws jxException "error finding <record> <id>" for what belongs to nothing
class Selection
{
public:
    Selection(const CjxStruct& model, int bSelectedOnly) : model_(model), isSelectedOnly_(bSelectedOnly != 0) {}

    /// Whether a record that has a flag of its own is shown.
    template <class Record>
    bool Shows(const Record& record) const
    {
        return !isSelectedOnly_ || (record.bSelected & kSelectedBit) != 0;
    }
    /// Whether what belongs to this node, member and so on is shown.
    bool ShowsNode(int id) const { return ShowsOwner(model_.nodes, id); }
    bool ShowsMember(int id) const { return ShowsOwner(model_.beams, id); }
    bool ShowsShell(int id) const { return ShowsOwner(model_.shell4s, id); }
    bool ShowsBrick(int id) const { return ShowsOwner(model_.bricks, id); }
    bool ShowsConstraint(int id) const { return ShowsOwner(model_.multiDofConstraints, id); }

    // As predicates of record lists.
    auto OfOwn() const
    {
        return [this](const auto& record) { return Shows(record); };
    }
    auto OfNode() const
    {
        return [this](const auto& record) { return ShowsNode(record.id); };
    }
    auto OfMember() const
    {
        return [this](const auto& record) { return ShowsMember(record.id); };
    }
    auto OfShell() const
    {
        return [this](const auto& record) { return ShowsShell(record.id); };
    }
    auto OfBrick() const
    {
        return [this](const auto& record) { return ShowsBrick(record.id); };
    }

private:
    template <class Record>
    bool ShowsOwner(const std::vector<Record>& records, int id) const
    {
        return !isSelectedOnly_ || Shows(FindById(records, id));
    }

    const CjxStruct& model_;
    bool isSelectedOnly_;
};

}  // namespace qvx
