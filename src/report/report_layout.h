#pragma once

#include <cassert>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report/report_writer.h"

namespace qvx {

/// One column of a section, for both modes.
template <class Row>
struct Column
{
    const char* head;          ///< of the table
    int width;                 ///< of the text, in characters
    Cell (*cell)(const Row&);  ///< what it shows of a row
};

/// Two records may stand side by side in text; in tables each has a row.
enum class PerLine : int { One = 1, Two = 2 };

/// A section as a table of data. The heads of the text are written out: they keep their place when a column is widened.
template <class Row>
struct Layout
{
    template <std::size_t N>
    constexpr Layout(const char* columnLine_, const Column<Row> (&columns_)[N], PerLine perLine_ = PerLine::One,
                     const char* banner_ = nullptr)
        : columnLine(columnLine_), columns(columns_), perLine(perLine_), banner(banner_)
    {
    }

    const char* columnLine;
    std::span<const Column<Row>> columns;
    PerLine perLine;
    const char* banner;  ///< a line of text above the heads, or null
};

/// Widths of table columns in percent, 100 in all: a column of names has three shares, any other has one; what the
/// division leaves goes to the last columns.
std::vector<int> TableShares(std::span<const int> textWidths);

/// Dashes under each column of a line of text.
std::string RuleLine(std::span<const int> textWidths, PerLine perLine);

/// Blanks between two records that stand side by side.
inline constexpr int kRecordGap = 3;

/// One table of a section, or one block of text: heads, then rows as they come. Every second printed row is shaded.
template <class Row>
class TableOf
{
public:
    /// Writes the heads.
    /// @param layout  outlives the table
    TableOf(ReportWriter& out, const Layout<Row>& layout) : out_(out), layout_(layout)
    {
        std::vector<int> widths;
        for (const Column<Row>& column : layout.columns)
            widths.push_back(column.width);
        assert(!layout.columns.empty() && "a table has columns");
        if (out.IsTable())
            BeginTable(widths);
        else
            BeginText(widths);
    }

    /// One record: a row of the table, or its part of a line of text.
    void Write(const Row& row)
    {
        if (out_.IsTable())
            WriteTableRow(row);
        else
            WriteTextRow(row);
        ++nRows_;
    }

    /// A row of empty cells, in tables.
    void WriteBlankRow(int nCells)
    {
        if (!out_.IsTable())
            return;
        out_.BeginRow();
        for (int i = 0; i < nCells; ++i)
            out_.TableCell({}, false);
        out_.EndRow();
    }

    /// Closes the table, or the block of text, which ends with an empty line.
    void End()
    {
        if (out_.IsTable())
            return out_.Line("</table> ");
        if (IsLineHalf())
            out_.EndLine();
        out_.EndLine();
    }

private:
    void BeginTable(const std::vector<int>& widths)
    {
        const std::vector<int> shares = TableShares(widths);
        out_.SetTable();
        out_.BeginRow();
        for (std::size_t i = 0; i < shares.size(); ++i)
            out_.HeadCell(layout_.columns[i].head, shares[i]);
        out_.EndRow();
    }

    void BeginText(const std::vector<int>& widths)
    {
        if (layout_.banner != nullptr)
            out_.Line(layout_.banner);
        out_.Line(layout_.columnLine);
        out_.Line(RuleLine(widths, layout_.perLine));
    }

    void WriteTableRow(const Row& row)
    {
        const bool isShaded = nRows_ % 2 == 1;
        out_.BeginRow();
        for (const Column<Row>& column : layout_.columns)
            out_.TableCell(column.cell(row), isShaded);
        out_.EndRow();
    }

    void WriteTextRow(const Row& row)
    {
        if (IsLineHalf())
            out_.Spaces(kRecordGap);
        bool isFirst = true;
        for (const Column<Row>& column : layout_.columns) {
            if (!isFirst)
                out_.Put(' ');
            isFirst = false;
            out_.TextCell(column.cell(row), column.width);
        }
        if (layout_.perLine == PerLine::One || IsLineHalf())
            out_.EndLine();
    }

    /// Whether one record of two stands in the line already.
    bool IsLineHalf() const { return layout_.perLine == PerLine::Two && nRows_ % 2 == 1; }

    ReportWriter& out_;
    const Layout<Row>& layout_;
    std::size_t nRows_ = 0;
};

/// A table of all records that pass.
template <class Row, class Records, class IsShown>
void WriteTable(ReportWriter& out, const Layout<Row>& layout, const Records& records, IsShown&& isShown)
{
    TableOf<Row> table(out, layout);
    for (const Row& record : records)
        if (isShown(record))
            table.Write(record);
    table.End();
}

template <class Row, class Records>
void WriteTable(ReportWriter& out, const Layout<Row>& layout, const Records& records)
{
    WriteTable(out, layout, records, [](const Row&) { return true; });
}

// --- Columns that many sections have --------------------------------------------------------------------------------

/// The id of a record, its label, Yes or No of a flag.
template <class Record>
Cell IdOf(const Record& record)
{
    return Integer(record.id);
}

template <class Record>
Cell LabelOf(const Record& record)
{
    return Label(record.label);
}

inline Cell YesNo(int flag)
{
    return Word(flag != 0 ? "Yes" : "No");
}

inline constexpr const char* kInvalid = "Invalid";

/// Name of a code, "Invalid" when it has none.
template <std::size_t N>
const char* NameOf(const char* const (&names)[N], int code)
{
    return code >= 0 && code < static_cast<int>(N) ? names[code] : kInvalid;
}

/// Names of the six directions, as messages and files have them.
inline constexpr const char* kDirections[] = {"X", "Y", "Z", "OX", "OY", "OZ"};
inline constexpr const char* kCoordSystems[] = {"Local", "Global", "Projected"};

inline constexpr double kDegreesPerRadian = 57.29577951;

inline bool IsTranslation(int dof)
{
    return dof <= 2;
}

}  // namespace qvx
