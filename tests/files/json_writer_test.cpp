#include "files/json_writer.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace qvx::test {
namespace {

template <class Write>
std::string Written(Write write)
{
    std::string text;
    JsonWriter out([&](std::string_view piece) { text += piece; });
    write(out);
    out.Finish();
    return text;
}

TEST(JsonWriter, LaysOutLinesAndNestedLines)
{
    const std::string text = Written([](JsonWriter& out) {
        out.BeginObject(Layout::Lines);
        out.Key("id");
        out.Number(7);
        out.Key("rows");
        out.BeginArray(Layout::Lines);
        const double row[2] = {0.5, -3};
        out.Numbers(row, 2);
        out.Numbers(row, 2);
        out.EndArray();
        out.Key("empty");
        out.BeginArray(Layout::Lines);
        out.EndArray();
        out.EndObject();
    });
    EXPECT_EQ(text, "{\n \"id\": 7,\n \"rows\": [\n  [0.5, -3],\n  [0.5, -3]\n ],\n \"empty\": []\n}\n");
}

TEST(JsonWriter, BreaksNoLineWithinALine)
{
    const std::string text = Written([](JsonWriter& out) {
        out.BeginObject(Layout::Line);
        out.Key("rows");
        out.BeginArray(Layout::Lines);
        out.Number(1);
        out.Number(2);
        out.EndArray();
        out.EndObject();
    });
    EXPECT_EQ(text, "{\"rows\": [1, 2]}\n");
}

TEST(JsonWriter, TextComesBackWhateverItsCharacters)
{
    const std::wstring wide = L"a\"b\\c\nd\te\x01\x1f \u00e9 \u6881 \U0001F3D7";
    const std::string text = Written([&](JsonWriter& out) { out.Text(std::wstring_view(wide)); });

    EXPECT_EQ(nlohmann::json::parse(text).get<std::string>(),
              "a\"b\\c\nd\te\x01\x1f \xc3\xa9 \xe6\xa2\x81 \xf0\x9f\x8f\x97");
}

// Random bit patterns are mostly numbers of unusual size; each must come back to its last bit.
TEST(JsonWriter, EveryNumberComesBackToItsLastBit)
{
    std::mt19937_64 random(20240229);
    std::vector<double> numbers = {0.0, -0.0, 1.0 / 3, 5e-324, std::numeric_limits<double>::max(), 0.1 + 0.2, 1e22};
    while (numbers.size() < 20000) {
        const double number = std::bit_cast<double>(random());
        if (std::isfinite(number))
            numbers.push_back(number);
    }
    const std::string text =
        Written([&](JsonWriter& out) { out.Numbers(numbers.data(), static_cast<int>(numbers.size())); });

    const auto back = nlohmann::json::parse(text);
    ASSERT_EQ(back.size(), numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i)
        ASSERT_EQ(std::bit_cast<std::uint64_t>(back[i].get<double>()), std::bit_cast<std::uint64_t>(numbers[i]))
            << numbers[i];
}

TEST(JsonWriter, RefusesNumbersThatJsonDoesNotKnow)
{
    EXPECT_THROW(Written([](JsonWriter& out) {
                     out.BeginObject(Layout::Line);
                     out.Key("x");
                     out.Number(std::numeric_limits<double>::quiet_NaN());
                 }),
                 std::domain_error);
}

}  // namespace
}  // namespace qvx::test
