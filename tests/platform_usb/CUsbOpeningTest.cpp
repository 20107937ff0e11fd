#include "tests/platform_usb/CMachinePace.h"
#include "tests/platform_usb/CUsbFixture.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

/// A printer that never answers when it is asked who it is, and what runs meanwhile.
class CUsbOpeningTest : public CUsbFixture {
protected:
    CEmulatedPrinter& PlugOneThatHangs() {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_bHangsOnDeviceId = true;
        return Plug(objBehaviour);
    }

    /// What Dll_openUSB gives; how long it took is in m_iTime.
    std::int32_t Open() {
        std::int32_t iResult = 0;
        m_iTime = Time([&] { iResult = m_objLibrary.Dll_openUSB(); });
        return iResult;
    }

    Milliseconds m_iTime{0};
};

TEST_F(CUsbOpeningTest, ItIsGivenUpAfterASecondAndTheWindowIsKeptPainted) {
    CEmulatedPrinter& objDevice = PlugOneThatHangs();
    CMachinePace objPace{Milliseconds(2)};
    EXPECT_EQ(Open(), -2);
    EXPECT_GE(m_iTime, Milliseconds(900));
    EXPECT_LE(m_iTime, Milliseconds(3000));
    EXPECT_GE(m_objEventLoop.Yields(), objPace.Stop() / 8) << "about fifty a second";
    EXPECT_FALSE(objDevice.IsClaimed());
    EXPECT_TRUE(objDevice.HasDriver());
}

TEST_F(CUsbOpeningTest, APrinterBehindItIsFound) {
    PlugOneThatHangs();
    CEmulatedPrinter& objRight = Plug();
    PlugOneThatHangs();
    EXPECT_GE(Open(), 0);
    EXPECT_TRUE(objRight.IsClaimed());
    EXPECT_LE(m_iTime, Milliseconds(4000));
}

TEST_F(CUsbOpeningTest, ClosingTheProgramEndsItAtOnce) {
    PlugOneThatHangs();
    m_objEventLoop.AtYield(5, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_LE(YieldsOf([this] { EXPECT_EQ(Open(), -2); }), 6);
}

TEST_F(CUsbOpeningTest, ClosingTheLibraryEndsItAtOnce) {
    CEmulatedPrinter& objDevice = PlugOneThatHangs();
    m_objEventLoop.AtNextYield([&] {
        EXPECT_TRUE(objDevice.IsClaimed());
        m_objLibrary.Dll_closeUSB();
        EXPECT_FALSE(objDevice.IsClaimed());
    });
    EXPECT_LE(YieldsOf([this] { EXPECT_EQ(Open(), -1); }), 2);
}

TEST_F(CUsbOpeningTest, ALaterOpeningEndsItAndGetsThePrinter) {
    CEmulatedPrinter& objDevice = PlugOneThatHangs();
    std::int32_t iInner = 0;
    std::int64_t iYields = 0;  // of the later one alone
    m_objEventLoop.AtNextYield([&] {
        iYields = YieldsOf([&] { iInner = m_objLibrary.Dll_openUSB(); });
        EXPECT_EQ(objDevice.Claims(), 2);
    });
    EXPECT_LE(YieldsOf([this] { EXPECT_EQ(Open(), -1); }) - iYields, 2);
    EXPECT_EQ(iInner, -2);
}

TEST_F(CUsbOpeningTest, UnpluggingEndsIt) {
    CEmulatedPrinter& objDevice = PlugOneThatHangs();
    m_objEventLoop.AtYield(5, [&] { objDevice.Unplug(); });
    EXPECT_LE(YieldsOf([this] { EXPECT_EQ(Open(), -2); }), 6);
}

TEST_F(CUsbOpeningTest, AnExceptionFromTheEventLoopHoldsNoPrinter) {
    CEmulatedPrinter& objDevice = PlugOneThatHangs();
    m_objEventLoop.AtNextYield([] { throw std::runtime_error("any"); });
    EXPECT_THROW(Open(), std::runtime_error);
    EXPECT_FALSE(objDevice.IsClaimed());
    EXPECT_EQ(Open(), -2);
}

}  // namespace
