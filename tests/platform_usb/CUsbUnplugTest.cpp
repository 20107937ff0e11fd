#include "tests/platform_usb/CUsbFixture.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using Unplug = CUsbBehaviour::Unplug;

/// How the device goes, each with either of the errors that a system ends its transfers with.
class CUsbUnplugTest : public CUsbFixture, public ::testing::WithParamInterface<int> {
protected:
    CEmulatedPrinter& PlugUntil(Unplug p_iUnplug) {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_iUnplug = p_iUnplug;
        objBehaviour.m_iUnplugError = GetParam();
        return Plug(objBehaviour);
    }

    void ExpectAbsentThenBack() {
        EXPECT_EQ(m_objLibrary.Dll_openUSB(), -1);
        EXPECT_EQ(Receive(), -1);
        EXPECT_EQ(Send(Status), -1);
        Plug();
        EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
        EXPECT_EQ(Send(Status), 5);
        EXPECT_EQ(Receive(), 13);
    }
};

TEST_P(CUsbUnplugTest, BetweenWriteAndRead) {
    PlugUntil(Unplug::AfterWrite);
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(Status), 5);
    EXPECT_LE(Time([this] { EXPECT_EQ(Receive(), -1); }), Milliseconds(900));
    ExpectAbsentThenBack();
}

TEST_P(CUsbUnplugTest, BetweenWriteAndReadWhileClosed) {
    PlugUntil(Unplug::AfterWrite);
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(Status), 5);
    m_objLibrary.Dll_closeUSB();
    ExpectAbsentThenBack();
}

TEST_P(CUsbUnplugTest, InAPendingRead) {
    PlugUntil(Unplug::InRead);
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(Status), 5);
    EXPECT_LE(Time([this] { EXPECT_EQ(Receive(), -1); }), Milliseconds(900));
    ExpectAbsentThenBack();
}

TEST_P(CUsbUnplugTest, InAWrite) {
    PlugUntil(Unplug::InWrite);
    m_objLibrary.Dll_openUSB();
    EXPECT_LE(Time([this] { EXPECT_EQ(Send(Status), -1); }), Milliseconds(900));
    ExpectAbsentThenBack();
}

TEST_P(CUsbUnplugTest, WhileNothingIsUnderWay) {
    CEmulatedPrinter& objDevice = PlugUntil(Unplug::Never);
    m_objLibrary.Dll_openUSB();
    objDevice.Unplug();
    EXPECT_EQ(Send(Status), -1);
    ExpectAbsentThenBack();
}

INSTANTIATE_TEST_SUITE_P(, CUsbUnplugTest, ::testing::Values(ESHUTDOWN, EPROTO),
                         [](const auto& p_objInfo) {
                             return p_objInfo.param == ESHUTDOWN ? "Shutdown" : "ProtocolError";
                         });

}  // namespace
