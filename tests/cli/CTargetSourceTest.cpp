#include "tests/cli/CCliFixture.h"

namespace {

class CTargetSourceTest : public CCliFixture {
protected:
    CFakePrinter& Printer(const std::string& p_strTarget) {
        return m_objPrinters.m_objPrinters[p_strTarget];
    }

    void Fail(const std::string& p_strTarget, CFailure::Kind p_iKind) {
        Printer(p_strTarget).m_objFailure.m_iKind = p_iKind;
    }
};

TEST_F(CTargetSourceTest, APrinterIsASideOfAComparison) {
    Printer("lan:a").Hold("speed", "4800bps");
    const Ran objRan = RunJson({"diff", "lan:a", "defaults"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Different);
    EXPECT_EQ(objRan.m_objJson["a"], "lan:a");
    EXPECT_EQ(objRan.m_objJson["different"]["speed"]["a"]["value"], "4800bps");
    EXPECT_EQ(Keys(objRan.m_objJson["different"]), std::vector<std::string>{"speed"});
    EXPECT_EQ(objRan.m_objJson["unknown"],
              Json::parse(R"({"stop-bit": {"a": "no answer reports it", "b": null}})"));
    const Ran objPeople = Run({"diff", "defaults", "lan:a"});
    EXPECT_EQ(objPeople.m_iCode, MExitCode::Different);
    EXPECT_TRUE(Has(objPeople.m_strOut, "lan:a: no answer reports it\n"));
}

TEST_F(CTargetSourceTest, BothSidesCanBePrinters) {
    Printer("lan:a").Hold("speed", "4800bps");
    Printer("usb").Hold("speed", "4800bps");
    const Ran objRan = RunJson({"diff", "lan:a", "usb"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["same"].size(), MSettings::All().size() - 1);
    EXPECT_EQ(objRan.m_objJson["unknown"]["stop-bit"],
              Json::parse(R"({"a": "no answer reports it", "b": "no answer reports it"})"));
    ASSERT_EQ(m_objPrinters.m_strAsked.size(), 2U);
    EXPECT_TRUE(m_objPrinters.m_strAsked[0].starts_with("lan:a: read "));
    EXPECT_TRUE(m_objPrinters.m_strAsked[1].starts_with("usb: read "));
}

TEST_F(CTargetSourceTest, WhatIsWrongOnEitherSideIsToldBeforeAnythingIsSent) {
    const std::string strWrong = Make("a.json", "nonsense");
    for (const std::string& strOther :
         {std::string("lan:"), std::string("com:"), strWrong, m_objFolder.Path("none.dt1")}) {
        for (const Arguments& strArguments :
             {Arguments{"diff", "lan:a", strOther}, Arguments{"diff", strOther, "lan:a"}}) {
            EXPECT_EQ(RunJson(strArguments).m_iCode, MExitCode::Wrong);
        }
    }
    Printer("usb").m_objRefused.emplace(MExitCode::Wrong,
                                        CCommandError::Texts{"There are several", {}, {}, {}});
    EXPECT_EQ(RunJson({"diff", "lan:a", "usb"}).m_iCode, MExitCode::Wrong);
    EXPECT_TRUE(m_objPrinters.m_strAsked.empty());
}

TEST_F(CTargetSourceTest, NotReachableIsForWhereNothingWasSentToEither) {
    Fail("lan:b", CFailure::Kind::LanNotConnected);
    EXPECT_EQ(RunJson({"diff", "defaults", "lan:b"}).m_iCode, MExitCode::NotReachable);
    EXPECT_EQ(RunJson({"diff", "lan:b", "lan:a"}).m_iCode, MExitCode::NotReachable);
    EXPECT_EQ(m_objPrinters.m_strAsked.size(), 2U);
    const Ran objRan = RunJson({"diff", "lan:a", "lan:b"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "Cannot reach lan:b");
}

TEST_F(CTargetSourceTest, WhatWasReadInPartIsNotCompared) {
    Fail("lan:a", CFailure::Kind::NoReply);
    Printer("lan:a").m_iFailing = MSettingRoute::ReportedIn(MSettings::Get("ip-address"));
    const Ran objRan = RunJson({"diff", "lan:a", "defaults"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "No answer from lan:a");
}

TEST_F(CTargetSourceTest, AValueThatIsNoneIsNeverTheSame) {
    Printer("lan:a").m_objHeld.m_objCommunicationSpeed->SetValue("9");
    const Ran objRan = RunJson({"diff", "lan:a", "defaults"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Different);
    EXPECT_EQ(objRan.m_objJson["different"]["speed"]["a"],
              Json::parse(R"({"value": null, "raw": "9"})"));
}

TEST_F(CTargetSourceTest, APrinterThatTellsNoValueIsNeitherTheSameNorDifferent) {
    Printer("lan:a").m_strUnreadable = {"speed", "country"};
    const std::string strFile =
        Make("a.json", R"({"varden": 1, "settings": {"parity": "EVEN", "country": 7}})");
    const std::string strOther = Make("b.json", R"({"varden": 1, "settings": {"parity": "ODD"}})");
    for (const Arguments& strArguments :
         {Arguments{"diff", "lan:a", strFile}, Arguments{"diff", strFile, "lan:a"}}) {
        const Ran objRan = RunJson(strArguments);
        EXPECT_EQ(objRan.m_iCode, MExitCode::Failed) << objRan.m_strOut;
        EXPECT_EQ(objRan.m_objJson["error"]["what"], "Not everything could be read from lan:a");
        EXPECT_EQ(objRan.m_objJson["error"]["cause"],
                  "what the printer holds is none of the values of country");
        EXPECT_EQ(objRan.m_objJson["error"]["target"], "lan:a");
        EXPECT_TRUE(objRan.m_objJson["unknown"].contains("country"));
        const Ran objPeople = Run(strArguments);
        EXPECT_TRUE(Has(objPeople.m_strOut, "not compared\n"));
        EXPECT_TRUE(Has(objPeople.m_strError, "Not everything could be read from lan:a"));
    }
    EXPECT_EQ(RunJson({"diff", "lan:a", strOther}).m_iCode, MExitCode::Different)
        << "what the other side does not hold";
    Printer("lan:b").m_strUnreadable = {"country"};
    EXPECT_EQ(RunJson({"diff", "lan:a", "lan:b"}).m_iCode, MExitCode::Failed);
    EXPECT_EQ(RunJson({"diff", "lan:b", "defaults"}).m_iCode, MExitCode::Failed);
}

TEST_F(CTargetSourceTest, NothingInCommonIsAFailureOfWhatWasSent) {
    const std::string strFile =
        Make("a.json", R"({"varden": 1, "settings": {"stop-bit": "1bit"}})");
    const Ran objRan = RunJson({"diff", "lan:a", strFile});
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "Nothing could be compared") << objRan.m_strOut;
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
}

TEST_F(CTargetSourceTest, AFileThatIsCalledLikeAPrinterIsNamedByItsPath) {
    Make("usb", "");
    EXPECT_EQ(RunJson({"diff", m_objFolder.Path("usb"), "defaults"}).m_iCode, MExitCode::Wrong);
    EXPECT_TRUE(m_objPrinters.m_strAsked.empty());
}

}  // namespace
