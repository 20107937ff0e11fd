#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// One JSON object, written member by member in the order in which they are added.
///
/// A text's bytes are characters of ISO 8859-1: a byte that is not printable 7-bit stands as its
/// code, such as \u00ff, so that whatever passed on a wire can be read back from it exactly.
/// A key is not looked at twice: whoever adds it twice has it twice.
class CJsonObject {
public:
    CJsonObject& Text(std::string_view p_strKey, std::string_view p_strBytes);
    CJsonObject& Texts(std::string_view p_strKey, const std::vector<std::string>& p_strTexts);
    CJsonObject& Number(std::string_view p_strKey, std::uint64_t p_iNumber);
    /// A time in seconds, with six decimals.
    CJsonObject& Seconds(std::string_view p_strKey, std::chrono::microseconds p_iTime);
    CJsonObject& Flag(std::string_view p_strKey, bool p_bFlag);
    CJsonObject& Object(std::string_view p_strKey, const CJsonObject& p_objObject);

    /// The members of p_objOther behind those that are there.
    CJsonObject& Append(const CJsonObject& p_objOther);

    /// How many characters its members have.
    [[nodiscard]] std::size_t Size() const { return m_strMembers.size(); }

    /// The object in one line, without an end of line.
    [[nodiscard]] std::string Written() const { return '{' + m_strMembers + '}'; }

private:
    CJsonObject& Add(std::string_view p_strKey, std::string_view p_strValue);

    std::string m_strMembers;
};
