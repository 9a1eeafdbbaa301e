#include "settings.h"

#include "files/model_file.h"

namespace qvx::app {

void ApplySettings(const std::vector<std::string>& settings, CjxStruct& model)
{
    for (const std::string& setting : settings) {
        const std::size_t equals = setting.find('=');
        if (equals == std::string::npos || equals == 0)
            throw FileError("", "--set " + setting, "expected FIELD=VALUE");
        // In their order: of two values for one field the later stands.
        SetModelSetting(model, setting.substr(0, equals), std::string_view(setting).substr(equals + 1));
    }
}

}  // namespace qvx::app
