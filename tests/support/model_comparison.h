#pragma once

#include <string>
#include <vector>

namespace qvx::test {

/// What two model files are held to.
struct ModelComparison
{
    bool isImport = false;  ///< default records (id 1) count by presence only; combinations are not compared
};

/// Differences between two model files, one a line; empty when they hold the same model.
///
/// Records are matched by id, loads and masses by id and direction, several of one kind as a set. A field that is left
/// out has its default. Numbers agree within 1e-9 of themselves or 1e-12 of the largest of their field; the three
/// coordinates share one scale. Loads below 1e-12 of the largest of their list count as none. Load cases,
/// combinations with their terms and area loads are compared in order; settings and units are not compared.
std::vector<std::string> ModelDifferences(const std::string& actual, const std::string& expected,
                                          const ModelComparison& rules);

}  // namespace qvx::test
