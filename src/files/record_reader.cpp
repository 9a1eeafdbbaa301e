#include "files/record_reader.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdint>
#include <cwchar>

namespace qvx {
namespace {

// The end of the integers is told to those who went beyond it alone.
std::string Range(const ValueRule& rule, bool isTooLarge)
{
    if (rule.most == INT_MAX && !isTooLarge)
        return "expected an integer of at least " + std::to_string(rule.least);
    return "expected an integer from " + std::to_string(rule.least) + " to " + std::to_string(rule.most);
}

std::wstring ReadText(const Json& value, const JsonPath& path)
{
    if (!value.is_string())
        throw JsonFault(path, "expected a text");
    std::wstring text = FromUtf8(value.get_ref<const std::string&>());
    // It would end the text in the fixed arrays of the records, and what follows it would be lost without a word.
    if (text.find(L'\0') != std::wstring::npos)
        throw JsonFault(path, "a text cannot hold the character U+0000");
    return text;
}

}  // namespace

void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, int& out)
{
    // 2.0 is refused where an integer is asked for: a file that writes ids as decimals was made by a program that
    // computes with them.
    if (!value.is_number_integer())
        throw JsonFault(path, "expected an integer");
    assert(rule.least <= rule.most && "a range of one number at least");
    // Compared in the type of the file: 3e9 is told as too large and never wraps into an int.
    const auto isWithin = [&](auto number) {
        return std::cmp_less_equal(rule.least, number) && std::cmp_less_equal(number, rule.most);
    };
    const bool isTooLarge = value.is_number_unsigned() && value.get<std::uint64_t>() > INT_MAX;
    const bool isGood =
        value.is_number_unsigned() ? isWithin(value.get<std::uint64_t>()) : isWithin(value.get<std::int64_t>());
    if (!isGood)
        throw JsonFault(path, Range(rule, isTooLarge));
    out = value.get<int>();
}

void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, unsigned char& out)
{
    // Fields of this type have rules within 0 to 255, so that the number fits.
    int number = 0;
    ReadValue(value, path, rule, number);
    assert(number >= 0 && number <= 255 && "the rule of the field keeps to its type");
    out = static_cast<unsigned char>(number);
}

void ReadValue(const Json& value, const JsonPath& path, const ValueRule&, double& out)
{
    if (!value.is_number())
        throw JsonFault(path, "expected a number");
    out = value.get<double>();
    if (!std::isfinite(out))
        throw JsonFault(path, "expected a finite number");
}

void ReadValue(const Json& value, const JsonPath& path, const ValueRule&, bool& out)
{
    const bool isFlag = value.is_number_integer() && (value == 0 || value == 1);
    if (!value.is_boolean() && !isFlag)
        throw JsonFault(path, "expected true or false");
    out = value.is_boolean() ? value.get<bool>() : value == 1;
}

void ReadValue(const Json& value, const JsonPath& path, const ValueRule&, std::wstring& out)
{
    out = ReadText(value, path);
}

void ReadValue(const Json& value, const JsonPath& path, const ValueRule&, CString& out)
{
    out = CString(ReadText(value, path));
}

void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, wchar_t& out)
{
    // One letter is a text of one letter: an array with room for its end.
    wchar_t text[2] = {};
    ReadTextField(value, path, rule, text, 2);
    out = text[0];
}

void ReadValue(const Json& value, const JsonPath& path, const ValueRule& rule, std::pair<double, double>& out)
{
    ExpectArray(value, path, 2);
    ReadValue(value[0], path.Element(0), rule, out.first);
    ReadValue(value[1], path.Element(1), rule, out.second);
}

void ReadTextField(const Json& value, const JsonPath& path, const ValueRule& rule, wchar_t* out, std::size_t capacity)
{
    assert(capacity >= 2 && "room for a letter and the end");
    const std::wstring text = ReadText(value, path);
    const std::size_t most = capacity - 1;
    // A code fills its array: a support with five flags would leave the sixth to chance. Other texts may be shorter.
    if (rule.letters != nullptr) {
        const bool isCode =
            std::all_of(text.begin(), text.end(), [&](wchar_t c) { return std::wcschr(rule.letters, c) != nullptr; });
        if (text.size() != most || !isCode)
            throw JsonFault(path, "expected " + std::to_string(most) + (most == 1 ? " letter" : " letters") + " of \"" +
                                      ToUtf8(rule.letters) + "\"");
    } else if (text.size() > most) {
        throw JsonFault(path, "expected at most " + std::to_string(most) + " characters, found " +
                                  std::to_string(text.size()));
    }
    assert(text.size() <= most && "refused above");
    std::fill(std::copy(text.begin(), text.end(), out), out + capacity, L'\0');
}

void ExpectArray(const Json& value, const JsonPath& path, std::ptrdiff_t size)
{
    if (!value.is_array())
        throw JsonFault(path, "expected an array");
    if (size >= 0 && static_cast<std::ptrdiff_t>(value.size()) != size)
        throw JsonFault(path, "expected an array of " + std::to_string(size) + " elements, found " +
                                  std::to_string(value.size()));
}

void ExpectObject(const Json& value, const JsonPath& path)
{
    if (!value.is_object())
        throw JsonFault(path, "expected an object");
}

void ThrowUnknownKey(const JsonPath& path)
{
    throw JsonFault(path, "unknown key");
}

}  // namespace qvx
