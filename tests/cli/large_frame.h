#pragma once

#include <string>

namespace qvx::test {

/// Model file of a space frame of n^3 bays: enough work to be watched and stopped.
/// @param combination  keys of its one combination, each with a comma behind it
inline std::string LargeFrame(int n, int solverType, const std::string& combination = "")
{
    std::string nodes;
    std::string beams;
    std::string supports;
    int id = 0;
    const auto node = [n](int i, int j, int k) { return 1 + i + (n + 1) * (j + (n + 1) * k); };
    const auto beam = [&](int a, int b) {
        beams += (beams.empty() ? "" : ",\n") + std::string("{\"id\": ") + std::to_string(++id) +
                 ", \"node1\": " + std::to_string(a) + ", \"node2\": " + std::to_string(b) + "}";
    };
    for (int k = 0; k <= n; ++k) {
        for (int j = 0; j <= n; ++j) {
            for (int i = 0; i <= n; ++i) {
                const std::string at = std::to_string(node(i, j, k));
                nodes += (nodes.empty() ? "" : ",\n") + std::string("{\"id\": ") + at +
                         ", \"x\": " + std::to_string(100 * i) + ", \"y\": " + std::to_string(100 * j) +
                         ", \"z\": " + std::to_string(100 * k) + "}";
                if (k == 0)
                    supports +=
                        (supports.empty() ? "" : ",\n") + std::string("{\"id\": ") + at + ", \"flag\": \"111111\"}";
                if (i < n)
                    beam(node(i, j, k), node(i + 1, j, k));
                if (j < n)
                    beam(node(i, j, k), node(i, j + 1, k));
                if (k < n)
                    beam(node(i, j, k), node(i, j, k + 1));
            }
        }
    }
    return "{\"format\": \"qvxfem-model\", \"settings\": {\"solverType\": " + std::to_string(solverType) +
           "},\n"
           "\"materials\": [{\"id\": 1, \"E\": 29e6, \"nu\": 0.3, \"Tc\": 6.5e-6}],\n"
           "\"sections\": [{\"id\": 1, \"A\": 10, \"Iz\": 100, \"Iy\": 50, \"J\": 20}],\n\"nodes\": [" +
           nodes + "],\n\"supports\": [" + supports + "],\n\"beams\": [" + beams +
           "],\n\"loadCases\": [{\"id\": 1, \"label\": \"P\"}],\n\"caseLoads\": [{\"ndLoads\": [{\"id\": " +
           std::to_string(node(n, n, n)) + ", \"dof\": 0, \"value\": 1000}]}],\n\"loadCombs\": [{" + combination +
           "\"label\": \"C\", \"cases\": [{\"label\": \"P\"}]}]}";
}

}  // namespace qvx::test
