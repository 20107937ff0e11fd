#pragma once

#include <string>
#include <string_view>
#include <vector>

class QWidget;

/// The entries of the window's lists: a setting's are the setting's own.
namespace MListEntries {

/// The position of a list in which nothing is chosen.
inline constexpr int NoSelection = -1;

struct List {
    std::string m_strName;                       ///< the control's name
    std::vector<std::string_view> m_strEntries;  ///< position 0 first
    int m_iStartPosition = 0;                    ///< chosen at start-up, or NoSelection
};

/// One row a list, in the order in which they are filled. Throws std::logic_error when what a
/// control is to show does not exist.
std::vector<List> All();

/// Fills every list below p_objWindow that has no entries yet, in the order of p_objLists, and
/// brings each to its start position. Throws std::logic_error when there is no list of a row's
/// name, when a row has no such position, and when a list is left without entries or would be
/// filled twice.
void Fill(const std::vector<List>& p_objLists, const QWidget& p_objWindow);

}  // namespace MListEntries
