#pragma once

#include <vector>

#include "model/records/host_data.h"
#include "platform/cstring.h"
#include "platform/export.h"

/// The library of named response spectra, one for the process. It starts empty; LoadFile and SetSpectra fill it. It has
/// no lock: the analysis thread reads it.
///
/// The spectra file is binary and little-endian: int32 number of spectra, then per spectrum the name (128 UTF-16 code
/// units), int32 type, int32 number of points, and per point period and value as IEEE 754 doubles.
class QVXFEM_API CResponseSpectrumManager
{
public:
    CResponseSpectrumManager(const CResponseSpectrumManager&) = default;
    CResponseSpectrumManager& operator=(const CResponseSpectrumManager&) = default;
    ~CResponseSpectrumManager() = default;

    static CResponseSpectrumManager& Instance() { return m_Manager; }

    /// Replaces the list by that of a file.
    /// @return  1; 0 when the file cannot be opened, which a box says, or names no spectrum, which leaves the list as it
    ///          is; 0 too at a spectrum without points: those before it stay, it and those behind it are empty. A file
    ///          that ends too soon leaves what it has and zeroes.
    int LoadFile(const CString& path);
    /// Writes the list, also an empty one.
    /// @return  1; 0 when the file cannot be written, which a box says
    int SaveFile(const CString& path) const;

    const std::vector<jxSpectrum>& GetSpectra() const { return m_Spectra; }
    void SetSpectra(const std::vector<jxSpectrum>& spectra) { m_Spectra = spectra; }

    /// Value at a period [s], linear between the points and constant beyond them; 0 with fewer than two points.
    double GetValue(const jxSpectrum& spectrum, double period) const;
    /// The same of an item of the list; 0 when there is none of this index.
    double GetValue(int index, double period) const;
    /// False when there is no item of this index.
    bool FindSpectrum(jxSpectrum& out, int index) const;
    /// Index of the first item of this name, whatever its case; -1 when there is none.
    int FindSpectrum(const CString& name) const;
    /// Index of the item that has the name and, within 5e-7, the points of a spectrum; -1 when there is none. 0 for a
    /// spectrum without a name: it does not count as unknown.
    int CheckSpectrum(const jxSpectrum& spectrum) const;
    /// The first of base, base_1, base_2, ... base_9999 that no item of the list has; empty when all are taken.
    CString FindUniqueSpectrumName(const std::vector<jxSpectrum>& list, const CString& base) const;

private:
    CResponseSpectrumManager() = default;

    static CResponseSpectrumManager m_Manager;
    std::vector<jxSpectrum> m_Spectra;
};
