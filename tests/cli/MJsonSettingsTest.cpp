#include "cli/MJsonSettings.h"

#include "model/MSettingText.h"
#include "tests/cli/CJsonSchema.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using Texts = std::vector<std::string>;

Texts Problems(const CFileContent& p_objContent) {
    Texts strTexts;
    for (const CFileProblem& objProblem : p_objContent.m_objProblems) {
        strTexts.push_back(objProblem.Text());
    }
    return strTexts;
}

Texts ProblemsOf(const std::string& p_strBytes) {
    return Problems(MJsonSettings::Read(p_strBytes));
}

/// A file with these members of its settings.
std::string File(const std::string& p_strSettings) {
    return R"({"varden": 1, "settings": {)" + p_strSettings + "}}";
}

/// What one setting's value in JSON is read as; what is wrong with it otherwise.
std::string ReadAs(const std::string& p_strName, const std::string& p_strJson) {
    const CFileContent objContent =
        MJsonSettings::Read(File("\"" + p_strName + "\": " + p_strJson));
    const MSettings::Row& objRow = MSettings::Get(p_strName);
    if (!objContent.m_objProblems.empty()) {
        EXPECT_FALSE(objContent.m_objSnapshot.IsKnown(objRow));
        return objContent.m_objProblems.front().Text();
    }
    EXPECT_TRUE(objContent.m_objSnapshot.IsKnown(objRow));
    return MSettingText::Show(objRow, objContent.m_objSnapshot.Items()).value_or("?");
}

void ExpectRefused(const std::string& p_strName, const std::string& p_strJson) {
    const std::string strRead = ReadAs(p_strName, p_strJson);
    EXPECT_TRUE(strRead.starts_with(p_strName + ": ")) << strRead;
    EXPECT_NE(strRead.find("is none of its values"), std::string::npos) << strRead;
    EXPECT_NE(strRead.find(MSettingText::Allowed(MSettings::Get(p_strName))), std::string::npos);
}

}  // namespace

TEST(MJsonSettings, WhatIsWrittenIsReadAgainAndFitsTheSchema) {
    CSnapshot objSnapshot;
    const auto Set = [&](const char* p_strName, const char* p_strValue) {
        MSettingText::Set(MSettings::Get(p_strName), objSnapshot.Items(), p_strValue);
        objSnapshot.SetKnown(MSettings::Get(p_strName));
    };
    Set("feed-adj", "-1.5");
    Set("font-code", "UTF-8");
    Set("code-1", "0F");
    Set("ip-address", "10.1.2.3");
    Set("dhcp-host-name", "label-7");
    Set("country", "7");
    const std::string strText = MJsonSettings::Text(objSnapshot);
    EXPECT_EQ(CJsonSchema("settings-file.schema.json").Complaint(strText), "");
    EXPECT_EQ(nlohmann::ordered_json::parse(strText),
              nlohmann::ordered_json::parse(File(R"("feed-adj": -1.5, "font-code": "UTF-8",
                  "country": 7, "ip-address": "10.1.2.3", "dhcp-host-name": "label-7",
                  "code-1": "0F")")));
    const CFileContent objContent = MJsonSettings::Read(strText);
    EXPECT_EQ(Problems(objContent), Texts{});
    for (const MSettings::Row& objRow : MSettings::All()) {
        EXPECT_EQ(objContent.m_objSnapshot.IsKnown(objRow), objSnapshot.IsKnown(objRow));
        EXPECT_TRUE(
            MSettingText::Same(objRow, objContent.m_objSnapshot.Items(), objSnapshot.Items()))
            << objRow.m_strName;
    }
}

TEST(MJsonSettings, EveryDefaultComesBack) {
    const CSnapshot objSnapshot{CItemManager()};
    const CFileContent objContent = MJsonSettings::Read(MJsonSettings::Text(objSnapshot));
    EXPECT_EQ(Problems(objContent), Texts{});
    for (const MSettings::Row& objRow : MSettings::All()) {
        EXPECT_TRUE(objContent.m_objSnapshot.IsKnown(objRow)) << objRow.m_strName;
    }
}

TEST(MJsonSettings, Numbers) {
    EXPECT_EQ(ReadAs("feed-adj", "1.5"), "1.5");
    EXPECT_EQ(ReadAs("feed-adj", "-50"), "-50.0");
    EXPECT_EQ(ReadAs("feed-adj", "5.0"), "5.0");
    EXPECT_EQ(ReadAs("feed-adj", "15e-1"), "1.5");
    EXPECT_EQ(ReadAs("country", "7.0"), "7");
    for (const char* const strJson :
         {"50.1", "-51", "0.05", "1e300", "-1e300", "99999999999999999999", "\"1.5\"", "true",
          "null", "[1]", "{}"}) {
        ExpectRefused("feed-adj", strJson);
    }
    ExpectRefused("country", "7.5");
}

TEST(MJsonSettings, Lists) {
    EXPECT_EQ(ReadAs("speed", "\"9600bps\""), "9600bps");
    EXPECT_EQ(ReadAs("speed", "\"9600BPS\""), "9600bps");
    for (const char* const strJson : {"\"9600\"", "2", "\"\"", "null", "\"\\u20ac\""}) {
        ExpectRefused("speed", strJson);
    }
}

TEST(MJsonSettings, HexadecimalDigits) {
    EXPECT_EQ(ReadAs("code-1", "\"1b\""), "1B");
    for (const char* const strJson : {"10", "\"1G\"", "\"100\"", "\"\""}) {
        ExpectRefused("code-1", strJson);
    }
}

TEST(MJsonSettings, AddressesAndTexts) {
    EXPECT_EQ(ReadAs("subnet-mask", "\"255.255.0.0\""), "255.255.0.0");
    EXPECT_EQ(ReadAs("dhcp-host-name", "\"M\xC3\xBCller\""), "M\xFCller");
    EXPECT_EQ(ReadAs("dhcp-host-name", "\"\""), "");
    ExpectRefused("subnet-mask", "\"255.255.0\"");
    for (const char* const strJson :
         {"\"12345678901234567\"", "\"a|}\"", "\"a\\nb\"", "\"\xE2\x82\xAC\"", "7"}) {
        ExpectRefused("dhcp-host-name", strJson);
    }
    ExpectRefused("dhcp-client-id", "\"FF\"");
}

TEST(MJsonSettings, EverythingThatIsWrongIsFoundAtOnce) {
    const Texts strProblems = ProblemsOf(
        R"({"varden": 2, "name": [1, {"a": 2}], "settings": {"speed": 5, "sped": "9600bps",
            "parity": "EVEN", "parity": "ODD", "dhcp": {"on": [true]}, "x-adj": 100}, "settings": 7})");
    ASSERT_EQ(strProblems.size(), 9U) << ::testing::PrintToString(strProblems);
    EXPECT_EQ(strProblems[0], "\"varden\" is not 1, the one format that there is");
    EXPECT_EQ(strProblems[1], "\"name\" is no part of a settings file");
    EXPECT_TRUE(
        strProblems[2].starts_with("speed: 5 is none of its values, which it has as a text ("));
    EXPECT_EQ(strProblems[3], "sped: there is no such setting");
    EXPECT_EQ(strProblems[4], "parity: it stands twice");
    EXPECT_TRUE(strProblems[5].starts_with("dhcp: {} is none of its values"));
    EXPECT_EQ(strProblems[6], "x-adj: 100 is none of its values (-99.5 to 99.5)");
    EXPECT_EQ(strProblems[7], "\"settings\" stands twice");
    EXPECT_EQ(strProblems[8], "\"settings\" is no object");
}

TEST(MJsonSettings, WhatIsMissingIsTold) {
    EXPECT_EQ(ProblemsOf("{}"), (Texts{"\"varden\" is missing", "\"settings\" is missing"}));
    EXPECT_EQ(ProblemsOf(R"({"varden": 1})"), (Texts{"\"settings\" is missing"}));
    EXPECT_EQ(ProblemsOf(R"({"settings": {}})"), (Texts{"\"varden\" is missing"}));
    EXPECT_EQ(ProblemsOf(File("")), Texts{});
}

TEST(MJsonSettings, WhatIsNoObjectIsTold) {
    for (const char* const strText :
         {"[]", "7", "null", "\"text\"", R"([{"varden": 1, "settings": {}}])"}) {
        EXPECT_EQ(ProblemsOf(strText), (Texts{"the file is no JSON object"})) << strText;
    }
}

TEST(MJsonSettings, WhatIsNoJsonIsToldWithItsPlace) {
    for (const char* const strText : {"", "{", "{\"varden\": 1,}", "{'varden': 1}", "{} {}", "\xFF",
                                      "{\"a\": 01}", "{\"\xC3\": 1}"}) {
        const Texts strProblems = ProblemsOf(strText);
        ASSERT_FALSE(strProblems.empty()) << strText;
        EXPECT_TRUE(strProblems.back().starts_with("it is no JSON: parse error at line 1, column "))
            << strProblems.back();
    }
}

TEST(MJsonSettings, WhatLiesTooDeepIsRefusedAndNotFollowed) {
    const std::string strDeep = std::string(500'000, '[');
    const Texts strProblems = ProblemsOf(File("\"speed\": " + strDeep));
    EXPECT_EQ(strProblems.back(), "its objects and lists lie too deep in each other");
}
