#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/// What a file dialog is told and what it gives back. Texts inside end with NUL; a field without a
/// use is zero.
struct CFileDialogRecord {
    static constexpr std::size_t BufferCharacters = 512;
    static constexpr std::uint32_t LongestName = 511;

    std::uint32_t m_iStructSize = 0;
    std::uintptr_t m_iOwner = 0;
    std::string m_strFilter;  ///< pairs of display name and pattern, each ended by a NUL
    std::string m_strCustomFilter;
    std::uint32_t m_iCustomFilterSize = 0;
    std::uint32_t m_iFilterIndex = 0;                    ///< comes back: the chosen pair, from 1
    std::array<char, BufferCharacters> m_arrFileName{};  ///< comes back: the chosen path
    std::uint32_t m_iFileNameSize = 0;
    std::array<char, BufferCharacters> m_arrFileTitle{};
    std::uint32_t m_iFileTitleSize = 0;
    std::string m_strInitialFolder;
    std::string m_strDialogTitle;
    std::uint32_t m_iFlags = 0;
    std::uint16_t m_iFileOffset = 0;
    std::uint16_t m_iFileExtension = 0;
    std::string m_strDefaultExtension;
    std::uintptr_t m_iCustomData = 0;
    std::uintptr_t m_iHook = 0;
    std::uintptr_t m_iTemplate = 0;
};
