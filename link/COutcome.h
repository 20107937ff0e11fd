#pragma once

#include "link/CFailure.h"

#include <cstdint>
#include <optional>
#include <string>

/// What one exchange has learned.
struct COutcome {
    bool m_bTouched = false;  ///< a byte of the command may have gone out
    bool m_bSent = false;     ///< the whole command went out
    /// It went out and, where an answer is awaited, the answer came.
    bool m_bDone = false;
    std::optional<std::string> m_strStatusCode{};  ///< two digits, also of an unknown code
    std::string m_strStatusText{};                 ///< its words; empty for an unknown code
    std::optional<std::int16_t> m_iGroup{};        ///< the group that a settings answer has filled
    CFailure m_objFailure{};                       ///< what has gone wrong, if something has

    explicit operator bool() const { return m_bDone; }
};
