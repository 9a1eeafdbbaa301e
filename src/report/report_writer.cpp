#include "report/report_writer.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "model/jx_struct.h"
#include "model/units.h"
#include "platform/visible_text.h"
#include "tools/jx_exception.h"
#include "tools/round_off.h"

namespace qvx {
namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 20;

std::string_view HtmlEntity(char c)
{
    switch (c) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return {};
    }
}

// Characters of UTF-8: every byte but those that continue one.
int CharactersOf(std::string_view utf8)
{
    return static_cast<int>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string NodeText(int id)
{
    return "Node " + std::to_string(id);
}

}  // namespace

std::string EscapedHtml(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        if (const std::string_view entity = HtmlEntity(c); !entity.empty())
            out += entity;
        else
            out += c;
    }
    return out;
}

std::string EscapedMarkup(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : ' ';
        const bool beginsEntity =
            text[i] == '&' && (next == '#' || (next >= 'A' && next <= 'Z') || (next >= 'a' && next <= 'z'));
        if (text[i] == '<' || text[i] == '>' || beginsEntity)
            out += HtmlEntity(text[i]);
        else
            out += text[i];
    }
    return out;
}

ReportWriter::ReportWriter(std::ofstream& file, const jxReport& options)
    : file_(file), options_(options), buffer_(std::make_unique<char[]>(kBufferSize))
{
}

void ReportWriter::Begin(const CjxStruct& model, std::wstring path, std::function<void()> onPiece)
{
    // Formats are looked up once, not once a number.
    units_ = model.units;
    threshold_ = model.roundOffThreshold;
    path_ = std::move(path);
    onPiece_ = std::move(onPiece);
    used_ = 0;
    for (int k = 0; k < kQuantityCount; ++k)
        formats_[k] = {static_cast<char>(FormatLetter(units_.format[k])), FormatPrecision(units_.format[k])};
}

// --- Buffer -----------------------------------------------------------------------------------------------------------

void ReportWriter::Fail(int errorNumber)
{
    used_ = 0;
    const std::string reason = errorNumber == 0 ? "unknown reason" : std::generic_category().message(errorNumber);
    CString text;
    text.Format(L"Error writing file %s: %s", path_.c_str(), FromUtf8(reason).c_str());
    throw jxException(text);
}

void ReportWriter::Flush()
{
    if (onPiece_)
        onPiece_();
    WriteOut();
}

void ReportWriter::WriteOut()
{
    errno = 0;
    assert(used_ <= kBufferSize);
    // errno is asked only after a failure: the stream itself keeps no reason.
    file_.write(buffer_.get(), static_cast<std::streamsize>(used_));
    file_.flush();
    if (!file_)
        Fail(errno);
    used_ = 0;
}

void ReportWriter::Abandon()
{
    file_.write(buffer_.get(), static_cast<std::streamsize>(used_));
    used_ = 0;
}

char* ReportWriter::Room(std::size_t count)
{
    assert(count <= kBufferSize);
    // Whoever asks for room writes straight into the buffer: no number is copied twice.
    if (kBufferSize - used_ < count)
        Flush();
    return buffer_.get() + used_;
}

void ReportWriter::Put(std::string_view text)
{
    while (text.size() > kBufferSize) {
        // A text of the user may be longer than the buffer; it goes out piece by piece.
        std::memcpy(Room(kBufferSize), text.data(), kBufferSize);
        used_ += kBufferSize;
        text.remove_prefix(kBufferSize);
    }
    std::memcpy(Room(text.size()), text.data(), text.size());
    used_ += text.size();
}

void ReportWriter::Put(char c)
{
    *Room(1) = c;
    ++used_;
}

void ReportWriter::PutInt(int value)
{
    Advance(PutInteger(Room(kLongestNumberText), value));
}

void ReportWriter::PutUserText(std::wstring_view text)
{
    const std::string utf8 = ToUtf8(VisibleText(text));
    Put(IsTable() ? EscapedHtml(utf8) : EscapedMarkup(utf8));
}

void ReportWriter::Line(std::string_view text)
{
    Put(text);
    EndLine();
}

void ReportWriter::EndLine()
{
    Put('\n');
}

void ReportWriter::EndOfBlock()
{
    Line(IsTable() ? "<p></p>" : "");
}

void ReportWriter::Spaces(int count)
{
    if (count <= 0)
        return;
    const auto n = static_cast<std::size_t>(count);
    std::memset(Room(n), ' ', n);
    used_ += n;
}

// --- Sections -----------------------------------------------------------------------------------------------------------

std::string ReportWriter::UnitOf(Quantity quantity) const
{
    return ToUtf8(UnitName(units_.unit[quantity]));
}

std::string ReportWriter::UnitsLine(std::initializer_list<UnitText> parts)
{
    std::string line;
    for (const UnitText& part : parts) {
        line += line.empty() ? "" : "; ";
        line += part.text;
        line += "[" + part.unit + "]";
    }
    return line;
}

void ReportWriter::BeginSection(std::string_view anchor, std::string_view title,
                                std::initializer_list<std::string> lines)
{
    Put("<h2> <a name=\"");
    Put(anchor);
    Put("\">");
    Put(title);
    Line("</a></h2>");
    if (!IsTable())
        Line("<pre>");
    for (const std::string& line : lines) {
        BeginBlockTitle();
        Put(line);
        EndBlockTitle();
    }
    if (!IsTable() && lines.size() > 0)
        EndLine();
}

void ReportWriter::EndSection()
{
    if (!IsTable())
        Line("</pre>");
    EndOfBlock();
}

void ReportWriter::PairLine(std::string_view caption, int captionWidth, std::string_view value, int valueWidth)
{
    assert(captionWidth > 0 && valueWidth > 0);
    // Padded by characters and not by bytes: captions are ASCII, values may be of any script.
    Put(caption);
    Spaces(captionWidth - CharactersOf(caption));
    Put(' ');
    Put(EscapedMarkup(value));  // an entity is read as one character: the width is that of the value
    Spaces(valueWidth - CharactersOf(value));
    EndLine();
}

void ReportWriter::BeginBlockTitle()
{
    if (IsTable())
        Put("<p>");
}

void ReportWriter::EndBlockTitle()
{
    Line(IsTable() ? "</p>" : "");
}

// --- Cells --------------------------------------------------------------------------------------------------------------

void ReportWriter::SetTable()
{
    Put("<table border=\"1\" cellpadding=\"0\" cellspacing=\"0\" style=\"border-collapse: collapse\" "
        "bordercolor=\"#C0C0C0\" width=\"");
    PutInt(options_.tableWidth);
    Line(options_.tableWidth <= 100 ? "%\">" : "\">");
}

void ReportWriter::HeadCell(std::string_view text, int percent)
{
    assert(percent > 0 && percent <= 100 && "a share of the table");
    Put("<th width=\"");
    PutInt(percent);
    Put("%\" align=\"center\">");
    Put(text);
    Line("</th>");
}

void ReportWriter::OpenCell(std::string_view bgcolor, std::string_view align, std::string_view color)
{
    const auto attribute = [this](std::string_view before, std::string_view value, std::string_view after) {
        if (value.empty())
            return;
        Put(before);
        Put(value);
        Put(after);
    };
    Put("<td");
    attribute(" align=\"", align, "\"");
    attribute(" bgcolor=\"", bgcolor, "\"");
    attribute(" style=\"color:", color, ";\"");
    Put('>');
}

char* ReportWriter::PutCellNumber(char* place, const Cell& cell) const
{
    assert(cell.quantity >= 0 && cell.quantity < kQuantityCount);
    switch (cell.kind) {
    case Cell::Kind::Integer:
        return PutInteger(place, cell.integer);
    case Cell::Kind::Input:
        return PutNumber(place, cell.number, formats_[cell.quantity]);
    case Cell::Kind::Result:
        return PutNumber(place, round_off(cell.number, threshold_), formats_[cell.quantity]);
    case Cell::Kind::Plain:
        return PutNumber(place, cell.number, cell.format);
    case Cell::Kind::PlainResult:
        return PutNumber(place, round_off(cell.number, threshold_), cell.format);
    default:
        return nullptr;
    }
}

// The content of a cell of no width.
void ReportWriter::PutContent(const Cell& cell)
{
    if (const char* end = PutCellNumber(Room(kLongestNumberText), cell); end != nullptr)
        return Advance(end);
    if (cell.kind == Cell::Kind::Label)
        PutUserText(cell.label);
    else if (cell.kind == Cell::Kind::Word)
        Put(cell.word);
    else if (cell.kind == Cell::Kind::Node)
        Put(NodeText(cell.integer));
}

void ReportWriter::TableCell(const Cell& cell, bool isShaded)
{
    if (!cell.isRed)
        Put(isShaded ? "<td bgcolor=\"#EAEAEA\">" : "<td>");
    else
        OpenCell(isShaded ? kShade : std::string_view(), {}, "red");
    PutContent(cell);
    CloseCell();
}

void ReportWriter::PutPadded(std::string_view utf8, int width)
{
    Spaces(width - CharactersOf(utf8));
    Put(utf8);
}

// An entity is read as one character: the width is that of the name.
void ReportWriter::PutPaddedName(std::wstring_view name, int width)
{
    const std::string utf8 = ToUtf8(VisibleText(name));
    Spaces(width - CharactersOf(utf8));
    Put(EscapedMarkup(utf8));
}

void ReportWriter::TextCell(const Cell& cell, int width)
{
    assert(width > 0 && "a column has room for something");
    // Longer ones push their line to the right: a number is never cut.
    char text[kLongestNumberText];
    if (const char* end = PutCellNumber(text, cell); end != nullptr) {
        const auto length = static_cast<std::size_t>(end - text);
        const auto padding = static_cast<std::size_t>(std::max(0, width - static_cast<int>(length)));
        char* place = Room(padding + length);
        std::memset(place, ' ', padding);
        std::memcpy(place + padding, text, length);
        used_ += padding + length;
    } else if (cell.kind == Cell::Kind::Label) {
        PutPaddedName(cell.label, width);
    } else if (cell.kind == Cell::Kind::Word) {
        PutPadded(cell.word, width);
    } else if (cell.kind == Cell::Kind::Node) {
        PutPadded(NodeText(cell.integer), width);
    } else {
        Spaces(width);
    }
}

}  // namespace qvx
