#pragma once

#include <cstdio>
#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx::test {

/// What a function prints on the stream that it gets.
inline std::string Printed(const std::function<void(std::FILE*)>& print)
{
    std::FILE* const file = std::tmpfile();
    if (file == nullptr)
        throw std::runtime_error("no temporary file");
    print(file);
    std::rewind(file);
    std::string text;
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
        text += static_cast<char>(c);
    std::fclose(file);
    return text;
}

/// Load combinations of these labels, without terms.
inline std::vector<jxLoadComb> CombinationsNamed(std::initializer_list<const wchar_t*> labels)
{
    std::vector<jxLoadComb> combinations;
    for (const wchar_t* label : labels)
        SetText(combinations.emplace_back().label, label);
    return combinations;
}

}  // namespace qvx::test
