#pragma once

#include "cli/CFileContent.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <set>
#include <string>

/// Takes a settings file in JSON piece by piece, as the parser finds them, and goes on behind what
/// is wrong. A call's result tells the parser whether to go on.
class CJsonSettingsReader : public nlohmann::json_sax<nlohmann::json> {
public:
    /// Objects and arrays in each other; what lies deeper is refused.
    static constexpr std::size_t Deepest = 16;

    /// What was read. To be called once, behind the last piece.
    CFileContent Finish();

    bool null() override { return Take(nullptr); }
    bool boolean(bool p_bValue) override { return Take(p_bValue); }
    bool number_integer(number_integer_t p_iValue) override { return Take(p_iValue); }
    bool number_unsigned(number_unsigned_t p_iValue) override { return Take(p_iValue); }
    bool number_float(number_float_t p_dValue, const string_t& /*p_strText*/) override {
        return Take(p_dValue);
    }
    bool string(string_t& p_strValue) override { return Take(p_strValue); }
    bool binary(binary_t& /*p_objValue*/) override { return false; }  // JSON has none
    bool start_object(std::size_t /*p_iCount*/) override { return Enter(true); }
    bool key(string_t& p_strKey) override;
    bool end_object() override { return Leave(); }
    bool start_array(std::size_t /*p_iCount*/) override { return Enter(false); }
    bool end_array() override { return Leave(); }
    bool parse_error(std::size_t p_iPosition, const std::string& p_strLast,
                     const nlohmann::json::exception& p_objError) override;

private:
    using Json = nlohmann::ordered_json;

    bool Take(const Json& p_objValue);
    bool Enter(bool p_bObject);
    bool Leave();
    void TakeMember(const Json& p_objValue);
    void TakeSetting(const Json& p_objValue);
    [[nodiscard]] bool InFile() const { return m_iDepth == 1 && m_bFileIsObject; }
    [[nodiscard]] bool InSettings() const { return m_iDepth == 2 && m_bInSettings; }

    CFileContent m_objContent;
    std::size_t m_iDepth = 0;
    bool m_bFileIsObject = false;
    bool m_bInSettings = false;  // the object around at depth 2 is that of the settings
    bool m_bBroken = false;      // there is no more to come: what is missing is no wonder
    std::string m_strMember;     // the latest key of the file's object
    std::string m_strSetting;    // and of the settings'
    std::set<std::string> m_strMembers;
    std::set<std::string> m_strSettings;
};
