#include <algorithm>

#include "elements/scatter.h"
#include "model/find_record.h"
#include "operations/diaphragm.h"

namespace {

// Local axes of a link: x along it, y the normal of the floor, z in the floor.
void LinkAxes(double c[3][3], const jxPoint& start, const jxPoint& end, const jxPoint& normal)
{
    jxPoint axes[3] = {end - start, normal, {}};
    cross(axes[2], axes[0], axes[1]);
    for (jxPoint& axis : axes)
        normalize(axis);
    calc_cos(c, axes);
}

template <class Real>
void CopyTo(Real k[12][12], const qvx::Matrix12<Real>& matrix)
{
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j)
            k[i][j] = matrix(i, j);
}

}  // namespace

namespace qvx {

template <Number Real>
Matrix12<Real> LinkStiffness(const LinkProperties& link)
{
    enum LinkDof { ux1 = 0, uz1 = 2, ry1 = 4, ux2 = 6, uz2 = 8, ry2 = 10 };
    const Real L = link.L;
    const Real a = Real(link.E) * Real(link.A) * Real(link.factor) / L;
    const Real b = Real(link.E) * Real(link.I) * Real(link.factor) / L;
    const Real force = Real(12) * b / (L * L);
    const Real couple = Real(6) * b / L;

    Matrix12<Real> k;
    k(ux1, ux1) = k(ux2, ux2) = a;
    k(ux1, ux2) = -a;
    k(uz1, uz1) = k(uz2, uz2) = force;
    k(uz1, uz2) = -force;
    k(uz1, ry1) = k(uz1, ry2) = -couple;
    k(ry1, uz2) = k(uz2, ry2) = couple;
    k(ry1, ry1) = k(ry2, ry2) = Real(4) * b;
    k(ry1, ry2) = Real(2) * b;
    MirrorUpper(k);
    return k;
}

template Matrix12<double> LinkStiffness<double>(const LinkProperties&);
template Matrix12<double128> LinkStiffness<double128>(const LinkProperties&);

}  // namespace qvx

void qvxDiaphragm::ChooseProperties()
{
    material_ = {};
    for (const jxMat& m : model_->materials)
        if (m.E > material_.E)
            material_ = m;
    section_ = {};
    double stiffest = 0;
    for (const jxSect& s : model_->sections)
        if (s.Iz > stiffest || s.Iy > stiffest) {
            section_ = s;
            stiffest = std::max(s.Iz, s.Iy);
        }
}

qvx::LinkProperties qvxDiaphragm::PropertiesOf(const jxLink& link) const
{
    const jxPoint start = qvx::FindById(model_->nodes, link.node1).Point();
    const jxPoint end = qvx::FindById(model_->nodes, link.node2).Point();
    return {.E = material_.E,
            .A = section_.A,
            .I = std::max(section_.Iz, section_.Iy),
            .factor = model_->diaphragmStiffnessFactor,
            .L = calc_distance(start, end)};
}

void qvxDiaphragm::GetLinkStiffness(double k[12][12], const jxLink& link)
{
    CopyTo(k, qvx::LinkStiffness<double>(PropertiesOf(link)));
}

void qvxDiaphragm::GetLinkStiffness128(qvx::double128 k[12][12], const jxLink& link)
{
    CopyTo(k, qvx::LinkStiffness<qvx::double128>(PropertiesOf(link)));
}

template <qvx::Number Real>
void qvxDiaphragm::Assemble(jxSolutionData& data) const
{
    for (std::size_t i = 0; i < model_->links.size(); ++i) {
        const jxLink& link = model_->links[i];
        double c[3][3];
        LinkAxes(c, qvx::FindById(model_->nodes, link.node1).Point(), qvx::FindById(model_->nodes, link.node2).Point(),
                 link.normal);
        auto k = qvx::LinkStiffness<Real>(PropertiesOf(link));
        if (c[0][0] != 1.0 || c[1][1] != 1.0 || c[2][2] != 1.0)
            k = qvx::RotateSymmetric(k, qvx::RotationMatrix<Real>(c));
        qvx::ScatterStiffness(data, model_->solverType, data.lmLinks[static_cast<int>(i) + 1], 12, k.data());
    }
}

void qvxDiaphragm::AssembleStiffness(jxSolutionData& data)
{
    ChooseProperties();
    if (model_->solverType == QuadSkyline)
        Assemble<qvx::double128>(data);
    else
        Assemble<double>(data);
}

void CjxStruct::ProcessDiaphragmStiffness(jxSolutionData& data)
{
    if (bRigidDiaphragms == 0)
        return;
    qvxDiaphragm(this).AssembleStiffness(data);
}
