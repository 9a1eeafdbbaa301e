#pragma once

#include <array>
#include <cstddef>

#include "model/records/element_stress.h"
#include "model/records/result.h"

namespace qvx {

/// The numbers of a result record that superpose, in a fixed order: RecordValues<R>::kCount of them, read and written one
/// by one. Positions, ids and what follows from the numbers (principal values) are not among them.
template <class Record>
struct RecordValues;

template <>
struct RecordValues<jxResult6Val>
{
    static constexpr std::size_t kCount = 6;
    static constexpr const wchar_t* kName = L"nodal result";
    template <class R>
    static auto& At(R& r, std::size_t i)
    {
        return r.value[i];
    }
};

template <>
struct RecordValues<jxMultiDofConstraintForce>
{
    static constexpr std::size_t kCount = 2;
    static constexpr const wchar_t* kName = L"multi-DOF constraint force";
    template <class R>
    static auto& At(R& r, std::size_t i)
    {
        return r.force[i];
    }
};

template <>
struct RecordValues<jxVMD>
{
    static constexpr std::size_t kCount = 8;
    template <class R>
    static auto& At(R& r, std::size_t i)
    {
        constexpr double jxVMD::*kFields[] = {&jxVMD::Fx, &jxVMD::Fy, &jxVMD::Fz, &jxVMD::Mx,
                                              &jxVMD::My, &jxVMD::Mz, &jxVMD::Dy, &jxVMD::Dz};
        return r.*kFields[i];
    }
};

template <>
struct RecordValues<jxBmEndVMD>
{
    static constexpr std::size_t kCount = 2 * RecordValues<jxVMD>::kCount;
    static constexpr const wchar_t* kName = L"member end forces";
    template <class R>
    static auto& At(R& r, std::size_t i)
    {
        constexpr std::size_t kOfOneEnd = RecordValues<jxVMD>::kCount;
        return i < kOfOneEnd ? RecordValues<jxVMD>::At(r.start, i) : RecordValues<jxVMD>::At(r.end, i - kOfOneEnd);
    }
};

template <>
struct RecordValues<jxShellStress>
{
    static constexpr std::size_t kF = 15, kP = 25, kFm = 8, kFp = 12;
    static constexpr std::size_t kCount = kF + kP + kFm + kFp;
    static constexpr const wchar_t* kName = L"shell stress";
    template <class R>
    static auto& At(R& r, std::size_t i)
    {
        if (i < kF)
            return r.F[i / 3][i % 3];
        if (i < kF + kP)
            return r.P[(i - kF) / 5][(i - kF) % 5];
        return i < kF + kP + kFm ? r.fm[i - kF - kP] : r.fp[i - kF - kP - kFm];
    }
};

template <>
struct RecordValues<jxBrickStress>
{
    static constexpr std::size_t kS = 54, kNodal = 24;
    static constexpr std::size_t kCount = kS + kNodal;
    static constexpr const wchar_t* kName = L"brick stress";
    template <class R>
    static auto& At(R& r, std::size_t i)
    {
        return i < kS ? r.S[i / 6][i % 6] : r.f[i - kS];
    }
};

/// Only what names the item stays.
template <class Record>
void SetZero(Record& record)
{
    for (std::size_t i = 0; i < RecordValues<Record>::kCount; ++i)
        RecordValues<Record>::At(record, i) = 0;
}

/// to += factor * from, number by number.
template <class Record>
void AddScaled(Record& to, double factor, const Record& from)
{
    for (std::size_t i = 0; i < RecordValues<Record>::kCount; ++i)
        RecordValues<Record>::At(to, i) += factor * RecordValues<Record>::At(from, i);
}

}  // namespace qvx
