#pragma once

#include <cstddef>
#include <vector>

namespace qvx {

/// Asks the system for its large pages under memory that is still to be touched: filling an array of many megabytes is
/// then no longer ruled by a page fault every 4 KB, nor scattered access to it by address translation. Small arrays and
/// systems without large pages are left as they are.
void PreferLargePages(const void* memory, std::size_t bytes);

/// Makes room for n items without touching it, in large pages where the system has them. The items stay as they are;
/// room that is there already is not given back. std::bad_alloc and std::length_error as reserve throws them.
template <class T>
void ReserveLarge(std::vector<T>& items, std::size_t n)
{
    if (n <= items.capacity())
        return;
    items.reserve(n);
    PreferLargePages(items.data() + items.size(), (n - items.size()) * sizeof(T));
}

}  // namespace qvx
