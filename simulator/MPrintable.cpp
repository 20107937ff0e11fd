#include "simulator/MPrintable.h"

namespace MPrintable {

std::string Printable(std::string_view p_strBytes) {
    constexpr std::string_view strDigits = "0123456789ABCDEF";
    std::string strText;
    for (const char c : p_strBytes) {
        if (c >= ' ' && c <= '~' && c != '<') {
            strText += c;
            continue;
        }
        const auto iCode = static_cast<unsigned char>(c);
        strText += '<';
        strText += strDigits[iCode / 16U];
        strText += strDigits[iCode % 16U];
        strText += '>';
    }
    return strText;
}

std::string ByteCount(std::size_t p_iBytes) {
    return std::to_string(p_iBytes) + (p_iBytes == 1 ? " byte" : " bytes");
}

}  // namespace MPrintable
