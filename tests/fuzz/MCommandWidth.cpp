#include "tests/fuzz/MCommandWidth.h"

#include "tests/golden/MGolden.h"

#include <array>
#include <string_view>

namespace {

/// Commands that carry no settings. A RAM clear has two forms, told by where they end.
constexpr std::array<std::string_view, 6> Others{"{WS|}",   "{HD001,A|}", "{Z10|}",
                                                 "{Z6;0|}", "{Z6;01|}",   "{WT;1000,1|}"};
constexpr std::array<std::string_view, 2> RamClears{"{Z4;0|}", "{Z4;00|}"};
constexpr std::string_view ReadRequest = "{Z5;0|}";
constexpr std::string_view TestPrint = "{Z3;001000070105700010000|}";
constexpr std::size_t Head = 4;   // up to the ";"
constexpr std::size_t Group = 5;  // and the group's digit

/// p_strLike without its digits' values: as long, with its end in place.
bool IsLike(std::string_view p_strBytes, std::string_view p_strLike) {
    if (p_strBytes.size() < p_strLike.size()) {
        return false;
    }
    for (std::size_t i = 0; i < p_strLike.size(); ++i) {
        const bool bDigit = p_strBytes[i] >= '0' && p_strBytes[i] <= '9';
        const bool bHead = i < 3;
        const bool bSame = p_strBytes[i] == p_strLike[i];
        if (!bSame && (bHead || !bDigit || p_strLike[i] < '0' || p_strLike[i] > '9')) {
            return false;
        }
    }
    return true;
}

/// The golden command that begins as p_strBytes do, by which fields of any text are allowed.
std::size_t WidthOfSet(std::string_view p_strBytes) {
    for (const auto& strCommands : {MGolden::SetCommands(), MGolden::LanSetCommands()}) {
        for (const std::string& strCommand : strCommands) {
            const bool bGroup = strCommand.starts_with("{Z2;") || strCommand.starts_with("{IP;");
            const std::size_t iSame = bGroup ? Group : Head;
            if (p_strBytes.size() >= strCommand.size() &&
                p_strBytes.substr(0, iSame) == std::string_view(strCommand).substr(0, iSame) &&
                p_strBytes.substr(strCommand.size() - 2, 2) == "|}") {
                return strCommand.size();
            }
        }
    }
    return 0;
}

}  // namespace

std::size_t MCommandWidth::Of(std::string_view p_strBytes) {
    for (const auto& strLikes :
         {std::span<const std::string_view>(Others), std::span<const std::string_view>(RamClears),
          std::span(&ReadRequest, 1), std::span(&TestPrint, 1)}) {
        for (const std::string_view strLike : strLikes) {
            if (IsLike(p_strBytes, strLike)) {
                return strLike.size();
            }
        }
    }
    return WidthOfSet(p_strBytes);
}
