#include "solver/model_size.h"

#include <algorithm>

namespace qvx {

double SizeOf(const CjxStruct& model)
{
    if (model.nodes.empty())
        return 0;
    jxPoint least = model.nodes.front().Point();
    jxPoint most = least;
    for (const jxNd& node : model.nodes) {
        least = {std::min(least.x, node.x), std::min(least.y, node.y), std::min(least.z, node.z)};
        most = {std::max(most.x, node.x), std::max(most.y, node.y), std::max(most.z, node.z)};
    }
    return calc_distance(least, most);
}

}  // namespace qvx
