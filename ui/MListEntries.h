#pragma once

#include "model/MChoiceLists.h"

class QWidget;

/// The entries of the window's lists.
namespace MListEntries {

/// Fills every list below p_objWindow that has no entries yet, in the order of p_objLists, and
/// brings each to its start position. Throws std::logic_error when there is no list of a row's
/// name, when a row has no such position, and when a list is left without entries or would be
/// filled twice.
void Fill(const std::vector<MChoiceLists::List>& p_objLists, const QWidget& p_objWindow);

}  // namespace MListEntries
