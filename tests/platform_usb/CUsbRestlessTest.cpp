#include "tests/platform_usb/CMachinePace.h"
#include "tests/platform_usb/CUsbFixture.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <utility>

namespace {

/// Devices whose transfers are all over at once, whether they bring anything or not.
class CUsbRestlessTest : public CUsbFixture {
protected:
    void SetUp() override {
        CUsbFixture::SetUp();
        m_objEventLoop.m_iRest = Rest;
    }

    CEmulatedPrinter& PlugAndOpen(CUsbBehaviour::Idle p_iIdle,
                                  const CFaultSettings& p_objFaults = {}) {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_iIdle = p_iIdle;
        CEmulatedPrinter& objDevice = Plug(objBehaviour, p_objFaults);
        EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
        return objDevice;
    }

    CEmulatedPrinter& PlugOneThatTakesNoBytes() {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_bTakesNoBytes = true;
        CEmulatedPrinter& objDevice = Plug(objBehaviour);
        EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
        return objDevice;
    }

    void CloseTheProgramAfter(int p_iYields) {
        m_objEventLoop.AtYield(m_objEventLoop.Yields() + p_iYields,
                               [this] { m_objEventLoop.RequestClose(); });
    }

    /// The processor time that this thread, not the device's, has taken.
    static Milliseconds ProcessorTime() {
        timespec objTime{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &objTime);
        return std::chrono::duration_cast<Milliseconds>(std::chrono::seconds(objTime.tv_sec) +
                                                        std::chrono::nanoseconds(objTime.tv_nsec));
    }

    static constexpr Milliseconds Rest{8};
    static constexpr auto Empty = CUsbBehaviour::Idle::IsEmpty;
    static constexpr auto Repeats = CUsbBehaviour::Idle::Repeats;
};

// Reads that end empty.

TEST_F(CUsbRestlessTest, EmptyReadsEndAfterASecondAndCostNoProcessorTime) {
    PlugAndOpen(Empty);
    const std::int64_t iYields = m_objEventLoop.Yields();
    CMachinePace objPace{Rest};
    const Milliseconds iProcessor = ProcessorTime();
    const Milliseconds iTime = Time([this] { EXPECT_EQ(Receive(), 0); });
    EXPECT_GE(iTime, Milliseconds(900));
    EXPECT_LE(iTime, Milliseconds(3000));
    EXPECT_GE(m_objEventLoop.Yields() - iYields, objPace.Stop() / 4) << "about thirty a second";
    EXPECT_LE(ProcessorTime() - iProcessor, Milliseconds(150));
}

TEST_F(CUsbRestlessTest, ClosingTheProgramEndsEmptyReadsAtOnce) {
    PlugAndOpen(Empty);
    CloseTheProgramAfter(3);
    EXPECT_LE(YieldsOf([this] { EXPECT_EQ(Receive(), 0); }), 4);
}

TEST_F(CUsbRestlessTest, AmongEmptyReadsTheCommandGoesOutAndItsAnswerComes) {
    CFaultSettings objFaults;
    objFaults.m_iDelay = Milliseconds(200);
    CEmulatedPrinter& objDevice = PlugAndOpen(Empty, objFaults);
    EXPECT_LE(Time([this] { EXPECT_EQ(Send(Status), 5); }), Milliseconds(1000));
    EXPECT_EQ(objDevice.Taken(), Status);
    EXPECT_LE(Time([this] { EXPECT_EQ(Receive(), 13); }), Milliseconds(900));
    EXPECT_EQ(m_strReceived, StatusAnswer());
}

TEST_F(CUsbRestlessTest, AnAnswerThatIsThereIsTakenWithoutAYield) {
    PlugAndOpen(Empty);
    EXPECT_EQ(Send(Status), 5);
    const std::int64_t iYields = m_objEventLoop.Yields();
    EXPECT_EQ(Receive(), 13);
    EXPECT_LE(m_objEventLoop.Yields() - iYields, 1) << "one, if the machine is slow";
}

TEST_F(CUsbRestlessTest, WhatUsesThePrinterBetweenEmptyReadsEndsThem) {
    PlugAndOpen(Empty);
    std::int32_t iInner = 0;
    std::int64_t iYields = 0;  // of the inner ones alone
    m_objEventLoop.AtNextYield([&] {
        iYields = YieldsOf([&] {
            Send(Status);
            iInner = Receive();
        });
    });
    EXPECT_LE(YieldsOf([this] { EXPECT_EQ(Receive(), 0); }) - iYields, 2);
    EXPECT_EQ(iInner, 13);
}

TEST_F(CUsbRestlessTest, ASendThatIsOvertakenAmongEmptyReadsSendsNothing) {
    CEmulatedPrinter& objDevice = PlugAndOpen(Empty);
    bool bOvertaken = true;
    // On a busy machine the time for old answers can be over before the first yield, and then the
    // first one comes while the command goes out, or not at all: then again.
    constexpr int iMostSends = 100;
    std::string strBefore;
    std::int32_t iResult = 5;
    for (int i = 0; i < iMostSends && iResult == 5; ++i) {
        if (std::exchange(bOvertaken, false)) {
            m_objEventLoop.AtNextYield([&] {
                bOvertaken = true;
                EXPECT_EQ(Send("{Z5;0|}"), 7);
            });
        }
        strBefore = objDevice.Taken();
        iResult = Send(Status);
        if (iResult == 5) {
            ASSERT_EQ(objDevice.Taken(), strBefore + Status + (bOvertaken ? "{Z5;0|}" : ""));
        }
    }
    EXPECT_TRUE(bOvertaken);
    EXPECT_EQ(iResult, -1);
    EXPECT_EQ(objDevice.Taken(), strBefore + "{Z5;0|}");
}

// Reads that bring a status again and again.

TEST_F(CUsbRestlessTest, ARepeatedStatusHoldsNoCommandUp) {
    CEmulatedPrinter& objDevice = PlugAndOpen(Repeats);
    EXPECT_LE(Time([this] { EXPECT_EQ(Send(Status), 5); }), Milliseconds(1000));
    EXPECT_EQ(objDevice.Taken(), Status);
    EXPECT_EQ(Receive(), 13);
    EXPECT_EQ(m_strReceived, StatusAnswer());
}

TEST_F(CUsbRestlessTest, ARepeatedStatusFillsTheBufferAndNoMore) {
    PlugAndOpen(Repeats);
    EXPECT_LE(Time([this] { EXPECT_EQ(Receive(54), 54); }), Milliseconds(900));
    EXPECT_EQ(m_strReceived.substr(0, 26), StatusAnswer() + StatusAnswer());
}

TEST_F(CUsbRestlessTest, ARepeatedStatusEndsWithTheTimeHoweverLargeTheBuffer) {
    PlugAndOpen(Repeats);
    const std::int64_t iYields = m_objEventLoop.Yields();
    CMachinePace objPace{Milliseconds(50) + Rest};
    std::int32_t iCount = 0;
    const Milliseconds iTime = Time([&] { iCount = Receive(32'767); });
    EXPECT_LE(iTime, Milliseconds(3000));
    EXPECT_GT(iCount, 13);
    EXPECT_LT(iCount, 32'767) << "too fast a device to show anything";
    EXPECT_GE(m_objEventLoop.Yields() - iYields, objPace.Stop() / 2) << "the window stands still";
}

TEST_F(CUsbRestlessTest, ClosingTheProgramEndsARepeatedStatusAtOnce) {
    PlugAndOpen(Repeats);
    CloseTheProgramAfter(2);
    EXPECT_LE(YieldsOf([this] { EXPECT_GT(Receive(32'767), 0); }), 3);
}

// Writes that take no bytes.

TEST_F(CUsbRestlessTest, WritesThatTakeNoBytesEndAfterFiveSecondsAndCostNoProcessorTime) {
    CEmulatedPrinter& objDevice = PlugOneThatTakesNoBytes();
    const std::int64_t iYields = m_objEventLoop.Yields();
    CMachinePace objPace{Rest};
    const Milliseconds iProcessor = ProcessorTime();
    const Milliseconds iTime = Time([this] { EXPECT_EQ(Send(Status), -1); });
    EXPECT_GE(iTime, Milliseconds(4900));
    EXPECT_LE(iTime, Milliseconds(8000));
    EXPECT_GE(m_objEventLoop.Yields() - iYields, objPace.Stop() / 4) << "about thirty a second";
    EXPECT_LE(ProcessorTime() - iProcessor, Milliseconds(750));
    EXPECT_EQ(objDevice.Taken(), "");
}

TEST_F(CUsbRestlessTest, ClosingTheProgramEndsWritesThatTakeNoBytesAtOnce) {
    PlugOneThatTakesNoBytes();
    CloseTheProgramAfter(5);
    EXPECT_LE(YieldsOf([this] { EXPECT_EQ(Send(Status), -1); }), 6);
}

}  // namespace
