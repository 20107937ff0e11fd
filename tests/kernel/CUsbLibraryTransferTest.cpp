#include "tests/kernel/CKernelFixture.h"

#include "protocol/MAnswer.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::Ge;
using ::testing::Le;
using ::testing::Lt;
using ::testing::SizeIs;

constexpr std::size_t StatusLength = 13;
constexpr const char* Ask = "{WS|}";
const std::string Ready = CPrinter::StatusAnswer("00");

class TransferUsbKernel : public CKernelFixture {
protected:
    /// A write of every byte there is, much longer than a transfer can be at once.
    static std::string Large() {
        constexpr std::size_t iSize = 200'003;
        constexpr std::size_t iStep = 7;
        constexpr unsigned iShift = 8;
        std::string strBytes;
        for (std::size_t i = 0; i < iSize; ++i) {
            strBytes += static_cast<char>(i * iStep + (i >> iShift));
        }
        return strBytes;
    }

    /// Sends the command and reads, opening and closing around each as a link does.
    std::string Exchange(const std::string& p_strCommand, std::size_t p_iLength) {
        EXPECT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
        EXPECT_EQ(Send(p_strCommand), static_cast<std::int32_t>(p_strCommand.size()));
        m_objLibrary.Dll_closeUSB();
        return Read(p_iLength);
    }

    /// Answers when a read has been given up already.
    static CDeviceSettings Late() {
        CDeviceSettings objSettings;
        objSettings.m_objFaults.m_iDelay = std::chrono::milliseconds(1'600);
        return objSettings;
    }

    static bool WaitForAnAnswer(const CPluggedDevice& p_objDevice) {
        constexpr int iMost = 5'000;
        for (int i = 0; i < iMost && p_objDevice.Device().Waiting() == 0; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return p_objDevice.Device().Waiting() > 0;
    }

    std::string Read(std::size_t p_iLength) {
        EXPECT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
        std::string strAnswer = Receive(p_iLength);
        m_objLibrary.Dll_closeUSB();
        return strAnswer;
    }
};

}  // namespace

TEST_F(TransferUsbKernel, EveryAnswerComesWholeInItsFrame) {
    const CPluggedDevice objDevice;
    const CPrinter objPrinter;
    EXPECT_EQ(Exchange(Ask, StatusLength), Ready);
    for (std::int16_t iGroup = 0; iGroup <= 4; ++iGroup) {
        const auto iLength = static_cast<std::size_t>(MAnswer::ReceiveLength(iGroup));
        const std::string strAnswer = Exchange("{Z5;" + std::to_string(iGroup) + "|}", iLength);
        ASSERT_GT(strAnswer.size(), 2U) << "group " << iGroup;
        EXPECT_EQ(strAnswer[0], '\x02');
        EXPECT_EQ(strAnswer.substr(2), objPrinter.SettingsAnswer(iGroup));
    }
    EXPECT_EQ(Written(objDevice), "{WS|}{Z5;0|}{Z5;1|}{Z5;2|}{Z5;3|}{Z5;4|}");
    EXPECT_EQ(objDevice.Port().Driver(0), SystemDriver);
}

TEST_F(TransferUsbKernel, WithoutAnAnswerAReadEndsAfterASecond) {
    CDeviceSettings objSettings;
    objSettings.m_objFaults.m_bSilent = true;
    const CPluggedDevice objDevice(objSettings);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    ASSERT_EQ(Send(Ask), 5);
    const std::size_t iYields = m_objEventLoop.m_iYields;
    EXPECT_THAT(Seconds([&] { Receive(StatusLength); }), AllOf(Ge(0.9), Le(3.0)));
    EXPECT_EQ(m_iReceived, 0);
    EXPECT_THAT(m_objEventLoop.m_iYields - iYields, Ge(20U)) << "the window stands still";
    EXPECT_EQ(objDevice.Port().Driver(0), ProgramsDriver) << "a silent printer is not gone";
}

TEST_F(TransferUsbKernel, ALateAnswerIsThereForTheNextRead) {
    const CPluggedDevice objDevice(Late());
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    ASSERT_EQ(Send(Ask), 5);
    EXPECT_EQ(Receive(StatusLength), "");
    EXPECT_EQ(m_iReceived, 0);
    m_objLibrary.Dll_closeUSB();
    ASSERT_TRUE(WaitForAnAnswer(objDevice));
    EXPECT_EQ(Read(StatusLength), Ready);
}

TEST_F(TransferUsbKernel, ALateAnswerIsNotTakenForTheNextCommands) {
    const CPluggedDevice objDevice(Late());
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    for (const std::string strCommand : {"{Z5;0|}", Ask}) {
        ASSERT_EQ(Send(strCommand), static_cast<std::int32_t>(strCommand.size()));
        EXPECT_EQ(Receive(StatusLength), "");
        ASSERT_TRUE(WaitForAnAnswer(objDevice));
    }
    EXPECT_EQ(Receive(StatusLength), Ready);
}

TEST_F(TransferUsbKernel, AWriteThatDoesNotEndFailsAfterFiveSeconds) {
    CDeviceSettings objSettings;
    objSettings.m_iWriteTime.reset();
    const CPluggedDevice objDevice(objSettings);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    std::int32_t iSent = 0;
    EXPECT_THAT(Seconds([&] { iSent = Send(Ask); }), AllOf(Ge(4.8), Le(8.0)));
    EXPECT_THAT(iSent, Lt(0));
    EXPECT_EQ(objDevice.Device().WritesGivenUp(), 1U);
    m_objLibrary.Dll_closeUSB();
    EXPECT_EQ(objDevice.Port().Driver(0), SystemDriver);
}

TEST_F(TransferUsbKernel, ASlowPrinterIsWaitedFor) {
    CDeviceSettings objSettings;
    objSettings.m_iWriteTime = std::chrono::milliseconds(900);
    objSettings.m_objFaults.m_iDelay = std::chrono::milliseconds(600);
    const CPluggedDevice objDevice(objSettings);
    EXPECT_EQ(Exchange(Ask, StatusLength), Ready);
    EXPECT_EQ(Written(objDevice), Ask);
}

TEST_F(TransferUsbKernel, ALargeWriteArrivesWhole) {
    const CPluggedDevice objDevice;
    const std::string strLarge = Large();
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    EXPECT_EQ(Send(strLarge), static_cast<std::int32_t>(strLarge.size()));
    EXPECT_TRUE(Written(objDevice) == strLarge);
}

TEST_F(TransferUsbKernel, ShortWritesAreContinued) {
    CDeviceSettings objSettings;
    objSettings.m_iMostWritten = 3;
    const CPluggedDevice objDevice(objSettings);
    EXPECT_EQ(Exchange("{Z5;0|}", 54).substr(2), CPrinter().SettingsAnswer(0));
    EXPECT_THAT(objDevice.Device().Writes(), ::testing::ElementsAre("{Z5", ";0|", "}"));
}

TEST_F(TransferUsbKernel, ShortWritesOfALargeWriteLeaveNothingOut) {
    CDeviceSettings objSettings;
    objSettings.m_iMostWritten = 5'000;
    const CPluggedDevice objDevice(objSettings);
    const std::string strLarge = Large();
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    EXPECT_EQ(Send(strLarge), static_cast<std::int32_t>(strLarge.size()));
    EXPECT_TRUE(Written(objDevice) == strLarge);
    EXPECT_THAT(objDevice.Device().Writes(), Each(SizeIs(Le(5'000U))));
}

TEST_F(TransferUsbKernel, AnAnswerOfNoBytesIsNoAnswer) {
    CDeviceSettings objSettings;
    objSettings.m_bEmptyAnswer = true;
    const CPluggedDevice objDevice(objSettings);
    EXPECT_EQ(Exchange(Ask, StatusLength), Ready);
}

TEST_F(TransferUsbKernel, ReadsThatAreAllEmptyEndAfterASecond) {
    CDeviceSettings objSettings;
    objSettings.m_strIdle = "";
    objSettings.m_objFaults.m_bSilent = true;
    const CPluggedDevice objDevice(objSettings);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    EXPECT_THAT(Seconds([&] { EXPECT_EQ(Send(Ask), 5); }), Le(1.0));
    const std::size_t iYields = m_objEventLoop.m_iYields;
    EXPECT_THAT(Seconds([&] { Receive(StatusLength); }), AllOf(Ge(0.9), Le(3.0)));
    EXPECT_EQ(m_iReceived, 0);
    EXPECT_THAT(m_objEventLoop.m_iYields - iYields, Ge(20U)) << "the window stands still";
    EXPECT_EQ(Written(objDevice), Ask);
}

TEST_F(TransferUsbKernel, TheEndOfTheProgramEndsEmptyReadsAtOnce) {
    CDeviceSettings objSettings;
    objSettings.m_strIdle = "";
    const CPluggedDevice objDevice(objSettings);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    m_objEventLoop.m_iCloseAt = m_objEventLoop.m_iYields + 10;
    EXPECT_THAT(Seconds([&] { EXPECT_EQ(Receive(StatusLength), ""); }), Lt(0.8));
}

TEST_F(TransferUsbKernel, AnAnswerAmongEmptyReadsComesWhole) {
    CDeviceSettings objSettings;
    objSettings.m_strIdle = "";
    objSettings.m_objFaults.m_iDelay = std::chrono::milliseconds(300);
    const CPluggedDevice objDevice(objSettings);
    EXPECT_EQ(Exchange(Ask, StatusLength), Ready);
}

TEST_F(TransferUsbKernel, AStatusThatIsRepeatedForEverHoldsNoCommandUp) {
    CDeviceSettings objSettings;
    objSettings.m_strIdle = Ready;
    const CPluggedDevice objDevice(objSettings);
    EXPECT_THAT(Seconds([&] { EXPECT_EQ(Exchange(Ask, StatusLength), Ready); }), Le(1.0));
    EXPECT_EQ(Written(objDevice), Ask);
}

TEST_F(TransferUsbKernel, WritesThatTakeNoBytesFailAfterFiveSeconds) {
    CDeviceSettings objSettings;
    objSettings.m_bWritesNothing = true;
    const CPluggedDevice objDevice(objSettings);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    const std::size_t iYields = m_objEventLoop.m_iYields;
    EXPECT_THAT(Seconds([&] { EXPECT_LT(Send(Ask), 0); }), AllOf(Ge(4.8), Le(8.0)));
    EXPECT_THAT(m_objEventLoop.m_iYields - iYields, Ge(100U)) << "the window stands still";
}

TEST_F(TransferUsbKernel, AnAnswerLongerThanAskedForDoesNotBreakTheLink) {
    const CPluggedDevice objDevice;
    EXPECT_EQ(Exchange(Ask, 5), Ready.substr(0, 5));
    EXPECT_EQ(Exchange(Ask, StatusLength), Ready);
}

TEST_F(TransferUsbKernel, AnAnswerInPiecesComesWhole) {
    CDeviceSettings objSettings;
    objSettings.m_objFaults.m_iPieces = 4;
    objSettings.m_objFaults.m_iGap = std::chrono::milliseconds(2);
    const CPluggedDevice objDevice(objSettings);
    EXPECT_EQ(Exchange(Ask, StatusLength), Ready);
}

TEST_F(TransferUsbKernel, ARefusedWriteFailsAtOnceAndTheNextPasses) {
    CDeviceSettings objSettings;
    objSettings.m_bHalted = true;
    const CPluggedDevice objDevice(objSettings);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    EXPECT_THAT(Seconds([&] { EXPECT_LT(Send(Ask), 0); }), Le(4.0));
    EXPECT_EQ(Written(objDevice), "");
    m_objLibrary.Dll_closeUSB();
    EXPECT_EQ(Exchange(Ask, StatusLength), Ready);
}

TEST_F(TransferUsbKernel, TheEndOfTheProgramEndsAReadAtOnce) {
    CDeviceSettings objSettings;
    objSettings.m_objFaults.m_bSilent = true;
    const CPluggedDevice objDevice(objSettings);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    ASSERT_EQ(Send(Ask), 5);
    m_objEventLoop.m_iCloseAt = m_objEventLoop.m_iYields + 10;
    EXPECT_THAT(Seconds([&] { EXPECT_EQ(Receive(StatusLength), ""); }), Lt(0.95));
    m_objLibrary.Dll_closeUSB();
    EXPECT_EQ(objDevice.Port().Driver(0), SystemDriver);
}
