#pragma once

#include <string>
#include <utility>
#include <vector>

/// Master-slave relation of the host; copied and restored, not used by the solver.
struct jxMasterSlave
{
    int id = 0;  ///< master node id
    int no = 0;
    unsigned char bSelected = 0;
    int slave = 0;                ///< node id
    wchar_t flag[7] = L"000000";  ///< per DOF

    static const wchar_t* name() { return L"master-slave"; }  ///< in messages
};

/// Named selection set of the host; copied and restored, not used by the solver.
struct jxNamedSelection
{
    wchar_t label[128] = {};
    std::vector<int> nodes;
    std::vector<int> beams;
    std::vector<int> shell3s;
    std::vector<int> shell4s;
    std::vector<int> bricks;
};

/// Mesh settings of the host; converted with the units, else untouched.
struct jxMesh
{
    /// -1: nothing chosen yet.
    explicit jxMesh(int type_ = -1) : type(type_) {}

    int type = -1;    ///< of the host
    double size = 0;  ///< element size [length]
};

/// Response spectrum: points of ascending period.
struct jxSpectrum
{
    /// UTF-16 code units, one an element, zero terminated; what follows the terminator is kept as a file had it.
    wchar_t name[128] = {};
    int type = 0;                                   ///< of the host; stored and restored
    std::vector<std::pair<double, double>> points;  ///< period [s], acceleration [g]
};
