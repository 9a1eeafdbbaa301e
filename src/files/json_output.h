#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "files/json_writer.h"
#include "platform/atomic_file.h"
#include "platform/file_error.h"

namespace qvx {

/// Streams what write(JsonWriter&) says into a file that takes its name when it is whole.
/// @param onPiece     called before each piece goes to the disk; what it throws leaves no file
/// @throws FileError  when the file cannot be written, or a number has no place in JSON (infinite, not a number)
template <class Write>
void WriteJsonFile(const std::filesystem::path& path, Write&& write, const std::function<void()>& onPiece = {})
{
    AtomicFile file(path);
    try {
        JsonWriter out([&](std::string_view piece) {
            if (onPiece)
                onPiece();
            file.Write(piece);
        });
        write(out);
    } catch (const std::domain_error& fault) {
        throw FileError(path.string(), "", std::string("cannot be written: ") + fault.what());
    }
    file.Commit();
}

/// The same as text.
template <class Write>
std::string WriteJsonText(Write&& write)
{
    std::string text;
    try {
        JsonWriter out([&](std::string_view piece) { text += piece; });
        write(out);
    } catch (const std::domain_error& fault) {
        throw FileError("", "", std::string("cannot be written: ") + fault.what());
    }
    return text;
}

}  // namespace qvx
