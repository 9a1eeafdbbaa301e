#include "dynamics/response_spectrum_manager.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <system_error>

#include "platform/atomic_file.h"
#include "platform/file_error.h"
#include "platform/host_services.h"
#include "platform/wide_path.h"
#include "tools/jx_point.h"

CResponseSpectrumManager CResponseSpectrumManager::m_Manager;

namespace {

constexpr std::size_t kNameUnits = std::size(jxSpectrum().name);
constexpr std::uintmax_t kSpectrumBytes = 2 * kNameUnits + 4 + 4;
constexpr std::uintmax_t kPointBytes = 16;

// A count in a damaged file must not take the machine's memory: beyond these it has to have its bytes in the file.
constexpr std::uintmax_t kSpectraOnTrust = 10000;
constexpr std::uintmax_t kPointsOnTrust = 1000000;

int TellUnopened(const CString& path)
{
    CString text;
    text.Format(L"Error opening the spectra file %s", path.GetString());
    AfxMessageBox(text);
    return 0;
}

/// Little-endian numbers of a file; what lies behind its end is zero.
class SpectraReader
{
public:
    explicit SpectraReader(const std::filesystem::path& path) : stream_(path, std::ios::binary)
    {
        std::error_code error;
        left_ = std::filesystem::is_regular_file(path, error) ? std::filesystem::file_size(path, error) : 0;
        if (error)
            left_ = 0;
        if (left_ == 0 && !std::filesystem::is_regular_file(path, error))
            stream_.close();  // a folder or a device
    }

    bool IsOpen() const { return stream_.is_open(); }
    std::uintmax_t BytesLeft() const { return left_; }

    template <class Unsigned>
    Unsigned Take()
    {
        unsigned char bytes[sizeof(Unsigned)] = {};
        stream_.read(reinterpret_cast<char*>(bytes), sizeof bytes);
        left_ -= std::min<std::uintmax_t>(left_, sizeof bytes);
        Unsigned value = 0;
        for (std::size_t i = sizeof bytes; i-- > 0;)
            value = static_cast<Unsigned>(value << 8 | bytes[i]);
        return value;
    }
    int TakeInt() { return static_cast<std::int32_t>(Take<std::uint32_t>()); }
    double TakeDouble() { return std::bit_cast<double>(Take<std::uint64_t>()); }

private:
    std::ifstream stream_;
    std::uintmax_t left_ = 0;
};

/// Nothing for a spectrum without points, or with more than any file can mean.
std::optional<jxSpectrum> TakeSpectrum(SpectraReader& file)
{
    jxSpectrum spectrum;
    for (wchar_t& unit : spectrum.name)
        unit = static_cast<wchar_t>(file.Take<std::uint16_t>());
    spectrum.type = file.TakeInt();
    const int count = file.TakeInt();
    if (count < 1 || static_cast<std::uintmax_t>(count) > std::max(kPointsOnTrust, file.BytesLeft() / kPointBytes))
        return std::nullopt;
    spectrum.points.resize(static_cast<std::size_t>(count));
    for (auto& [period, value] : spectrum.points) {
        period = file.TakeDouble();
        value = file.TakeDouble();
    }
    spectrum.name[kNameUnits - 1] = L'\0';
    return spectrum;
}

template <class Unsigned>
void Append(std::string& bytes, Unsigned value)
{
    for (std::size_t i = 0; i < sizeof value; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

void AppendInt(std::string& bytes, int value)
{
    Append(bytes, static_cast<std::uint32_t>(value));
}

/// One array element a code unit. A character beyond 16 bits, where wide characters hold them whole, becomes a pair and
/// moves the rest back.
void AppendName(std::string& bytes, const wchar_t (&name)[kNameUnits])
{
    const std::size_t end = bytes.size() + 2 * kNameUnits;
    for (const wchar_t c : name) {
        const auto unit = static_cast<std::uint32_t>(c);
        if (unit > 0xFFFF) {
            Append(bytes, static_cast<std::uint16_t>(0xD800 + ((unit - 0x10000) >> 10)));
            Append(bytes, static_cast<std::uint16_t>(0xDC00 + (unit & 0x3FF)));
        } else {
            Append(bytes, static_cast<std::uint16_t>(unit));
        }
    }
    bytes.resize(end);
}

std::string FileBytes(const std::vector<jxSpectrum>& spectra)
{
    std::string bytes;
    AppendInt(bytes, static_cast<int>(spectra.size()));
    for (const jxSpectrum& spectrum : spectra) {
        AppendName(bytes, spectrum.name);
        AppendInt(bytes, spectrum.type);
        AppendInt(bytes, static_cast<int>(spectrum.points.size()));
        for (const auto& [period, value] : spectrum.points) {
            Append(bytes, std::bit_cast<std::uint64_t>(period));
            Append(bytes, std::bit_cast<std::uint64_t>(value));
        }
    }
    return bytes;
}

bool HasName(const jxSpectrum& spectrum, const CString& name)
{
    return name.CompareNoCase(spectrum.name) == 0;
}

constexpr double kSamePoint = 5e-7;

bool SamePoints(const jxSpectrum& a, const jxSpectrum& b)
{
    return std::equal(a.points.begin(), a.points.end(), b.points.begin(), b.points.end(),
                      [](const auto& p, const auto& q) {
                          return is_equal(p.first, q.first, kSamePoint) && is_equal(p.second, q.second, kSamePoint);
                      });
}

}  // namespace

int CResponseSpectrumManager::LoadFile(const CString& path)
{
    SpectraReader file(qvx::PathOf(path.Text()));
    if (!file.IsOpen())
        return TellUnopened(path);
    const int count = file.TakeInt();
    if (count < 1)
        return 0;
    m_Spectra.clear();
    if (static_cast<std::uintmax_t>(count) > std::max(kSpectraOnTrust, file.BytesLeft() / kSpectrumBytes))
        return 0;
    m_Spectra.resize(static_cast<std::size_t>(count));
    for (jxSpectrum& spectrum : m_Spectra) {
        std::optional<jxSpectrum> read = TakeSpectrum(file);
        if (!read)
            return 0;
        spectrum = std::move(*read);
    }
    return 1;
}

int CResponseSpectrumManager::SaveFile(const CString& path) const
{
    try {
        qvx::AtomicFile file(qvx::PathOf(path.Text()));
        file.Write(FileBytes(m_Spectra));
        file.Commit();
    } catch (const qvx::FileError&) {
        return TellUnopened(path);
    }
    return 1;
}

/// The points are taken in the order in which they stand: it is the caller who sorts.
double CResponseSpectrumManager::GetValue(const jxSpectrum& spectrum, double period) const
{
    const auto& points = spectrum.points;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const auto& [t0, y0] = points[i];
        const auto& [t1, y1] = points[i + 1];
        const bool isBeforeFirst = i == 0 && t0 > period;
        const bool isBehindLast = i + 2 == points.size() && period > t1;
        if (t0 == period || isBeforeFirst)
            return y0;
        if (t1 == period || isBehindLast)
            return y1;
        if (t0 <= period && period < t1)
            return y0 + ((period - t0) / (t1 - t0)) * (y1 - y0);
    }
    return 0;
}

double CResponseSpectrumManager::GetValue(int index, double period) const
{
    const bool isThere = index >= 0 && static_cast<std::size_t>(index) < m_Spectra.size();
    return isThere ? GetValue(m_Spectra[static_cast<std::size_t>(index)], period) : 0;
}

bool CResponseSpectrumManager::FindSpectrum(jxSpectrum& out, int index) const
{
    if (index < 0 || static_cast<std::size_t>(index) >= m_Spectra.size())
        return false;
    out = m_Spectra[static_cast<std::size_t>(index)];
    return true;
}

int CResponseSpectrumManager::FindSpectrum(const CString& name) const
{
    const auto found = std::find_if(m_Spectra.begin(), m_Spectra.end(),
                                    [&](const jxSpectrum& spectrum) { return HasName(spectrum, name); });
    return found == m_Spectra.end() ? -1 : static_cast<int>(found - m_Spectra.begin());
}

int CResponseSpectrumManager::CheckSpectrum(const jxSpectrum& spectrum) const
{
    if (spectrum.name[0] == L'\0')
        return 0;
    const int index = FindSpectrum(CString(spectrum.name));
    return index >= 0 && SamePoints(m_Spectra[static_cast<std::size_t>(index)], spectrum) ? index : -1;
}

CString CResponseSpectrumManager::FindUniqueSpectrumName(const std::vector<jxSpectrum>& list, const CString& base) const
{
    constexpr int kCandidates = 10000;
    for (int k = 0; k < kCandidates; ++k) {
        CString candidate = base;
        if (k > 0)
            candidate.Format(L"%s_%d", base.GetString(), k);
        if (std::none_of(list.begin(), list.end(), [&](const jxSpectrum& s) { return HasName(s, candidate); }))
            return candidate;
    }
    return L"";
}
