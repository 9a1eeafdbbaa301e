#include "model/unit_systems.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>

#include <gmock/gmock.h>

#include "model/units.h"
#include "platform/cstring.h"

namespace qvx::test {
namespace {

TEST(UnitSystems, HaveAUnitOfEachQuantity)
{
    EXPECT_EQ(UnitSystems().size(), 9U);
    for (const UnitSystem& system : UnitSystems())
        for (int k = 0; k < kQuantityCount; ++k) {
            const auto unit = FindUnit(system.units[k]);
            ASSERT_TRUE(unit) << ToUtf8(system.name) << " " << k;
            EXPECT_TRUE(IsUnitOf(static_cast<Quantity>(k), *unit)) << ToUtf8(system.name) << " " << k;
        }
}

TEST(UnitSystems, AreFoundByTheirExactName)
{
    EXPECT_TRUE(UnitsOfSystem(L"kN-m"));
    EXPECT_FALSE(UnitsOfSystem(L"KN-M"));
    EXPECT_FALSE(UnitsOfSystem(L""));
}

// In these every quantity is composed of one force and one length: formulas hold for the bare numbers.
TEST(UnitSystems, ConsistentOnesAreComposedOfOneForceAndOneLength)
{
    struct Consistent
    {
        const wchar_t* name;
        const wchar_t* force;
        const wchar_t* length;
        const wchar_t* temperature;
    };
    for (const Consistent& c : {Consistent{L"N-mm", L"N", L"mm", L"C"}, Consistent{L"kN-mm", L"kN", L"mm", L"C"},
                                Consistent{L"N-m", L"N", L"m", L"C"}, Consistent{L"kip-in", L"kip", L"in", L"F"},
                                Consistent{L"lb-in", L"lb", L"in", L"F"}}) {
        const jxUnit system = UnitsOfSystem(c.name).value();
        const jxUnit composed = ConsistentUnits(c.force, c.length, c.temperature).value();
        EXPECT_TRUE(std::equal(std::begin(system.unit), std::end(system.unit), std::begin(composed.unit)))
            << ToUtf8(c.name);
    }
}

// 1 N/mm^2 is 1000 kN/m^2 and 145.04 psi, whatever the lengths of the frame are given in.
TEST(UnitSystems, ModulusOfSteelIsTheSameInAll)
{
    const auto modulus = [](const wchar_t* name) { return UnitFactor(UnitsOfSystem(name)->unit[kModulus]); };
    constexpr double kRounding = 1e-6;  // the tables round pound and tonne
    EXPECT_NEAR(210000 * modulus(L"kN-m"), 210000 * modulus(L"N-mm"), 1e-9);
    EXPECT_NEAR(210 * modulus(L"kN-mm") / (210000 * modulus(L"N-mm")), 1, 1e-12);
    EXPECT_NEAR(2.1e11 * modulus(L"N-m") / (210000 * modulus(L"N-mm")), 1, 1e-12);
    EXPECT_NEAR(210000 / 0.0980665 * modulus(L"t-m") / (210000 * modulus(L"N-mm")), 1, kRounding);
    EXPECT_NEAR(29000 * modulus(L"kip-ft"), 29e6 * modulus(L"lb-in"), 1e-6);
    EXPECT_NEAR(29000 * modulus(L"kip-in"), 29e6 * modulus(L"lb-ft"), 1e-6);
}

TEST(UnitSystems, StandInTheDocs)
{
    std::string table = "| quantity |";
    for (const UnitSystem& system : UnitSystems())
        table += " `" + ToUtf8(system.name) + "` |";
    table += "\n|---|";
    for (std::size_t i = 0; i < UnitSystems().size(); ++i)
        table += "---|";
    for (int k = 0; k < kQuantityCount; ++k) {
        table += "\n| " + ToUtf8(QuantityLabel(static_cast<Quantity>(k))) + " |";
        for (const UnitSystem& system : UnitSystems())
            table += " " + ToUtf8(system.units[k]) + " |";
    }
    std::ifstream file(std::string(QVXFEM_SOURCE_DIR) + "/docs/file-formats.md");
    std::stringstream docs;
    docs << file.rdbuf();
    EXPECT_THAT(docs.str(), testing::HasSubstr(table + "\n")) << "the table for docs/file-formats.md:\n" << table;
}

}  // namespace
}  // namespace qvx::test
