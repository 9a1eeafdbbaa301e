#include "files/json_writer.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "platform/cstring.h"

namespace qvx {
namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 18;
constexpr std::size_t kLongestNumber = 32;  // "-2.2250738585072014e-308" has 24 characters

// Writes a number to a place with room for the longest one and gives the end of it.
char* PutNumber(char* place, int value)
{
    return std::to_chars(place, place + kLongestNumber, value).ptr;
}

char* PutNumber(char* place, double value)
{
    if (value == 0 && std::signbit(value))
        return std::copy_n("-0.0", 4, place);  // "-0" would be read as the integer 0
    // The shortest digits that read back to the same bits (P. Steele & White 1990; std::to_chars promises it): a file
    // holds no fewer and no more than it needs.
    return std::to_chars(place, place + kLongestNumber, value).ptr;
}

void AppendEscaped(std::string& buffer, char c)
{
    switch (c) {
    case '"':
        buffer += "\\\"";
        return;
    case '\\':
        buffer += "\\\\";
        return;
    case '\n':
        buffer += "\\n";
        return;
    case '\r':
        buffer += "\\r";
        return;
    case '\t':
        buffer += "\\t";
        return;
    default:
        break;
    }
    // UTF-8 goes through as it is; RFC 8259 asks for an escape of quotes, backslashes and control characters only.
    if (static_cast<unsigned char>(c) >= 0x20) {
        buffer += c;
        return;
    }
    constexpr char kHex[] = "0123456789abcdef";
    buffer += "\\u00";
    buffer += kHex[(c >> 4) & 0xF];
    buffer += kHex[c & 0xF];
}

}  // namespace

JsonWriter::JsonWriter(Sink sink) : sink_(std::move(sink))
{
    // With room for what one value adds beyond the limit, so that the buffer never moves.
    buffer_.reserve(kBufferSize + 4096);
}

void JsonWriter::BeginObject(Layout layout)
{
    BeginValue();
    buffer_ += '{';
    Open(layout);
}

void JsonWriter::BeginArray(Layout layout)
{
    BeginValue();
    buffer_ += '[';
    Open(layout);
}

// What stands in one line is not broken within.
void JsonWriter::Open(Layout layout)
{
    assert(levels_.size() < 64 && "no file nests that deep: something is opened and not closed");
    const bool isInLine = !levels_.empty() && levels_.back().layout == Layout::Line;
    levels_.push_back({isInLine ? Layout::Line : layout, true});
}

void JsonWriter::End(char bracket)
{
    assert(!levels_.empty() && !isAfterKey_);
    const Level level = levels_.back();
    levels_.pop_back();
    if (level.layout == Layout::Lines && !level.isEmpty)
        BreakLine();
    buffer_ += bracket;
    FlushWhenFull();
}

void JsonWriter::Key(std::string_view key)
{
    assert(!levels_.empty() && !isAfterKey_ && "a key stands in an object and has its value before the next");
    BeginValue();
    buffer_ += '"';
    buffer_ += key;
    buffer_ += "\": ";
    lastKey_ = key;
    isAfterKey_ = true;
}

void JsonWriter::Number(double value)
{
    if (!std::isfinite(value))
        ThrowNotFinite();
    BeginValue();
    Put(&value, 1);
}

void JsonWriter::Number(int value)
{
    BeginValue();
    Put(&value, 1);
}

void JsonWriter::Bool(bool value)
{
    BeginValue();
    buffer_ += value ? "true" : "false";
}

void JsonWriter::Null()
{
    BeginValue();
    buffer_ += "null";
}

void JsonWriter::Text(std::string_view utf8)
{
    BeginValue();
    buffer_ += '"';
    for (const char c : utf8)
        AppendEscaped(buffer_, c);
    buffer_ += '"';
}

void JsonWriter::Text(std::wstring_view wide)
{
    Text(std::string_view(ToUtf8(wide)));
}

void JsonWriter::Numbers(const double* values, int count)
{
    if (!std::all_of(values, values + count, [](double value) { return std::isfinite(value); }))
        ThrowNotFinite();
    BeginValue();
    buffer_ += '[';
    Put(values, count);
    buffer_ += ']';
    FlushWhenFull();
}

void JsonWriter::Numbers(const int* values, int count)
{
    BeginValue();
    buffer_ += '[';
    Put(values, count);
    buffer_ += ']';
    FlushWhenFull();
}

// Numbers with ", " between them, straight into the buffer: results are numbers by the million.
template <class Value>
void JsonWriter::Put(const Value* values, int count)
{
    assert(count >= 0 && (count == 0 || values != nullptr));
    const std::size_t used = buffer_.size();
    buffer_.resize(used + static_cast<std::size_t>(count) * (kLongestNumber + 2));
    char* place = buffer_.data() + used;
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            place = std::copy_n(", ", 2, place);
        place = PutNumber(place, values[i]);
    }
    buffer_.resize(static_cast<std::size_t>(place - buffer_.data()));
}

void JsonWriter::ThrowNotFinite() const
{
    throw std::domain_error("a number of \"" + lastKey_ + "\" is not finite");
}

void JsonWriter::Finish()
{
    assert(!isAfterKey_ && "the last key has its value");
    assert(levels_.empty() && "every array and object is closed");
    buffer_ += '\n';
    // A text file ends with a line break, as tools that work by lines expect.
    sink_(buffer_);
    buffer_.clear();
}

// The separator before a value or a key, by what stands before it.
void JsonWriter::BeginValue()
{
    if (isAfterKey_) {
        isAfterKey_ = false;
        return;
    }
    if (levels_.empty())
        return;
    Level& level = levels_.back();
    if (!level.isEmpty)
        buffer_ += level.layout == Layout::Line ? ", " : ",";
    level.isEmpty = false;
    if (level.layout == Layout::Lines)
        BreakLine();
}

void JsonWriter::BreakLine()
{
    buffer_ += '\n';
    buffer_.append(levels_.size(), ' ');
}

void JsonWriter::FlushWhenFull()
{
    if (buffer_.size() < kBufferSize)
        return;
    sink_(buffer_);
    buffer_.clear();
}

}  // namespace qvx
