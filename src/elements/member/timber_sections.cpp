#include "elements/member/timber_sections.h"

#include "model/records/text_fields.h"

namespace {

// Dressed size of a nominal inch size of boards and dimension lumber, up to 4 inches thick.
double DressedThickness(int nominal)
{
    return nominal == 1 ? 0.75 : nominal - 0.5;
}

double DressedWidth(int nominal)
{
    return nominal < 8 ? nominal - 0.5 : nominal - 0.75;
}

struct NominalSizes
{
    int thickness;
    int widths[16];  ///< ended by 0
};

constexpr NominalSizes kLumber[] = {
    {1, {3, 4, 6, 8, 10, 12}},
    {2, {3, 4, 5, 6, 8, 10, 12, 14}},
    {3, {4, 5, 6, 8, 10, 12, 14, 16}},
    {4, {4, 5, 6, 8, 10, 12, 14, 16}},
};

// Posts and timbers, beams and stringers: 5 inches and thicker, half an inch off both ways.
constexpr NominalSizes kTimbers[] = {
    {5, {5}},
    {6, {6, 8, 10, 12, 14, 16, 18, 20, 22, 24}},
    {8, {8, 10, 12, 14, 16, 18, 20, 22, 24}},
    {10, {10, 12, 14, 16, 18, 20, 22, 24}},
    {12, {12, 14, 16, 18, 20, 22, 24}},
    {14, {14, 16, 18, 20, 22, 24}},
    {16, {16, 18, 20, 22, 24}},
    {18, {18, 20, 22, 24}},
    {20, {20, 22, 24}},
    {22, {22, 24}},
    {24, {24}},
};

void Add(std::map<CString, jxSect_NDS>& sections, int thickness, int width, double b, double d)
{
    CString label;
    label.Format(L"%dx%d", thickness, width);
    jxSect_NDS& section = sections[label];
    SetText(section.label, label.Text());
    section.b = b;
    section.d = d;
}

}  // namespace

void load_nds_sections(std::map<CString, jxSect_NDS>& sections)
{
    for (const NominalSizes& size : kLumber)
        for (const int* width = size.widths; *width != 0; ++width)
            Add(sections, size.thickness, *width, DressedThickness(size.thickness), DressedWidth(*width));
    for (const NominalSizes& size : kTimbers)
        for (const int* width = size.widths; *width != 0; ++width)
            Add(sections, size.thickness, *width, size.thickness - 0.5, *width - 0.5);
}
