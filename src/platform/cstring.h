#pragma once

#include <compare>
#include <cstdarg>
#include <cstddef>
#include <cwchar>
#include <iosfwd>
#include <string>
#include <string_view>

#include "platform/export.h"

/// Wide text with the names and behaviour of a desktop framework's string class. It owns its text; indices count
/// characters from 0, and a search that finds nothing gives -1.
class QVXFEM_API CString
{
public:
    CString() = default;
    CString(const wchar_t* text) : text_(text ? text : L"") {}  ///< a null pointer is the empty text
    CString(std::wstring text) : text_(std::move(text)) {}      ///< takes the text over
    explicit CString(const char* utf8);                         ///< invalid sequences become U+FFFD

    operator const wchar_t*() const { return text_.c_str(); }         ///< valid until the text changes
    const wchar_t* GetString() const { return text_.c_str(); }        ///< valid until the text changes
    const std::wstring& Text() const { return text_; }                ///< the text itself
    int GetLength() const { return static_cast<int>(text_.size()); }  ///< characters, without the terminator
    bool IsEmpty() const { return text_.empty(); }                    ///< no character
    void Empty() { text_.clear(); }                                   ///< drops the text
    /// Character at an index; std::out_of_range beyond the end.
    wchar_t GetAt(int index) const { return text_.at(static_cast<std::size_t>(index)); }

    /// Replaces the text. Wide-printf meaning whatever the platform: %s takes const wchar_t*, %S const char*,
    /// %d %i %u %x int, %ld long as 32-bit int, %I64d 64-bit, %c wchar_t, %g %f %e double; width, precision, flags.
    /// The locale has no say: the decimal point is always '.'. No length limit; the text may be its own argument.
    void Format(const wchar_t* format, ...);
    void FormatV(const wchar_t* format, va_list arguments);  ///< Format with the arguments of a caller
    void AppendFormat(const wchar_t* format, ...);           ///< what Format would give, behind the text

    CString& operator+=(const CString& tail);  ///< may be this text
    CString& operator+=(const wchar_t* tail);  ///< null adds nothing
    CString& operator+=(wchar_t tail);         ///< adds one character

    int Compare(const wchar_t* other) const;             ///< negative, 0, positive, by character codes
    int CompareNoCase(const wchar_t* other) const;       ///< the same by qvx::CompareNoCase
    int Find(const wchar_t* part, int start = 0) const;  ///< index of the first occurrence from start on
    int Find(wchar_t character, int start = 0) const;    ///< index of the first occurrence from start on
    int ReverseFind(wchar_t character) const;            ///< index of the last occurrence
    CString Left(int count) const;                       ///< the first count characters, as far as there are
    CString Right(int count) const;                      ///< the last count characters, as far as there are
    CString Mid(int first) const;                        ///< all from an index on
    CString Mid(int first, int count) const;             ///< count characters from an index on, as far as there are
    CString& Trim();                                     ///< without white space at both ends
    CString& TrimLeft();                                 ///< without white space at the start
    CString& TrimRight();                                ///< without white space at the end
    CString& MakeUpper();                                ///< qvx::ToUpper of itself
    CString& MakeLower();                                ///< qvx::ToLower of itself
    /// Puts to for every from, left to right. @return how many; 0 for an empty from
    int Replace(const wchar_t* from, const wchar_t* to);
    /// Next token at or after position, delimiters from the set; position -1 and "" when there is none left.
    CString Tokenize(const wchar_t* delimiters, int& position) const;

private:
    std::wstring text_;
};

QVXFEM_API CString operator+(CString a, const CString& b);  ///< a, then b
QVXFEM_API CString operator+(CString a, const wchar_t* b);  ///< a, then b
/// Same characters, case included.
inline bool operator==(const CString& a, const CString& b)
{
    return a.Text() == b.Text();
}
/// Same characters, case included.
inline bool operator==(const CString& a, const wchar_t* b)
{
    return a.Text() == b;
}
/// By the text, as containers and pairs of strings order it.
inline std::strong_ordering operator<=>(const CString& a, const CString& b)
{
    return a.Text() <=> b.Text();
}
/// By the text.
inline std::strong_ordering operator<=>(const CString& a, const wchar_t* b)
{
    return a.Text().compare(b) <=> 0;
}

/// Wide text goes into a narrow stream, such as the log, as UTF-8. Global: a scope with operators of its own needs
/// "using ::operator<<;".
QVXFEM_API std::ostream& operator<<(std::ostream& out, const wchar_t* text);
QVXFEM_API std::ostream& operator<<(std::ostream& out, const CString& text);  ///< likewise

namespace qvx {

/// UTF-8 of wide text; code points that do not exist become U+FFFD.
QVXFEM_API std::string ToUtf8(std::wstring_view wide);
/// Wide text of UTF-8; invalid sequences become U+FFFD.
QVXFEM_API std::wstring FromUtf8(std::string_view utf8);
/// Comparison without regard to case (simple case folding), as wcsicmp: negative, 0, positive.
QVXFEM_API int CompareNoCase(const wchar_t* a, const wchar_t* b);
/// Case mapping character by character, the same in every locale (Latin, Greek, Cyrillic).
QVXFEM_API std::wstring ToLower(std::wstring text);
QVXFEM_API std::wstring ToUpper(std::wstring text);  ///< likewise

}  // namespace qvx
