#include "platform/usb/MDeviceId.h"

#include <algorithm>

namespace {

constexpr std::size_t LengthBytes = 2;

bool IsPrintable(std::uint8_t p_iByte) {
    constexpr std::uint8_t First = 0x20;
    constexpr std::uint8_t Last = 0x7E;
    return p_iByte >= First && p_iByte <= Last;
}

char Upper(char p_c) {
    return p_c >= 'a' && p_c <= 'z' ? static_cast<char>(p_c - 'a' + 'A') : p_c;
}

bool EqualsIgnoringCase(std::string_view p_strLeft, std::string_view p_strRight) {
    return std::equal(
        p_strLeft.begin(), p_strLeft.end(), p_strRight.begin(), p_strRight.end(),
        [](char p_cLeft, char p_cRight) { return Upper(p_cLeft) == Upper(p_cRight); });
}

std::string_view Trim(std::string_view p_strText) {
    constexpr std::string_view strBlanks = " \t\r\n";
    const std::size_t iBegin = p_strText.find_first_not_of(strBlanks);
    if (iBegin == std::string_view::npos) {
        return {};
    }
    return p_strText.substr(iBegin, p_strText.find_last_not_of(strBlanks) - iBegin + 1);
}

}  // namespace

namespace MDeviceId {

std::string Text(std::span<const std::uint8_t> p_objAnswer) {
    constexpr int iHighByte = 8;
    // Two printable bytes in front are text: as a length they would be absurd.
    const bool bLength = p_objAnswer.size() >= LengthBytes &&
                         !(IsPrintable(p_objAnswer[0]) && IsPrintable(p_objAnswer[1]));
    auto objText = p_objAnswer;
    if (bLength) {
        const std::size_t iLength =
            static_cast<std::size_t>(p_objAnswer[0] << iHighByte) + p_objAnswer[1];
        objText = p_objAnswer.subspan(LengthBytes);
        // Cut what lies behind the text, but never a byte that a wrong count leaves out: a text
        // goes on up to its last ";".
        const std::size_t iCounted = iLength >= LengthBytes ? iLength - LengthBytes : 0;
        if (iCounted > 0 && iCounted < objText.size() && objText[iCounted - 1] == ';') {
            objText = objText.first(iCounted);
        }
    }
    return {objText.begin(), std::find(objText.begin(), objText.end(), 0)};
}

std::vector<std::string> Makers(std::string_view p_strText) {
    std::vector<std::string> strMakers;
    while (!p_strText.empty()) {
        const std::size_t iEnd = std::min(p_strText.find(';'), p_strText.size());
        const std::string_view strPair = p_strText.substr(0, iEnd);
        const std::size_t iColon = strPair.find(':');
        if (iColon != std::string_view::npos) {
            const std::string_view strKey = Trim(strPair.substr(0, iColon));
            if (EqualsIgnoringCase(strKey, "MFG") || EqualsIgnoringCase(strKey, "MANUFACTURER")) {
                strMakers.emplace_back(Trim(strPair.substr(iColon + 1)));
            }
        }
        p_strText.remove_prefix(std::min(iEnd + 1, p_strText.size()));
    }
    return strMakers;
}

bool IsMaker(std::string_view p_strText, std::string_view p_strMaker) {
    return std::ranges::any_of(Makers(p_strText), [&](const std::string& p_strNamed) {
        return EqualsIgnoringCase(p_strNamed, p_strMaker);
    });
}

}  // namespace MDeviceId
