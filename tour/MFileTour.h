#pragma once

#include "tour/CTour.h"

/// The tool's settings files, told step by step.
namespace MFileTour {

/// Saves both pages' files in a folder of its own and shows their content, changes values, loads
/// the files back and checks the pages.
void SaveAndLoad(CTour& p_objTour);

}  // namespace MFileTour
