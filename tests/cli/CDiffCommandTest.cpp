#include "tests/cli/CCliFixture.h"

namespace {

/// A printer that does not report one setting, and has a value of another that is none.
class COddSource : public ISettingsSource {
public:
    [[nodiscard]] bool Knows(const std::string& p_strName) const override {
        return p_strName == "odd";
    }
    Fetch Open(const std::string& p_strName, COutput& /*p_objOutput*/) override {
        CLoadedSettings objLoaded{p_strName, {}, {{"stop-bit", "no answer reports it"}}};
        for (const MSettings::Row& objRow : MSettings::All()) {
            if (objRow.m_strName != "stop-bit" && objRow.m_strName != "country") {
                objLoaded.m_objSnapshot.SetKnown(objRow);
            }
        }
        objLoaded.m_objSnapshot.Items().m_objCommunicationSpeed->SetValue("9");
        return [objLoaded] { return objLoaded; };
    }
};

class CDiffCommandTest : public CCliFixture {
protected:
    std::string MakeJson(const std::string& p_strName, const std::string& p_strSettings) {
        return Make(p_strName, R"({"varden": 1, "settings": {)" + p_strSettings + "}}");
    }
};

TEST_F(CDiffCommandTest, WhatIsTheSameIsTold) {
    const Ran objRan = RunJson({"diff", "defaults", "defaults"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["different"], Json::object());
    EXPECT_EQ(objRan.m_objJson["same"].size(), MSettings::All().size());
    EXPECT_EQ(objRan.m_objJson["unknown"], Json::object());
    EXPECT_EQ(Run({"diff", "defaults", "defaults"}).m_strOut,
              "0 different, " + std::to_string(MSettings::All().size()) +
                  " the same, 0 not compared\n");
}

TEST_F(CDiffCommandTest, WhatDiffersIsToldWithBothValues) {
    const std::string strA =
        MakeJson("a.json", R"("speed": "4800bps", "parity": "EVEN", "feed-adj": 1.5)");
    const std::string strB =
        MakeJson("b.json", R"("speed": "9600bps", "parity": "even", "feed-adj": 1.5)");
    const Ran objRan = RunJson({"diff", strA, strB});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Different);
    EXPECT_EQ(objRan.m_objJson["a"], strA);
    EXPECT_EQ(objRan.m_objJson["b"], strB);
    EXPECT_EQ(objRan.m_objJson["different"],
              Json::parse(R"({"speed": {"a": {"value": "4800bps", "raw": null},
                                        "b": {"value": "9600bps", "raw": null}}})"));
    EXPECT_EQ(objRan.m_objJson["same"], Json::parse(R"(["feed-adj", "parity"])"));
    EXPECT_EQ(objRan.m_objJson["unknown"].size(), MSettings::All().size() - 3);
    const Ran objPeople = Run({"diff", strA, strB});
    EXPECT_TRUE(objPeople.m_strOut.starts_with("DIFFERENT  ")) << objPeople.m_strOut;
    EXPECT_TRUE(Has(objPeople.m_strOut, "4800bps"));
    EXPECT_TRUE(Has(objPeople.m_strOut, "\n1 different, 2 the same, "));
}

TEST_F(CDiffCommandTest, WhatOneSideDoesNotKnowIsNeverTheSame) {
    const std::string strA = MakeJson("a.json", R"("speed": "9600bps")");
    const Ran objRan = RunJson({"diff", strA, "defaults"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["same"], Json::parse(R"(["speed"])"));
    EXPECT_EQ(objRan.m_objJson["unknown"]["parity"],
              Json::parse(R"({"a": "it is not in the file", "b": null})"));
    EXPECT_TRUE(Has(Run({"diff", strA, "defaults"}).m_strOut, strA + ": it is not in the file\n"));
}

TEST_F(CDiffCommandTest, FilesOfDifferentKindsAreCompared) {
    const std::string strJson = m_objFolder.Path("a.json");
    const std::string strDt1 = TestFile("golden/parameter-highest.dt1");
    ASSERT_EQ(Run({"file", strDt1, "--save", strJson}).m_iCode, 0);
    const Ran objRan = RunJson({"diff", strDt1, strJson});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["different"], Json::object());
    EXPECT_EQ(Run({"diff", strDt1, TestFile("golden/parameter-lowest.dt1")}).m_iCode,
              MExitCode::Different);
}

TEST_F(CDiffCommandTest, AnotherSourceTellsWhyItDoesNotKnow) {
    COddSource objOdd;
    std::ostringstream objOut;
    std::ostringstream objError;
    COutput objOutput(objOut, objError, m_objInterrupt);
    CProgram objProgram(
        Environment(m_objFiles, m_objSerialPorts, {&objOdd, &m_objDefaults, &m_objFileSource}));
    EXPECT_EQ(objProgram.Run({"diff", "odd", "defaults", "--json"}, objOutput),
              MExitCode::Different);
    EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(objOut.str()), "");
    const Json objJson = Json::parse(objOut.str());
    EXPECT_EQ(objJson["unknown"], Json::parse(R"({"country": {"a": "not known", "b": null},
                              "stop-bit": {"a": "no answer reports it", "b": null}})"));
    EXPECT_EQ(objJson["different"]["speed"]["a"], Json::parse(R"({"value": null, "raw": "9"})"));
}

TEST_F(CDiffCommandTest, WhereNothingCanBeComparedNothingIsTheSame) {
    const std::string strA = MakeJson("a.json", R"("speed": "9600bps")");
    const std::string strB = MakeJson("b.json", R"("parity": "EVEN")");
    const Ran objRan = RunJson({"diff", strA, strB});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "Nothing could be compared");
    EXPECT_EQ(objRan.m_objJson["unknown"].size(), MSettings::All().size());
}

TEST_F(CDiffCommandTest, AWrongFileIsNotCompared) {
    const std::string strA = MakeJson("a.json", R"("speed": "fast", "parity": 7)");
    for (const Arguments& strArguments :
         {Arguments{"diff", strA, "defaults"}, Arguments{"diff", "defaults", strA}}) {
        const Ran objRan = RunJson(strArguments);
        EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
        EXPECT_EQ(objRan.m_objJson["error"]["what"], strA + " is no right settings file");
        EXPECT_TRUE(Has(objRan.m_objJson["error"]["cause"], "speed: "));
        EXPECT_TRUE(Has(objRan.m_objJson["error"]["cause"], ", and 1 more"));
    }
}

TEST_F(CDiffCommandTest, ASideThatIsNothingIsTold) {
    const Ran objRan = RunJson({"diff", "defaults", m_objFolder.Path("none.dt1")});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["cause"], "there is no such file");
}

}  // namespace
