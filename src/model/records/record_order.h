#pragma once

#include <concepts>
#include <type_traits>

namespace qvx {

/// A record that the user knows by its number. The fields that records share:
///   id         the number that the user sees, from 1 and unique in its vector; of a spring, support, release or load
///              the number of the node or element that it belongs to
///   no         position in its vector, from 1, which the numbering of a run writes
///   bSelected  bit 0 selected, bit 1 hidden, by the host
///   label      zero-terminated; named by other records where ids are not used
///   excluded   nonzero: the element gives no stiffness and has no results
///   name()     of the kind of record, in messages
/// A reference to another record is its id. Numbers are in the units of the model, a unit in brackets names the
/// quantity (unit.h); angles are radians always.
template <class R>
concept RecordWithId = std::is_class_v<R> && std::same_as<decltype(R::id), int>;

}  // namespace qvx

/// Order by id, which every vector of such records keeps: lookups are binary searches.
template <qvx::RecordWithId R>
bool operator<(const R& a, const R& b)
{
    return a.id < b.id;
}
