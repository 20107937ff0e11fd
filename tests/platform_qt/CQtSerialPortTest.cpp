#include "platform/qt/CQtSerialPort.h"

#include "platform/qt/CQtEventLoop.h"
#include "tests/platform_qt/CSerialPortFixture.h"

#include <QElapsedTimer>

#include <algorithm>
#include <ctime>

namespace {

using Events = std::vector<std::int16_t>;

std::string EveryByte() {
    std::string strBytes;
    for (int i = 0; i < 256; ++i) {
        strBytes += static_cast<char>(i);
    }
    return strBytes;
}

/// The processor time that this program takes while it waits, in milliseconds.
double ProcessorTimeOf(int p_iWaitMilliseconds) {
    const std::clock_t iBegin = std::clock();
    QTest::qWait(p_iWaitMilliseconds);
    return 1000.0 * static_cast<double>(std::clock() - iBegin) / CLOCKS_PER_SEC;
}

/// An open port.
class CQtSerialPortTest : public CSerialPortFixture {
protected:
    void SetUp() override { ASSERT_EQ(CallOpen(), ISerialPort::Opened); }

    std::string ReadFar(std::size_t p_iCount) {
        std::string strTaken;
        const bool bCame = QTest::qWaitFor(
            [&] {
                strTaken += m_objLine->Read();
                return strTaken.size() >= p_iCount;
            },
            LongEnough);
        EXPECT_TRUE(bCame);
        return strTaken;
    }
};

// Characters.

TEST_F(CQtSerialPortTest, EveryByteGoesBothWaysUnchanged) {
    ASSERT_TRUE(CallOutput(EveryByte()));
    EXPECT_EQ(ReadFar(256), EveryByte());
    m_objLine->Write(EveryByte());
    ASSERT_TRUE(WaitForData(256));
    EXPECT_EQ(m_objEvents.m_strData, EveryByte());
}

TEST_F(CQtSerialPortTest, BytesAreOutBeforeTheCallReturns) {
    ASSERT_TRUE(CallOutput("{WS|}"));
    EXPECT_EQ(m_objLine->Read(), "{WS|}");
}

TEST_F(CQtSerialPortTest, EveryCharacterHasAnEventOfItsOwn) {
    m_objLine->Write("{12345|}");
    ASSERT_TRUE(WaitForData(8));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iReceived, 8);
    EXPECT_EQ(m_objEvents.m_strData, "{12345|}");
    EXPECT_EQ(m_objEvents.m_iEvents, Events{});
}

TEST_F(CQtSerialPortTest, CharactersThatNobodyTakesAreKeptForTheNextEvent) {
    m_objEvents.m_bTakesData = false;
    m_objLine->Write("abc");
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_objEvents.m_iReceived > 0; }, LongEnough));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iReceived, 1);
    m_objEvents.m_bTakesData = true;
    m_objLine->Write("d");
    ASSERT_TRUE(WaitForData(4));
    EXPECT_EQ(m_objEvents.m_strData, "abcd");
}

TEST_F(CQtSerialPortTest, TheInputLengthSaysHowManyAreTaken) {
    m_objPort.SetInputLength(3);
    m_objPort.SetReceiveThreshold(3);
    m_objLine->Write("abcdefgh");
    ASSERT_TRUE(WaitForData(6));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iReceived, 2);
    m_objPort.SetInputLength(0);
    m_objLine->Write("i");
    ASSERT_TRUE(WaitForData(9));
    EXPECT_EQ(m_objEvents.m_iReceived, 3);
    EXPECT_EQ(m_objEvents.m_strData, "abcdefghi");
}

TEST_F(CQtSerialPortTest, WithoutAThresholdThereAreNoEvents) {
    m_objPort.SetReceiveThreshold(0);
    m_objPort.SetSendThreshold(0);
    m_objLine->Write("abc");
    CallOutput("x");
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iReceived, 0);
    EXPECT_EQ(m_objEvents.m_iEvents, Events{});
    m_objPort.SetInputLength(0);
    EXPECT_EQ(m_objPort.Input().size(), 3U);
}

TEST_F(CQtSerialPortTest, AClosedPortSendsAndHoldsNothing) {
    m_objLine->Write("abc");
    while (m_objLine->Waiting() < 3) {
        QTest::qSleep(1);  // no event of the port runs meanwhile
    }
    CallClose();
    EXPECT_FALSE(CallOutput("x"));
    EXPECT_TRUE(m_objPort.Input().empty());
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iReceived, 0);
    EXPECT_EQ(m_objLine->Read(), "");
}

TEST_F(CQtSerialPortTest, MayBeClosedAndOpenedInAnEvent) {
    m_objEvents.m_fnOnEvent = [this](std::int16_t) {
        m_objEvents.m_fnOnEvent = nullptr;
        m_objPort.Close();
        EXPECT_EQ(m_objPort.Open(), ISerialPort::Opened);
    };
    m_objLine->Write("abc");
    ASSERT_TRUE(WaitForData(1));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strData, "a") << "what the closed port held is lost";
    m_objLine->Write("d");
    ASSERT_TRUE(WaitForData(2));
    EXPECT_EQ(m_objEvents.m_strData, "ad");
}

TEST_F(CQtSerialPortTest, NobodyNeedsToHearOfTheEvents) {
    m_objPort.SetEvents(nullptr);
    m_objLine->Write("abc");
    CallOutput("x");
    QTest::qWait(LongEnoughForNothing);
    m_objPort.SetEvents(&m_objEvents);
    m_objLine->Write("d");
    ASSERT_TRUE(WaitForData(4));
    EXPECT_EQ(m_objEvents.m_strData, "abcd");
}

// Sending.

TEST_F(CQtSerialPortTest, TellsWhenAByteIsOut) {
    for (int i = 1; i <= 3; ++i) {
        ASSERT_TRUE(CallOutput("x"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return m_objEvents.m_iEvents.size() >= 1; }, LongEnough));
        QTest::qWait(LongEnoughForNothing);
        EXPECT_EQ(m_objEvents.m_iEvents, Events{SerialSend});
        m_objEvents.m_iEvents.clear();
    }
}

TEST_F(CQtSerialPortTest, SendEventsDoNotNestHoweverManyBytesGoOut) {
    CQtEventLoop objEventLoop;
    int iDepth = 0;
    int iDeepest = 0;
    m_objEvents.m_fnOnEvent = [&](std::int16_t) {
        iDeepest = std::max(iDeepest, ++iDepth);
        for (int i = 0; i < 3; ++i) {
            objEventLoop.Yield();
        }
        --iDepth;
    };
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(CallOutput("x"));
    }
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(iDeepest, 1);
}

TEST_F(CQtSerialPortTest, ManyBytesWithAYieldEachCostNoSleeps) {
    CQtEventLoop objEventLoop;
    constexpr int iBytes = 40;
    constexpr qint64 iMostMilliseconds = 10;  // a sleep each would be 320
    qint64 iBest = 1000;
    m_objEvents.m_fnOnEvent = [&](std::int16_t) { objEventLoop.Yield(); };
    for (int i = 0; i < 10 && iBest > iMostMilliseconds; ++i) {
        QElapsedTimer objTime;
        objTime.start();
        for (int j = 0; j < iBytes; ++j) {
            m_objPort.Output(std::vector<std::uint8_t>{'x'});
            objEventLoop.Yield();
        }
        iBest = std::min(iBest, objTime.elapsed());
        QTest::qWait(20);
    }
    EXPECT_LE(iBest, iMostMilliseconds);
    EXPECT_GE(m_objEvents.m_iEvents.size(), static_cast<std::size_t>(iBytes / 2));
}

TEST_F(CQtSerialPortTest, AYieldInTheLastBytesSendEventDoesNotSleep) {
    CQtEventLoop objEventLoop;
    constexpr std::size_t iTries = 10;
    constexpr qint64 iMostMicroseconds = 3000;  // a sleep is 8000
    qint64 iBest = 1'000'000;
    m_objEvents.m_fnOnEvent = [&](std::int16_t) {
        QElapsedTimer objTime;
        objTime.start();
        objEventLoop.Yield();
        iBest = std::min(iBest, objTime.nsecsElapsed() / 1000);
    };
    for (std::size_t i = 1; i <= iTries; ++i) {
        ASSERT_TRUE(CallOutput("x"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return m_objEvents.m_iEvents.size() >= i; }, LongEnough));
    }
    EXPECT_LE(iBest, iMostMicroseconds);
}

TEST_F(CQtSerialPortTest, AnIdlePortTakesNoProcessorTime) {
    EXPECT_LT(ProcessorTimeOf(500), 100);
}

// A port that vanishes.

TEST_F(CQtSerialPortTest, APortThatIsPulledOutIsClosed) {
    m_objLine->PullOut();
    EXPECT_TRUE(WaitUntilClosed());
    EXPECT_FALSE(CallOutput("x"));
    EXPECT_TRUE(m_objPort.Input().empty());
    EXPECT_LT(ProcessorTimeOf(500), 100) << "nothing goes round in circles";
    EXPECT_EQ(m_objEvents.m_iEvents, Events{});
    EXPECT_EQ(m_objEvents.m_iReceived, 0);
    CallClose();
}

TEST_F(CQtSerialPortTest, APortThatIsPulledOutOpensAgainWhenItIsBack) {
    for (int i = 0; i < 3; ++i) {
        m_objLine->PullOut();
        ASSERT_TRUE(WaitUntilClosed());
        EXPECT_NE(CallOpen(), ISerialPort::Opened);
        PlugIn();
        ASSERT_EQ(CallOpen(), ISerialPort::Opened);
        EXPECT_TRUE(CallOutput("again"));
        EXPECT_EQ(ReadFar(5), "again");
        m_objLine->Write("x");
        ASSERT_TRUE(WaitForData(1));
        m_objEvents.m_strData.clear();
        EXPECT_TRUE(m_objPort.IsOpen());
    }
}

TEST_F(CQtSerialPortTest, APortThatHasGoneIsToldOnce) {
    m_objLine->PullOut();
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_objEvents.m_iGone > 0; }, LongEnough));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iGone, 1);
    PlugIn();
    ASSERT_EQ(CallOpen(), ISerialPort::Opened);
    CallClose();
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iGone, 1) << "closing is no going";
}

TEST_F(CQtSerialPortTest, APortThatIsOpenedAnewBeforeIsNotToldToHaveGone) {
    m_objLine->PullOut();
    EXPECT_FALSE(CallOutput("x"));
    PlugIn();
    ASSERT_EQ(CallOpen(), ISerialPort::Opened);
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iGone, 0);
}

TEST_F(CQtSerialPortTest, SendingToAPortThatIsPulledOutClosesItInTheCall) {
    m_objLine->PullOut();
    EXPECT_FALSE(CallOutput("x"));
    EXPECT_FALSE(m_objPort.IsOpen());
    EXPECT_FALSE(CallOutput("y"));
    PlugIn();
    EXPECT_EQ(CallOpen(), ISerialPort::Opened) << "also before an event was taken";
    QTest::qWait(LongEnoughForNothing);
    EXPECT_TRUE(m_objPort.IsOpen()) << "the former port's end is not this one's";
    EXPECT_TRUE(CallOutput("z"));
}

TEST_F(CQtSerialPortTest, WhatCameBeforeThePortHasGoneIsStillTold) {
    m_objEvents.m_fnOnEvent = [this](std::int16_t p_iEvent) {
        if (p_iEvent == SerialReceive && m_objPort.IsOpen()) {
            m_objLine->PullOut();
            EXPECT_FALSE(m_objPort.Output(std::vector<std::uint8_t>{'x'}));
            EXPECT_FALSE(m_objPort.IsOpen());
        }
    };
    m_objLine->Write("abc");
    ASSERT_TRUE(WaitForData(3));
    EXPECT_EQ(m_objEvents.m_strData, "abc");
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iReceived, 3);
}

TEST_F(CQtSerialPortTest, MayEndWithEventsOnTheirWay) {
    auto objPort =
        std::make_unique<CQtSerialPort>(m_objLineState, m_objDevices.path().toStdString());
    SetUpPort(*objPort);
    CallClose();
    ASSERT_EQ(objPort->Open(), ISerialPort::Opened);
    objPort->SetEvents(&m_objEvents);
    objPort->Output(std::vector<std::uint8_t>{'x'});
    m_objLine->PullOut();
    objPort->Output(std::vector<std::uint8_t>{'y'});
    objPort.reset();
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iEvents, Events{});
}

// The line.

TEST_F(CQtSerialPortTest, ALineThatTellsNothingIsLookedAtOnceMoreAndLeftAlone) {
    QTest::qWait(800);
    EXPECT_EQ(m_objLineState.m_iReads, 2);
    EXPECT_TRUE(m_objPort.ClearToSend());
    EXPECT_EQ(m_objEvents.m_iEvents, Events{});
}

TEST_F(CQtSerialPortTest, TellsOfTheLineAndOfOverruns) {
    CallClose();
    m_objLineState.m_objReading = {true, 4};
    ASSERT_EQ(CallOpen(), ISerialPort::Opened);
    EXPECT_TRUE(m_objPort.ClearToSend());
    const auto Wait = [this](std::size_t p_iCount) {
        return QTest::qWaitFor([&] { return m_objEvents.m_iEvents.size() >= p_iCount; },
                               LongEnough);
    };
    m_objLineState.m_objReading = {false, 4};
    ASSERT_TRUE(Wait(1));
    EXPECT_FALSE(m_objPort.ClearToSend());
    m_objLineState.m_objReading = {false, 5};
    ASSERT_TRUE(Wait(2));
    m_objLineState.m_objReading = {true, 7};
    ASSERT_TRUE(Wait(4));
    EXPECT_TRUE(m_objPort.ClearToSend());
    QTest::qWait(600);
    EXPECT_EQ(m_objEvents.m_iEvents, (Events{3, 1006, 3, 1006}));
}

TEST_F(CQtSerialPortTest, AClosedPortIsNotLookedAt) {
    CallClose();
    m_objLineState.m_objReading = {true, 4};
    ASSERT_EQ(CallOpen(), ISerialPort::Opened);
    CallClose();
    const int iReads = m_objLineState.m_iReads;
    m_objLineState.m_objReading = {false, 5};
    QTest::qWait(600);
    EXPECT_EQ(m_objLineState.m_iReads, iReads);
    EXPECT_EQ(m_objEvents.m_iEvents, Events{});
}

TEST_F(CQtSerialPortTest, AnOverrunThatIsBeingToldIsNotToldAgainMeanwhile) {
    CallClose();
    m_objLineState.m_objReading = {true, 0};
    ASSERT_EQ(CallOpen(), ISerialPort::Opened);
    int iInside = 0;
    m_objEvents.m_fnOnEvent = [&](std::int16_t) {
        EXPECT_EQ(++iInside, 1);
        m_objLineState.m_objReading.m_iOverruns = 2;
        QTest::qWait(600);  // a box stands
        --iInside;
        m_objEvents.m_fnOnEvent = nullptr;
    };
    m_objLineState.m_objReading.m_iOverruns = 1;
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_objEvents.m_iEvents.size() == 2; }, LongEnough));
    EXPECT_EQ(m_objEvents.m_iEvents, (Events{1006, 1006}));
}

// A flood.

TEST_F(CQtSerialPortTest, OfAFloodNoMoreIsTakenThanItsShare) {
    std::string strSent;
    std::size_t iTaken = 0;
    m_objEvents.m_fnOnEvent = [&](std::int16_t p_iEvent) {
        if (p_iEvent == SerialReceive && ++iTaken % 512 == 0) {
            m_objLine->Write(std::string(512, '~'));
        }
    };
    QElapsedTimer objTimer;
    objTimer.start();
    m_objLine->Write(std::string(2048, '~'));
    QTest::qWait(400);
    const auto iSlots = static_cast<std::size_t>(objTimer.elapsed() / CFloodGate::Slot.count()) + 2;
    EXPECT_GT(iTaken, 4U * 512U);
    EXPECT_LE(iTaken, iSlots * 512);
}

TEST_F(CQtSerialPortTest, OfAFloodEverythingComes) {
    std::string strSent;
    for (int i = 0; i < 10; ++i) {
        strSent += EveryByte();
    }
    m_objLine->Write(strSent);
    ASSERT_TRUE(WaitForData(strSent.size()));
    EXPECT_EQ(m_objEvents.m_strData, strSent);
}

TEST_F(CQtSerialPortTest, OfAFloodEverythingIsToldBeforeThePortHasGone) {
    const std::string strSent(2048, 'x');
    m_objEvents.m_fnOnEvent = [&](std::int16_t p_iEvent) {
        if (p_iEvent == SerialReceive && m_objEvents.m_iReceived == 600) {
            m_objLine->PullOut();
            EXPECT_FALSE(m_objPort.Output(std::vector<std::uint8_t>{'x'}));
        }
    };
    m_objLine->Write(strSent);
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_objEvents.m_iGone == 1; }, LongEnough));
    EXPECT_GT(m_objEvents.m_strData.size(), 600U);
    EXPECT_EQ(m_objPort.Input().size(), 0U);
}

}  // namespace
