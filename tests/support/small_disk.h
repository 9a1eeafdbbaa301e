#pragma once

#include <string>

#include "support/temporary_folder.h"

namespace qvx::test {

/// A folder that holds so many kilobytes: a file system in memory, which only root can mount.
class SmallDisk : public TemporaryFolder
{
public:
    explicit SmallDisk(int kilobytes);
    ~SmallDisk();

    /// Why there is none; empty when there is.
    const std::string& Fault() const { return fault_; }
    /// Leaves no room on it.
    void Fill() const;

private:
    std::string fault_;
};

}  // namespace qvx::test
