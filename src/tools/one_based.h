#pragma once

#include <cassert>
#include <cstddef>
#include <span>

namespace qvx {

/// View of an array whose positions count from 1: slot 0 of the storage is unused.
template <class T>
class OneBased
{
public:
    OneBased() = default;
    /// @param storage  n + 1 values, the first unused
    explicit OneBased(std::span<T> storage) : storage_(storage) {}

    T& operator[](std::ptrdiff_t position) const
    {
        assert(position >= 1 && position < static_cast<std::ptrdiff_t>(storage_.size()));
        return storage_[static_cast<std::size_t>(position)];
    }
    std::ptrdiff_t size() const { return static_cast<std::ptrdiff_t>(storage_.size()) - 1; }

private:
    std::span<T> storage_;
};

}  // namespace qvx
