#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/export.h"

namespace qvx {

/// A file that cannot be read, is not what it should be, or cannot be written.
/// The text is one line of UTF-8: file, place in it (line and column, or the path of a JSON value), reason.
class QVXFEM_API FileError : public std::runtime_error
{
public:
    /// @param file   name of the file; may be empty for text that comes from no file
    /// @param place  "line 3, column 7", "beams[12].node2" or empty for the file as a whole
    FileError(std::string_view file, std::string_view place, std::string_view reason);
    ~FileError() override;

    const std::string& File() const { return file_; }      ///< as given to the constructor
    const std::string& Place() const { return place_; }    ///< as given to the constructor
    const std::string& Reason() const { return reason_; }  ///< as given to the constructor

private:
    std::string file_;
    std::string place_;
    std::string reason_;
};

}  // namespace qvx
