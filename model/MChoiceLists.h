#pragma once

#include <string_view>
#include <vector>

/// The texts of every drop-down list of the pages.
///
/// A list's position, counted from 0, is the value of the setting that it shows: the order of the
/// entries is the order of the values that are sent.
namespace MChoiceLists {

/// The position of a list in which nothing is chosen.
inline constexpr int NoSelection = -1;

struct List {
    std::string_view m_strName;                  ///< the control's name
    std::vector<std::string_view> m_strEntries;  ///< position 0 first
    int m_iStartPosition = 0;                    ///< chosen at start-up, or NoSelection
};

/// All lists, in the order in which they are filled.
const std::vector<List>& All();

}  // namespace MChoiceLists
