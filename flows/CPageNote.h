#pragma once

#include "link/CFailure.h"

#include <cstdint>
#include <string>
#include <vector>

/// How a flow that moves the settings of a page has ended.
struct CPageNote {
    enum class Kind : std::uint8_t {
        Read,        ///< the page shows what the printer has answered
        Unanswered,  ///< the page shows what was known before of the groups m_iPlaces
        ReadEnded,   ///< at group m_iPlaces
        Unshown,     ///< the page cannot show what was read; m_strText tells what
        Sent,        ///< the printer has been sent what the page shows
        SetEnded,    ///< at command m_iPlaces, as in "2 of 5"
        Unsendable,  ///< nothing was sent: a field is longer than the printer takes
        Loaded,      ///< the page shows what stands in the file m_strText
        LoadEnded,   ///< in the file m_strText; the page may show a part of it
    };

    Kind m_iKind = Kind::Read;
    std::vector<std::int16_t> m_iPlaces{};
    std::string m_strText{};
    CFailure m_objFailure{};  ///< what has ended it, as far as it was told
};
