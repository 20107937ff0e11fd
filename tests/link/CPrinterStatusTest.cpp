#include "link/CComLink.h"
#include "protocol/MAnswer.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CLinkFixture.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

struct StatusCase {
    const char* m_strCode;
    const char* m_strText;
};

// clang-format off
const StatusCase KnownStatuses[] = {
    {"00", "ON LINE"},
    {"01", "Head Open (ON LINE)"},
    {"02", "On Running"},
    {"04", "PAUSE"},
    {"05", "Peel off waiting"},
    {"06", "Command Error"},
    {"07", "Rs232c Error"},
    {"11", "Paper JAM"},
    {"12", "Cutter Error"},
    {"13", "Paper Error"},
    {"14", "NO RIBBON"},
    {"15", "Head Open Error"},
    {"17", "Thermal head Error"},
    {"18", "Thermal head Temp Error"},
    {"21", "Ribbon Error"},
    {"22", "Thermistor Connector omission"},
    {"30", "The stacked form is full."},
    {"31", "Stacker Power OFF"},
    {"40", ""},
    {"41", "ON LINE"},
    {"50", "Flash Memory Write Error"},
    {"51", "Flash Memory Format Error"},
    {"54", "Flash Memory Empty"},
    {"55", "  Save Mode"},
};
// clang-format on

Texts UnknownCodes() {
    std::set<std::string> strKnown;
    for (const StatusCase& objStatus : KnownStatuses) {
        strKnown.insert(objStatus.m_strCode);
    }
    Texts strUnknown{"  ", "|}", "0 ", " 0", "A0", "0a", std::string(2, '\0')};
    for (int iCode = 0; iCode <= 99; ++iCode) {
        std::string strCode(iCode < 10 ? "0" : "");
        strCode += std::to_string(iCode);
        if (!strKnown.contains(strCode)) {
            strUnknown.push_back(strCode);
        }
    }
    return strUnknown;
}

/// The status on its way from the line to its label, over either link that tells of it by itself.
class CPrinterStatusTest : public CLinkFixture, public ::testing::WithParamInterface<std::int16_t> {
protected:
    CPrinterStatusTest() {
        m_objLinks.SetLink(CInterface::SerialInterface, m_objComLink);
        m_objInterface.SetActiveInterface(GetParam());
    }

    void SetUp() override {
        ASSERT_TRUE(m_objLinks.OpenLink(GetParam()));
        m_objView.m_bEnabled.clear();
    }

    void Arrive(const std::string& p_strBytes) {
        if (GetParam() == CInterface::LanInterface) {
            m_objSocket.Arrive(p_strBytes);
        } else {
            m_objPort.Arrive(p_strBytes);
        }
    }

    /// Every command is answered by p_strAnswer.
    void AnswerWith(const std::string& p_strAnswer) {
        const auto fnAnswer = [p_strAnswer](const std::string&) { return p_strAnswer; };
        m_objPrinter.m_fnAnswer = fnAnswer;
        m_objPort.m_fnAnswer = fnAnswer;
    }

    [[nodiscard]] std::string Sent() const {
        return m_objPort.Sent() + (m_objSocket.m_strSent.empty() ? "" : m_objSocket.m_strSent[0]);
    }

    CFakeSerialPort m_objPort{m_objEventLoop};
    CComLink m_objComLink{m_objPort,  m_objInterface, m_objRouter,
                          m_objState, m_objEvents,    m_objWaiter};
};

INSTANTIATE_TEST_SUITE_P(, CPrinterStatusTest,
                         ::testing::Values(CInterface::SerialInterface, CInterface::LanInterface),
                         [](const auto& p_objInfo) {
                             return p_objInfo.param == CInterface::LanInterface ? "Lan" : "Serial";
                         });

TEST_P(CPrinterStatusTest, ARequestClearsTheLabelThenShowsEachCodesText) {
    for (const StatusCase& objStatus : KnownStatuses) {
        SCOPED_TRACE(objStatus.m_strCode);
        m_objView.m_strStatuses.clear();
        AnswerWith(MWire::Status(objStatus.m_strCode));
        EXPECT_TRUE(m_objExchange.RequestStatus());
        m_objEventLoop.Idle(1000);
        EXPECT_EQ(m_objView.m_strStatuses, (Texts{"", objStatus.m_strText}));
        EXPECT_EQ(m_objState.m_iStatusReceived, 1);
        EXPECT_TRUE(m_objView.AreControlsEnabled());
    }
    EXPECT_TRUE(m_objView.m_strHeadChecks.empty());
}

TEST_P(CPrinterStatusTest, ARequestThatGetsAnUnknownCodeLeavesTheLabelClearAndTheFlag) {
    for (const std::string& strCode : UnknownCodes()) {
        SCOPED_TRACE(strCode);
        m_objView.m_strStatuses.clear();
        AnswerWith(MWire::Status(strCode));
        EXPECT_TRUE(m_objExchange.RequestStatus());
        m_objEventLoop.Idle(1000);
        EXPECT_EQ(m_objView.m_strStatuses, Texts{""});
        EXPECT_EQ(m_objState.m_iStatusReceived, 0);
    }
}

TEST_P(CPrinterStatusTest, ARequestSendsOneCommand) {
    AnswerWith(MWire::Status("00"));
    EXPECT_TRUE(m_objExchange.RequestStatus());
    EXPECT_EQ(Sent(), "{WS|}");
    EXPECT_LE(m_objSocket.m_strSent.size(), 1U);
}

TEST_P(CPrinterStatusTest, AStatusThatNobodyAskedForIsShown) {
    for (const StatusCase& objStatus : KnownStatuses) {
        SCOPED_TRACE(objStatus.m_strCode);
        m_objView.m_strStatuses.clear();
        m_objState.m_iStatusReceived = 0;
        Arrive(MWire::Status(objStatus.m_strCode));
        EXPECT_EQ(m_objView.m_strStatuses, Texts{objStatus.m_strText});
        EXPECT_EQ(m_objState.m_iStatusReceived, 1);
    }
}

TEST_P(CPrinterStatusTest, AnUnknownStatusThatNobodyAskedForLeavesLabelAndFlag) {
    for (const std::string& strCode : UnknownCodes()) {
        SCOPED_TRACE(strCode);
        for (const std::int16_t iFlag : std::vector<std::int16_t>{0, 1}) {
            m_objState.m_iStatusReceived = iFlag;
            Arrive(MWire::Status(strCode));
            EXPECT_EQ(m_objState.m_iStatusReceived, iFlag);
        }
    }
    EXPECT_TRUE(m_objView.m_strStatuses.empty());
    EXPECT_TRUE(m_objView.m_strHeadChecks.empty());
}

TEST_P(CPrinterStatusTest, AHeadCheckTakesTheFirstOfTwoStatuses) {
    for (const StatusCase& objStatus : KnownStatuses) {
        SCOPED_TRACE(objStatus.m_strCode);
        m_objView.m_strStatuses.clear();
        m_objView.m_strHeadChecks.clear();
        m_objRouter.ExpectHeadCheck();
        Arrive(MWire::Status(objStatus.m_strCode));
        Arrive(MWire::Status("02"));
        EXPECT_EQ(m_objView.m_strHeadChecks, Texts{objStatus.m_strText});
        EXPECT_EQ(m_objView.m_strStatuses, Texts{"On Running"});
    }
}

TEST_P(CPrinterStatusTest, SettingsThatAnswerARequestAreHarmless) {
    AnswerWith(MWire::Settings(1) + MWire::Status("00"));
    EXPECT_TRUE(m_objExchange.RequestStatus());
    m_objEventLoop.Idle(1000);
    const CItemManager objUntouched;
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), MWire::StoredFields(objUntouched, 1));
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"", "ON LINE"}));
}

}  // namespace
