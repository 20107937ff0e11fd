#include "cli/MStateName.h"

#include <cctype>

std::string MStateName::Of(std::string_view p_strLink, std::string_view p_strName) {
    constexpr std::string_view Digits = "0123456789abcdef";
    constexpr unsigned iHalf = 4;
    std::string strName = std::string(p_strLink) + "-";
    for (const char cByte : p_strName) {
        const auto iByte = static_cast<unsigned char>(cByte);
        if (std::isalnum(iByte) != 0 || cByte == '.' || cByte == '-') {
            strName += cByte;
        } else {
            strName += {'_', Digits[iByte >> iHalf], Digits[iByte & 0xFU]};
        }
    }
    return strName;
}
