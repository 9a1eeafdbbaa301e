#pragma once

#include <cmath>
#include <vector>

#include "model/records/text_fields.h"
#include "support/static_model.h"

namespace qvx::test {

/// A concrete model in design units (inch, kip, kip-ft) that the passes of a design can be run on without a static run:
/// material f'c 4, fy 60, fys 60 ksi of normal weight; criteria with id 1; one combination, marked for concrete. Members get
/// their curves from the test.
class ConcreteModel : public StaticModel
{
public:
    ConcreteModel()
    {
        model.materials.clear();
        model.sections.clear();
        Material(3605, 0.2, 150.0 / 1728000);
        SetStrength(4, 60, 60);
        model.beamRcCriteria.push_back({.id = 1});
        model.columnRcCriteria.push_back({.id = 1});
        model.plateRcCriteria.push_back({.id = 1});
        SetText(model.beamRcCriteria[0].label, L"beams");
        SetText(model.columnRcCriteria[0].label, L"columns");
        model.loadCombs[0].bConcrete = 1;
        model.design.sustainedLoadComb = 0;
        model.combResults.resize(1);
    }

    void SetStrength(double fc, double fy, double fys)
    {
        model.materials[0].fc = fc;
        model.materials[0].fy = fy;
        model.materials[0].fys = fys;
    }
    int Shape(const wchar_t* label, double d1, double d2, double d3 = 0, double d4 = 0)
    {
        jxSect section{
            .A = d1 * d2, .Iz = d1 * d2 * d2 * d2 / 12, .Iy = d2 * d1 * d1 * d1 / 12, .dim = {d1, d2, d3, d4}};
        SetText(section.label, label);
        return Section(section);
    }
    /// A member along X, 240 in long, on nodes of its own.
    jxBm& AddMember(wchar_t designType, int section = 1, double L = 240)
    {
        const double y = 100.0 * static_cast<double>(model.beams.size());
        const int start = Node(0, y);
        const int id = Member(start, Node(L, y), section);
        Beam(id).designType = designType;
        return Beam(id);
    }
    void Curve(int member, const std::vector<jxVMD>& stations, std::size_t comb = 0)
    {
        model.combResults[comb].beamCurves.push_back({member, stations});
    }
    void Envelope() { model.CalcRcBeamEnvelop(); }
};

/// Station of a curve: axial force, shear V2, moment M3.
inline jxVMD Station(double x, double N, double V2, double M3, double M2 = 0)
{
    return {.x = x, .Fx = N, .Fy = V2, .My = M2, .Mz = M3};
}

}  // namespace qvx::test
