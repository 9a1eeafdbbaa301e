// The library of response spectra and its binary file.
#include "dynamics/response_spectrum_manager.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "model/records/text_fields.h"
#include "platform/wide_path.h"
#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace qvx::test {
namespace {

using Points = std::vector<std::pair<double, double>>;

jxSpectrum Spectrum(const wchar_t* name, const Points& points, int type = 0)
{
    jxSpectrum spectrum{.type = type, .points = points};
    SetText(spectrum.name, name);
    return spectrum;
}

// Bytes of the format, put together by hand.
std::string Int(std::int32_t value)
{
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(static_cast<std::uint32_t>(value) >> (8 * i));
    return bytes;
}
std::string Double(double value)
{
    std::string bytes;
    for (int i = 0; i < 8; ++i)
        bytes += static_cast<char>(std::bit_cast<std::uint64_t>(value) >> (8 * i));
    return bytes;
}
/// 256 bytes: the text, a terminator and what stands behind it.
std::string Name(const std::u16string& text, char16_t behind = 0)
{
    std::string bytes;
    for (std::size_t i = 0; i < 128; ++i) {
        const char16_t unit = i < text.size() ? text[i] : i == text.size() || i == 127 ? u'\0' : behind;
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}
std::string PointBytes(const Points& points)
{
    std::string bytes = Int(static_cast<std::int32_t>(points.size()));
    for (const auto& [period, value] : points)
        bytes += Double(period) + Double(value);
    return bytes;
}

class ResponseSpectra : public testing::Test
{
protected:
    ResponseSpectra() { manager.SetSpectra({}); }
    ~ResponseSpectra() override { manager.SetSpectra({}); }

    CString Path(const char* name = "library.spc") const { return CString(TextOf(folder.Path() / name)); }
    int Load(const std::string& bytes)
    {
        folder.Write("library.spc", bytes);
        return manager.LoadFile(Path());
    }

    CResponseSpectrumManager& manager = CResponseSpectrumManager::Instance();
    RecordingHost host;
    TemporaryFolder folder;
};

const Points kPlateau = {{0.1, 0.4}, {0.5, 1.0}, {2.0, 0.25}};

TEST_F(ResponseSpectra, FileIsReadAndWrittenByteForByte)
{
    const std::string bytes = Int(2) + Name(u"Zone 4", 0xABCD) + Int(7) + PointBytes(kPlateau) +
                              Name(u"\u0416\xD83D\xDE00") + Int(-3) + PointBytes({{0.0, -0.0}});

    ASSERT_EQ(Load(bytes), 1);
    ASSERT_EQ(manager.SaveFile(Path("copy.spc")), 1);

    EXPECT_EQ(folder.Read("copy.spc"), bytes);
    ASSERT_EQ(manager.GetSpectra().size(), 2u);
    EXPECT_STREQ(manager.GetSpectra()[0].name, L"Zone 4");
    EXPECT_EQ(manager.GetSpectra()[0].type, 7);
    EXPECT_EQ(manager.GetSpectra()[0].points, kPlateau);
    EXPECT_EQ(manager.GetSpectra()[1].type, -3);
    EXPECT_TRUE(host.boxes.empty());
}

// A name from a model file may hold a character beyond 16 bits; in the file it takes two units.
TEST_F(ResponseSpectra, CharacterBeyondSixteenBitsIsWrittenAsAPair)
{
    manager.SetSpectra({Spectrum(L"a\U0001F600", kPlateau)});
    ASSERT_EQ(manager.SaveFile(Path()), 1);
    EXPECT_EQ(folder.Read("library.spc").substr(4, 256), Name(u"a\xD83D\xDE00"));
    EXPECT_EQ(folder.Read("library.spc").size(), 4 + 256 + 8 + 3 * 16u);
}

TEST_F(ResponseSpectra, EmptyLibraryIsFourBytesWhichNoOneReads)
{
    ASSERT_EQ(manager.SaveFile(Path()), 1);
    EXPECT_EQ(folder.Read("library.spc"), Int(0));

    manager.SetSpectra({Spectrum(L"kept", kPlateau)});
    EXPECT_EQ(manager.LoadFile(Path()), 0);
    EXPECT_EQ(manager.GetSpectra().size(), 1u);
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(ResponseSpectra, FileWithoutACountLeavesTheListAsItIs)
{
    manager.SetSpectra({Spectrum(L"kept", kPlateau)});
    EXPECT_EQ(Load(""), 0);
    EXPECT_EQ(Load(Int(-5)), 0);
    EXPECT_EQ(manager.GetSpectra().size(), 1u);
}

TEST_F(ResponseSpectra, SpectrumWithoutPointsEndsTheReading)
{
    EXPECT_EQ(Load(Int(3) + Name(u"one") + Int(1) + PointBytes(kPlateau) + Name(u"two") + Int(2) + PointBytes({}) +
                   Name(u"three") + Int(3) + PointBytes(kPlateau)),
              0);

    ASSERT_EQ(manager.GetSpectra().size(), 3u);
    EXPECT_STREQ(manager.GetSpectra()[0].name, L"one");
    for (const std::size_t later : {1u, 2u}) {
        EXPECT_STREQ(manager.GetSpectra()[later].name, L"");
        EXPECT_TRUE(manager.GetSpectra()[later].points.empty());
    }
}

TEST_F(ResponseSpectra, CutFileLeavesWhatItHasAndZeroes)
{
    const std::string whole = Int(1) + Name(u"cut") + Int(1) + PointBytes(kPlateau);
    EXPECT_EQ(Load(whole.substr(0, whole.size() - 16)), 1);
    EXPECT_EQ(manager.GetSpectra().at(0).points, (Points{{0.1, 0.4}, {0.5, 1.0}, {0, 0}}));
}

// Every length up to the whole: done as soon as the first byte of the last count is there.
TEST_F(ResponseSpectra, EveryPrefixOfAFileIsRead)
{
    const std::string head = Int(2) + Name(u"one") + Int(1) + PointBytes(kPlateau) + Name(u"two") + Int(2);
    const std::string whole = head + PointBytes({{0, 1}, {1, 1}});
    for (std::size_t length = 0; length <= whole.size(); length += 3)
        EXPECT_EQ(Load(whole.substr(0, length)), length > head.size() ? 1 : 0) << length;
}

// Counts that only gigabytes could hold: the list is given up, not the process.
TEST_F(ResponseSpectra, HugeCountsAreRefused)
{
    EXPECT_EQ(Load(Int(0x7FFFFFFF) + Name(u"one") + Int(1) + PointBytes(kPlateau)), 0);
    EXPECT_TRUE(manager.GetSpectra().empty());

    EXPECT_EQ(Load(Int(1) + Name(u"one") + Int(1) + Int(0x7FFFFFFF) + Double(1)), 0);
    ASSERT_EQ(manager.GetSpectra().size(), 1u);
    EXPECT_TRUE(manager.GetSpectra()[0].points.empty());
}

TEST_F(ResponseSpectra, NameWithoutTerminatorGetsOne)
{
    ASSERT_EQ(Load(Int(1) + std::string(256, 'x') + Int(1) + PointBytes(kPlateau)), 1);
    EXPECT_EQ(std::wstring(manager.GetSpectra()[0].name).size(), 127u);
}

TEST_F(ResponseSpectra, FileThatCannotBeOpenedIsTold)
{
    const CString missing = Path("no/such.spc");
    EXPECT_EQ(manager.LoadFile(missing), 0);
    EXPECT_EQ(manager.SaveFile(missing), 0);
    EXPECT_EQ(manager.LoadFile(CString(TextOf(folder.Path()))), 0);  // a folder

    const std::wstring text = L"Error opening the spectra file " + missing.Text();
    ASSERT_EQ(host.boxes.size(), 3u);
    EXPECT_EQ(host.boxes[0].text, text);
    EXPECT_EQ(host.boxes[0].flags, 0u);
    EXPECT_EQ(host.boxes[1].text, text);
}

// --- Values --------------------------------------------------------------------------------------------------------

TEST_F(ResponseSpectra, ValueIsLinearBetweenPointsAndFlatBeyondThem)
{
    const jxSpectrum s = Spectrum(L"s", kPlateau);
    EXPECT_EQ(manager.GetValue(s, 0.1), 0.4);
    EXPECT_EQ(manager.GetValue(s, 0.5), 1.0);
    EXPECT_EQ(manager.GetValue(s, 2.0), 0.25);
    EXPECT_EQ(manager.GetValue(s, 0.01), 0.4);
    EXPECT_EQ(manager.GetValue(s, 9), 0.25);
    EXPECT_DOUBLE_EQ(manager.GetValue(s, 0.3), 0.7);
    EXPECT_DOUBLE_EQ(manager.GetValue(s, 1.25), 0.625);
}

TEST_F(ResponseSpectra, ASpectrumNeedsTwoPoints)
{
    EXPECT_EQ(manager.GetValue(jxSpectrum(), 1.0), 0);
    EXPECT_EQ(manager.GetValue(Spectrum(L"one", {{1, 5}}), 1.0), 0);
}

// The points are not sorted: the first segment that holds the period answers, and none may.
TEST_F(ResponseSpectra, PointsOutOfOrderAreWalkedAsTheyStand)
{
    EXPECT_DOUBLE_EQ(manager.GetValue(Spectrum(L"mixed", {{0, 1}, {3, 2}, {2, 4}, {5, 6}}), 4), 4 + 2.0 / 3 * 2);
    EXPECT_EQ(manager.GetValue(Spectrum(L"falling", {{1, 1}, {2, 2}, {9, 3}, {8, 3}}), 8.5), 2 + 6.5 / 7);
    EXPECT_EQ(manager.GetValue(Spectrum(L"gap", {{5, 1}, {4, 2}, {3, 3}, {8, 3}}), 6), 3);
    EXPECT_EQ(manager.GetValue(Spectrum(L"none", {{1, 1}, {0.5, 2}, {0.25, 3}, {9, 3}}), std::nan("")), 0);
}

TEST_F(ResponseSpectra, ValueByIndexIsZeroBeyondTheList)
{
    manager.SetSpectra({Spectrum(L"s", kPlateau)});
    EXPECT_EQ(manager.GetValue(0, 0.5), 1.0);
    EXPECT_EQ(manager.GetValue(-1, 0.5), 0);
    EXPECT_EQ(manager.GetValue(1, 0.5), 0);
}

// --- Names -----------------------------------------------------------------------------------------------------------

TEST_F(ResponseSpectra, NamesAreFoundWhateverTheirCase)
{
    manager.SetSpectra({Spectrum(L"A1", kPlateau), Spectrum(L"b", kPlateau, 4), Spectrum(L"a1", kPlateau)});
    EXPECT_EQ(manager.FindSpectrum(CString(L"a1")), 0);
    EXPECT_EQ(manager.FindSpectrum(CString(L"B")), 1);
    EXPECT_EQ(manager.FindSpectrum(CString(L"c")), -1);

    jxSpectrum found;
    EXPECT_TRUE(manager.FindSpectrum(found, 1));
    EXPECT_EQ(found.type, 4);
    EXPECT_FALSE(manager.FindSpectrum(found, 3));
    EXPECT_FALSE(manager.FindSpectrum(found, -1));
}

TEST_F(ResponseSpectra, CheckComparesNameAndPoints)
{
    EXPECT_EQ(manager.CheckSpectrum(jxSpectrum()), 0);  // no name: not unknown, even in an empty library
    manager.SetSpectra({Spectrum(L"x", kPlateau), Spectrum(L"s", kPlateau)});
    EXPECT_EQ(manager.CheckSpectrum(Spectrum(L"S", kPlateau)), 1);
    EXPECT_EQ(manager.CheckSpectrum(Spectrum(L"t", kPlateau)), -1);
    EXPECT_EQ(manager.CheckSpectrum(Spectrum(L"s", {{0.1, 0.4}})), -1);
    EXPECT_EQ(manager.CheckSpectrum(Spectrum(L"s", {{0.1, 0.4}, {0.5, 1.0 + 4e-7}, {2.0, 0.25}})), 1);
    EXPECT_EQ(manager.CheckSpectrum(Spectrum(L"s", {{0.1, 0.4}, {0.5, 1.0 + 6e-7}, {2.0, 0.25}})), -1);
    EXPECT_EQ(manager.CheckSpectrum(Spectrum(L"s", {{0.1 + 6e-7, 0.4}, {0.5, 1.0}, {2.0, 0.25}})), -1);
}

TEST_F(ResponseSpectra, UniqueNameCountsUp)
{
    const std::vector<jxSpectrum> list = {Spectrum(L"X", {}), Spectrum(L"x_1", {}), Spectrum(L"X_2", {})};
    EXPECT_EQ(manager.FindUniqueSpectrumName(list, L"X"), L"X_3");
    EXPECT_EQ(manager.FindUniqueSpectrumName(list, L"Y"), L"Y");
    EXPECT_EQ(manager.FindUniqueSpectrumName({}, L""), L"");
}

TEST_F(ResponseSpectra, WhenAllNamesAreTakenThereIsNone)
{
    std::vector<jxSpectrum> list = {Spectrum(L"X", {})};
    for (int k = 1; k < 10000; ++k) {
        CString name;
        name.Format(L"X_%d", k);
        list.push_back(Spectrum(name, {}));
    }
    EXPECT_EQ(manager.FindUniqueSpectrumName(list, L"x"), L"");
}

}  // namespace
}  // namespace qvx::test
