#include "solver/lumped_springs.h"

#include "elements/shell/shell_loads.h"
#include "tools/geometry.h"
#include "tools/quad_axes.h"

namespace qvx {

double SpringShare(const CjxStruct& model, const jxBm& beam)
{
    return 0.5 * calc_distance(FindById(model.nodes, beam.node1).Point(), FindById(model.nodes, beam.node2).Point());
}

double SpringShare(const CjxStruct& model, const jxShell4& shell)
{
    QuadCorners corners;
    for (std::size_t i = 0; i < corners.size(); ++i)
        corners[i] = FindById(model.nodes, shell.node[i]).Point();
    return 0.25 * ShellArea(ShellFrameOf<double>(corners, QuadLocalAxes(corners, shell.angle)));
}

}  // namespace qvx
