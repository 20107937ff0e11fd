#pragma once

#include <string_view>
#include <vector>

/// The choices that the maintenance functions take: their entries in the order of the commands'
/// codes. Those of the settings stand in MSettings.
namespace MChoiceLists {

/// The position of a list in which nothing is chosen.
inline constexpr int NoSelection = -1;

struct List {
    std::string_view m_strName;                  ///< stable: scripts name the choice so
    std::vector<std::string_view> m_strEntries;  ///< position 0 first
    int m_iStartPosition = 0;                    ///< chosen at start-up, or NoSelection
};

/// All of them.
const std::vector<List>& All();

/// The one of that name. Throws std::logic_error, which names it, when there is none.
const List& Get(std::string_view p_strName);

}  // namespace MChoiceLists
