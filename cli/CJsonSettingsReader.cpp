#include "cli/CJsonSettingsReader.h"

#include "cli/MFileText.h"
#include "cli/MJsonSettings.h"
#include "cli/MUtf8.h"
#include "model/MSettingText.h"

#include <cmath>
#include <cstdint>
#include <optional>

namespace {

using Json = nlohmann::ordered_json;
using MSettings::Kind;

constexpr const char* FormatMember = "varden";
constexpr const char* SettingsMember = "settings";

/// A number as people write it. One without a fraction is the same with and without a point.
std::string NumberText(const Json& p_objNumber) {
    constexpr double dLargest = 1e9;
    if (p_objNumber.is_number_float()) {
        const double dNumber = p_objNumber.get<double>();
        if (std::abs(dNumber) < dLargest && std::trunc(dNumber) == dNumber) {
            return std::to_string(static_cast<std::int64_t>(dNumber));
        }
    }
    return p_objNumber.dump();
}

/// What p_objValue says of a setting; nothing when it is no value of that kind.
std::optional<std::string> TextOf(const MSettings::Row& p_objRow, const Json& p_objValue) {
    const bool bNumber = p_objRow.m_iKind == Kind::Number && !p_objRow.m_objRange.m_bHexa;
    if (bNumber) {
        return p_objValue.is_number() ? std::optional(NumberText(p_objValue)) : std::nullopt;
    }
    return p_objValue.is_string() ? MUtf8::ToLatin1(p_objValue.get_ref<const std::string&>())
                                  : std::nullopt;
}

/// Stores a value; throws CSettingError for one that is none of the setting's.
void Store(const MSettings::Row& p_objRow, const CItemManager& p_objItems,
           const std::string& p_strText) {
    if (p_objRow.m_iKind != Kind::Text) {
        MSettingText::Set(p_objRow, p_objItems, p_strText);
    } else if (MFileText::IsValue(p_objRow, p_strText)) {
        (p_objItems.*p_objRow.m_objSlots.front())->SetValue(p_strText);
    } else {
        throw CSettingError(p_strText);
    }
}

const char* FormOf(const MSettings::Row& p_objRow) {
    if (p_objRow.m_iKind != Kind::Number) {
        return "a text";
    }
    return p_objRow.m_objRange.m_bHexa ? "hexadecimal digits as a text" : "a number";
}

}  // namespace

CFileContent CJsonSettingsReader::Finish() {
    if (m_bFileIsObject && !m_bBroken) {
        for (const char* const strMember : {FormatMember, SettingsMember}) {
            if (!m_strMembers.contains(strMember)) {
                m_objContent.Add(0, {}, std::string("\"") + strMember + "\" is missing");
            }
        }
    }
    return std::move(m_objContent);
}

bool CJsonSettingsReader::key(string_t& p_strKey) {
    if (InFile()) {
        m_strMember = p_strKey;
        if (!m_strMembers.insert(p_strKey).second) {
            m_objContent.Add(0, {}, "\"" + p_strKey + "\" stands twice");
        } else if (p_strKey != FormatMember && p_strKey != SettingsMember) {
            m_objContent.Add(0, {}, "\"" + p_strKey + "\" is no part of a settings file");
        }
    } else if (InSettings()) {
        m_strSetting = p_strKey;
        if (!m_strSettings.insert(p_strKey).second) {
            m_objContent.Add(0, p_strKey, "it stands twice");
        } else if (MSettings::Find(p_strKey) == nullptr) {
            m_objContent.Add(0, p_strKey, "there is no such setting");
        }
    }
    return true;
}

bool CJsonSettingsReader::Take(const Json& p_objValue) {
    if (m_iDepth == 0) {
        m_objContent.Add(0, {}, "the file is no JSON object");
    } else if (InFile()) {
        TakeMember(p_objValue);
    } else if (InSettings()) {
        TakeSetting(p_objValue);
    }
    return true;
}

void CJsonSettingsReader::TakeMember(const Json& p_objValue) {
    if (m_strMember == SettingsMember) {
        m_objContent.Add(0, {}, "\"settings\" is no object");
    } else if (m_strMember == FormatMember && p_objValue != MJsonSettings::Format) {
        m_objContent.Add(0, {}, "\"varden\" is not 1, the one format that there is");
    }
}

void CJsonSettingsReader::TakeSetting(const Json& p_objValue) {
    const MSettings::Row* const objRow = MSettings::Find(m_strSetting);
    if (objRow == nullptr) {
        return;
    }
    const std::string strAllowed = " (" + MSettingText::Allowed(*objRow) + ")";
    const std::optional<std::string> strText = TextOf(*objRow, p_objValue);
    if (!strText) {
        m_objContent.Add(0, m_strSetting,
                         p_objValue.dump() + " is none of its values, which it has as " +
                             FormOf(*objRow) + strAllowed);
        return;
    }
    try {
        Store(*objRow, m_objContent.m_objSnapshot.Items(), *strText);
        m_objContent.m_objSnapshot.SetKnown(*objRow);
    } catch (const CSettingError&) {
        m_objContent.Add(0, m_strSetting,
                         p_objValue.dump() + " is none of its values" + strAllowed);
    }
}

bool CJsonSettingsReader::Enter(bool p_bObject) {
    const bool bSettings = InFile() && m_strMember == SettingsMember && p_bObject;
    if (m_iDepth == 0) {
        m_bFileIsObject = p_bObject;
    }
    if ((m_iDepth == 0 && !p_bObject) || (m_iDepth > 0 && !bSettings)) {
        Take(p_bObject ? Json::object() : Json::array());
    }
    if (m_iDepth == 1) {
        m_bInSettings = bSettings;
    }
    if (++m_iDepth > Deepest) {
        m_bBroken = true;
        m_objContent.Add(0, {}, "its objects and lists lie too deep in each other");
        return false;
    }
    return true;
}

bool CJsonSettingsReader::Leave() {
    --m_iDepth;
    return true;
}

bool CJsonSettingsReader::parse_error(std::size_t /*p_iPosition*/, const std::string& /*p_strLast*/,
                                      const nlohmann::json::exception& p_objError) {
    // The parser's words begin with its own name of the error.
    const std::string strWords = p_objError.what();
    const std::size_t iNameEnd = strWords.find("] ");
    m_bBroken = true;
    m_objContent.Add(0, {},
                     "it is no JSON: " +
                         strWords.substr(iNameEnd == std::string::npos ? 0 : iNameEnd + 2));
    return false;
}
