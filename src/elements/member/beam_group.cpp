#include "elements/member/beam_group.h"

#include <cmath>

#include "model/find_record.h"

void CjxBmGroup::GetBeamEx(jxBmEx& out, const jxBm& bm, const CjxStruct* model, int bLocalAxis)
{
    out.id = bm.id;
    out.nd[0] = qvx::FindById(model->nodes, bm.node1);
    out.nd[1] = qvx::FindById(model->nodes, bm.node2);
    out.length = calc_distance(out.nd[0].Point(), out.nd[1].Point());
    out.cracking = bm.cracking;
    out.f_Iz = bm.f_Iz;
    out.f_Iy = bm.f_Iy;
    out.f_J = bm.f_J;
    out.f_A = bm.f_A;
    out.f_Ay = bm.f_Ay;
    out.f_Az = bm.f_Az;
    out.axialForce = bm.axialForce;
    out.mat = qvx::FindById(model->materials, bm.material);
    out.sect = qvx::FindById(model->sections, bm.section);
    const jxRels* rels = qvx::FindOrNull(model->releases, bm.id);
    out.rels = rels != nullptr ? *rels : jxRels{};
    if (bLocalAxis != 0)
        GetLocalAxis(out.localAxis, out.nd[0].Point(), out.nd[1].Point(), bm.angle);
}

void CjxBmGroup::GetLocalAxis(jxPoint axis[3], jxPoint start, jxPoint end, double angle)
{
    constexpr double kVertical = 5e-7;  // run across global Y over length
    const double L = calc_distance(start, end);
    jxPoint& x = axis[0];
    jxPoint& y = axis[1];
    jxPoint& z = axis[2];

    // Global Y is the reference direction whatever axis the host draws upward.
    // Within 5e-7 of the length a member counts as vertical: coordinates that were typed in feet and turned into inches
    // still make a column, whose z is then global Z and not the direction of a rounding.
    x = end - start;
    if (std::fabs(x.x) <= kVertical * L && std::fabs(x.z) <= kVertical * L)
        z = {0, 0, 1};
    else
        cross(z, x, {0, 1, 0});
    cross(y, z, x);
    // Turned before anything is made a unit vector: y has the length of x times the run, and the rotation is about the
    // line of x, whose length does not matter to it.
    if (angle != 0) {
        y = arbitrary_rotate(y, angle, x);
        z = arbitrary_rotate(z, angle, x);
    }
    normalize(x);
    normalize(y);
    normalize(z);
}

jxSect CjxBmGroup::ApplyStiffnessFactor(const jxSect& sect, const jxBmEx& beam)
{
    // Cracking is no factor of the section: it softens bending alone and is taken with E (PropertiesOf), so that areas
    // and torsion of a cracked member stay.
    jxSect factored = sect;
    factored.A *= beam.f_A;
    factored.Ay *= beam.f_Ay;
    factored.Az *= beam.f_Az;
    factored.Iz *= beam.f_Iz;
    factored.Iy *= beam.f_Iy;
    factored.J *= beam.f_J;
    return factored;
}
