#pragma once

#include <set>
#include <string>
#include <vector>

/// One reinforcing bar of a database.
struct jxBar
{
    wchar_t size[32] = {};
    double diameter = 0;
    double area = 0;
};

/// A table of reinforcing bars.
struct jxBarDatabase
{
    std::wstring name;
    std::vector<jxBar> bars;
};

/// Concrete beam criterion.
struct jxBmRcCrit
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};

    static const wchar_t* name() { return L"beam concrete criterion"; }
};

/// Concrete column criterion.
struct jxColRcCrit
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};

    static const wchar_t* name() { return L"column concrete criterion"; }
};

/// Concrete plate criterion.
struct jxPlateRcCrit
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};

    static const wchar_t* name() { return L"plate concrete criterion"; }
};

/// Steel criterion.
struct jxSteelCrit
{
    int id = 0;
    int no = 0;
    unsigned char bSelected = 0;
    wchar_t label[128] = {};

    static const wchar_t* name() { return L"steel criterion"; }
};

/// Scalar settings of the design runs.
struct jxDesignSettings
{
    int concreteCode = 6;
    int sustainedLoadComb = -1;
};
