#include "tests/kernel/CKernelFixture.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <string>

namespace {

using ::testing::Le;

constexpr std::size_t StatusLength = 13;
constexpr const char* Ask = "{WS|}";
const std::string Ready = CPrinter::StatusAnswer("00");

using Unplug = CDeviceSettings::Unplug;

class UnplugUsbKernel : public CKernelFixture {
protected:
    static CDeviceSettings Leaving(Unplug p_iUnplug) {
        CDeviceSettings objSettings;
        objSettings.m_iUnplug = p_iUnplug;
        objSettings.m_objFaults.m_bSilent = p_iUnplug == Unplug::InARead;
        if (p_iUnplug == Unplug::InAWrite) {
            objSettings.m_iWriteTime.reset();
        }
        return objSettings;
    }

    /// What must hold once the printer is gone, and once it is plugged in again.
    void ExpectGoneUntilPluggedIn(CPluggedDevice& p_objDevice) {
        EXPECT_LT(Send(Ask), 0);
        EXPECT_EQ(Receive(StatusLength), "");
        m_objLibrary.Dll_closeUSB();
        ASSERT_TRUE(p_objDevice.Unplug());
        EXPECT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::NotReady);

        const CPluggedDevice objAgain;
        EXPECT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
        EXPECT_EQ(Send(Ask), 5);
        EXPECT_EQ(Receive(StatusLength), Ready);
        m_objLibrary.Dll_closeUSB();
        EXPECT_EQ(objAgain.Port().Driver(0), SystemDriver);
    }
};

}  // namespace

TEST_F(UnplugUsbKernel, BetweenWriteAndReadTheReadFailsAtOnce) {
    CPluggedDevice objDevice;
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    ASSERT_EQ(Send(Ask), 5);
    ASSERT_TRUE(objDevice.Unplug());
    EXPECT_THAT(Seconds([&] { EXPECT_EQ(Receive(StatusLength), ""); }), Le(0.95));
    EXPECT_LT(m_iReceived, 0);
    ExpectGoneUntilPluggedIn(objDevice);
}

TEST_F(UnplugUsbKernel, InAPendingReadItFailsAtOnce) {
    CPluggedDevice objDevice(Leaving(Unplug::InARead));
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    ASSERT_EQ(Send(Ask), 5);
    EXPECT_THAT(Seconds([&] { EXPECT_EQ(Receive(StatusLength), ""); }), Le(0.95));
    EXPECT_LT(m_iReceived, 0);
    ExpectGoneUntilPluggedIn(objDevice);
}

TEST_F(UnplugUsbKernel, InAWriteItFailsAtOnce) {
    CPluggedDevice objDevice(Leaving(Unplug::InAWrite));
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    EXPECT_THAT(Seconds([&] { EXPECT_LT(Send(Ask), 0); }), Le(4.0));
    ExpectGoneUntilPluggedIn(objDevice);
}

TEST_F(UnplugUsbKernel, WhileItIsOpenTheNextWriteFailsAtOnce) {
    CPluggedDevice objDevice;
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    ASSERT_TRUE(objDevice.Unplug());
    EXPECT_THAT(Seconds([&] { EXPECT_LT(Send(Ask), 0); }), Le(4.0));
    ExpectGoneUntilPluggedIn(objDevice);
}

TEST_F(UnplugUsbKernel, BehindItsAnswerThePrinterHasAnsweredAllTheSame) {
    CDeviceSettings objSettings;
    objSettings.m_objFaults.m_iCloseAfter = 1;
    CPluggedDevice objDevice(objSettings);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    ASSERT_EQ(Send(Ask), 5);
    EXPECT_EQ(Receive(StatusLength), Ready);
    ASSERT_TRUE(objDevice.Unplug());
    ExpectGoneUntilPluggedIn(objDevice);
}

TEST_F(UnplugUsbKernel, ABusErrorInAReadMeansThatThePrinterIsGone) {
    CDeviceSettings objSettings;
    objSettings.m_iReadError = -EPROTO;
    CPluggedDevice objDevice(objSettings);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    ASSERT_EQ(Send(Ask), 5);
    EXPECT_THAT(Seconds([&] { EXPECT_EQ(Receive(StatusLength), ""); }), Le(0.95));
    EXPECT_LT(m_iReceived, 0);
    EXPECT_EQ(objDevice.Port().Driver(0), SystemDriver) << "it is closed";
    ExpectGoneUntilPluggedIn(objDevice);
}

TEST_F(UnplugUsbKernel, ABusErrorInAWriteMeansThatThePrinterIsGone) {
    CDeviceSettings objSettings;
    objSettings.m_iWriteError = -EPROTO;
    CPluggedDevice objDevice(objSettings);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
    EXPECT_THAT(Seconds([&] { EXPECT_LT(Send(Ask), 0); }), Le(4.0));
    EXPECT_EQ(objDevice.Port().Driver(0), SystemDriver) << "it is closed";
    ExpectGoneUntilPluggedIn(objDevice);
}

TEST_F(UnplugUsbKernel, ComingAndGoingWhileItIsClosedIsNoticed) {
    for (int iRound = 0; iRound < 3; ++iRound) {
        EXPECT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::NotReady);
        const CPluggedDevice objDevice;
        EXPECT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::Opened);
        m_objLibrary.Dll_closeUSB();
    }
}
