#pragma once

#include <cassert>
#include <vector>

#include "dynamics/record_values.h"
#include "platform/export.h"
#include "tools/modal_rules.h"

/// The modal rules on result records: each number of the record is combined by itself.
/// @param modes     the record of each mode, in the order of the modes, at least one
/// @param omegas    circular frequency per mode [rad/s]
/// @param damping   damping ratio, for the complete quadratic combination
/// @param dominant  mode whose values give the signs, from 0; -1: no result is negative
/// @return  a record with the id (position, nodes, DOFs) of the first mode's
/// Source of the rules: tools/modal_rules.h
template <class Record>
QVXFEM_API Record calc_modal_cqc(const std::vector<Record>& modes, const std::vector<double>& omegas, double damping,
                                 int dominant);
template <class Record>
QVXFEM_API Record calc_modal_srss(const std::vector<Record>& modes, const std::vector<double>& omegas, double damping,
                                  int dominant);
template <class Record>
QVXFEM_API Record calc_modal_abssum(const std::vector<Record>& modes, const std::vector<double>& omegas, double damping,
                                    int dominant);

namespace qvx {

/// total += factor times the records of one item combined over the modes. A mode without the record (null) adds nothing.
template <class Record>
void AddCombined(Record& total, double factor, const std::vector<const Record*>& modes, const ModalCombiner& rule)
{
    assert(modes.size() == rule.Modes());
    std::vector<double> values(modes.size());
    for (std::size_t i = 0; i < RecordValues<Record>::kCount; ++i) {
        for (std::size_t mode = 0; mode < modes.size(); ++mode)
            values[mode] = modes[mode] == nullptr ? 0.0 : RecordValues<Record>::At(*modes[mode], i);
        RecordValues<Record>::At(total, i) += factor * rule.Combine(values);
    }
}

}  // namespace qvx
