#include "platform/qt/MText.h"

#include <QList>

namespace MText {

QString ToQt(const std::string& p_strText) {
    return QString::fromLatin1(p_strText.data(), static_cast<qsizetype>(p_strText.size()));
}

std::string FromQt(const QString& p_strText) {
    constexpr char32_t iHighest = 0xFF;
    std::string strText;
    for (const char32_t iCharacter : p_strText.toUcs4()) {
        strText += iCharacter <= iHighest ? static_cast<char>(iCharacter) : '?';
    }
    return strText;
}

}  // namespace MText
