#pragma once

#include <cassert>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "model/records/unit.h"
#include "report/report.h"
#include "report/report_format.h"

namespace qvx {

/// What one cell of a section shows, made by the functions below.
struct Cell
{
    enum class Kind : unsigned char { Empty, Integer, Input, Result, Plain, PlainResult, Label, Word, Node };

    Kind kind = Kind::Empty;
    bool isRed = false;
    NumberFormat format = {};  ///< of a plain number
    Quantity quantity = kLength;
    int integer = 0;
    double number = 0;
    const wchar_t* label = nullptr;  ///< text of the user
    const char* word = nullptr;      ///< text of ours
};

/// An id, a count or a code, as it is.
inline Cell Integer(int value)
{
    return {.kind = Cell::Kind::Integer, .integer = value};
}
/// A number that the user entered, in the format of its quantity.
inline Cell Input(Quantity quantity, double value)
{
    return {.kind = Cell::Kind::Input, .quantity = quantity, .number = value};
}
/// A number of the analysis: 0 below the threshold.
inline Cell Result(Quantity quantity, double value)
{
    return {.kind = Cell::Kind::Result, .quantity = quantity, .number = value};
}
/// A number in a format of its own.
inline Cell Plain(char letter, int precision, double value)
{
    return {.kind = Cell::Kind::Plain, .format = {letter, precision}, .number = value};
}
/// A number of the analysis in a format of its own.
inline Cell PlainResult(char letter, int precision, double value)
{
    return {.kind = Cell::Kind::PlainResult, .format = {letter, precision}, .number = value};
}
/// A text of the user, escaped where HTML asks for it; it must live until the cell is written.
inline Cell Label(const wchar_t* text)
{
    return {.kind = Cell::Kind::Label, .label = text};
}
/// A text of ours, as it is.
inline Cell Word(const char* text)
{
    return {.kind = Cell::Kind::Word, .word = text};
}
/// Location of a result in an element: "Node <id>".
inline Cell AtNode(int id)
{
    return {.kind = Cell::Kind::Node, .integer = id};
}

/// Background of every second printed row.
inline constexpr std::string_view kShade = "#EAEAEA";

/// UTF-8 text with the characters escaped that HTML takes for its own.
std::string EscapedHtml(std::string_view text);

/// Text for the preformatted lines of the text report, in which nothing acts as markup: of the characters of HTML only
/// those that would begin a tag or an entity are replaced, so that everything else stays as it was written.
std::string EscapedMarkup(std::string_view text);

/// A text of the units line with the unit that stands in brackets behind it.
struct UnitText
{
    const char* text;
    std::string unit;
};

/// The stream of a report: a buffer before the file, and the parts that all sections share, in both modes.
class ReportWriter
{
public:
    /// @param file     opened before the first Put; not owned
    /// @param options  mode and width of the tables; outlives the writer
    ReportWriter(std::ofstream& file, const jxReport& options);

    /// Takes number formats, units and threshold of the model; path is for messages.
    /// @param onPiece  called before each full buffer is written
    void Begin(const CjxStruct& model, std::wstring path, std::function<void()> onPiece);
    /// Writes what is buffered, after a call of onPiece.
    /// @throws jxException "Error writing file <path>: <reason>"
    void Flush();
    void WriteOut();  ///< the same without the call
    /// Hands over what is buffered if the file still takes it: the end of a report that stays half written.
    void Abandon();
    [[noreturn]] void Fail(int errorNumber);

    bool IsTable() const { return options_.bHtmlTables != 0; }

    void Put(std::string_view text);
    void Put(char c);
    void PutInt(int value);
    /// Text of the user: UTF-8, in tables with the characters escaped that HTML takes for its own.
    void PutUserText(std::wstring_view text);
    /// The text and the end of a line.
    void Line(std::string_view text);
    void EndLine();     ///< of the file
    void EndOfBlock();  ///< "<p></p>" in tables, and the end of a line

    // --- Sections ---------------------------------------------------------------------------------------------------
    /// Name of the unit in which the report gives a quantity.
    std::string UnitOf(Quantity quantity) const;
    /// "Units: Displacements Dx, Dy, Dz [in]; Dox, Doy, Doz [rad]"
    static std::string UnitsLine(std::initializer_list<UnitText> parts);
    /// Heading and the lines that explain the section.
    void BeginSection(std::string_view anchor, std::string_view title, std::initializer_list<std::string> lines = {});
    void EndSection();
    /// "%-*s %-*s"
    void PairLine(std::string_view caption, int captionWidth, std::string_view value, int valueWidth);
    void BeginBlockTitle();  ///< of the head of a block: a paragraph, or a line
    void EndBlockTitle();

    // --- Tables -------------------------------------------------------------------------------------------------------
    /// Opens a table of the width that the options give.
    void SetTable();
    /// @param percent  of the table's width
    void HeadCell(std::string_view text, int percent);
    void BeginRow() { Line("<tr>"); }
    void EndRow() { Line("</tr>"); }
    /// A cell with the attributes that are not empty.
    void OpenCell(std::string_view bgcolor, std::string_view align, std::string_view color);
    void CloseCell() { Put("</td>\n"); }
    void TableCell(const Cell& cell, bool isShaded);
    /// The cell right-aligned in a column of text, one that is too long as it is.
    void TextCell(const Cell& cell, int width);
    void Spaces(int count);

private:
    /// A place for count characters, after writing the buffer out when it has none left.
    char* Room(std::size_t count);
    /// The text written from Room on ends here.
    void Advance(const char* end)
    {
        assert(end >= buffer_.get() + used_ && "text was added");
        used_ = static_cast<std::size_t>(end - buffer_.get());
    }
    char* PutCellNumber(char* place, const Cell& cell) const;
    void PutContent(const Cell& cell);
    void PutPadded(std::string_view utf8, int width);
    void PutPaddedName(std::wstring_view name, int width);

    std::ofstream& file_;
    const jxReport& options_;
    std::wstring path_;
    std::function<void()> onPiece_;
    NumberFormat formats_[kQuantityCount];
    jxUnit units_;
    double threshold_ = 0;
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;
};

}  // namespace qvx
