#include "cli/MMaintenance.h"
#include "model/MChoiceLists.h"
#include "tests/cli/CCliFixture.h"

#include <cmath>
#include <utility>

namespace {

class CMaintainCommandTest : public CCliFixture {
protected:
    CMaintainCommandTest() {
        m_objPrinters.m_fnOnWait = [this](double p_dSeconds) {
            m_objPrinters.m_strAsked.push_back("pause " + std::to_string(std::lround(p_dSeconds)));
        };
    }

    /// What a printer is asked by a command line that is confirmed beforehand.
    Arguments Asked(const std::string& p_strTarget, const Arguments& p_strWords) {
        m_objPrinters.m_strAsked.clear();
        Arguments strCall{"maintain", p_strTarget};
        strCall.insert(strCall.end(), p_strWords.begin(), p_strWords.end());
        strCall.emplace_back("--yes");
        EXPECT_EQ(RunJson(strCall).m_iCode, 0);
        return m_objPrinters.m_strAsked;
    }

    /// Why a command line is refused, before anything was sent.
    std::string Refused(const Arguments& p_strWords, const std::string& p_strTarget = "usb") {
        Arguments strCall{"maintain", p_strTarget};
        strCall.insert(strCall.end(), p_strWords.begin(), p_strWords.end());
        strCall.emplace_back("--yes");
        const Ran objRan = RunJson(strCall);
        EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
        EXPECT_EQ(m_objPrinters.m_strAsked, Arguments{});
        const auto& objCause = objRan.m_objJson["error"]["cause"];
        return objCause.is_string() ? objCause.get<std::string>() : "";
    }

    CFakePrinter& m_objPrinter = m_objPrinters.m_objPrinters["usb"];
};

// What is sent.

TEST_F(CMaintainCommandTest, EachFunctionSendsItsCommand) {
    const std::vector<std::pair<Arguments, std::string>> arrCases{
        {{"ram-clear", "mode=parameter"}, "{Z4;0|}"},
        {{"ram-clear", "mode=parameter", "destination=ja"}, "{Z4;00|}"},
        {{"ram-clear", "destination=cn", "mode=parameter"}, "{Z4;01|}"},
        {{"ram-clear", "mode=parameter", "destination=qp"}, "{Z4;02|}"},
        {{"ram-clear", "mode=parameter", "destination=qq"}, "{Z4;03|}"},
        {{"ram-clear", "mode=mante-cnt"}, "{Z4;1|}"},
        {{"threshold-calib", "sensor=reflect"}, "{WT;1000,1|}"},
        {{"threshold-calib", "sensor=trans"}, "{WT;1000,2|}"},
        {{"test-print"}, "{Z3;007600730105700010000|}"},
        {{"test-print", "pattern=factory-test"}, "{Z3;607600730105700010000|}"},
        {{"test-print", "pattern=barcode", "label-length=100", "issue-count=5000",
          "print-speed=4-sec", "sensor=trans", "cut=peel-off", "print-type=transfr"},
         "{Z3;401000070105750001221|}"},
        {{"diag-print"}, "{Z10|}"},
        {{"diag-print", "print-type=direct"}, "{Z10|}"},
        {{"diag-print", "print-type=transfr"}, "{Z11|}"},
    };
    for (const auto& [strWords, strCommand] : arrCases) {
        EXPECT_EQ(Asked("usb", strWords), Arguments{"usb: " + strCommand});
    }
}

TEST_F(CMaintainCommandTest, AHeadChecksResultHasToBeAskedForOnUsbAlone) {
    EXPECT_EQ(Asked("lan:a", {"head-check"}), Arguments{"lan:a: {HD001,A|}"});
    EXPECT_EQ(Asked("com:/dev/a", {"head-check"}), Arguments{"com:/dev/a: {HD001,A|}"});
    EXPECT_EQ(Asked("usb", {"head-check"}),
              (Arguments{"usb: {HD001,A|}", "pause 5", "usb: status"}));
}

TEST_F(CMaintainCommandTest, ASensorsAdjustmentTakesASecondAndEndsWithTheStatus) {
    EXPECT_EQ(Asked("lan:a", {"sensor-adjust", "step=reflect"}),
              (Arguments{"lan:a: {Z6;0|}", "pause 1", "lan:a: status"}));
    EXPECT_EQ(Asked("usb", {"sensor-adjust", "step=trans"}),
              (Arguments{"usb: {Z6;1|}", "pause 1", "usb: status"}));
    EXPECT_EQ(Asked("usb", {"sensor-adjust", "step=paper-end"}),
              (Arguments{"usb: {Z6;01|}", "usb: {Z6;11|}", "pause 1", "usb: status"}));
}

TEST_F(CMaintainCommandTest, ValuesMayBeWrittenAsTheWindowShowsThem) {
    EXPECT_EQ(Asked("usb", {"test-print", "pattern=SLANT LINE(3DOT)", "print-speed=4\"/sec",
                            "sensor=REFLECT.", "cut=with cut"}),
              Arguments{"usb: {Z3;207600730105700011110|}"});
    EXPECT_EQ(Asked("usb", {"ram-clear", "mode=MANTE.CNT"}), Arguments{"usb: {Z4;1|}"});
}

TEST_F(CMaintainCommandTest, EveryValueOfEveryListHasANameOfItsOwn) {
    for (const MMaintenance::Function& objFunction : MMaintenance::All()) {
        for (const MMaintenance::Field& objField : objFunction.m_objFields) {
            std::vector<std::string> strNames = MMaintenance::NamesOf(objField);
            std::ranges::sort(strNames);
            EXPECT_EQ(std::ranges::adjacent_find(strNames), strNames.end()) << objField.m_strName;
        }
    }
    const MMaintenance::Function& objTestPrint = *MMaintenance::Find("test-print");
    EXPECT_EQ(MMaintenance::NamesOf(objTestPrint.m_objFields[0]),
              (std::vector<std::string>{"feed", "slant-line-1dot", "slant-line-3dot", "characters",
                                        "barcode", "factory-test"}));
}

// What is refused.

TEST_F(CMaintainCommandTest, AllThatIsWrongIsToldAtOnceAndNothingIsSent) {
    EXPECT_EQ(Refused({"ram-clear"}), "mode is missing: it is parameter or mante-cnt");
    EXPECT_EQ(Refused({"test-print", "issue-count=0", "label-length=10000", "speed=1", "cut",
                       "sensor=none", "sensor=none", "pattern="}),
              "issue-count cannot be \"0\": it is 1 to 5000; "
              "label-length cannot be \"10000\": it is 100 to 9999; "
              "test-print takes no \"speed\"; "
              "cut has no value: it is no-cut, with-cut or peel-off; "
              "sensor stands there twice; "
              "pattern cannot be \"\": it is feed, slant-line-1dot, slant-line-3dot, characters, "
              "barcode or factory-test");
    EXPECT_EQ(Refused({"ram-clear", "mode=all", "destination="}),
              "mode cannot be \"all\": it is parameter or mante-cnt; "
              "destination cannot be \"\": it is ja, cn, qp or qq");
    EXPECT_EQ(Refused({"nonsense", "a=b"}, "lan:"),
              "\"lan:\" names no printer; there is no function \"nonsense\"");
    EXPECT_EQ(Refused({"head-check", "mode=a"}), "head-check takes no \"mode\"");
    EXPECT_EQ(Refused({"ram-clear", "mode=mante-cnt", "destination=ja"}),
              "destination goes with mode=parameter only");
    for (const char* const strNumber :
         {"", "1x", "-1", "+1", " 1", "1.0", "5001", "99999", "0x1"}) {
        EXPECT_NE(Refused({"test-print", std::string("issue-count=") + strNumber}), "")
            << strNumber;
    }
    EXPECT_EQ(RunJson({"maintain", "nonsense", "head-check"}).m_iCode, MExitCode::Wrong);
    EXPECT_EQ(RunJson({"maintain", "usb"}).m_iCode, MExitCode::Wrong);
    EXPECT_EQ(m_objPrinters.m_strAsked, Arguments{});
}

// What is asked first.

TEST_F(CMaintainCommandTest, WhatChangesSomethingIsDoneWhenItsNameIsTyped) {
    m_objTerminal.m_bThere = true;
    const std::vector<Arguments> arrCalls{{"ram-clear", "mode=mante-cnt"},
                                          {"threshold-calib", "sensor=trans"},
                                          {"sensor-adjust", "step=reflect"},
                                          {"test-print"},
                                          {"diag-print"}};
    for (const Arguments& strWords : arrCalls) {
        const std::string& strFunction = strWords.front();
        Arguments strCall{"maintain", "usb"};
        strCall.insert(strCall.end(), strWords.begin(), strWords.end());
        for (const std::optional<std::string>& strTyped :
             {std::optional<std::string>("yes"), std::optional<std::string>(""),
              std::optional<std::string>(strFunction + " "), std::optional<std::string>()}) {
            m_objTerminal.m_strTyped = strTyped;
            const Ran objRan = RunJson(strCall);
            EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
            EXPECT_EQ(objRan.m_objJson["error"]["what"], strFunction + " was not confirmed");
            EXPECT_EQ(objRan.m_objJson["sent"], false);
        }
        EXPECT_EQ(m_objPrinters.m_strAsked, Arguments{}) << strFunction;
        m_objTerminal.m_strTyped = strFunction;
        m_objTerminal.m_strQuestions.clear();
        EXPECT_EQ(Run(strCall).m_iCode, 0);
        EXPECT_FALSE(m_objPrinters.m_strAsked.empty()) << strFunction;
        ASSERT_EQ(m_objTerminal.m_strQuestions.size(), 1U);
        EXPECT_TRUE(Has(m_objTerminal.m_strQuestions[0],
                        " usb. Type \"" + strFunction + "\" to have it done: "))
            << m_objTerminal.m_strQuestions[0];
        m_objPrinters.m_strAsked.clear();
    }
}

TEST_F(CMaintainCommandTest, WhereNobodyCanBeAskedItHasToBeConfirmedBeforehand) {
    m_objTerminal.m_strTyped = "ram-clear";
    const Ran objRan = RunJson({"maintain", "usb", "ram-clear", "mode=parameter"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["hint"], "--yes does without asking");
    EXPECT_EQ(m_objPrinters.m_strAsked, Arguments{});
    EXPECT_EQ(m_objTerminal.m_strQuestions, Arguments{});
}

TEST_F(CMaintainCommandTest, AHeadCheckIsNotAskedAboutNorWhatIsConfirmedBeforehand) {
    m_objTerminal.m_bThere = true;
    EXPECT_EQ(Run({"maintain", "usb", "head-check"}).m_iCode, 0);
    EXPECT_EQ(Run({"maintain", "usb", "diag-print", "--yes"}).m_iCode, 0);
    EXPECT_EQ(m_objTerminal.m_strQuestions, Arguments{});
}

TEST_F(CMaintainCommandTest, WhatIsWrongIsToldBeforeAnybodyIsAsked) {
    m_objTerminal.m_bThere = true;
    EXPECT_EQ(Run({"maintain", "usb", "ram-clear"}).m_iCode, MExitCode::Wrong);
    EXPECT_EQ(m_objTerminal.m_strQuestions, Arguments{});
}

// What comes of it.

TEST_F(CMaintainCommandTest, ToldIsWhatWasAskedForAndTheStatusAfterwards) {
    EXPECT_EQ(Run({"maintain", "usb", "diag-print", "--yes"}).m_strOut, "00 ON LINE\n");
    const Ran objRan = RunJson({"maintain", "usb", "ram-clear", "mode=parameter", "--yes"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson, Json::parse(R"({"target": "usb", "function": "ram-clear",
                              "fields": {"mode": "parameter", "destination": null},
                              "commands": ["{Z4;0|}"], "sent": true,
                              "code": "00", "text": "ON LINE", "known": true})"));
    EXPECT_EQ(Keys(objRan.m_objJson),
              (std::vector<std::string>{"target", "function", "fields", "commands", "sent", "code",
                                        "text", "known"}));
    EXPECT_EQ(RunJson({"maintain", "usb", "test-print", "--yes"}).m_objJson["fields"],
              Json::parse(R"({"pattern": "feed", "label-length": 760, "issue-count": 1,
                              "print-speed": "2-sec", "sensor": "none", "cut": "no-cut",
                              "print-type": "direct"})"));
}

TEST_F(CMaintainCommandTest, AStatusThatIsAnErrorIsAFailure) {
    m_objPrinter.m_strCode = "13";
    m_objPrinter.m_strText = "Paper Error";
    const Ran objRan = RunJson({"maintain", "usb", "test-print", "--yes"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["code"], "13");
    EXPECT_EQ(objRan.m_objJson["sent"], true);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "usb reports an error");
    EXPECT_EQ(objRan.m_objJson["error"]["cause"], "its status after test-print is 13 Paper Error");
    m_objPrinter.m_strCode = "99";
    m_objPrinter.m_strText = "";
    EXPECT_EQ(RunJson({"maintain", "usb", "test-print", "--yes"}).m_iCode, MExitCode::Failed);
}

TEST_F(CMaintainCommandTest, AStatusThatIsNoErrorIsNone) {
    for (const char* const strCode : {"00", "01", "02", "04", "05", "40", "41", "55"}) {
        m_objPrinter.m_strCode = strCode;
        EXPECT_EQ(RunJson({"maintain", "usb", "test-print", "--yes"}).m_iCode, 0) << strCode;
    }
}

TEST_F(CMaintainCommandTest, ARefusedCommandEndsItBeforeThePause) {
    m_objPrinter.m_strCodes["{Z6;0|}"] = "06";
    EXPECT_EQ(Run({"maintain", "usb", "sensor-adjust", "step=reflect", "--yes"}).m_iCode,
              MExitCode::Failed);
    EXPECT_EQ(m_objPrinters.m_strAsked, Arguments{"usb: {Z6;0|}"});
}

TEST_F(CMaintainCommandTest, TheSecondPassIsSentWhateverBecomesOfTheFirst) {
    for (const auto& [strFirst, strSecond] :
         {std::pair("06", "00"), std::pair("", "00"), std::pair("00", "06"), std::pair("00", "")}) {
        m_objPrinters.m_strAsked.clear();
        m_objPrinter.m_strCodes = {{"{Z6;01|}", strFirst}, {"{Z6;11|}", strSecond}};
        const Ran objRan = RunJson({"maintain", "usb", "sensor-adjust", "step=paper-end", "--yes"});
        EXPECT_EQ(objRan.m_iCode, MExitCode::Failed) << strFirst << ", " << strSecond;
        EXPECT_EQ(objRan.m_objJson["sent"], true);
        EXPECT_EQ(m_objPrinters.m_strAsked, (Arguments{"usb: {Z6;01|}", "usb: {Z6;11|}"}));
    }
}

TEST_F(CMaintainCommandTest, NoAnswerIsAFailure) {
    m_objPrinter.m_strCodes["{Z10|}"] = "";
    const Ran objRan = RunJson({"maintain", "usb", "diag-print", "--yes"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "No answer from usb");
    EXPECT_EQ(objRan.m_objJson["sent"], true);
    EXPECT_EQ(objRan.m_objJson["code"], nullptr);
}

TEST_F(CMaintainCommandTest, WhatCannotBeReachedIsSentNothing) {
    m_objPrinter.m_objFailure.m_iKind = CFailure::Kind::UsbNotReady;
    const Ran objRan = RunJson({"maintain", "usb", "sensor-adjust", "step=paper-end", "--yes"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::NotReachable);
    EXPECT_EQ(objRan.m_objJson["sent"], false);
    EXPECT_EQ(m_objPrinters.m_strAsked, Arguments{"usb: {Z6;01|}"});
    m_objPrinter.m_objRefused.emplace(MExitCode::NotReachable,
                                      CCommandError::Texts{"There is none", {}, {}, {}});
    EXPECT_EQ(RunJson({"maintain", "usb", "diag-print", "--yes"}).m_iCode, MExitCode::NotReachable);
}

TEST_F(CMaintainCommandTest, WhoIsGoneAfterTheCommandHasBeenSentSomething) {
    m_objPrinters.m_fnOnWait = [this](double) {
        m_objPrinter.m_objFailure.m_iKind = CFailure::Kind::UsbNotReady;
    };
    const Ran objRan = RunJson({"maintain", "usb", "head-check"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    EXPECT_EQ(objRan.m_objJson["sent"], true);
}

TEST_F(CMaintainCommandTest, ATerminalIsToldHowFarItIs) {
    m_iErrorWidth = 80;
    EXPECT_TRUE(Has(Run({"maintain", "usb", "head-check"}).m_strError,
                    "usb: waiting for the end of head-check ..."));
}

TEST_F(CMaintainCommandTest, TheHelpShowsEveryFieldOfEveryFunction) {
    const std::string strHelp = Run({"maintain", "--help"}).m_strOut;
    for (const MMaintenance::Function& objFunction : MMaintenance::All()) {
        EXPECT_TRUE(Has(strHelp, "\n  " + std::string(objFunction.m_strName) + "\n"));
        for (const MMaintenance::Field& objField : objFunction.m_objFields) {
            EXPECT_TRUE(Has(strHelp, "\n      " + std::string(objField.m_strName) + "="))
                << objField.m_strName;
        }
    }
    EXPECT_TRUE(Has(strHelp, "label-length= 100 to 9999; 760 unless set\n")) << strHelp;
    EXPECT_TRUE(Has(strHelp, "mode=         parameter or mante-cnt; has to be set\n")) << strHelp;
}

}  // namespace
