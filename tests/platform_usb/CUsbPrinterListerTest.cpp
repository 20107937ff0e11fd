#include "platform/usb/CUsbPrinterLister.h"

#include "tests/platform_usb/CUsbFixture.h"

namespace {

class CUsbPrinterListerTest : public CUsbFixture {
protected:
    CUsbPrinterLister m_objLister;
};

TEST_F(CUsbPrinterListerTest, WithNothingPluggedInThereIsNone) {
    EXPECT_TRUE(m_objLister.UsbPrinters().empty());
}

TEST_F(CUsbPrinterListerTest, TellsWhereAPrinterIsAndWhatItIs) {
    CUsbBehaviour objBehaviour;
    objBehaviour.m_strSerialNumber = "A17";
    Plug(objBehaviour);
    const std::vector<CUsbPrinterEntry> objEntries = m_objLister.UsbPrinters();
    ASSERT_EQ(objEntries.size(), 1U);
    EXPECT_EQ(objEntries[0].m_iBus, 1);
    EXPECT_EQ(objEntries[0].m_iPorts, std::vector<int>{1});
    EXPECT_EQ(objEntries[0].m_strDevice, "/dev/bus/usb/001/002");
    EXPECT_EQ(objEntries[0].m_iVendor, 0x1209);
    EXPECT_EQ(objEntries[0].m_iProduct, 1);
    EXPECT_EQ(objEntries[0].m_strManufacturer, "Varden");
    EXPECT_EQ(objEntries[0].m_strProduct, "Label Printer");
    EXPECT_EQ(objEntries[0].m_strSerialNumber, "A17");
}

TEST_F(CUsbPrinterListerTest, NeitherOpensNorAsksAPrinter) {
    CEmulatedPrinter& objDevice = Plug();
    ASSERT_EQ(m_objLister.UsbPrinters().size(), 1U);
    EXPECT_EQ(objDevice.Claims(), 0);
    EXPECT_EQ(objDevice.Clients(), 0U);
    EXPECT_TRUE(objDevice.HasDriver());
}

TEST_F(CUsbPrinterListerTest, WhatIsNoPrinterIsLeftOut) {
    CUsbBehaviour objBehaviour;
    objBehaviour.m_iClass = 8;
    Plug(objBehaviour);
    Plug();
    const std::vector<CUsbPrinterEntry> objEntries = m_objLister.UsbPrinters();
    ASSERT_EQ(objEntries.size(), 1U);
    EXPECT_EQ(objEntries[0].m_iPorts, std::vector<int>{2});
}

TEST_F(CUsbPrinterListerTest, SeveralComeByTheirPorts) {
    CUsbBehaviour objSilent;
    objSilent.m_strManufacturer.clear();
    objSilent.m_strProduct.clear();
    Plug(objSilent);
    Plug();
    Plug();
    const std::vector<CUsbPrinterEntry> objEntries = m_objLister.UsbPrinters();
    ASSERT_EQ(objEntries.size(), 3U);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(objEntries[static_cast<std::size_t>(i)].m_iPorts, std::vector<int>{i + 1});
    }
    EXPECT_EQ(objEntries[0].m_strProduct, "");
    EXPECT_EQ(objEntries[0].m_strSerialNumber, "");
}

TEST_F(CUsbPrinterListerTest, APrinterInUseIsListedToo) {
    Plug();
    ASSERT_GE(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_EQ(m_objLister.UsbPrinters().size(), 1U);
}

TEST_F(CUsbPrinterListerTest, WhatIsPulledOutIsGone) {
    Plug().Unplug();
    EXPECT_TRUE(m_objLister.UsbPrinters().empty());
}

}  // namespace
