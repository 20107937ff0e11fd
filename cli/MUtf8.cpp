#include "cli/MUtf8.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace {

constexpr unsigned FirstOfTwo = 0xC0;
constexpr unsigned Follower = 0x80;
constexpr unsigned FollowerMask = 0xC0;
constexpr unsigned FollowerBits = 6;
constexpr unsigned FollowerPart = 0x3F;

unsigned Byte(std::string_view p_strText, std::size_t p_iPosition) {
    return p_iPosition < p_strText.size() ? static_cast<std::uint8_t>(p_strText[p_iPosition]) : 0;
}

/// One character: its code, and how many bytes it takes.
struct Character {
    unsigned m_iCode = 0;
    std::size_t m_iBytes = 1;
};

/// How characters of so many bytes begin.
struct Form {
    unsigned m_iMask;
    unsigned m_iLead;
    unsigned m_iLowest;  // a smaller code has a shorter form, which is the only right one
    std::size_t m_iBytes;
};
constexpr Form Forms[]{
    {0x80, 0x00, 0, 1}, {0xE0, 0xC0, 0x80, 2}, {0xF0, 0xE0, 0x800, 3}, {0xF8, 0xF0, 0x10000, 4}};

/// The character at a position; nothing where none begins.
std::optional<Character> At(std::string_view p_strText, std::size_t p_iPosition) {
    constexpr unsigned Highest = 0x10FFFF;
    constexpr unsigned FirstSurrogate = 0xD800;
    constexpr unsigned LastSurrogate = 0xDFFF;
    const unsigned iLead = Byte(p_strText, p_iPosition);
    const auto* const objForm = std::ranges::find_if(Forms, [&](const Form& p_objForm) {
        return (iLead & p_objForm.m_iMask) == p_objForm.m_iLead;
    });
    if (objForm == std::end(Forms)) {
        return std::nullopt;
    }
    unsigned iCode = iLead & ~objForm->m_iMask;
    for (std::size_t i = 1; i < objForm->m_iBytes; ++i) {
        const unsigned iNext = Byte(p_strText, p_iPosition + i);
        if ((iNext & FollowerMask) != Follower) {
            return std::nullopt;
        }
        iCode = (iCode << FollowerBits) | (iNext & FollowerPart);
    }
    const bool bCharacter = iCode >= objForm->m_iLowest && iCode <= Highest &&
                            (iCode < FirstSurrogate || iCode > LastSurrogate);
    return bCharacter ? std::optional(Character{iCode, objForm->m_iBytes}) : std::nullopt;
}

std::string CodeOf(unsigned p_iByte) {
    constexpr std::string_view strDigits = "0123456789ABCDEF";
    constexpr unsigned iBase = 16;
    return {'<', strDigits[p_iByte / iBase], strDigits[p_iByte % iBase], '>'};
}

bool SteersTerminal(unsigned p_iCode) {
    constexpr unsigned Blank = 0x20;
    constexpr unsigned Delete = 0x7F;
    constexpr unsigned LastControl = 0x9F;
    return p_iCode < Blank || (p_iCode >= Delete && p_iCode <= LastControl);
}

}  // namespace

namespace MUtf8 {

std::string FromLatin1(std::string_view p_strBytes) {
    std::string strText;
    for (std::size_t i = 0; i < p_strBytes.size(); ++i) {
        const unsigned iByte = Byte(p_strBytes, i);
        if (iByte < Follower) {
            strText += static_cast<char>(iByte);
        } else {
            strText += static_cast<char>(FirstOfTwo | (iByte >> FollowerBits));
            strText += static_cast<char>(Follower | (iByte & FollowerPart));
        }
    }
    return strText;
}

std::optional<std::string> ToLatin1(std::string_view p_strText) {
    constexpr unsigned Largest = 0xFF;
    std::string strBytes;
    for (std::size_t i = 0; i < p_strText.size();) {
        const auto objCharacter = At(p_strText, i);
        if (!objCharacter || objCharacter->m_iCode > Largest) {
            return std::nullopt;
        }
        strBytes += static_cast<char>(objCharacter->m_iCode);
        i += objCharacter->m_iBytes;
    }
    return strBytes;
}

std::size_t Length(std::string_view p_strText) {
    std::size_t iLength = 0;
    for (std::size_t i = 0; i < p_strText.size(); ++iLength) {
        const auto objCharacter = At(p_strText, i);
        i += objCharacter ? objCharacter->m_iBytes : 1;
    }
    return iLength;
}

std::string Printable(std::string_view p_strText) {
    std::string strText;
    for (std::size_t i = 0; i < p_strText.size();) {
        const auto objCharacter = At(p_strText, i);
        if (!objCharacter) {
            strText += CodeOf(Byte(p_strText, i++));
            continue;
        }
        strText += SteersTerminal(objCharacter->m_iCode)
                       ? CodeOf(objCharacter->m_iCode)
                       : std::string(p_strText.substr(i, objCharacter->m_iBytes));
        i += objCharacter->m_iBytes;
    }
    return strText;
}

}  // namespace MUtf8
