#include "report/report_extremes.h"

#include <cstddef>

namespace qvx {

SegmentalExtremes get_max_segmental_vmd_info(const std::vector<jxVMD>& curve)
{
    constexpr double jxVMD::*kComponents[6] = {&jxVMD::Fx, &jxVMD::Fy, &jxVMD::Fz, &jxVMD::Mx, &jxVMD::My, &jxVMD::Mz};
    SegmentalExtremes extremes;
    for (std::size_t i = 1; i < curve.size(); ++i) {
        for (int k = 0; k < 6; ++k) {
            // Strictly beyond: of equal extremes the first is marked, and a constant curve marks its start alone.
            const double value = curve[i].*kComponents[k];
            if (value > curve[static_cast<std::size_t>(extremes.largest[k])].*kComponents[k])
                extremes.largest[k] = static_cast<int>(i);
            if (value < curve[static_cast<std::size_t>(extremes.smallest[k])].*kComponents[k])
                extremes.smallest[k] = static_cast<int>(i);
        }
    }
    return extremes;
}

}  // namespace qvx
