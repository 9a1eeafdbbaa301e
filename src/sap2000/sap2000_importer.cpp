#include "sap2000/sap2000_importer.h"

#include <array>
#include <cassert>
#include <filesystem>
#include <fstream>
#include <istream>
#include <string_view>
#include <system_error>

#include "model/jx_struct.h"
#include "platform/host_services.h"
#include "platform/wide_path.h"
#include "tools/leading_number.h"
#include "tools/narrow_text.h"

using qvx::ImportLossKind;

namespace {

constexpr std::streamsize kLineBuffer = 25500;

// Name in a table head: what stands between its first and its last quotation mark.
CString TableName(const CString& head)
{
    const int first = head.Find(L'"');
    const int last = head.ReverseFind(L'"');
    return first >= 0 && last > first ? head.Mid(first + 1, last - first - 1) : head;
}

bool IsContinued(const CString& line)
{
    return line == L"_" || line.Right(2) == L" _";
}

std::wstring_view Trimmed(std::wstring_view text)
{
    constexpr const wchar_t* kBlanks = L" \t\n\v\f\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace

CSap2000Importer::CSap2000Importer(const CString& path, CjxStruct* model) : path_(path), model_(model) {}

bool CSap2000Importer::Process()
{
    std::error_code error;
    const std::filesystem::path path = qvx::PathOf(path_.Text());
    std::ifstream stream(path, std::ios::binary);
    if (!stream || std::filesystem::is_directory(path, error)) {
        CString text;
        text.Format(L"Error opening file %s.", path_.GetString());
        AfxMessageBox(text);
        return false;
    }
    Process(stream);
    return true;
}

void CSap2000Importer::Process(std::istream& stream)
{
    assert(model_ != nullptr && "a model to be filled");
    // What the last file left is dropped; the model is appended to.
    fileUnits_.Empty();
    losses_.clear();
    lossPositions_.clear();
    lineNumber_ = 0;
    table_.Empty();
    isKnownTable_ = false;
    isTurned_ = false;
    ReadTables(stream);
    NoteAxes();
}

void CSap2000Importer::ReadTables(std::istream& stream)
{
    std::vector<char> buffer(kLineBuffer);
    CString line;
    while (stream.good()) {
        // A reader of a table stops at the head of the next one, which then stands in line already.
        if (!IsTableHeaderLine(line)) {
            ReadLine(stream, buffer.data(), line);
            NoteUnreadLine(line);
        }
        if (!IsTableHeaderLine(line))
            continue;
        table_ = TableName(line);
        isKnownTable_ = ReadKnownTable(stream, buffer.data(), line);
        if (!isKnownTable_) {
            ReadLine(stream, buffer.data(), line);
            NoteUnreadLine(line);
        }
    }
}

bool CSap2000Importer::ReadKnownTable(std::istream& stream, char* buffer, CString& line)
{
    using Importer = CSap2000Importer;
    struct Table
    {
        const wchar_t* head;
        void (Importer::*read)(std::istream&, char*, CString&);
    };
    assert(IsTableHeaderLine(line));
    // By the whole head with its two blanks and quotes: names of tables begin alike.
    static constexpr std::array<Table, 19> kTables = {{
        {L"TABLE:  \"PROGRAM CONTROL\"", &Importer::Read_PROGRAM_CONTROL},
        {L"TABLE:  \"MATERIAL PROPERTIES 02 - BASIC MECHANICAL PROPERTIES\"",
         &Importer::Read_MATERIAL_PROPERTIES_02_BASIC_MECHANICAL_PROPERTIES},
        {L"TABLE:  \"FRAME SECTION PROPERTIES 01 - GENERAL\"", &Importer::Read_FRAME_SECTION_PROPERTIES_01_GENERAL},
        {L"TABLE:  \"AREA SECTION PROPERTIES\"", &Importer::Read_AREA_SECTION_PROPERTIES},
        {L"TABLE:  \"JOINT PATTERN ASSIGNMENTS\"", &Importer::Read_JOINT_PATTERN_ASSIGNMENTS},
        {L"TABLE:  \"LOAD PATTERN DEFINITIONS\"", &Importer::Read_LOAD_PATTERN_DEFINITIONS},
        {L"TABLE:  \"JOINT COORDINATES\"", &Importer::Read_JOINT_COORDINATES},
        {L"TABLE:  \"JOINT RESTRAINT ASSIGNMENTS\"", &Importer::Read_JOINT_RESTRAINT_ASSIGNMENTS},
        {L"TABLE:  \"JOINT SPRING ASSIGNMENTS 1 - UNCOUPLED\"", &Importer::Read_JOINT_SPRING_ASSIGNMENTS_1_UNCOUPLED},
        {L"TABLE:  \"CONNECTIVITY - FRAME\"", &Importer::Read_CONNECTIVITY_FRAME},
        {L"TABLE:  \"FRAME SECTION ASSIGNMENTS\"", &Importer::Read_FRAME_SECTION_ASSIGNMENTS},
        {L"TABLE:  \"FRAME LOCAL AXES ASSIGNMENTS 1 - TYPICAL\"",
         &Importer::Read_FRAME_LOCAL_AXES_ASSIGNMENTS_1_TYPICAL},
        {L"TABLE:  \"CONNECTIVITY - AREA\"", &Importer::Read_CONNECTIVITY_AREA},
        {L"TABLE:  \"AREA SECTION ASSIGNMENTS\"", &Importer::Read_AREA_SECTION_ASSIGNMENTS},
        {L"TABLE:  \"JOINT LOADS - FORCE\"", &Importer::Read_JOINT_LOADS_FORCE},
        {L"TABLE:  \"FRAME LOADS - POINT\"", &Importer::Read_FRAME_LOADS_POINT},
        {L"TABLE:  \"FRAME LOADS - DISTRIBUTED\"", &Importer::Read_FRAME_LOADS_DISTRIBUTED},
        {L"TABLE:  \"AREA LOADS - UNIFORM\"", &Importer::Read_AREA_LOADS_UNIFORM},
        {L"TABLE:  \"AREA LOADS - SURFACE PRESSURE\"", &Importer::Read_AREA_LOADS_SURFACE_PRESSURE},
    }};
    for (const Table& table : kTables)
        if (line.Find(table.head) >= 0) {
            (this->*table.read)(stream, buffer, line);
            return true;
        }
    return false;
}

bool CSap2000Importer::ReadLine(std::istream& stream, char* buffer, CString& line)
{
    assert(buffer != nullptr);
    stream.getline(buffer, kLineBuffer);
    ++lineNumber_;
    if (stream.fail()) {
        // The end of a file fails without a character, a line beyond the buffer with a full one.
        if (stream.gcount() > 0)
            Note(ImportLossKind::LineTooLong, L"");
        line.Empty();
        return false;
    }
    line = char2tchar(buffer);
    line.Trim();
    return true;
}

void CSap2000Importer::ForEachRow(std::istream& stream, char* buffer, CString& line,
                                  const std::function<void()>& handle)
{
    while (ReadLine(stream, buffer, line) && !line.IsEmpty() && !IsTableHeaderLine(line)) {
        if (IsContinued(line))
            Note(ImportLossKind::ContinuedRecord, table_);
        handle();
    }
}

// Lines before the first table and the line that ends the file are no records.
void CSap2000Importer::NoteUnreadLine(const CString& line)
{
    if (line.IsEmpty() || table_.IsEmpty() || IsTableHeaderLine(line) || line == L"END TABLE DATA")
        return;
    if (!isKnownTable_)
        Note(ImportLossKind::SkippedTable, table_);
    else if (table_ != CString(L"PROGRAM CONTROL"))
        Note(ImportLossKind::RowAfterBlankLine, table_);
}

void CSap2000Importer::Note(ImportLossKind kind, const CString& subject)
{
    const auto [place, isNew] = lossPositions_.try_emplace({kind, subject.Text()}, losses_.size());
    assert(place->second <= losses_.size() && "a place in the list, or the next one");
    if (isNew)
        losses_.push_back({.kind = kind, .subject = subject, .count = 0, .firstLine = lineNumber_});
    ++losses_[place->second].count;
}

void CSap2000Importer::NoteCutName(const CString& name)
{
    const bool isOpened = !name.IsEmpty() && name.GetAt(0) == L'"';
    if (isOpened && (name.GetLength() == 1 || name.GetAt(name.GetLength() - 1) != L'"'))
        Note(ImportLossKind::NameCutAtBlank, name);
}

bool CSap2000Importer::IsTableHeaderLine(const CString& line) const
{
    return line.Find(L"TABLE:") >= 0;
}

CString CSap2000Importer::GetSap2000LineItem(const CString& line, const CString& key) const
{
    const std::wstring_view text = line.Text();
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t blank = std::min(text.find(L' ', at), text.size());
        const std::wstring_view token = Trimmed(text.substr(at, blank - at));
        at = blank + 1;
        const std::size_t equals = token.find(L'=');
        // A name that holds a sign of equality cannot be told from a key: such an item is left out as a whole.
        if (equals == std::wstring_view::npos || token.find(L'=', equals + 1) != std::wstring_view::npos)
            continue;
        if (token.substr(0, equals) == key.Text())
            return std::wstring(token.substr(equals + 1));
    }
    return {};
}

int CSap2000Importer::GetSap2000LineItemInt(const CString& line, const CString& key) const
{
    return qvx::LeadingInteger(GetSap2000LineItem(line, key).Text());
}

double CSap2000Importer::GetSap2000LineItemDouble(const CString& line, const CString& key) const
{
    // As far as it is a number: units behind it, or nothing at all, are no error.
    return qvx::LeadingNumber(GetSap2000LineItem(line, key).Text());
}

void CSap2000Importer::PrintAllTables(std::istream& stream) const
{
    stream.clear();
    stream.seekg(0);
    std::vector<char> buffer(kLineBuffer);
    while (stream.getline(buffer.data(), kLineBuffer)) {
        const CString line = char2tchar(buffer.data());
        if (IsTableHeaderLine(line))
            qvx::Host().DebugOutput(L"!!!! " + line.Text());
    }
}
