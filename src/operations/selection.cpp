#include <utility>

#include "operations/record_references.h"
#include "operations/selection_bits.h"

namespace {

using qvx::kHiddenBit;
using qvx::kSelectedBit;

template <class Records>
void Mark(Records& records, bool isSelected, bool isInverted)
{
    for (auto& record : records) {
        const unsigned bits = record.bSelected;
        if ((bits & kHiddenBit) != 0)
            continue;
        const bool isNow = isInverted ? (bits & kSelectedBit) == 0 : isSelected;
        record.bSelected = static_cast<unsigned char>(isNow ? bits | kSelectedBit : bits & ~unsigned{kSelectedBit});
    }
}

// Whether a record names nodes or elements, by the catalogue: that is what is drawn with them and can be picked.
template <class Record>
bool IsOfNodesOrElements(const qvx::ValueRule& list)
{
    bool names = false;
    const auto look = [&](qvx::Reference to) {
        switch (to) {
        case qvx::Reference::Node:
        case qvx::Reference::NodeOrNone:
        case qvx::Reference::Member:
        case qvx::Reference::Shell3:
        case qvx::Reference::Shell4:
        case qvx::Reference::Brick:
            names = true;
            break;
        default:
            break;
        }
    };
    look(list.idRefersTo);
    qvx::ForEachField(qvx::FieldsOf<Record>::list, [&](const auto& field) { look(field.rule.refersTo); });
    return names;
}

template <class Element>
void ReverseSelected(std::vector<Element>& elements, void (*reverse)(Element&))
{
    for (Element& element : elements)
        if ((element.bSelected & kSelectedBit) != 0)
            reverse(element);
}

}  // namespace

void CjxStruct::SelectAll(int select, int reverse)
{
    const auto mark = [select, reverse](auto& records) { Mark(records, select != 0, reverse != 0); };
    mark(nodes);
    mark(beams);
    mark(shell3s);
    mark(shell4s);
    mark(bricks);
    if (select != 0)
        return;
    qvx::ForEachRecordList(*this, [&mark](auto& records, const qvx::ValueRule& rule) {
        using Record = typename std::remove_cvref_t<decltype(records)>::value_type;
        if constexpr (!qvx::IsElement<Record> && requires(Record record) { record.bSelected; })
            if (IsOfNodesOrElements<Record>(rule))
                mark(records);
    });
}

void CjxStruct::ReverseNodeOrder()
{
    ReverseSelected<jxBm>(beams, [](jxBm& b) { std::swap(b.node1, b.node2); });
    ReverseSelected<jxShell3>(shell3s, [](jxShell3& s) { std::swap(s.node[0], s.node[1]); });
    ReverseSelected<jxShell4>(shell4s, [](jxShell4& s) {
        std::swap(s.node[0], s.node[1]);
        std::swap(s.node[2], s.node[3]);
    });
    ReverseSelected<jxBrick>(bricks, [](jxBrick& b) { std::swap_ranges(b.node, b.node + 4, b.node + 4); });
    SelectAll(0, 0);
}
