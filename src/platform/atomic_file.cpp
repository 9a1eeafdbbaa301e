#include "platform/atomic_file.h"

#include <cassert>
#include <cerrno>
#include <utility>

namespace qvx {

AtomicFile::AtomicFile(std::filesystem::path path) : pending_(std::move(path)), file_(pending_.Open()) {}

AtomicFile::~AtomicFile()
{
    Close();
}

void AtomicFile::Write(std::string_view bytes)
{
    assert(file_ != nullptr && "after Commit or a failure nothing more is written");
    // A short write is a full disk mostly; what is there already goes with the temporary file.
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size())
        Fail(errno);
}

void AtomicFile::Commit()
{
    assert(file_ != nullptr && "a file is committed once");
    // Flushed before it is closed: of a full disk the flush tells why, the close only that.
    if (std::fflush(file_) != 0)
        Fail(errno);
    if (std::fclose(std::exchange(file_, nullptr)) != 0)
        Fail(errno);
    pending_.Commit();
}

void AtomicFile::Fail(int errorNumber)
{
    Close();
    pending_.Fail(errorNumber);
}

void AtomicFile::Close()
{
    if (file_ != nullptr)
        std::fclose(std::exchange(file_, nullptr));
}

}  // namespace qvx
