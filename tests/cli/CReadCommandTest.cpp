#include "tests/cli/CCliFixture.h"

#include <chrono>

namespace {

constexpr std::size_t Readable = 73;  // items of the catalogue that an answer reports

class CReadCommandTest : public CCliFixture {
protected:
    CReadCommandTest() {
        m_objPrinter.Hold("speed", "4800bps");
        m_objPrinter.Hold("feed-adj", "-1.5");
        m_objPrinter.Hold("font-code", "PC-852");
        m_objPrinter.Hold("ip-address", "10.0.0.7");
        m_objPrinter.m_objHeld.m_objDhcpClientHost->SetValue("etikett-\xFC");
    }

    /// The answer that reports a setting fails.
    void FailAt(std::string_view p_strSetting) {
        m_objPrinter.m_objFailure.m_iKind = CFailure::Kind::NoReply;
        m_objPrinter.m_iFailing = MSettingRoute::ReportedIn(MSettings::Get(p_strSetting));
    }

    CFakePrinter& m_objPrinter = m_objPrinters.m_objPrinters["lan:a"];
};

TEST_F(CReadCommandTest, ReadsEverything) {
    const Ran objRan = RunJson({"read", "lan:a"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["target"], "lan:a");
    EXPECT_EQ(objRan.m_objJson["complete"], true);
    EXPECT_EQ(objRan.m_objJson["saved"], nullptr);
    const Json& objSettings = objRan.m_objJson["settings"];
    std::vector<std::string> strNames;
    std::size_t iItems = 0;
    for (const MSettings::Row& objRow : MSettings::All()) {
        const std::string strName(objRow.m_strName);
        strNames.push_back(strName);
        const bool bReported = strName != "stop-bit";
        EXPECT_EQ(objSettings[strName]["value"].is_null(), !bReported) << strName;
        EXPECT_EQ(objSettings[strName]["why"].is_null(), bReported) << strName;
        iItems += bReported ? objRow.Items().size() : 0;
    }
    EXPECT_EQ(Keys(objSettings), strNames);
    EXPECT_EQ(iItems, Readable);
    EXPECT_EQ(objSettings["speed"],
              Json::parse(R"({"value": "4800bps", "raw": null, "why": null})"));
    EXPECT_EQ(objSettings["feed-adj"]["value"], -1.5);
    EXPECT_EQ(objSettings["ip-address"]["value"], "10.0.0.7");
    EXPECT_EQ(objSettings["dhcp-host-name"]["value"], "etikett-\u00FC");
    EXPECT_EQ(objSettings["stop-bit"],
              Json::parse(R"({"value": null, "raw": null, "why": "not-reported"})"));
}

TEST_F(CReadCommandTest, ShowsPeopleATable) {
    const Ran objRan = Run({"read", "lan:a", "speed", "stop-bit", "dhcp-host-name"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_strOut, "NAME            LABEL           VALUE\n"
                               "dhcp-host-name  DHCP HOST NAME  etikett-\u00FC\n"
                               "speed           SPEED           4800bps\n"
                               "stop-bit        STOP BIT        not known: no answer reports it\n");
    EXPECT_EQ(objRan.m_strError, "");
}

TEST_F(CReadCommandTest, AsksForWhatIsNamedInTheCataloguesOrder) {
    const Ran objRan = RunJson({"read", "lan:a", "parity", "speed", "parity"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(Keys(objRan.m_objJson["settings"]), (std::vector<std::string>{"speed", "parity"}));
    EXPECT_EQ(m_objPrinters.m_strAsked, std::vector<std::string>{"lan:a: read speed, parity"});
}

TEST_F(CReadCommandTest, EveryNameThatIsNoneIsToldAndNothingIsSent) {
    const Ran objRan = RunJson({"read", "lan:a", "sped", "speed", "parrot"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "There is no setting \"sped\"");
    EXPECT_EQ(objRan.m_objJson["error"]["cause"], "nor \"parrot\"");
    EXPECT_EQ(Keys(objRan.m_objJson), std::vector<std::string>{"error"});
    EXPECT_TRUE(m_objPrinters.m_strAsked.empty());
}

TEST_F(CReadCommandTest, WhatNoAnswerReportsIsNothingToRead) {
    const Ran objRan = RunJson({"read", "lan:a", "stop-bit"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["cause"], "no answer of a printer reports stop-bit");
    EXPECT_TRUE(m_objPrinters.m_strAsked.empty());
}

TEST_F(CReadCommandTest, APrinterThatIsNoneIsRefused) {
    const Ran objRan = RunJson({"read", "somewhere"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "\"somewhere\" names no printer");
}

TEST_F(CReadCommandTest, WhoeverMakesPrintersMayRefuse) {
    m_objPrinter.m_objRefused.emplace(
        MExitCode::Wrong, CCommandError::Texts{"There are several", "a, b", "lan:a", {}});
    const Ran objRan = RunJson({"read", "lan:a"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["cause"], "a, b");
}

TEST_F(CReadCommandTest, ThePauseIsASecondUnlessGiven) {
    EXPECT_EQ(Run({"read", "lan:a"}).m_iCode, 0);
    EXPECT_EQ(Run({"read", "lan:a", "--pause", "0"}).m_iCode, 0);
    EXPECT_EQ(Run({"read", "lan:a", "--pause", "0.25"}).m_iCode, 0);
    EXPECT_EQ(Run({"read", "lan:a", "--pause", "10"}).m_iCode, 0);
    using std::chrono::milliseconds;
    EXPECT_EQ(m_objPrinters.m_iPauses,
              (std::vector<milliseconds>{milliseconds(1000), milliseconds(0), milliseconds(250),
                                         milliseconds(10'000)}));
}

TEST_F(CReadCommandTest, APauseIsFromNoneToTenSeconds) {
    for (const char* const strPause : {"-1", "10.001", "nan", "inf", "soon", ""}) {
        SCOPED_TRACE(strPause);
        const Ran objRan = RunJson({"read", "lan:a", std::string("--pause=") + strPause});
        EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    }
    EXPECT_TRUE(m_objPrinters.m_strAsked.empty());
}

TEST_F(CReadCommandTest, WhatCameBeforeAFailureIsTold) {
    FailAt("ip-address");
    const Ran objRan = RunJson({"read", "lan:a"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["complete"], false);
    EXPECT_EQ(objRan.m_objJson["settings"]["feed-adj"]["value"], -1.5);
    EXPECT_EQ(objRan.m_objJson["settings"]["ip-address"],
              Json::parse(R"({"value": null, "raw": null, "why": "failed"})"));
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "No answer from lan:a");
    const Ran objPeople = Run({"read", "lan:a", "feed-adj", "ip-address"});
    EXPECT_EQ(objPeople.m_iCode, MExitCode::Failed);
    EXPECT_TRUE(Has(objPeople.m_strOut, "-1.5\n"));
    EXPECT_TRUE(Has(objPeople.m_strOut, "not known: it could not be read\n"));
    EXPECT_TRUE(objPeople.m_strError.starts_with("varden: No answer from lan:a: "));
}

TEST_F(CReadCommandTest, AStatusInPlaceOfSettingsIsTold) {
    FailAt("ip-address");
    m_objPrinter.m_strInPlace = "06";
    m_objPrinter.m_strText = "Command Error";
    const Ran objRan = RunJson({"read", "lan:a"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "No settings from lan:a");
    EXPECT_EQ(objRan.m_objJson["error"]["cause"],
              "in their place it has told the status 06 Command Error");
    EXPECT_TRUE(Has(objRan.m_objJson["error"]["hint"], "try again")) << "it is switched on";
    EXPECT_EQ(objRan.m_objJson["complete"], false);
    m_objPrinter.m_strInPlace = "15";
    EXPECT_EQ(RunJson({"read", "lan:a"}).m_objJson["error"]["hint"],
              "clear that at the printer, and try again");
    m_objPrinter.m_strInPlace = "06";
    m_objPrinter.m_objFailure.m_iKind = CFailure::Kind::LanClosed;
    EXPECT_EQ(RunJson({"read", "lan:a"}).m_objJson["error"]["what"],
              "lan:a has closed the connection")
        << "what ended it comes before what was told meanwhile";
    m_objPrinter.m_objFailure.m_iKind = CFailure::Kind::NoReply;
    m_objPrinter.m_strText = "";
    EXPECT_TRUE(Has(Run({"diff", "lan:a", "defaults"}).m_strError,
                    "No settings from lan:a: in their place it has told the status 06: try again"));
}

TEST_F(CReadCommandTest, WhereNothingCameThereIsNoTable) {
    m_objPrinter.m_objFailure.m_iKind = CFailure::Kind::LanNotConnected;
    const Ran objRan = Run({"read", "lan:a"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::NotReachable);
    EXPECT_EQ(objRan.m_strOut, "");
    const Ran objJson = RunJson({"read", "lan:a", "speed"});
    EXPECT_EQ(objJson.m_objJson["complete"], false);
    EXPECT_EQ(objJson.m_objJson["settings"]["speed"]["why"], "failed");
}

TEST_F(CReadCommandTest, AValueThatIsNoneIsToldAsItIsHeld) {
    m_objPrinter.m_objHeld.m_objCommunicationSpeed->SetValue("9");
    const Ran objRan = RunJson({"read", "lan:a", "speed", "parity"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["complete"], false);
    EXPECT_EQ(objRan.m_objJson["settings"]["speed"],
              Json::parse(R"({"value": null, "raw": "9", "why": "unreadable"})"));
    EXPECT_EQ(objRan.m_objJson["error"]["cause"],
              "what the printer holds is none of the values of speed");
    EXPECT_TRUE(Has(Run({"read", "lan:a", "speed"}).m_strOut, "none of its values: 9\n"));
    EXPECT_EQ(Run({"read", "lan:a", "parity"}).m_iCode, 0);
}

// Saving.

TEST_F(CReadCommandTest, SavesAllThatWasRead) {
    const std::string strSave = m_objFolder.Path("a.json");
    const Ran objRan = RunJson({"read", "lan:a", "--save", strSave});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["saved"], (Json{{"file", strSave},
                                               {"format", "json"},
                                               {"filled", Json::array()},
                                               {"omitted", Json::array()}}));
    EXPECT_EQ(objRan.m_strError, "Saved " + strSave + "\n");
    EXPECT_EQ(CJsonSchema("settings-file.schema.json").Complaint(m_objFolder.Content("a.json")),
              "");
    const Ran objDiff = RunJson({"diff", "lan:a", strSave});
    EXPECT_EQ(objDiff.m_iCode, 0);
    EXPECT_EQ(objDiff.m_objJson["same"].size(), MSettings::All().size() - 1);
    EXPECT_EQ(objDiff.m_objJson["unknown"],
              Json::parse(R"({"stop-bit": {"a": "no answer reports it",
                                           "b": "it is not in the file"}})"));
}

TEST_F(CReadCommandTest, SavesWhatIsNamedAndNothingElse) {
    const std::string strSave = m_objFolder.Path("a.json");
    EXPECT_EQ(Run({"read", "lan:a", "speed", "--save", strSave}).m_strOut,
              "Saved " + strSave + "\n");
    EXPECT_EQ(Json::parse(m_objFolder.Content("a.json"))["settings"],
              Json::parse(R"({"speed": "4800bps"})"));
}

TEST_F(CReadCommandTest, TheWindowsFilesGetWhatTheyHold) {
    const std::string strDt1 = m_objFolder.Path("a.dt1");
    const Ran objRan = RunJson({"read", "lan:a", "--save", strDt1});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["saved"]["filled"], Json::parse(R"(["stop-bit"])"));
    EXPECT_TRUE(Has(objRan.m_objJson["saved"]["omitted"].dump(), "ip-address"));
    EXPECT_TRUE(Has(objRan.m_strError, "varden: set to their defaults: stop-bit\n"));
    const std::string strDt2 = m_objFolder.Path("a.dt2");
    EXPECT_EQ(RunJson({"read", "lan:a", "--save", strDt2}).m_objJson["saved"]["filled"],
              Json::array());
    for (const std::string& strFile : {strDt1, strDt2}) {
        const Ran objDiff = RunJson({"diff", "lan:a", strFile});
        EXPECT_EQ(objDiff.m_iCode, 0);
        EXPECT_EQ(objDiff.m_objJson["different"], Json::object());
    }
    EXPECT_EQ(RunJson({"file", strDt1}).m_objJson["settings"]["speed"], "4800bps");
    EXPECT_EQ(RunJson({"file", strDt2}).m_objJson["settings"]["ip-address"], "10.0.0.7");
}

TEST_F(CReadCommandTest, AFileThatCannotHoldWhatIsAskedForIsRefusedBeforeAnythingIsSent) {
    const std::string strDt1 = m_objFolder.Path("a.dt1");
    const Ran objNoRoom = RunJson({"read", "lan:a", "speed", "ip-address", "--save", strDt1});
    EXPECT_EQ(objNoRoom.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objNoRoom.m_objJson["error"]["cause"], "no room: ip-address");
    const Ran objMissing = RunJson({"read", "lan:a", "dhcp", "--save", m_objFolder.Path("a.dt2")});
    EXPECT_EQ(objMissing.m_iCode, MExitCode::Wrong);
    EXPECT_TRUE(Has(objMissing.m_objJson["error"]["cause"], "missing: ip-address, "));
    EXPECT_EQ(RunJson({"read", "lan:a", "--save", m_objFolder.Path("a.txt")}).m_iCode,
              MExitCode::Wrong);
    EXPECT_TRUE(m_objPrinters.m_strAsked.empty());
    EXPECT_TRUE(m_objFolder.Names().empty());
}

TEST_F(CReadCommandTest, AFileThatIsThereStaysUnlessForced) {
    const std::string strSave = Make("a.json", "old");
    const Ran objRan = RunJson({"read", "lan:a", "--save", strSave});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["hint"], "--force replaces it");
    EXPECT_TRUE(m_objPrinters.m_strAsked.empty());
    EXPECT_EQ(m_objFolder.Content("a.json"), "old");
    EXPECT_EQ(Run({"read", "lan:a", "--save", strSave, "--force"}).m_iCode, 0);
    EXPECT_NE(m_objFolder.Content("a.json"), "old");
    EXPECT_EQ(Run({"read", "lan:a", "--force"}).m_iCode, MExitCode::Wrong);
}

TEST_F(CReadCommandTest, WhatWasReadInPartIsNotSaved) {
    const std::string strSave = Make("a.json", "old");
    FailAt("ip-address");
    const Ran objRan = RunJson({"read", "lan:a", "--save", strSave, "--force"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["saved"], nullptr);
    m_objPrinter.m_objFailure = {};
    m_objPrinter.m_objHeld.m_objCommunicationSpeed->SetValue("9");
    EXPECT_EQ(Run({"read", "lan:a", "--save", strSave, "--force"}).m_iCode, MExitCode::Failed);
    EXPECT_EQ(m_objFolder.Content("a.json"), "old");
}

TEST_F(CReadCommandTest, AFileThatCannotBeWrittenIsAFailure) {
    const Ran objRan = RunJson({"read", "lan:a", "--save", m_objFolder.Path("no/a.json")});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["complete"], true);
    EXPECT_EQ(objRan.m_objJson["saved"], nullptr);
    EXPECT_EQ(objRan.m_objJson["error"]["cause"], "there is no folder " + m_objFolder.Path("no"));
}

// On a terminal.

TEST_F(CReadCommandTest, ATerminalIsToldHowFarItIsAndKeepsNothingOfIt) {
    m_iErrorWidth = 80;
    const Ran objRan = RunJson({"read", "lan:a", "speed", "ip-address"});
    EXPECT_EQ(objRan.m_iCode, 0);
    const auto Gone = [](const std::string& p_strLine) {
        return p_strLine + "\r" + std::string(p_strLine.size(), ' ') + "\r";
    };
    EXPECT_EQ(objRan.m_strError, Gone("lan:a: connecting ...") + Gone("lan:a: reading 1 of 2 ...") +
                                     Gone("lan:a: reading 2 of 2 ..."));
}

}  // namespace
