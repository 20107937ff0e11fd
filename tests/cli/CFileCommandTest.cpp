#include "cli/MSettingsFile.h"
#include "tests/cli/CCliFixture.h"
#include "tests/golden/MGolden.h"

#include <filesystem>

namespace {

class CFileCommandTest : public CCliFixture {
protected:
    const std::string m_strDt1 = TestFile("golden/parameter-lowest.dt1");
    const std::string m_strDt2 = TestFile("golden/lan-default.dt2");
};

// Showing.

TEST_F(CFileCommandTest, ShowsWhatAFileHolds) {
    const Ran objRan = Run({"file", m_strDt1});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_TRUE(objRan.m_strOut.starts_with("NAME              LABEL            VALUE\n"
                                            "feed-adj          FEED ADJ.        -50.0\n"))
        << objRan.m_strOut;
    EXPECT_TRUE(Has(objRan.m_strOut, "\neuro-code         EURO CODE        20\n"));
    EXPECT_FALSE(Has(objRan.m_strOut, "ip-address"));
    EXPECT_EQ(objRan.m_strError, "");
}

TEST_F(CFileCommandTest, ShowsItAsJsonInTheCataloguesOrder) {
    const Ran objRan = RunJson({"file", m_strDt2});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_strError, "");
    EXPECT_EQ(objRan.m_objJson["file"], m_strDt2);
    EXPECT_EQ(objRan.m_objJson["format"], "dt2");
    EXPECT_EQ(objRan.m_objJson["settings"],
              Json::parse(R"({"ip-address": "192.168.10.20", "default-gateway": "0.0.0.0",
                  "subnet-mask": "255.255.255.0", "socket": "ON", "socket-port": 8000,
                  "dhcp": "OFF", "dhcp-client-id": "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF",
                  "dhcp-host-name": ""})"));
    EXPECT_EQ(objRan.m_objJson["problems"], Json::array());
    EXPECT_EQ(objRan.m_objJson["saved"], nullptr);
}

TEST_F(CFileCommandTest, LettersBeyondAsciiAreUtf8) {
    const std::string strLine =
        "{IH;0," + std::string(32, 'F') + ",M\xFCller" + std::string(10, '\xFF') + "|}";
    const std::string strFile = Make("a.dt2", strLine);
    EXPECT_EQ(RunJson({"file", strFile}).m_objJson["settings"]["dhcp-host-name"], "M\xC3\xBCller");
    EXPECT_TRUE(Has(Run({"file", strFile}).m_strOut, "M\xC3\xBCller\n"));
}

TEST_F(CFileCommandTest, AFileWithWrongValuesIsShownAndIsWrong) {
    const std::string strFile =
        Make("a.dt1", MGolden::With(MGolden::Parameters, {{"CommunicationSpeed", "9"}}) + "\r\n");
    const Ran objRan = RunJson({"file", strFile});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["settings"]["speed"], nullptr);
    EXPECT_EQ(objRan.m_objJson["settings"]["parity"], "EVEN");
    EXPECT_EQ(objRan.m_objJson["raw"], Json::parse(R"({"speed": "9"})"));
    ASSERT_EQ(objRan.m_objJson["problems"].size(), 1U);
    EXPECT_EQ(objRan.m_objJson["problems"][0]["line"], 1);
    EXPECT_EQ(objRan.m_objJson["problems"][0]["setting"], "speed");
    EXPECT_EQ(objRan.m_objJson["error"]["target"], strFile);
    const Ran objPeople = Run({"file", strFile});
    EXPECT_TRUE(Has(objPeople.m_strOut, "none of its values: 9\n")) << objPeople.m_strOut;
    EXPECT_TRUE(Has(objPeople.m_strError, "is no right settings file: one thing is wrong in it\n"));
}

// Checking.

TEST_F(CFileCommandTest, CheckingARightFileSaysSo) {
    const Ran objRan = Run({"file", m_strDt2, "--check"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_strOut, m_strDt2 + ": 8 settings, nothing wrong\n");
}

TEST_F(CFileCommandTest, CheckingListsEverythingThatIsWrong) {
    const std::string strFile =
        Make("a.json", R"({"varden": 1, "settings": {"speed": "fast", "sped": 1, "country": 10}})");
    const Ran objRan = Run({"file", strFile, "--check"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_strOut,
              strFile +
                  ": speed: \"fast\" is none of its values (2400bps, 4800bps, 9600bps, "
                  "19200bps, 38400bps, 115200bps)\n" +
                  strFile + ": sped: there is no such setting\n" + strFile +
                  ": country: 10 is none of its values (0 to 9)\n");
    EXPECT_EQ(objRan.m_strError,
              "varden: " + strFile + " is no right settings file: 3 things are wrong in it\n");
    const Ran objJson = RunJson({"file", strFile, "--check"});
    EXPECT_EQ(objJson.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objJson.m_objJson["problems"].size(), 3U);
    EXPECT_TRUE(Has(objJson.m_strError, "sped: there is no such setting"));
}

TEST_F(CFileCommandTest, WhatCannotBeReadIsTold) {
    std::filesystem::create_directory(m_objFolder.Path("folder.dt1"));
    const std::string strLarge =
        Make("large.json", std::string(MSettingsFile::LargestFile + 1, ' '));
    const std::vector<std::pair<std::string, std::string>> arrCases{
        {m_objFolder.Path("none.dt1"), "there is no such file"},
        {m_objFolder.Path("folder.dt1"), "it is a folder"},
        {"/dev/null.dt1", "there is no such file"},
        {strLarge, "it is larger than 1 MiB, and no settings file is"},
    };
    for (const auto& [strFile, strCause] : arrCases) {
        for (const Arguments& strArguments :
             {Arguments{"file", strFile}, Arguments{"file", strFile, "--check"}}) {
            const Ran objRan = RunJson(strArguments);
            EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
            EXPECT_EQ(objRan.m_objJson["error"]["what"], "Cannot read " + strFile);
            EXPECT_EQ(objRan.m_objJson["error"]["cause"], strCause);
        }
    }
}

TEST_F(CFileCommandTest, AFileOfTheLargestSizeIsRead) {
    const std::string strFile =
        Make("large.json", std::string(MSettingsFile::LargestFile - 31, ' ') +
                               R"({"varden": 1, "settings": {}} )");
    EXPECT_EQ(Run({"file", strFile, "--check"}).m_iCode, 0);
}

TEST_F(CFileCommandTest, AFailureWhileReadingIsTold) {
    m_objFiles.FailAt(2);
    EXPECT_EQ(RunJson({"file", m_strDt1}).m_objJson["error"]["cause"], "reading it fails");
    EXPECT_EQ(m_objFiles.OpenFiles(), 0);
}

TEST_F(CFileCommandTest, AnotherNameIsNoSettingsFiles) {
    for (const char* const strName : {"a.txt", "a", "dt1", "a.dt11"}) {
        const Ran objRan = RunJson({"file", strName});
        EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
        EXPECT_EQ(objRan.m_objJson["error"]["hint"],
                  "a settings file's name ends with .dt1, .dt2 or .json");
    }
    EXPECT_EQ(Run({"file", Make("A.DT1", m_objFolder.Content("none"))}).m_iCode, MExitCode::Wrong);
    EXPECT_EQ(Run({"file", Make("B.JSON", R"({"varden": 1, "settings": {}})")}).m_iCode, 0);
}

// Saving.

TEST_F(CFileCommandTest, ThereAndBackAgainIsTheSameFile) {
    for (const char* const strName :
         {"golden/parameter-default.dt1", "golden/parameter-highest.dt1",
          "golden/parameter-lowest.dt1", "golden/lan-default.dt2", "golden/lan-highest.dt2"}) {
        SCOPED_TRACE(strName);
        const std::string strKind = std::filesystem::path(strName).extension().string();
        const std::string strJson = m_objFolder.Path("a.json");
        const std::string strBack = m_objFolder.Path("a" + strKind);
        EXPECT_EQ(Run({"file", TestFile(strName), "--save", strJson, "--force"}).m_iCode, 0);
        EXPECT_EQ(CJsonSchema("settings-file.schema.json").Complaint(m_objFolder.Content("a.json")),
                  "");
        EXPECT_EQ(Run({"file", strJson, "--save", strBack, "--force"}).m_iCode, 0);
        std::ifstream objFile(TestFile(strName), std::ios::binary);
        EXPECT_EQ(m_objFolder.Content("a" + strKind),
                  std::string(std::istreambuf_iterator<char>(objFile), {}));
    }
}

TEST_F(CFileCommandTest, TellsWhatItHasSaved) {
    const std::string strSave = m_objFolder.Path("b.json");
    const Ran objRan = RunJson({"file", m_strDt2, "--save", strSave});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["saved"], (Json{{"file", strSave},
                                               {"format", "json"},
                                               {"filled", Json::array()},
                                               {"omitted", Json::array()}}));
    EXPECT_EQ(objRan.m_strError, "Saved " + strSave + "\n");
}

TEST_F(CFileCommandTest, WhatTheOtherFileHasToHoldAndIsNotKnownIsAnError) {
    const std::string strFile =
        Make("a.json", R"({"varden": 1, "settings": {"dhcp": "ON", "speed": "4800bps"}})");
    const std::string strSave = m_objFolder.Path("b.dt2");
    const Ran objRan = RunJson({"file", strFile, "--save", strSave});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["cause"],
              "missing: ip-address, default-gateway, subnet-mask, socket, socket-port, "
              "dhcp-client-id, dhcp-host-name");
    EXPECT_EQ(objRan.m_objJson["error"]["hint"], "--defaults gives them their defaults");
    EXPECT_FALSE(std::filesystem::exists(strSave));
}

TEST_F(CFileCommandTest, DefaultsFillItAndThatIsTold) {
    const std::string strFile =
        Make("a.json", R"({"varden": 1, "settings": {"dhcp": "ON", "speed": "4800bps"}})");
    const std::string strSave = m_objFolder.Path("b.dt2");
    const Ran objRan = RunJson({"file", strFile, "--save", strSave, "--defaults"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(
        objRan.m_objJson["saved"]["filled"],
        Json::parse(R"(["ip-address", "default-gateway", "subnet-mask", "socket", "socket-port",
                              "dhcp-client-id", "dhcp-host-name"])"));
    EXPECT_EQ(objRan.m_objJson["saved"]["omitted"], Json::parse(R"(["speed"])"));
    EXPECT_TRUE(
        Has(objRan.m_strError, "varden: set to their defaults: ip-address, default-gateway"));
    EXPECT_TRUE(
        Has(objRan.m_strError, "varden: left out, a .dt2 file has no room for them: speed\n"));
    EXPECT_TRUE(Has(m_objFolder.Content("b.dt2"), "{IP;2,192,168,010,020|}\r\n"));
    EXPECT_TRUE(Has(m_objFolder.Content("b.dt2"), "{IH;1,"));
}

TEST_F(CFileCommandTest, AFileThatIsThereStaysUnlessForced) {
    const std::string strSave = Make("b.json", "old");
    const Ran objRan = RunJson({"file", m_strDt2, "--save", strSave});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], strSave + " is there already");
    EXPECT_EQ(m_objFolder.Content("b.json"), "old");
    EXPECT_EQ(Run({"file", m_strDt2, "--save", strSave, "--force"}).m_iCode, 0);
    EXPECT_NE(m_objFolder.Content("b.json"), "old");
}

TEST_F(CFileCommandTest, AHiddenFileAndALinkAreThereToo) {
    Make(".b.json", "old");
    std::filesystem::create_symlink("nowhere.json", m_objFolder.Path("c.json"));
    EXPECT_EQ(Run({"file", m_strDt2, "--save", m_objFolder.Path(".b.json")}).m_iCode,
              MExitCode::Wrong);
    EXPECT_EQ(Run({"file", m_strDt2, "--save", m_objFolder.Path("c.json")}).m_iCode,
              MExitCode::Wrong);
    EXPECT_EQ(m_objFolder.Content(".b.json"), "old");
}

TEST_F(CFileCommandTest, AWrongFileIsNotSaved) {
    const std::string strFile =
        Make("a.dt1", MGolden::With(MGolden::Parameters, {{"CommunicationSpeed", "9"}}) + "\r\n");
    const std::string strSave = m_objFolder.Path("b.json");
    EXPECT_EQ(Run({"file", strFile, "--save", strSave}).m_iCode, MExitCode::Wrong);
    EXPECT_FALSE(std::filesystem::exists(strSave));
}

TEST_F(CFileCommandTest, WhateverFailsWhileSavingLeavesTheOldFile) {
    for (const char* const strName : {"b.json", "b.dt2"}) {
        // The source takes three operations: opening it, its bytes, its end.
        for (int iOperation = 4; iOperation <= 6; ++iOperation) {
            SCOPED_TRACE(std::string(strName) + " " + std::to_string(iOperation));
            const std::string strSave = Make(strName, "old");
            CFakeFileStore objFiles(m_objRealFiles);
            objFiles.FailAt(iOperation);
            std::ostringstream objOut;
            std::ostringstream objError;
            COutput objOutput(objOut, objError, m_objInterrupt);
            CProgram objProgram(Environment(objFiles, m_objSerialPorts, {}));
            EXPECT_EQ(objProgram.Run({"file", m_strDt2, "--save", strSave, "--force", "--json"},
                                     objOutput),
                      MExitCode::Failed);
            EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(objOut.str()), "");
            EXPECT_EQ(Json::parse(objOut.str())["error"]["what"], "Cannot write " + strSave);
            EXPECT_EQ(Json::parse(objOut.str())["saved"], nullptr);
            EXPECT_EQ(m_objFolder.Content(strName), "old");
        }
    }
    EXPECT_EQ(m_objFolder.Names(), (std::vector<std::string>{"b.dt2", "b.json"}));
}

TEST_F(CFileCommandTest, WhereNothingCanBeWrittenIsTold) {
    const Ran objRan = RunJson({"file", m_strDt2, "--save", m_objFolder.Path("no/b.json")});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["error"]["cause"], "there is no folder " + m_objFolder.Path("no"));
}

}  // namespace
