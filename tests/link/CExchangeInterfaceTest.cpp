#include "flows/CSessionView.h"
#include "link/CPrinterSession.h"
#include "protocol/MCommand.h"
#include "tests/fakes/CFakeClock.h"
#include "tests/fakes/CFakeEventLoop.h"
#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CFakeTcpClient.h"
#include "tests/fakes/CFakeUsbLibrary.h"
#include "tests/fakes/CScriptedPrinter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Over which of the three links each of the exchange's operations goes.

namespace {

using Texts = std::vector<std::string>;

/// A whole session, every link of which is open and answered.
class CExchangeInterfaceTest : public ::testing::TestWithParam<std::int16_t> {
protected:
    void SetUp() override {
        m_objPort.m_fnAnswer = CScriptedPrinter::Behave;
        m_objLibrary.m_fnSent = [this](const std::string& p_strCommand) {
            const std::string strAnswer = *CScriptedPrinter::Behave(p_strCommand);
            m_objLibrary.m_strAnswers.push_back(strAnswer.starts_with("{") ? "\x02 " + strAnswer
                                                                           : strAnswer);
        };
        for (const std::int16_t iInterface :
             {CInterface::SerialInterface, CInterface::LanInterface, CInterface::UsbInterface}) {
            ASSERT_TRUE(m_objSession.Links().OpenLink(iInterface));
        }
        m_objInterface.SetActiveInterface(GetParam());
    }

    /// Runs each of the operations; how many succeed.
    int RunAll() {
        const CWaiter::Turn objTurn(m_objSession.Waiter());
        CCommandExchange& objExchange = m_objSession.Exchange();
        int iDone = 0;
        iDone += objExchange.Send(MCommand::SensorAdjustReflect) ? 1 : 0;
        iDone += objExchange.Request("{Z4;1|}", 13, AwaitedAnswer::Any) ? 1 : 0;
        iDone += objExchange.SendMaintenance(MCommand::HeadCheck) ? 1 : 0;
        iDone += objExchange.RequestStatus() ? 1 : 0;
        iDone += objExchange.ReadGroup(0) ? 1 : 0;
        EXPECT_TRUE(m_objView.AreControlsEnabled());
        return iDone;
    }

    static std::string Joined(const Texts& p_strTexts) {
        std::string strJoined;
        for (const std::string& strText : p_strTexts) {
            strJoined += strText;
        }
        return strJoined;
    }

    const std::string m_strAll = "{Z6;0|}{Z4;1|}{HD001,A|}{WS|}{Z5;0|}";

    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CFakeMessageBox m_objBoxes;  // none is expected
    CFakeTcpClient m_objSocket{m_objEventLoop};
    CScriptedPrinter m_objPrinter{m_objEventLoop, m_objSocket};
    CFakeSerialPort m_objPort{m_objEventLoop};
    CFakeUsbLibrary m_objLibrary{m_objEventLoop};
    CFakeExchangeView m_objView;
    CSessionView m_objEvents{m_objView, m_objBoxes};
    CItemManager m_objItemManager;
    CInterface m_objInterface;
    CPrinterSession m_objSession{
        m_objItemManager, m_objInterface, m_objEvents,
        CPrinterPlatform{m_objEventLoop, m_objClock, m_objSocket, m_objPort, m_objLibrary}};
};

TEST_P(CExchangeInterfaceTest, EveryOperationGoesOverTheActiveLinkAndNoOther) {
    EXPECT_EQ(RunAll(), 5);
    EXPECT_EQ(m_objPort.Sent(), GetParam() == CInterface::SerialInterface ? m_strAll : "");
    EXPECT_EQ(Joined(m_objSocket.m_strSent),
              GetParam() == CInterface::LanInterface ? m_strAll : "");
    EXPECT_EQ(Joined(m_objLibrary.m_strSent),
              GetParam() == CInterface::UsbInterface ? m_strAll : "");
}

INSTANTIATE_TEST_SUITE_P(, CExchangeInterfaceTest,
                         ::testing::Values(CInterface::SerialInterface, CInterface::LanInterface,
                                           CInterface::UsbInterface));

class CExchangeNoInterfaceTest : public CExchangeInterfaceTest {};

TEST_P(CExchangeNoInterfaceTest, NothingGoesOverAnyLinkAndNothingIsSaid) {
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_EQ(RunAll(), 0);
    EXPECT_EQ(m_objPort.Sent(), "");
    EXPECT_EQ(m_objSocket.m_strSent, Texts{});
    EXPECT_EQ(m_objLibrary.m_strSent, Texts{});
    EXPECT_EQ(m_objClock.Elapsed(), iBefore);
    EXPECT_EQ(m_objBoxes.BeepCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(, CExchangeNoInterfaceTest, ::testing::Values(-32768, -1, 3, 7, 32767));

}  // namespace
