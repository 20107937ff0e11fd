#include "platform/qt/MSerialSettings.h"

#include <array>
#include <cstddef>

namespace {

using MSerialSettings::Parity;

template <typename Value>
struct Word {
    std::string_view m_strText;
    Value m_vValue;
};

constexpr std::array<Word<std::int32_t>, 6> Speeds{{
    {"2400", 2400},
    {"4800", 4800},
    {"9600", 9600},
    {"19200", 19200},
    {"38400", 38400},
    {"115200", 115200},
}};
constexpr std::array<Word<Parity>, 3> Parities{{
    {"N", Parity::None},
    {"E", Parity::Even},
    {"O", Parity::Odd},
}};
constexpr std::array<Word<std::int16_t>, 2> DataBits{{{"7", 7}, {"8", 8}}};
constexpr std::array<Word<std::int16_t>, 2> StopBits{{{"1", 1}, {"2", 2}}};

/// Takes the word before the next comma off the front of a text.
std::string_view TakeWord(std::string_view& p_strRest) {
    const std::size_t iEnd = p_strRest.find(',');
    const std::string_view strWord = p_strRest.substr(0, iEnd);
    p_strRest.remove_prefix(iEnd == std::string_view::npos ? p_strRest.size() : iEnd + 1);
    return strWord;
}

template <typename Value, std::size_t Count>
bool Find(const std::array<Word<Value>, Count>& p_objWords, std::string_view p_strText,
          Value& p_vValue) {
    for (const Word<Value>& objWord : p_objWords) {
        if (objWord.m_strText == p_strText) {
            p_vValue = objWord.m_vValue;
            return true;
        }
    }
    return false;
}

}  // namespace

namespace MSerialSettings {

std::optional<Values> Parse(std::string_view p_strText) {
    Values objValues;
    std::string_view strRest = p_strText;
    const bool bBegins = Find(Speeds, TakeWord(strRest), objValues.m_iSpeed) &&
                         Find(Parities, TakeWord(strRest), objValues.m_iParity) &&
                         Find(DataBits, TakeWord(strRest), objValues.m_iDataBits);
    // The last word ends with the text: it is the rest, and holds no comma.
    if (!bBegins || !Find(StopBits, strRest, objValues.m_iStopBits)) {
        return std::nullopt;
    }
    return objValues;
}

}  // namespace MSerialSettings
