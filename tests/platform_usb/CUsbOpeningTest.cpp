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
    EXPECT_EQ(Open(), -2);
    EXPECT_GE(m_iTime, Milliseconds(900));
    EXPECT_LE(m_iTime, Milliseconds(3000));
    EXPECT_GE(m_objEventLoop.Yields(), 50);
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
    EXPECT_EQ(Open(), -2);
    EXPECT_LE(m_iTime, Milliseconds(700));
}

TEST_F(CUsbOpeningTest, ClosingTheLibraryEndsItAtOnce) {
    CEmulatedPrinter& objDevice = PlugOneThatHangs();
    m_objEventLoop.AtNextYield([&] {
        EXPECT_TRUE(objDevice.IsClaimed());
        m_objLibrary.Dll_closeUSB();
        EXPECT_FALSE(objDevice.IsClaimed());
    });
    EXPECT_EQ(Open(), -1);
    EXPECT_LE(m_iTime, Milliseconds(700));
}

TEST_F(CUsbOpeningTest, ALaterOpeningEndsItAndGetsThePrinter) {
    CEmulatedPrinter& objDevice = PlugOneThatHangs();
    std::int32_t iInner = 0;
    m_objEventLoop.AtNextYield([&] {
        iInner = m_objLibrary.Dll_openUSB();
        EXPECT_EQ(objDevice.Claims(), 2);
    });
    EXPECT_EQ(Open(), -1);
    EXPECT_EQ(iInner, -2);
    EXPECT_LE(m_iTime, Milliseconds(1800)) << "that of the later one alone";
}

TEST_F(CUsbOpeningTest, UnpluggingEndsIt) {
    CEmulatedPrinter& objDevice = PlugOneThatHangs();
    m_objEventLoop.AtYield(5, [&] { objDevice.Unplug(); });
    EXPECT_EQ(Open(), -2);
    EXPECT_LE(m_iTime, Milliseconds(900));
}

TEST_F(CUsbOpeningTest, AnExceptionFromTheEventLoopHoldsNoPrinter) {
    CEmulatedPrinter& objDevice = PlugOneThatHangs();
    m_objEventLoop.AtNextYield([] { throw std::runtime_error("any"); });
    EXPECT_THROW(Open(), std::runtime_error);
    EXPECT_FALSE(objDevice.IsClaimed());
    EXPECT_EQ(Open(), -2);
}

}  // namespace
