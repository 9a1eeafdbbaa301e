#pragma once

#include "model/jx_struct.h"

namespace qvx {

/// The two sets of rules that a design may go by.
enum class DesignRules {
    Usual,       ///< bConsistentDesign 0
    Consistent,  ///< bConsistentDesign 1: by the mechanics where the usual rules are unsafe or surprise
};

/// The rules that a model is designed by.
inline DesignRules RulesOf(const CjxStruct& model)
{
    return model.design.bConsistentDesign != 0 ? DesignRules::Consistent : DesignRules::Usual;
}

/// The rules that it is not designed by, for comparison.
inline DesignRules OtherRules(DesignRules rules)
{
    return rules == DesignRules::Usual ? DesignRules::Consistent : DesignRules::Usual;
}

}  // namespace qvx
