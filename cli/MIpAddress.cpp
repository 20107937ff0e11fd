#include "cli/MIpAddress.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <optional>

namespace {

constexpr std::size_t Groups = 8;
constexpr std::size_t GroupDigits = 4;

/// How many groups of an IPv6 address p_strText has: an IPv4 address at the end counts for two.
/// Nothing when one of them is none. An empty text has none.
std::optional<std::size_t> CountGroups(std::string_view p_strText) {
    std::size_t iCount = 0;
    while (!p_strText.empty()) {
        const std::size_t iEnd = p_strText.find(':');
        const bool bLast = iEnd == std::string_view::npos;
        const std::string_view strGroup = p_strText.substr(0, iEnd);
        if (bLast && MIpAddress::IsV4(strGroup)) {
            return iCount + 2;
        }
        const bool bHexa = std::ranges::all_of(
            strGroup, [](unsigned char p_c) { return std::isxdigit(p_c) != 0; });
        const bool bEndsWithColon = !bLast && iEnd + 1 == p_strText.size();
        if (strGroup.empty() || strGroup.size() > GroupDigits || !bHexa || bEndsWithColon) {
            return std::nullopt;
        }
        ++iCount;
        p_strText.remove_prefix(bLast ? p_strText.size() : iEnd + 1);
    }
    return iCount;
}

}  // namespace

namespace MIpAddress {

bool IsV4(std::string_view p_strText) {
    constexpr int Ten = 10;
    constexpr int Largest = 255;
    constexpr int Parts = 4;
    constexpr std::size_t MostDigits = 3;
    for (int i = 1; i <= Parts; ++i) {
        const std::size_t iEnd = i == Parts ? p_strText.size() : p_strText.find('.');
        if (iEnd == 0 || iEnd == std::string_view::npos || iEnd > MostDigits) {
            return false;
        }
        int iPart = 0;
        for (const char cDigit : p_strText.substr(0, iEnd)) {
            if (cDigit < '0' || cDigit > '9') {
                return false;
            }
            iPart = iPart * Ten + (cDigit - '0');
        }
        if (iPart > Largest) {
            return false;
        }
        p_strText.remove_prefix(std::min(iEnd + 1, p_strText.size()));
    }
    return true;
}

bool IsV6(std::string_view p_strText) {
    const std::size_t iZone = p_strText.find('%');
    if (iZone != std::string_view::npos) {
        // The name of this computer's own link, or its number.
        constexpr std::string_view Name =
            "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-";
        const std::string_view strZone = p_strText.substr(iZone + 1);
        if (strZone.empty() || strZone.find_first_not_of(Name) != std::string_view::npos) {
            return false;
        }
    }
    p_strText = p_strText.substr(0, iZone);
    const std::size_t iGap = p_strText.find("::");
    if (iGap == std::string_view::npos) {
        return CountGroups(p_strText) == Groups;
    }
    const std::string_view strFront = p_strText.substr(0, iGap);
    const auto iFront = CountGroups(strFront);
    const auto iBack = CountGroups(p_strText.substr(iGap + 2));
    return iFront && iBack && *iFront + *iBack < Groups &&
           strFront.find('.') == std::string_view::npos;
}

bool IsHostName(std::string_view p_strText) {
    constexpr std::size_t Longest = 253;
    const bool bPlain = std::ranges::all_of(p_strText, [](unsigned char p_c) {
        return std::isalnum(p_c) != 0 || p_c == '-' || p_c == '_' || p_c == '.';
    });
    const bool bDots = p_strText.starts_with('.') || p_strText.find("..") != std::string_view::npos;
    if (p_strText.empty() || p_strText.size() > Longest || !bPlain || bDots ||
        p_strText.starts_with('-')) {
        return false;
    }
    const bool bDigits = p_strText.find_first_not_of("0123456789.") == std::string_view::npos;
    return !bDigits || IsV4(p_strText);
}

}  // namespace MIpAddress
