#pragma once

#include <vector>

#include "model/records/node.h"
#include "platform/cstring.h"
#include "platform/export.h"

/// Text that tells, a line each, which constraints are invalid; empty when all are valid.
///
/// A constraint joins two different degrees of freedom of existing nodes (sorted by id), codes 0 to 5, and has a
/// factor other than 0 at one end at least.
QVXFEM_API CString checkMultiDofConstraints(const std::vector<jxMultiDofConstraint>& constraints,
                                            const std::vector<jxNd>& nodes);
