#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

/// What is to go wrong with the answers of a printer. Any of it can be combined; without any of
/// it the printer behaves.
struct CFaultSettings {
    bool m_bSilent = false;                    ///< commands are carried out, yet never answered
    std::chrono::milliseconds m_iDelay{0};     ///< every answer begins so much later
    std::size_t m_iPieces = 0;                 ///< send in pieces of so many bytes; 0: all at once
    std::chrono::milliseconds m_iGap{10};      ///< the time between two pieces
    std::optional<std::size_t> m_iCut;         ///< only so many bytes of the answer are ever sent
    bool m_bJunk = false;                      ///< junk in place of the answer
    bool m_bJunkBefore = false;                ///< junk in front of whatever is sent
    std::optional<std::size_t> m_iCloseAfter;  ///< close behind the answer of so many commands of
                                               ///< a connection; 0: as soon as it stands

    /// One line for people, "none" without any fault.
    [[nodiscard]] std::string Describe() const;
};
