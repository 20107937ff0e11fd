#pragma once

#include "tests/ui/recorder/CCell.h"
#include "tests/ui/recorder/MFiles.h"

/// The cells of the settings files.
namespace MFileCells {

/// What can happen to SAVE or LOAD of one kind of file, on each link.
Cells OfSave(const MFiles::Kind& p_objKind);
Cells OfLoad(const MFiles::Kind& p_objKind);

}  // namespace MFileCells
