#pragma once

#include "tour/CTour.h"

/// Pictures of every tab, dialog and box in light and dark colours, at several scales.
namespace MLooksTour {

/// The pictures at the scale that the program runs at, which p_strScale tells in their names. In
/// the pages some fields differ from what was read, and something wrong is typed in one.
void TakePictures(CTour& p_objTour, const QString& p_strScale);

/// Has the program run once more for each scale and take its pictures into p_strPictures.
/// @return EXIT_SUCCESS or EXIT_FAILURE.
int RunAtEachScale(const QString& p_strPictures);

}  // namespace MLooksTour
