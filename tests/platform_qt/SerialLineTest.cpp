#include "flows/CSessionView.h"
#include "flows/MFailureBox.h"
#include "link/CComLink.h"
#include "platform/qt/CQtClock.h"
#include "platform/qt/CQtEventLoop.h"
#include "platform/qt/CQtSerialPort.h"
#include "platform/qt/CSystemLineState.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "simulator/program/CSerialServer.h"
#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/MWire.h"
#include "tests/golden/MGolden.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int LongEnough = 10'000;
constexpr std::int16_t StatusLength = 13;

/// The link to the printer over everything that is real but the wire: COM1 is a pseudo-terminal
/// with the simulator's printer at its far end.
class SerialLineTest : public ::testing::Test, public ISimulatorLog {
protected:
    void PlugIn(const CFaultSettings& p_objFaults = {}) {
        m_objServer = std::make_unique<CSerialServer>(
            m_objPrinter, p_objFaults, *this,
            CSerialServer::Told{[this](const std::string&) { ++m_iLines; },
                                [](const std::string& p_objFailure) { FAIL() << p_objFailure; }});
        m_objServer->Listen(m_objDevices.filePath("com1").toStdString());
    }

    void PlugInAndOpen(const CFaultSettings& p_objFaults = {}) {
        PlugIn(p_objFaults);
        ASSERT_TRUE(m_objLink.Open());
    }

    bool Exchange(const std::string& p_strCommand, std::int16_t p_iLength = StatusLength) {
        Bytes objBuffer;
        CFailure objFailure;
        std::int16_t iCount = 0;
        const bool bSent = m_objLink.Exchange(MWire::ToBytes(p_strCommand), objBuffer, objFailure,
                                              iCount, p_iLength);
        EXPECT_EQ(MFailureBox::HandlerText(objFailure), "");
        return bSent;
    }

    bool Read(std::int16_t p_iGroup) {
        m_objRouter.SetAnswerSelector(p_iGroup);
        return Exchange(MCommand::ReadRequest(p_iGroup), MAnswer::ReceiveLength(p_iGroup));
    }

    bool WaitForStatus(std::size_t p_iCount) {
        return QTest::qWaitFor([&] { return m_objView.m_strStatuses.size() >= p_iCount; },
                               LongEnough);
    }

    /// Reads a group into items that hold something else, and waits until they are the printer's.
    void ExpectRead(std::int16_t p_iGroup) {
        for (const ItemRef& objItem : MWire::GroupItems(m_objItems, p_iGroup)) {
            objItem->m_vValue = 1;
        }
        constexpr std::size_t iHead = 2;  // "{" and the group
        constexpr std::size_t iTail = 2;  // "|}"
        const std::string strAnswer = m_objPrinter.SettingsAnswer(p_iGroup);
        const std::string strExpected = strAnswer.substr(iHead, strAnswer.size() - iHead - iTail);
        ASSERT_NE(MWire::StoredFields(m_objItems, p_iGroup), strExpected);
        ASSERT_TRUE(Read(p_iGroup));
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return MWire::StoredFields(m_objItems, p_iGroup) == strExpected; }, LongEnough))
            << MWire::StoredFields(m_objItems, p_iGroup);
    }

    QTemporaryDir m_objDevices;
    CPrinter m_objPrinter;
    std::unique_ptr<CSerialServer> m_objServer;
    int m_iLines = 0;  // how often a line was plugged in
    CItemManager m_objItems;
    CInterface m_objInterface;
    CFakeMessageBox m_objMessageBox;
    CFakeExchangeView m_objView;
    CSessionView m_objEvents{m_objView, m_objMessageBox};
    CLinkState m_objState;
    CQtEventLoop m_objEventLoop;
    CQtClock m_objClock;
    CSystemLineState m_objLineState;
    CQtSerialPort m_objPort{m_objLineState, m_objDevices.path().toStdString()};
    CWaiter m_objWaiter{m_objEventLoop, m_objClock};
    CAnswerRouter m_objRouter{m_objItems, m_objState, m_objEvents};
    CComLink m_objLink{m_objPort,  m_objInterface, m_objRouter,
                       m_objState, m_objEvents,    m_objWaiter};

private:
    void Line(std::size_t /*p_iConnection*/, std::string_view /*p_strLine*/) override {}
};

TEST_F(SerialLineTest, ReadsEveryGroup) {
    PlugInAndOpen();
    EXPECT_EQ(m_objPrinter.SettingsAnswer(3).size(), 96U);
    for (std::int16_t iGroup = 0; iGroup <= 4; ++iGroup) {
        SCOPED_TRACE(iGroup);
        ExpectRead(iGroup);
    }
}

TEST_F(SerialLineTest, ReadsWhatItHasWritten) {
    PlugInAndOpen();
    ASSERT_TRUE(Exchange(
        MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}})));
    ASSERT_TRUE(WaitForStatus(1));
    EXPECT_NE(MWire::StoredFields(m_objPrinter.Items(), 0), MWire::StoredFields(CItemManager(), 0));
    ExpectRead(0);
}

TEST_F(SerialLineTest, ShowsTheStatus) {
    m_objPrinter.SetStatus("14");
    PlugInAndOpen();
    ASSERT_TRUE(Exchange(MCommand::StatusRequest));
    ASSERT_TRUE(WaitForStatus(1));
    EXPECT_EQ(m_objView.m_strStatuses, std::vector<std::string>{"NO RIBBON"});
}

TEST_F(SerialLineTest, ACommandIsOutInAFewMilliseconds) {
    PlugInAndOpen();
    const std::string strCommand = "{" + std::string(40, 'x') + "|}";
    ASSERT_EQ(strCommand.size(), 43U);
    constexpr qint64 iMostMilliseconds = 10;  // one sleep a byte would be 344
    qint64 iBest = 1000;
    for (int i = 0; i < 10 && iBest > iMostMilliseconds; ++i) {
        QElapsedTimer objTime;
        objTime.start();
        ASSERT_TRUE(Exchange(strCommand));
        iBest = std::min(iBest, objTime.elapsed());
        ASSERT_TRUE(WaitForStatus(static_cast<std::size_t>(i) + 1));
    }
    EXPECT_LE(iBest, iMostMilliseconds);
}

TEST_F(SerialLineTest, AnAnswerInPiecesBehindJunkIsTaken) {
    CFaultSettings objFaults;
    objFaults.m_iPieces = 1;
    objFaults.m_iGap = std::chrono::milliseconds(1);
    objFaults.m_bJunkBefore = true;
    PlugInAndOpen(objFaults);
    ExpectRead(3);
}

TEST_F(SerialLineTest, AnAnswerThatIsCutShortDoesNotSpoilTheNextOne) {
    CFaultSettings objFaults;
    objFaults.m_iCut = 20;
    PlugInAndOpen(objFaults);
    ASSERT_TRUE(Read(1));
    ASSERT_TRUE(Exchange(MCommand::StatusRequest));
    ASSERT_TRUE(WaitForStatus(1));
    EXPECT_EQ(MWire::StoredFields(m_objItems, 1), MWire::StoredFields(CItemManager(), 1));
    EXPECT_EQ(m_objView.m_strStatuses, std::vector<std::string>{"ON LINE"});
}

TEST_F(SerialLineTest, ALineThatIsPulledOutIsAClosedPortUntilItIsOpenedAgain) {
    CFaultSettings objFaults;
    objFaults.m_iCloseAfter = 1;
    PlugInAndOpen(objFaults);
    for (int i = 1; i <= 3; ++i) {
        ExpectRead(0);
        ASSERT_TRUE(QTest::qWaitFor([this] { return !m_objPort.IsOpen(); }, LongEnough));
        EXPECT_FALSE(Read(0));
        EXPECT_FALSE(Exchange(MCommand::StatusRequest));
        EXPECT_EQ(m_iLines, i + 1);
        ASSERT_TRUE(m_objLink.Open());
    }
}

TEST_F(SerialLineTest, ALineThatIsPulledOutInACommandEndsIt) {
    PlugInAndOpen();
    QTimer::singleShot(0, qApp, [this] { m_objServer.reset(); });
    EXPECT_FALSE(Exchange("{" + std::string(40, 'x') + "|}"));
    EXPECT_FALSE(m_objLink.Open());
    PlugIn();
    EXPECT_TRUE(m_objLink.Open());
    ExpectRead(0);
}

TEST_F(SerialLineTest, APortThatAnotherProgramHoldsIsTold) {
    PlugIn();
    CQtSerialPort objOther(m_objLineState, m_objDevices.path().toStdString());
    objOther.SetSettings("9600,E,8,1");
    ASSERT_EQ(objOther.Open(), ISerialPort::Opened);
    m_objMessageBox.Expect("Already Opened Port by other Application", MessageIcon::Exclamation);
    EXPECT_FALSE(m_objLink.Open());
    m_objMessageBox.Verify();
    objOther.Close();
    EXPECT_TRUE(m_objLink.Open());
}

TEST_F(SerialLineTest, APortThatIsMissingFailsWithoutABox) {
    EXPECT_FALSE(m_objLink.Open());
    EXPECT_FALSE(Exchange(MCommand::StatusRequest));
    EXPECT_TRUE(m_objMessageBox.Shown().empty());
}

}  // namespace
