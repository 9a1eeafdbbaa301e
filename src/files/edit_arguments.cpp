#include "files/edit_arguments.h"

namespace qvx {

void ReadValue(const Json& value, const JsonPath& path, const ValueRule&, jxUnit& out)
{
    ReadUnits(value, path, out);
}

}  // namespace qvx
