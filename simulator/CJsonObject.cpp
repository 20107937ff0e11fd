#include "simulator/CJsonObject.h"

namespace {

std::string Quoted(std::string_view p_strBytes) {
    constexpr std::string_view strDigits = "0123456789abcdef";
    std::string strText = "\"";
    for (const char c : p_strBytes) {
        if (c == '"' || c == '\\') {
            strText += '\\';
        }
        if (c >= ' ' && c <= '~') {
            strText += c;
            continue;
        }
        const auto iCode = static_cast<unsigned char>(c);
        strText += "\\u00";
        strText += strDigits[iCode / 16U];
        strText += strDigits[iCode % 16U];
    }
    return strText + '"';
}

}  // namespace

CJsonObject& CJsonObject::Add(std::string_view p_strKey, std::string_view p_strValue) {
    m_strMembers += m_strMembers.empty() ? "" : ", ";
    m_strMembers.append(Quoted(p_strKey)).append(": ").append(p_strValue);
    return *this;
}

CJsonObject& CJsonObject::Text(std::string_view p_strKey, std::string_view p_strBytes) {
    return Add(p_strKey, Quoted(p_strBytes));
}

CJsonObject& CJsonObject::Texts(std::string_view p_strKey,
                                const std::vector<std::string>& p_strTexts) {
    std::string strList;
    for (const std::string& strText : p_strTexts) {
        strList.append(strList.empty() ? "" : ", ").append(Quoted(strText));
    }
    return Add(p_strKey, '[' + strList + ']');
}

CJsonObject& CJsonObject::Number(std::string_view p_strKey, std::uint64_t p_iNumber) {
    return Add(p_strKey, std::to_string(p_iNumber));
}

CJsonObject& CJsonObject::Seconds(std::string_view p_strKey, std::chrono::microseconds p_iTime) {
    constexpr std::int64_t iSecond = 1'000'000;
    const std::string strDecimals = std::to_string(iSecond + p_iTime.count() % iSecond);
    return Add(p_strKey, std::to_string(p_iTime.count() / iSecond) + '.' + strDecimals.substr(1));
}

CJsonObject& CJsonObject::Flag(std::string_view p_strKey, bool p_bFlag) {
    return Add(p_strKey, p_bFlag ? "true" : "false");
}

CJsonObject& CJsonObject::Object(std::string_view p_strKey, const CJsonObject& p_objObject) {
    return Add(p_strKey, p_objObject.Written());
}

CJsonObject& CJsonObject::Append(const CJsonObject& p_objOther) {
    m_strMembers += m_strMembers.empty() || p_objOther.m_strMembers.empty() ? "" : ", ";
    m_strMembers += p_objOther.m_strMembers;
    return *this;
}
