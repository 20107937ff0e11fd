#pragma once

#include "model/MSettings.h"

#include <cstdint>
#include <string_view>
#include <vector>

/// The choices that the maintenance functions take, lists and numbers: their entries in the order
/// of the commands' codes. Those of the settings stand in MSettings.
namespace MChoiceLists {

/// The position of a list in which nothing is chosen.
inline constexpr int NoSelection = -1;

struct List {
    std::string_view m_strName;                  ///< stable: scripts name the choice so
    std::vector<std::string_view> m_strEntries;  ///< position 0 first
    int m_iStartPosition = 0;                    ///< chosen at start-up, or NoSelection
};

/// A number that a test print takes.
struct Number {
    std::string_view m_strName;  ///< stable, as a list's
    std::int32_t m_iStart;       ///< at start-up
    MSettings::Range m_objRange;
};

/// All lists.
const std::vector<List>& All();

/// The one of that name. Throws std::logic_error, which names it, when there is none.
const List& Get(std::string_view p_strName);

/// The list of that name, or null.
const List* Find(std::string_view p_strName);

/// The number of that name. Throws std::logic_error, which names it, when there is none.
const Number& GetNumber(std::string_view p_strName);

}  // namespace MChoiceLists
