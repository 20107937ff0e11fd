#include "platform/usb/CUsbLibrary.h"

#include "platform/usb/MUsbNumber.h"
#include "tests/platform_usb/CUsbFixture.h"

#include <libusb.h>

#include <cerrno>

namespace {

/// A library that is made for one port, and why a printer could not be had.
class CUsbLibraryPortTest : public CUsbFixture {
protected:
    /// What opening the printer at that port of bus 1 gives; it is closed again.
    std::int32_t Open(int p_iPort) {
        CUsbLibrary objLibrary(m_objEventLoop, CUsbPort{1, {p_iPort}}, {});
        const std::int32_t iResult = objLibrary.Dll_openUSB();
        m_iNumber = objLibrary.NotReadyNumber();
        return iResult;
    }

    static CUsbBehaviour Busy() {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_bClaimBusy = true;
        return objBehaviour;
    }

    static CUsbBehaviour OfAnotherMaker() {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_strDeviceId = CUsbBehaviour::DeviceId("MFG:Acme;");
        return objBehaviour;
    }

    std::int32_t m_iNumber = 0;
};

TEST_F(CUsbLibraryPortTest, OpensTheOneAtItsPort) {
    const CEmulatedPrinter& objFirst = Plug();
    const CEmulatedPrinter& objSecond = Plug();
    EXPECT_GE(Open(2), 0);
    EXPECT_EQ(objFirst.Claims(), 0);
    EXPECT_EQ(objSecond.Claims(), 1);
    EXPECT_GE(Open(1), 0);
    EXPECT_EQ(objFirst.Claims(), 1);
    EXPECT_EQ(objSecond.Claims(), 1);
}

TEST_F(CUsbLibraryPortTest, AnyOtherPrinterIsNotTakenInItsPlace) {
    const CEmulatedPrinter& objFirst = Plug();
    EXPECT_EQ(Open(2), IUsbLibrary::NotReady);
    EXPECT_EQ(m_iNumber, ENODEV);
    CUsbLibrary objOtherBus(m_objEventLoop, CUsbPort{2, {1}}, {});
    EXPECT_EQ(objOtherBus.Dll_openUSB(), IUsbLibrary::NotReady);
    CUsbLibrary objFurtherOn(m_objEventLoop, CUsbPort{1, {1, 1}}, {});
    EXPECT_EQ(objFurtherOn.Dll_openUSB(), IUsbLibrary::NotReady);
    EXPECT_EQ(objFirst.Claims(), 0);
}

TEST_F(CUsbLibraryPortTest, WhatIsWrongWithTheOneAtThePortIsTold) {
    Plug();
    Plug(OfAnotherMaker());
    EXPECT_EQ(Open(2), IUsbLibrary::Mismatch);
}

TEST_F(CUsbLibraryPortTest, APrinterThatIsHeldIsToldFromOneThatIsNotThere) {
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::NotReady);
    EXPECT_EQ(m_objLibrary.NotReadyNumber(), ENODEV);
    Plug(Busy());
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), IUsbLibrary::NotReady);
    EXPECT_EQ(m_objLibrary.NotReadyNumber(), EBUSY);
    EXPECT_EQ(Open(1), IUsbLibrary::NotReady);
    EXPECT_EQ(m_iNumber, EBUSY);
}

TEST_F(CUsbLibraryPortTest, TransfersEndWithTheirLimits) {
    CUsbBehaviour objDeaf;
    objDeaf.m_bTakesNothing = true;
    Plug(objDeaf);
    CUsbLibrary objLibrary(m_objEventLoop, {}, {Milliseconds(200), Milliseconds(300)});
    ASSERT_GE(objLibrary.Dll_openUSB(), 0);
    const Milliseconds iSent = Time([&] {
        EXPECT_EQ(objLibrary.Dll_sendUSB(std::vector<std::uint8_t>{'x'}), IUsbLibrary::Failed);
    });
    EXPECT_GE(iSent, Milliseconds(200));
    EXPECT_LT(iSent, Milliseconds(2000));
    std::vector<std::uint8_t> objBuffer(13);
    const Milliseconds iReceived = Time([&] { EXPECT_EQ(objLibrary.Dll_rcvUSB(objBuffer), 0); });
    EXPECT_GE(iReceived, Milliseconds(300));
    EXPECT_LT(iReceived, Milliseconds(900));
}

TEST(MUsbNumberTest, IsTheSystemsOwn) {
    EXPECT_EQ(MUsbNumber::Of(LIBUSB_SUCCESS), 0);
    EXPECT_EQ(MUsbNumber::Of(LIBUSB_ERROR_ACCESS), EACCES);
    EXPECT_EQ(MUsbNumber::Of(LIBUSB_ERROR_BUSY), EBUSY);
    EXPECT_EQ(MUsbNumber::Of(LIBUSB_ERROR_NO_DEVICE), ENODEV);
    EXPECT_EQ(MUsbNumber::Of(LIBUSB_ERROR_NOT_FOUND), ENODEV);
    EXPECT_EQ(MUsbNumber::Of(LIBUSB_ERROR_OTHER), EIO);
}

}  // namespace
