#pragma once

#include <vector>

#include "platform/cstring.h"
#include "platform/export.h"

namespace qvx {

/// In what way a line of an imported file was not taken as it stands.
enum class ImportLossKind {
    SkippedTable,         ///< a table the reader does not know; counts its rows
    RowAfterBlankLine,    ///< a row of a known table behind an empty line
    ContinuedRecord,      ///< a record that goes on in the next line, which is read as a record of its own
    NameCutAtBlank,       ///< a quoted name of which only the part up to its first blank is read
    SkippedShape,         ///< a frame section that is neither rectangular nor circular
    UnknownDesignType,    ///< a load pattern taken as dead load
    SelfWeight,           ///< a load pattern with a self weight multiplier
    JointWithoutGlobal,   ///< a joint without GlobalX, GlobalY, GlobalZ: its absent coordinates are 0
    DroppedFrame,         ///< a frame that is curved, or does not say that it is not
    UnknownSection,       ///< an assignment of a section that is not (yet) read: section 1
    UnknownMaterial,      ///< an assignment of a material that is not (yet) read: material unchanged
    AssignmentToNothing,  ///< an assignment to an element that is not (yet) read
    AdvancedAxes,         ///< a local axes row that does not say AdvanceAxes=No
    TurnedSection,        ///< a frame of unequal sides that the table of local axes has turned on its side
    LocalLoadNotTurned,   ///< a load along local 2 or 3 of a file without a table of local axes
    MissingJoint,         ///< an area with fewer than four joints
    UnknownLoadPattern,   ///< a load of a pattern that is not (yet) read: first load case
    UnknownDirection,     ///< a load along an unknown direction: a local axis
    DroppedLoad,          ///< a load that cannot be placed or is of an unknown type
    LineTooLong,          ///< a line beyond the reader's buffer: the rest of the file is not read
};

/// One way in which a file lost something, with the number of its lines.
struct ImportLoss
{
    ImportLossKind kind = ImportLossKind::SkippedTable;
    CString subject;    ///< name of the table, shape, section, ... concerned
    int count = 0;      ///< lines concerned
    int firstLine = 0;  ///< number of the first of them in the file, from 1

    /// A sentence for the user: "table \"GRID LINES\" is not read (12 rows, line 40)".
    QVXFEM_API CString Text() const;
};

using ImportLosses = std::vector<ImportLoss>;

}  // namespace qvx
