#include "platform/cstring.h"

#include <algorithm>
#include <cassert>
#include <ostream>

#include "platform/wide_printf.h"

namespace {

constexpr wchar_t kBlanks[] = L" \t\n\v\f\r";

std::size_t Clamped(int count, std::size_t limit)
{
    return count < 0 ? 0 : std::min(static_cast<std::size_t>(count), limit);
}

int PositionOrMinusOne(std::size_t position)
{
    return position == std::wstring::npos ? -1 : static_cast<int>(position);
}

}  // namespace

CString::CString(const char* utf8) : text_(utf8 ? qvx::FromUtf8(utf8) : std::wstring()) {}

void CString::Format(const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(const wchar_t* format, va_list arguments)
{
    assert(format != nullptr);
    // The new text is whole before the old one goes: the text may be among its own arguments.
    text_ = qvx::FormatWide(format, arguments);
}

void CString::AppendFormat(const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    text_ += qvx::FormatWide(format, arguments);
    va_end(arguments);
}

CString& CString::operator+=(const CString& tail)
{
    text_ += tail.text_;
    return *this;
}

CString& CString::operator+=(const wchar_t* tail)
{
    if (tail != nullptr)
        text_ += tail;
    return *this;
}

CString& CString::operator+=(wchar_t tail)
{
    text_ += tail;
    return *this;
}

int CString::Compare(const wchar_t* other) const
{
    assert(other != nullptr);
    // By codes and not by a locale: sorted labels are the same on every machine.
    const int order = text_.compare(other);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

int CString::CompareNoCase(const wchar_t* other) const
{
    assert(other != nullptr);
    return qvx::CompareNoCase(text_.c_str(), other);
}

int CString::Find(const wchar_t* part, int start) const
{
    assert(part != nullptr);
    return start < 0 ? -1 : PositionOrMinusOne(text_.find(part, static_cast<std::size_t>(start)));
}

int CString::Find(wchar_t character, int start) const
{
    return start < 0 ? -1 : PositionOrMinusOne(text_.find(character, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(wchar_t character) const
{
    return PositionOrMinusOne(text_.rfind(character));
}

CString CString::Left(int count) const
{
    return text_.substr(0, Clamped(count, text_.size()));
}

CString CString::Right(int count) const
{
    return text_.substr(text_.size() - Clamped(count, text_.size()));
}

CString CString::Mid(int first) const
{
    return text_.substr(Clamped(first, text_.size()));
}

CString CString::Mid(int first, int count) const
{
    const std::size_t from = Clamped(first, text_.size());
    return text_.substr(from, Clamped(count, text_.size() - from));
}

CString& CString::Trim()
{
    return TrimRight().TrimLeft();
}

CString& CString::TrimLeft()
{
    text_.erase(0, text_.find_first_not_of(kBlanks));
    return *this;
}

CString& CString::TrimRight()
{
    text_.erase(text_.find_last_not_of(kBlanks) + 1);
    return *this;
}

CString& CString::MakeUpper()
{
    text_ = qvx::ToUpper(std::move(text_));
    return *this;
}

CString& CString::MakeLower()
{
    text_ = qvx::ToLower(std::move(text_));
    return *this;
}

int CString::Replace(const wchar_t* from, const wchar_t* to)
{
    assert(from != nullptr && to != nullptr);
    const std::wstring_view sought = from;
    const std::wstring_view substitute = to;
    int count = 0;
    if (sought.empty())
        return count;
    for (std::size_t at = text_.find(sought); at != std::wstring::npos; at = text_.find(sought, at)) {
        // Sought on behind what was put in, so that a replacement which holds the sought text ends.
        text_.replace(at, sought.size(), substitute);
        at += substitute.size();
        ++count;
    }
    return count;
}

CString CString::Tokenize(const wchar_t* delimiters, int& position) const
{
    const std::size_t first =
        position < 0 ? std::wstring::npos : text_.find_first_not_of(delimiters, static_cast<std::size_t>(position));
    if (first == std::wstring::npos) {
        position = -1;
        return {};
    }
    const std::size_t last = std::min(text_.find_first_of(delimiters, first), text_.size());
    position = static_cast<int>(std::min(last + 1, text_.size()));
    return text_.substr(first, last - first);
}

CString operator+(CString a, const CString& b)
{
    return a += b;
}

CString operator+(CString a, const wchar_t* b)
{
    return a += b;
}

std::ostream& operator<<(std::ostream& out, const wchar_t* text)
{
    return text == nullptr ? out : out << qvx::ToUtf8(text);
}

std::ostream& operator<<(std::ostream& out, const CString& text)
{
    return out << qvx::ToUtf8(text.Text());
}
