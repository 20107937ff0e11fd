#include "protocol/MSettingRoute.h"
#include "tests/cli/CCliFixture.h"

namespace {

class CListCommandTest : public CCliFixture {
protected:
    Json Setting(const std::string& p_strName) {
        return RunJson({"list", p_strName}).m_objJson["settings"][p_strName];
    }
};

TEST_F(CListCommandTest, ShowsEverySettingInTheCataloguesOrder) {
    std::vector<std::string> strNames;
    for (const MSettings::Row& objRow : MSettings::All()) {
        strNames.emplace_back(objRow.m_strName);
    }
    EXPECT_EQ(Keys(RunJson({"list"}).m_objJson["settings"]), strNames);
    std::istringstream objLines(Run({"list"}).m_strOut);
    std::string strWord;
    objLines >> strWord;
    EXPECT_EQ(strWord, "NAME");
    for (const std::string& strName : strNames) {
        std::string strLine;
        std::getline(objLines, strLine);
        objLines >> strWord;
        EXPECT_EQ(strWord, strName);
    }
}

TEST_F(CListCommandTest, ANumberHasRangeAndStepInItsOwnUnit) {
    EXPECT_EQ(Setting("x-adj"), Json::parse(R"({"label": "X ADJ.", "kind": "number",
        "allowed": "-99.5 to 99.5", "values": null, "min": -99.5, "max": 99.5, "step": 0.5,
        "default": 0.0, "read": "parameter", "writable": true, "cuts": null})"));
    EXPECT_EQ(Setting("country")["max"], 9);
    EXPECT_EQ(Setting("country")["writable"], false);
}

TEST_F(CListCommandTest, HexadecimalDigitsAreAText) {
    EXPECT_EQ(Setting("euro-code"), Json::parse(R"J({"label": "EURO CODE", "kind": "hexadecimal",
        "allowed": "20 to FF (hexadecimal)", "values": null, "min": "20", "max": "FF", "step": 1,
        "default": "B0", "read": "parameter", "writable": true, "cuts": null})J"));
    EXPECT_EQ(Setting("code-3")["min"], "00");
}

TEST_F(CListCommandTest, AListHasItsEntries) {
    EXPECT_EQ(Setting("parity"), Json::parse(R"({"label": "PARITY", "kind": "list",
        "allowed": "NONE, EVEN, ODD", "values": ["NONE", "EVEN", "ODD"], "min": null, "max": null,
        "step": null, "default": "EVEN", "read": "expansion", "writable": true, "cuts": "serial"})"));
}

TEST_F(CListCommandTest, AddressAndText) {
    const Json objAddress = Setting("ip-address");
    EXPECT_EQ(objAddress["kind"], "address");
    EXPECT_EQ(objAddress["default"], "192.168.10.20");
    EXPECT_EQ(objAddress["cuts"], "lan");
    const Json objText = Setting("dhcp-client-id");
    EXPECT_EQ(objText["kind"], "text");
    EXPECT_EQ(objText["default"], std::string(32, 'F'));
    EXPECT_EQ(objText["allowed"], "32 characters, none of { | }");
}

TEST_F(CListCommandTest, TellsWhatIsNeverReportedOrNeverSet) {
    EXPECT_EQ(Setting("stop-bit")["read"], nullptr);
    EXPECT_EQ(Setting("stop-bit")["writable"], true);
    EXPECT_EQ(Setting("ambient-sensor")["read"], "sensor");
    EXPECT_EQ(Setting("ambient-sensor")["writable"], false);
    EXPECT_EQ(Setting("feed-adj")["read"], "adjustment");
    EXPECT_EQ(Setting("lan")["read"], "lan");
}

TEST_F(CListCommandTest, ShowsTheNamedOnesInTheCataloguesOrder) {
    EXPECT_EQ(Keys(RunJson({"list", "parity", "speed"}).m_objJson["settings"]),
              (std::vector<std::string>{"speed", "parity"}));
    EXPECT_EQ(Run({"list", "parity"}).m_strOut,
              "NAME    LABEL   STEP  READ       WRITE  CUTS    VALUES\n"
              "parity  PARITY  -     expansion  yes    serial  NONE, EVEN, ODD; default EVEN\n");
}

TEST_F(CListCommandTest, AnUnknownNameIsRefused) {
    const Ran objRan = RunJson({"list", "speed", "sped"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "There is no setting \"sped\"");
}

TEST_F(CListCommandTest, OnATerminalNoLineIsTooWide) {
    m_iWidth = 120;
    std::istringstream objLines(Run({"list"}).m_strOut);
    for (std::string strLine; std::getline(objLines, strLine);) {
        EXPECT_LE(strLine.size(), 120U) << strLine;
    }
}

}  // namespace
