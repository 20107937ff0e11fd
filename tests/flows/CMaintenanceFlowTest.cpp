#include "tests/flows/CMaintenanceFlowFixture.h"

#include "model/CConversionError.h"
#include "protocol/MAnswer.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;
using Told = std::vector<bool>;
using Flow = CMaintenanceFlow;

constexpr std::int64_t Step = CFakeEventLoop::StepMilliseconds;
constexpr std::int64_t PauseMilliseconds = 1000;

using CMaintenanceFlowTest = CMaintenanceFlowFixture;

// What each function sends, for every list position that changes it.

struct CommandCase {
    void (*m_fnRun)(Flow& p_objFlow);
    Texts m_strCommands;
};

void PrintTest(Flow& p_objFlow, const MCommand::TestPrintFields& p_objFields) {
    p_objFlow.TestPrint([&] { return p_objFields; });
}

// clang-format off
const CommandCase Commands[] = {
    {[](Flow& p_objFlow) { p_objFlow.GetStatus(); }, {"{WS|}"}},
    {[](Flow& p_objFlow) { p_objFlow.HeadCheck(); }, {"{HD001,A|}"}},

    {[](Flow& p_objFlow) { p_objFlow.RamClear(0, -1); }, {"{Z4;0|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(0, 0); }, {"{Z4;0|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(0, 1); }, {"{Z4;00|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(0, 2); }, {"{Z4;01|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(0, 3); }, {"{Z4;02|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(0, 4); }, {"{Z4;03|}"}},
    {[](Flow& p_objFlow) { p_objFlow.ThresholdCalib(8); }, {"{WT;1000,9|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(0, 10); }, {"{Z4;09|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(1, -1); }, {"{Z4;1|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(1, 0); }, {"{Z4;1|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(1, 1); }, {"{Z4;1|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(1, 2); }, {"{Z4;1|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(1, 3); }, {"{Z4;1|}"}},
    {[](Flow& p_objFlow) { p_objFlow.RamClear(1, 4); }, {"{Z4;1|}"}},

    {[](Flow& p_objFlow) { p_objFlow.ThresholdCalib(0); }, {"{WT;1000,1|}"}},
    {[](Flow& p_objFlow) { p_objFlow.ThresholdCalib(1); }, {"{WT;1000,2|}"}},

    {[](Flow& p_objFlow) { p_objFlow.SensorAdjustReflect(); }, {"{Z6;0|}"}},
    {[](Flow& p_objFlow) { p_objFlow.SensorAdjustTrans(); }, {"{Z6;1|}"}},
    {[](Flow& p_objFlow) { p_objFlow.SensorAdjustPaperEnd(); }, {"{Z6;01|}", "{Z6;11|}"}},

    {[](Flow& p_objFlow) { p_objFlow.DiagPrint(0); }, {"{Z10|}"}},
    {[](Flow& p_objFlow) { p_objFlow.DiagPrint(1); }, {"{Z11|}"}},

    // Pattern, label length, issue count, print speed, sensor, cut type, print type.
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 760, 1, 0, 0, 0, 0}); }, {"{Z3;007600730105700010000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {1, 760, 1, 0, 0, 0, 0}); }, {"{Z3;107600730105700010000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {2, 760, 1, 0, 0, 0, 0}); }, {"{Z3;207600730105700010000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {3, 760, 1, 0, 0, 0, 0}); }, {"{Z3;307600730105700010000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {4, 760, 1, 0, 0, 0, 0}); }, {"{Z3;407600730105700010000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {5, 760, 1, 0, 0, 0, 0}); }, {"{Z3;607600730105700010000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 100, 1, 0, 0, 0, 0}); }, {"{Z3;001000070105700010000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 1029, 1, 0, 0, 0, 0}); }, {"{Z3;010290999105700010000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 9999, 1, 0, 0, 0, 0}); }, {"{Z3;099999969105700010000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 760, 5000, 0, 0, 0, 0}); }, {"{Z3;007600730105750000000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 760, 1, 1, 0, 0, 0}); }, {"{Z3;007600730105700011000|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 760, 1, 0, 1, 0, 0}); }, {"{Z3;007600730105700010100|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 760, 1, 0, 2, 0, 0}); }, {"{Z3;007600730105700010200|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 760, 1, 0, 0, 1, 0}); }, {"{Z3;007600730105700010010|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 760, 1, 0, 0, 2, 0}); }, {"{Z3;007600730105700010020|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 760, 1, 0, 0, 0, 1}); }, {"{Z3;007600730105700010001|}"}},
    {[](Flow& p_objFlow) { PrintTest(p_objFlow, {5, 432, 12, 1, 2, 1, 1}); }, {"{Z3;604320402105700121211|}"}},
};
// clang-format on

TEST_F(CMaintenanceFlowTest, SendsItsCommandsByteForByteOverTheLan) {
    ConnectQuietly();
    for (const CommandCase& objCase : Commands) {
        SCOPED_TRACE(objCase.m_strCommands.front());
        m_objSocket.m_strSent.clear();
        objCase.m_fnRun(m_objFlow);
        EXPECT_EQ(m_objSocket.m_strSent, objCase.m_strCommands);
        EXPECT_TRUE(m_objView.AreControlsEnabled());
    }
}

TEST_F(CMaintenanceFlowTest, SendsTheSameBytesOverTheSerialPort) {
    OpenComQuietly();
    for (const CommandCase& objCase : Commands) {
        SCOPED_TRACE(objCase.m_strCommands.front());
        m_objPort.m_strWrites.clear();
        objCase.m_fnRun(m_objFlow);
        std::string strExpected;
        for (const std::string& strCommand : objCase.m_strCommands) {
            strExpected += strCommand;
        }
        EXPECT_EQ(m_objPort.Sent(), strExpected);
        EXPECT_TRUE(m_objView.AreControlsEnabled());
    }
}

TEST_F(CMaintenanceFlowTest, TestPrintTakesItsFieldsInsideTheHandler) {
    ConnectQuietly();
    m_objFlow.TestPrint([]() -> MCommand::TestPrintFields { throw CConversionError("abc"); });
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
    EXPECT_TRUE(m_objView.AreControlsEnabled());
    EXPECT_FALSE(m_objBusy.IsBusy());
}

TEST_F(CMaintenanceFlowTest, FieldsThatDoNotHaveTheirWidthsAreNotSent) {
    const MCommand::TestPrintFields objAll[] = {
        {-1, 760, 1, 0, 0, 0, 0},    {10, 760, 1, 0, 0, 0, 0},   {0, 10000, 1, 0, 0, 0, 0},
        {0, 29, 1, 0, 0, 0, 0},      {0, -760, 1, 0, 0, 0, 0},   {0, 32767, 1, 0, 0, 0, 0},
        {0, 760, 10000, 0, 0, 0, 0}, {0, 760, -1, 0, 0, 0, 0},   {0, 760, 1, -1, 0, 0, 0},
        {0, 760, 1, 0, 10, 0, 0},    {0, 760, 1, 0, 0, -1, 0},   {0, 760, 1, 0, 0, 0, 10},
        {10, 760, 1, -1, 0, 0, 0},   {0, -32768, 1, 0, 0, 0, 0}, {0, 760, 12345, 0, 0, 0, 0},
    };
    ConnectQuietly();
    for (const MCommand::TestPrintFields& objFields : objAll) {
        PrintTest(m_objFlow, objFields);
    }
    for (const std::int16_t iPosition : std::vector<std::int16_t>{-32768, -1, 10, 32767}) {
        m_objFlow.RamClear(iPosition, 1);
        m_objFlow.DiagPrint(iPosition);
        m_objFlow.ThresholdCalib(iPosition);
    }
    m_objFlow.RamClear(0, 11);
    m_objFlow.ThresholdCalib(9);
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
    EXPECT_TRUE(m_objView.m_bEnabled.empty());
}

// Get status.

TEST_F(CMaintenanceFlowTest, GetStatusClearsTheLabelThenShowsTheAnswer) {
    ConnectQuietly();
    m_objSocket.m_fnSent = [this, fnSent = m_objSocket.m_fnSent](const std::string& p_strCommand) {
        EXPECT_EQ(m_objView.m_strStatuses, Texts{""});
        fnSent(p_strCommand);
    };
    m_objFlow.GetStatus();
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"", "ON LINE"}));
    EXPECT_TRUE(m_objView.m_strHeadChecks.empty());
}

// The sensor adjustments.

TEST_F(CMaintenanceFlowTest, ReflectAndTransEndAtOnceWhenTheyCannotSend) {
    m_objFlow.SensorAdjustReflect();
    m_objFlow.SensorAdjustTrans();
    EXPECT_EQ(m_objClock.Elapsed(), 0);
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true, false, true}));
}

TEST_F(CMaintenanceFlowTest, PaperEndSendsBothWithoutAPauseBetween) {
    ConnectQuietly();
    m_objFlow.SensorAdjustPaperEnd();
    ASSERT_EQ(m_objSocket.m_iSentTimes.size(), 2U);
    EXPECT_EQ(m_objSocket.m_iSentTimes[1] - m_objSocket.m_iSentTimes[0], Step);
}

TEST_F(CMaintenanceFlowTest, PaperEndPausesAlsoWhenItCannotSend) {
    m_objFlow.SensorAdjustPaperEnd();
    EXPECT_EQ(m_objClock.Elapsed(), PauseMilliseconds);
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
}

TEST_F(CMaintenanceFlowTest, PaperEndSendsItsSecondCommandWhenTheFirstIsRefused) {
    UseUsb();
    m_objUsbLink.m_bSends = false;
    m_objUsbLink.m_iFailure = CFailure::Kind::UsbNotReady;
    m_objFlow.SensorAdjustPaperEnd();
    EXPECT_EQ(m_objUsbLink.m_strSent, (Texts{"{Z6;01|}", "{Z6;11|}"}));
    EXPECT_EQ(m_objUsbLink.m_iSentTimes, (std::vector<std::int64_t>{0, 0}));
    ExpectButtonsHeldToTheEnd();
}

TEST_F(CMaintenanceFlowTest, PaperEndsSecondCommandGoesNowhereWhenTheFirstDoesNotLeave) {
    ConnectQuietly();
    m_objSocket.m_bCompletesSends = false;
    m_objPrinter.m_fnAnswer = [this](const std::string&) {
        m_objSocket.m_bCompletesSends = true;
        return MWire::Status("00");
    };
    m_objFlow.SensorAdjustPaperEnd();
    EXPECT_EQ(m_objSocket.m_strSent, Texts{"{Z6;01|}"});
    EXPECT_FALSE(m_objSocket.IsConnected()) << "the connection went with what it had not sent";
    ExpectButtonsHeldToTheEnd();
}

}  // namespace
