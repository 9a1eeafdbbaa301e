#pragma once

#include <compare>
#include <cstdarg>
#include <cstddef>
#include <cwchar>
#include <iosfwd>
#include <string>
#include <string_view>

#include "platform/export.h"

/// Wide text with the names and behaviour of a desktop framework's string class.
class QVXFEM_API CString
{
public:
    CString() = default;
    CString(const wchar_t* text) : text_(text ? text : L"") {}
    CString(std::wstring text) : text_(std::move(text)) {}
    explicit CString(const char* utf8);

    operator const wchar_t*() const { return text_.c_str(); }
    const wchar_t* GetString() const { return text_.c_str(); }
    const std::wstring& Text() const { return text_; }

    int GetLength() const { return static_cast<int>(text_.size()); }
    bool IsEmpty() const { return text_.empty(); }
    void Empty() { text_.clear(); }
    wchar_t GetAt(int index) const { return text_.at(static_cast<std::size_t>(index)); }

    /// Replaces the text. Wide-printf meaning whatever the platform: %s takes const wchar_t*, %S const char*,
    /// %d %i %u %x int, %ld long as 32-bit int, %I64d 64-bit, %c wchar_t, %g %f %e double; width, precision, flags.
    /// The locale has no say: the decimal point is always '.'. No length limit; the text may be its own argument.
    void Format(const wchar_t* format, ...);
    void FormatV(const wchar_t* format, va_list arguments);
    void AppendFormat(const wchar_t* format, ...);

    CString& operator+=(const CString& tail);
    CString& operator+=(const wchar_t* tail);
    CString& operator+=(wchar_t tail);

    int Compare(const wchar_t* other) const;
    int CompareNoCase(const wchar_t* other) const;
    int Find(const wchar_t* part, int start = 0) const;
    int Find(wchar_t character, int start = 0) const;
    int ReverseFind(wchar_t character) const;
    CString Left(int count) const;
    CString Right(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString& Trim();
    CString& TrimLeft();
    CString& TrimRight();
    CString& MakeUpper();
    CString& MakeLower();
    int Replace(const wchar_t* from, const wchar_t* to);
    /// Next token at or after position, delimiters from the set; position -1 and "" when there is none left.
    CString Tokenize(const wchar_t* delimiters, int& position) const;

private:
    std::wstring text_;
};

QVXFEM_API CString operator+(CString a, const CString& b);
QVXFEM_API CString operator+(CString a, const wchar_t* b);
inline bool operator==(const CString& a, const CString& b)
{
    return a.Text() == b.Text();
}
inline bool operator==(const CString& a, const wchar_t* b)
{
    return a.Text() == b;
}
/// By the text, as containers and pairs of strings order it.
inline std::strong_ordering operator<=>(const CString& a, const CString& b)
{
    return a.Text() <=> b.Text();
}
inline std::strong_ordering operator<=>(const CString& a, const wchar_t* b)
{
    return a.Text().compare(b) <=> 0;
}

/// Wide text goes into a narrow stream, such as the log, as UTF-8. Global: a scope with operators of its own needs
/// "using ::operator<<;".
QVXFEM_API std::ostream& operator<<(std::ostream& out, const wchar_t* text);
QVXFEM_API std::ostream& operator<<(std::ostream& out, const CString& text);

namespace qvx {

/// UTF-8 of wide text; code points that do not exist become U+FFFD.
QVXFEM_API std::string ToUtf8(std::wstring_view wide);
/// Wide text of UTF-8; invalid sequences become U+FFFD.
QVXFEM_API std::wstring FromUtf8(std::string_view utf8);
/// Comparison without regard to case (simple case folding), as wcsicmp: negative, 0, positive.
QVXFEM_API int CompareNoCase(const wchar_t* a, const wchar_t* b);
/// Case mapping character by character, the same in every locale (Latin, Greek, Cyrillic).
QVXFEM_API std::wstring ToLower(std::wstring text);
QVXFEM_API std::wstring ToUpper(std::wstring text);

}  // namespace qvx
