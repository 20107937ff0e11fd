#include "tests/jobs/CJobFixture.h"
#include "tests/jobs/MOtherSettings.h"

#include "jobs/MCompare.h"
#include "protocol/MAnswer.h"

// What a printer is asked over each of the links, and what comes of it.

namespace {

using Why = CReadReport::Why;
using Texts = std::vector<std::string>;

class CLinkedPrinterTest : public CJobFixture, public ::testing::WithParamInterface<std::int16_t> {
protected:
    CReadReport Read(const Rows& p_objRows) { return Printer(GetParam()).Read(p_objRows); }
    CStatusReport Status() { return Printer(GetParam()).Status(); }

    /// Sets something else than the default everywhere that a command can.
    void ChangeEverything() {
        for (const std::string& strCommand : MOtherSettings::Commands()) {
            ASSERT_TRUE(m_objSimulated.Handle(strCommand).m_bAccepted) << strCommand;
        }
    }
};

INSTANTIATE_TEST_SUITE_P(, CLinkedPrinterTest,
                         ::testing::Values(CInterface::SerialInterface, CInterface::LanInterface,
                                           CInterface::UsbInterface),
                         [](const auto& p_objInfo) {
                             return p_objInfo.param == CInterface::SerialInterface ? "Com"
                                    : p_objInfo.param == CInterface::LanInterface  ? "Lan"
                                                                                   : "Usb";
                         });

// Reading.

TEST_P(CLinkedPrinterTest, ReadsEverythingInThePrintersOrder) {
    ChangeEverything();
    const CReadReport objReport = Read(All());
    EXPECT_TRUE(objReport.m_objFailure.IsNone());
    EXPECT_TRUE(objReport.m_bSent);
    EXPECT_EQ(m_strCommands, (Texts{"{Z5;0|}", "{Z5;1|}", "{Z5;4|}", "{Z5;3|}", "{Z5;2|}"}));
    EXPECT_EQ(objReport.m_iAsked, (std::set<std::int16_t>{0, 1, 2, 3, 4}));
    EXPECT_EQ(objReport.m_iAnswered, objReport.m_iAsked);
    const auto objCompared =
        MCompare::Compare(objReport.m_objSnapshot, CSnapshot(m_objSimulated.Items()));
    EXPECT_TRUE(objCompared.m_objDifferent.empty())
        << objCompared.m_objDifferent.front()->m_strName;
    ASSERT_EQ(objCompared.m_objUnknown.size(), 1U);
    EXPECT_EQ(objCompared.m_objUnknown.front()->m_strName, "stop-bit");
    EXPECT_EQ(objReport.WhyUnknown(*objCompared.m_objUnknown.front()), Why::NotReported);
    EXPECT_TRUE(IsAllClosed());
}

TEST_P(CLinkedPrinterTest, ReadsOnlyTheGroupsThatAreNeeded) {
    const CReadReport objReport = Read(Named({"ip-address", "font-code", "stop-bit"}));
    EXPECT_EQ(m_strCommands, (Texts{"{Z5;1|}", "{Z5;3|}"}));
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("font-code")), Why::Known);
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("socket-port")), Why::Known) << "the same group";
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("feed-adj")), Why::NotAsked);
}

TEST_P(CLinkedPrinterTest, WhereNothingIsReportedNothingIsOpened) {
    const CReadReport objReport = Read(Named({"stop-bit"}));
    EXPECT_TRUE(objReport.m_objFailure.IsNone());
    EXPECT_FALSE(objReport.m_bSent);
    EXPECT_TRUE(m_objEvents.m_strLines.empty());
    EXPECT_EQ(m_objEventLoop.Yields(), 0);
}

TEST_P(CLinkedPrinterTest, PausesBetweenTwoGroupsAndNotBehindTheLast) {
    Read(Named({"feed-adj", "font-code", "parity"}));
    ASSERT_EQ(m_iCommandTimes.size(), 3U);
    EXPECT_LT(m_iCommandTimes[0], 900);
    EXPECT_GE(m_iCommandTimes[1] - m_iCommandTimes[0], 1000);
    EXPECT_GE(m_iCommandTimes[2] - m_iCommandTimes[1], 1000);
    EXPECT_LT(m_objClock.Elapsed() - m_iCommandTimes[2], 900);
    m_objLimits.m_dPause = 3.5;
    m_strCommands.clear();
    m_iCommandTimes.clear();
    Read(Named({"feed-adj", "font-code"}));
    EXPECT_GE(m_iCommandTimes[1] - m_iCommandTimes[0], 3500);
    EXPECT_LT(m_iCommandTimes[1] - m_iCommandTimes[0], 4500);
}

TEST_P(CLinkedPrinterTest, SleepsAsLongAsAPauseLasts) {
    m_objLimits.m_dPause = 9;
    double dAsked = 0;
    m_objEventLoop.After(2000, [&] { dAsked = m_objEventLoop.Asked(); });
    Read(Named({"feed-adj", "font-code"}));
    ASSERT_EQ(m_iCommandTimes.size(), 2U);
    EXPECT_NEAR(dAsked, static_cast<double>(m_iCommandTimes[1] - 2000) / 1000, 0.2);
}

TEST_P(CLinkedPrinterTest, TellsHowFarItIs) {
    Read(Named({"feed-adj", "font-code", "ip-address"}));
    EXPECT_EQ(m_objEvents.Lines("step"),
              (Texts{"step 1 of 3", "step 2 of 3", "step 3 of 3", "step 0 of 0"}));
}

TEST_P(CLinkedPrinterTest, ASilentPrinterEndsTheReadingInTime) {
    m_fnAnswer = [this](const std::string& p_strCommand) {
        return p_strCommand == "{Z5;1|}" ? std::nullopt
                                         : std::optional(m_objSimulated.SettingsAnswer(0));
    };
    const CReadReport objReport = Read(All());
    const Kind iKind = GetParam() == CInterface::UsbInterface ? Kind::UsbNoAnswer : Kind::NoReply;
    EXPECT_EQ(objReport.m_objFailure.m_iKind, iKind);
    EXPECT_TRUE(objReport.m_bSent);
    EXPECT_EQ(m_strCommands, (Texts{"{Z5;0|}", "{Z5;1|}"}));
    EXPECT_EQ(objReport.m_iAnswered, std::set<std::int16_t>{0});
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("feed-adj")), Why::Known);
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("font-code")), Why::Failed);
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("ip-address")), Why::Failed);
    EXPECT_LT(m_objClock.Elapsed() - m_iCommandTimes.back(), 6100);
    EXPECT_EQ(m_objEvents.Lines("step").back(), "step 0 of 0");
    EXPECT_TRUE(IsAllClosed());
}

TEST_P(CLinkedPrinterTest, TheTimeForAnAnswerIsTheCallers) {
    m_objLimits.m_iReply = 2;
    m_fnAnswer = CScriptedPrinter::KeepSilent;
    Read(Named({"feed-adj"}));
    EXPECT_GE(m_objClock.Elapsed() - m_iCommandTimes.back(), 1900);
    EXPECT_LT(m_objClock.Elapsed() - m_iCommandTimes.back(), 3200);
}

TEST_P(CLinkedPrinterTest, AnAnswerThatIsCutFillsNothing) {
    m_fnAnswer = [this](const std::string& p_strCommand) {
        return m_objSimulated.Handle(p_strCommand).m_strAnswer.substr(0, 20);
    };
    const CReadReport objReport = Read(Named({"feed-adj"}));
    EXPECT_FALSE(objReport.m_objFailure.IsNone());
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("feed-adj")), Why::Failed);
    EXPECT_TRUE(
        MSettingText::Same(MSettings::Get("feed-adj"), objReport.m_objSnapshot.Items(), {}));
}

TEST_P(CLinkedPrinterTest, ALateAnswerToAnEarlierRequestFillsNothing) {
    ChangeEverything();
    for (const MAnswer::Group iLate :
         {MAnswer::Adjustment, MAnswer::Parameter, MAnswer::Sensor, MAnswer::ParameterExpansion}) {
        m_fnAnswer = [this, iLate](const std::string& p_strCommand) {
            const std::string strLate = m_objSimulated.SettingsAnswer(iLate);
            if (GetParam() == CInterface::UsbInterface) {
                m_objUsbLibrary.m_strAnswers.push_back(OnUsb(strLate));
                return std::optional(m_objSimulated.Handle(p_strCommand).m_strAnswer);
            }
            return std::optional(strLate + m_objSimulated.Handle(p_strCommand).m_strAnswer);
        };
        const CReadReport objReport = Read(Named({"ip-address"}));
        EXPECT_TRUE(objReport.m_objFailure.IsNone()) << iLate;
        EXPECT_EQ(MSettingText::Show(MSettings::Get("ip-address"), objReport.m_objSnapshot.Items()),
                  "10.20.30.40")
            << iLate;
    }
}

TEST_P(CLinkedPrinterTest, ALateAnswerAloneIsNoAnswer) {
    m_fnAnswer = [this](const std::string& /*p_strCommand*/) {
        return m_objSimulated.SettingsAnswer(3);
    };
    const CReadReport objReport = Read(Named({"feed-adj"}));
    EXPECT_FALSE(objReport.m_objFailure.IsNone());
    EXPECT_TRUE(objReport.m_iAnswered.empty());
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("feed-adj")), Why::Failed);
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("ip-address")), Why::NotAsked);
}

TEST_P(CLinkedPrinterTest, AStatusInBetweenIsWaitedPast) {
    m_fnAnswer = [this](const std::string& p_strCommand) {
        if (GetParam() == CInterface::UsbInterface) {
            m_objUsbLibrary.m_strAnswers.push_back(MWire::Status("15"));
            return std::optional(m_objSimulated.Handle(p_strCommand).m_strAnswer);
        }
        return std::optional(MWire::Status("15") + m_objSimulated.Handle(p_strCommand).m_strAnswer);
    };
    const CReadReport objReport = Read(Named({"feed-adj"}));
    EXPECT_TRUE(objReport.m_objFailure.IsNone());
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("feed-adj")), Why::Known);
}

TEST_P(CLinkedPrinterTest, AFieldThatHoldsNoValueLeavesTheOthers) {
    m_fnAnswer = [this](const std::string& p_strCommand) {
        std::string strAnswer = m_objSimulated.Handle(p_strCommand).m_strAnswer;
        if (p_strCommand == "{Z5;1|}") {  // ends with the country, a position, and the euro code
            return strAnswer.replace(strAnswer.size() - 5, 1, "?");
        }
        const std::size_t iCodes = strAnswer.find("1B0A00");  // three codes of two digits
        return strAnswer.replace(iCodes + 2, 2, "0x");
    };
    const CReadReport objReport = Read(Named({"font-code", "parity"}));
    EXPECT_TRUE(objReport.m_objFailure.IsNone());
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("country")), Why::Unreadable);
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("euro-code")), Why::Known);
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("code-1")), Why::Known);
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("code-2")), Why::Unreadable);
    EXPECT_EQ(objReport.WhyUnknown(MSettings::Get("code-3")), Why::Known);
    EXPECT_TRUE(MSettingText::Same(MSettings::Get("code-2"), objReport.m_objSnapshot.Items(), {}))
        << "what is not known stands at its default";
}

// The status, and maintenance.

TEST_P(CLinkedPrinterTest, AsksForTheStatus) {
    m_objSimulated.SetStatus("14");
    const CStatusReport objReport = Status();
    EXPECT_EQ(objReport.m_strCode, "14");
    EXPECT_EQ(objReport.m_strText, "NO RIBBON");
    EXPECT_TRUE(objReport.m_objFailure.IsNone());
    EXPECT_TRUE(objReport.m_bSent);
    EXPECT_GT(objReport.m_dSeconds, 0);
    EXPECT_LT(objReport.m_dSeconds, 0.5);
    EXPECT_EQ(m_strCommands, Texts{"{WS|}"});
    EXPECT_TRUE(IsAllClosed());
}

TEST_P(CLinkedPrinterTest, AnUnknownStatusIsToldByItsCode) {
    m_objSimulated.SetStatus("99");
    const CStatusReport objReport = Status();
    EXPECT_EQ(objReport.m_strCode, "99");
    EXPECT_EQ(objReport.m_strText, "");
    EXPECT_TRUE(objReport.m_objFailure.IsNone());
}

TEST_P(CLinkedPrinterTest, ALateAnswerIsNoStatus) {
    m_fnAnswer = [this](const std::string& p_strCommand) {
        const std::string strLate = m_objSimulated.SettingsAnswer(0);
        if (GetParam() == CInterface::UsbInterface) {
            m_objUsbLibrary.m_strAnswers.push_back(OnUsb(strLate));
            return std::optional(m_objSimulated.Handle(p_strCommand).m_strAnswer);
        }
        return std::optional(strLate + m_objSimulated.Handle(p_strCommand).m_strAnswer);
    };
    const CStatusReport objReport = Status();
    EXPECT_EQ(objReport.m_strCode, "00");
    EXPECT_TRUE(objReport.m_objFailure.IsNone());
}

TEST_P(CLinkedPrinterTest, ASilentPrinterHasNoStatus) {
    m_fnAnswer = CScriptedPrinter::KeepSilent;
    const CStatusReport objReport = Status();
    const Kind iKind = GetParam() == CInterface::UsbInterface ? Kind::UsbNoAnswer : Kind::NoReply;
    EXPECT_EQ(objReport.m_objFailure.m_iKind, iKind);
    EXPECT_EQ(objReport.m_strCode, "");
    EXPECT_TRUE(objReport.m_bSent);
    EXPECT_GT(objReport.m_dSeconds, 4.9);
    EXPECT_LT(objReport.m_dSeconds, 6.1);
}

TEST_P(CLinkedPrinterTest, SendsAMaintenanceCommand) {
    const CStatusReport objReport = Printer(GetParam()).Send("{Z6;0|}");
    EXPECT_EQ(m_strCommands, Texts{"{Z6;0|}"});
    EXPECT_EQ(objReport.m_strCode, "00");
    EXPECT_EQ(objReport.m_strText, "ON LINE");
    EXPECT_TRUE(objReport.m_objFailure.IsNone());
}

TEST_P(CLinkedPrinterTest, AMaintenanceCommandThatIsRefusedIsToldByTheCode) {
    const CStatusReport objReport = Printer(GetParam()).Send("{Z6;7|}");
    EXPECT_EQ(objReport.m_strCode, "06");
    EXPECT_EQ(objReport.m_strText, "Command Error");
}

TEST_P(CLinkedPrinterTest, OnePrinterCanBeAskedAgainAndAgain) {
    CLinkedPrinter objPrinter = Printer(GetParam());
    EXPECT_EQ(objPrinter.Status().m_strCode, "00");
    EXPECT_TRUE(objPrinter.Read(Named({"feed-adj"})).m_objFailure.IsNone());
    m_fnAnswer = CScriptedPrinter::KeepSilent;
    EXPECT_FALSE(objPrinter.Status().m_objFailure.IsNone());
    m_fnAnswer = [](const std::string& /*p_strCommand*/) { return MWire::Status("02"); };
    EXPECT_EQ(objPrinter.Status().m_strCode, "02");
}

TEST_P(CLinkedPrinterTest, AFailureNamesTheDevice) {
    m_strDevice = "the one upstairs";
    m_fnAnswer = CScriptedPrinter::KeepSilent;
    EXPECT_EQ(Status().m_objFailure.m_strDevice, "the one upstairs");
    EXPECT_EQ(Read(Named({"feed-adj"})).m_objFailure.m_strDevice, "the one upstairs");
}

}  // namespace
