#include "operations/diaphragm.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "elements/invariants.h"
#include "model/find_record.h"
#include "operations/geometric_tolerance.h"
#include "tools/geometry.h"

namespace {

using qvx::kRelativeTolerance;

[[noreturn]] void ThrowInvalid(const jxDiaphragm& d, const wchar_t* reason)
{
    CString text;
    text.Format(L"Invalid diaphragm defined by node (%d, %d, %d, %d): %s", d.node[0], d.node[1], d.node[2], d.node[3],
                reason);
    throw jxException(text);
}

template <qvx::Number Real>
void CopyTo(Real k[12][12], const qvx::Matrix12<Real>& matrix)
{
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j)
            k[i][j] = matrix(i, j);
}

}  // namespace

qvxDiaphragm::~qvxDiaphragm() = default;

void qvxDiaphragm::SetDiaphragm(const jxDiaphragm& diaphragm)
{
    nodes_.clear();
    diaphragm_ = diaphragm;
    jxPoint p[4];
    for (int i = 0; i < 4; ++i)
        p[i] = qvx::FindById(model_->nodes, diaphragm.node[i]).Point();

    const jxPlane plane(p[0], p[1], p[2], 0.0);
    if (calc_distance(p[1], p[2]) * kRelativeTolerance > calc_distance(p[0], p[1], p[2]))
        ThrowInvalid(diaphragm, L"first three nodes are colinear");
    plane.calc_cos(cosines_);
    for (int i = 0; i < 4; ++i) {
        corners_[i] = transform_point(p[i], cosines_);
        corners_[i].z = 0;
    }
    area_ = std::fabs(area(corners_, 4));
    if (area_ == 0)
        ThrowInvalid(diaphragm, L"zero diaphragm area");
    const double tolerance = std::sqrt(area_) * kRelativeTolerance;
    if (plane.distance(p[3]) >= tolerance)
        ThrowInvalid(diaphragm, L"diaphragm area not coplanar");
    assert(qvx::IsRotation(qvx::RotationMatrix<double>(cosines_)) && "axes of a footprint are orthonormal");
    GatherNodesInside(plane, std::max(tolerance, model_->mergeTolerance));
}

void qvxDiaphragm::GatherNodesInside(const jxPlane& plane, double tolerance)
{
    for (const jxNd& node : model_->nodes) {
        if (plane.distance(node.Point()) > tolerance)
            continue;
        jxPoint p = transform_point(node.Point(), cosines_);
        p.z = 0;
        if (!inpolygon(corners_, 4, p) && !onpolygon(corners_, 4, p, tolerance))
            continue;
        jxNd inPlane = node;
        inPlane.x = p.x;
        inPlane.y = p.y;
        inPlane.z = 0;
        nodes_.push_back(inPlane);
    }
}

void qvxDiaphragm::GetLinkStiffness(double k[12][12], const jxLink& link)
{
    CopyTo(k, qvx::LocalStiffness(qvx::LinkParts<double>(qvx::PropertiesOf(*model_, stock_, link))));
}

void qvxDiaphragm::GetLinkStiffness128(qvx::double128 k[12][12], const jxLink& link)
{
    CopyTo(k, qvx::LocalStiffness(qvx::LinkParts<qvx::double128>(qvx::PropertiesOf(*model_, stock_, link))));
}

void qvxDiaphragm::AssembleStiffness(jxSolutionData& data)
{
    ChooseProperties();
    qvx::AddLinkStiffness(*model_, data, stock_);
}

void CjxStruct::ProcessDiaphragmStiffness(jxSolutionData& data)
{
    if (bRigidDiaphragms != 0)
        qvxDiaphragm(this).AssembleStiffness(data);
}
