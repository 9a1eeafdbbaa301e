#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qvx {

/// How the elements of an array or object are laid out: in one line, or each on a line of its own. What stands within one
/// line has no lines of its own.
enum class Layout { Line, Lines };

/// Writes JSON text piece by piece; only a buffer stands in memory, whatever the size of the file.
/// Numbers of type double are written in the shortest form that reads back to the same bits.
class JsonWriter
{
public:
    /// Takes each full piece of text, in order.
    using Sink = std::function<void(std::string_view)>;

    explicit JsonWriter(Sink sink);
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    void BeginObject(Layout layout);
    void EndObject() { End('}'); }
    void BeginArray(Layout layout);
    void EndArray() { End(']'); }
    /// Key of the next value; plain ASCII.
    void Key(std::string_view key);

    void Number(double value);  ///< throws std::domain_error when it is not finite
    void Number(int value);
    void Bool(bool value);
    void Null();
    void Text(std::string_view utf8);
    void Text(std::wstring_view wide);
    /// [a, b, ...] in one line.
    void Numbers(const double* values, int count);
    void Numbers(const int* values, int count);

    /// Hands over what is left; the text is complete, with a line break at its end.
    void Finish();

private:
    struct Level
    {
        Layout layout;
        bool isEmpty;
    };

    template <class Value>
    void Put(const Value* values, int count);
    [[noreturn]] void ThrowNotFinite() const;
    void BeginValue();
    void Open(Layout layout);
    void End(char bracket);
    void BreakLine();
    void FlushWhenFull();

    Sink sink_;
    std::string buffer_;
    std::vector<Level> levels_;
    std::string lastKey_;  ///< for the message on a number that JSON does not know
    bool isAfterKey_ = false;
};

}  // namespace qvx
