#include "steel/shape_table_reader.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <string>

#include "model/records/text_fields.h"
#include "platform/cstring.h"
#include "tools/jx_exception.h"

namespace qvx {

namespace {

struct Column
{
    std::string_view name;
    double jxSect_AISC::*field;
};

// Columns by name and not by place: a table may leave some out or order them otherwise.
constexpr Column kColumns[] = {
    {"weight", &jxSect_AISC::weight},
    {"A", &jxSect_AISC::A},
    {"d", &jxSect_AISC::d},
    {"b", &jxSect_AISC::b},
    {"tw", &jxSect_AISC::tw},
    {"tf", &jxSect_AISC::tf},
    {"t", &jxSect_AISC::t},
    {"tnom", &jxSect_AISC::tnom},
    {"k", &jxSect_AISC::k},
    {"lambda_f", &jxSect_AISC::lambda_f},
    {"lambda_w", &jxSect_AISC::lambda_w},
    {"x", &jxSect_AISC::x},
    {"y", &jxSect_AISC::y},
    {"xp", &jxSect_AISC::xp},
    {"yp", &jxSect_AISC::yp},
    {"eo", &jxSect_AISC::eo},
    {"Ix", &jxSect_AISC::Ix},
    {"Zx", &jxSect_AISC::Zx},
    {"Sx", &jxSect_AISC::Sx},
    {"rx", &jxSect_AISC::rx},
    {"Iy", &jxSect_AISC::Iy},
    {"Zy", &jxSect_AISC::Zy},
    {"Sy", &jxSect_AISC::Sy},
    {"ry", &jxSect_AISC::ry},
    {"Iw", &jxSect_AISC::Iw},
    {"Iz", &jxSect_AISC::Iz},
    {"rz", &jxSect_AISC::rz},
    {"Sz", &jxSect_AISC::Sz},
    {"Sw", &jxSect_AISC::Sw},
    {"Szt", &jxSect_AISC::Szt},
    {"tan_alpha", &jxSect_AISC::tan_alpha},
    {"J", &jxSect_AISC::J},
    {"Cw", &jxSect_AISC::Cw},
    {"C", &jxSect_AISC::C},
    {"ro", &jxSect_AISC::ro},
    {"H", &jxSect_AISC::H},
    {"rts", &jxSect_AISC::rts},
    {"ho", &jxSect_AISC::ho},
    {"sep", &jxSect_AISC::sep},
};

/// In the order of SteelShape.
constexpr std::string_view kKinds[] = {"W",  "M", "S",  "HP",       "C",          "MC",        "WT",  "MT",
                                       "ST", "L", "2L", "HSS_RECT", "HSS_SQUARE", "HSS_ROUND", "PIPE"};

[[noreturn]] void Refuse(std::string_view line, const wchar_t* fault)
{
    CString text;
    text.Format(L"Steel shape table: %s in line \"%s\"", fault, FromUtf8(line).c_str());
    throw jxException(text);
}

std::vector<std::string_view> Cells(std::string_view line)
{
    std::vector<std::string_view> cells;
    while (true) {
        const std::size_t comma = line.find(',');
        cells.push_back(line.substr(0, comma));
        if (comma == std::string_view::npos)
            return cells;
        line.remove_prefix(comma + 1);
    }
}

double jxSect_AISC::*FieldOf(std::string_view name, std::string_view line)
{
    const Column* column =
        std::find_if(std::begin(kColumns), std::end(kColumns), [&](const Column& c) { return c.name == name; });
    if (column == std::end(kColumns))
        Refuse(line, L"unknown column");
    return column->field;
}

int KindOf(std::string_view name, std::string_view line)
{
    const auto* kind = std::find(std::begin(kKinds), std::end(kKinds), name);
    if (kind == std::end(kKinds))
        Refuse(line, L"unknown kind");
    return static_cast<int>(kind - std::begin(kKinds));
}

static_assert(std::size(kKinds) == kShapePipe + 1, "a name for every kind");

double NumberOf(std::string_view cell, std::string_view line)
{
    double value = 0;  // an empty cell: the shape has no such property
    if (cell.empty())
        return value;
    // No locale: a decimal point is a point on every machine.
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), value);
    if (error != std::errc() || end != cell.data() + cell.size())
        Refuse(line, L"a cell that is not a number");
    return value;
}

}  // namespace

int FindSteelKind(std::wstring_view name)
{
    const auto* kind = std::find_if(std::begin(kKinds), std::end(kKinds), [name](std::string_view k) {
        return std::equal(k.begin(), k.end(), name.begin(), name.end(),
                          [](char a, wchar_t b) { return static_cast<wchar_t>(a) == b; });
    });
    return kind == std::end(kKinds) ? kShapeNone : static_cast<int>(kind - std::begin(kKinds));
}

std::vector<jxSect_AISC> ReadSteelShapes(std::span<const std::string_view> lines)
{
    assert(!lines.empty() && "the line of column names stands first");
    const std::vector<std::string_view> names = Cells(lines.front());
    constexpr std::size_t kFirstNumber = 2;  // after label and kind
    if (names.size() < kFirstNumber || names[0] != "label" || names[1] != "kind")
        Refuse(lines.front(), L"no label and kind");
    std::vector<double jxSect_AISC::*> fields;
    for (std::size_t i = kFirstNumber; i < names.size(); ++i)
        fields.push_back(FieldOf(names[i], lines.front()));

    std::vector<jxSect_AISC> shapes;
    shapes.reserve(lines.size() - 1);
    for (const std::string_view line : lines.subspan(1)) {
        const std::vector<std::string_view> cells = Cells(line);
        if (cells.size() != names.size())
            Refuse(line, L"wrong number of cells");
        jxSect_AISC& shape = shapes.emplace_back();
        SetText(shape.label, FromUtf8(cells[0]));
        shape.shape = KindOf(cells[1], line);
        for (std::size_t i = 0; i < fields.size(); ++i)
            shape.*fields[i] = NumberOf(cells[kFirstNumber + i], line);
    }
    return shapes;
}

}  // namespace qvx
