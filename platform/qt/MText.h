#pragma once

#include <QString>

#include <string>

/// Text between the toolkit (Unicode) and the rooms below (one byte a character, ISO 8859-1).
namespace MText {

/// Every byte becomes the character of its code.
QString ToQt(const std::string& p_strText);

/// Every character becomes one byte, a character that has none becomes "?".
std::string FromQt(const QString& p_strText);

}  // namespace MText
