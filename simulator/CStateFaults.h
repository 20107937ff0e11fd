#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What is to go wrong with a printer's state: with what it stores, and with its power. Any of it
/// can be combined; without any of it the printer behaves.
struct CStateFaults {
    /// When the printer goes to the network place that its settings name.
    enum class Moves : std::uint8_t { Never, AtOnce, AfterRestart };

    std::vector<std::string> m_strRefused;  ///< commands that begin so are refused
    std::size_t m_iRefusedOnly = 0;         ///< of these only number so much; 0: all
    std::vector<std::string> m_strStuck;    ///< settings that do not change, such as FontCode

    std::optional<std::size_t> m_iFieldsKept;  ///< of a set command only so many fields are stored
    std::optional<std::size_t> m_iBytesKept;   ///< of a set command's fields only so many bytes are
    std::string m_strHalved;  ///< that concerns commands that begin so; empty: all set commands

    bool m_bForgets = false;                 ///< without power the settings are lost
    std::optional<std::size_t> m_iPowerCut;  ///< the power goes once, when so many bytes have come
    /// The time until the power is back, however it went; nothing: it never is.
    std::optional<std::chrono::milliseconds> m_iPowerBack{1000};
    Moves m_iMoves = Moves::Never;

    /// One line for people, "none" without any fault.
    [[nodiscard]] std::string Describe() const;
};
