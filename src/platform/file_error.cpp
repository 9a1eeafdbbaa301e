#include "platform/file_error.h"

namespace qvx {
namespace {

std::string Join(std::string_view file, std::string_view place, std::string_view reason)
{
    std::string text;
    for (const std::string_view part : {file, place, reason}) {
        // Text from memory has no file and a file as a whole no place: neither leaves a lone colon.
        if (part.empty())
            continue;
        if (!text.empty())
            text += ": ";
        text += part;
    }
    return text;
}

}  // namespace

FileError::FileError(std::string_view file, std::string_view place, std::string_view reason)
    : std::runtime_error(Join(file, place, reason)), file_(file), place_(place), reason_(reason)
{
}

/// Here, so that a handler of another library recognises the type.
FileError::~FileError() = default;

}  // namespace qvx
