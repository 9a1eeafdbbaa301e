#pragma once

namespace qvx {

/// Bits of bSelected.
enum SelectionBits : unsigned char { kSelectedBit = 1, kHiddenBit = 2 };

/// Whether an operation on selected records takes this one: selected, and not hidden.
template <class Record>
bool IsPicked(const Record& record)
{
    return (record.bSelected & kSelectedBit) != 0 && (record.bSelected & kHiddenBit) == 0;
}

}  // namespace qvx
