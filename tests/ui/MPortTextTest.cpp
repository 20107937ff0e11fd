#include "ui/MPortText.h"

#include "link/CInterface.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "ui/FmInterfaceSetup.h"

#include <QComboBox>

#include <gtest/gtest.h>

namespace {

std::vector<CSerialPortEntry> Ports() {
    CSerialPortEntry objUsb;
    objUsb.m_strDevice = "/dev/ttyUSB0";
    objUsb.m_iComNumbers = {1};
    objUsb.m_strManufacturer = "FTDI";
    objUsb.m_strDescription = "FT232R USB UART";
    CSerialPortEntry objNamed = objUsb;
    objNamed.m_strDevice = "/dev/ttyACM1";
    objNamed.m_iComNumbers = {2, 7};
    objNamed.m_strDescription = "FTDI adapter";
    CSerialPortEntry objMaker = objUsb;
    objMaker.m_strDevice = "/dev/ttyUSB2";
    objMaker.m_iComNumbers = {3};
    objMaker.m_strDescription = "";
    CSerialPortEntry objPlain;
    objPlain.m_strDevice = "/dev/ttyS3";
    objPlain.m_iComNumbers = {4};
    CSerialPortEntry objNone;
    objNone.m_strDevice = "/dev/ttyUSB9";
    return {objUsb, objNamed, objMaker, objPlain, objNone};
}

TEST(MPortTextTest, TellsTheDeviceAndWhatItIs) {
    EXPECT_EQ(MPortText::Of(1, Ports()), "/dev/ttyUSB0: FTDI FT232R USB UART");
    EXPECT_EQ(MPortText::Of(2, Ports()), "/dev/ttyACM1: FTDI adapter");
    EXPECT_EQ(MPortText::Of(7, Ports()), "/dev/ttyACM1: FTDI adapter");
    EXPECT_EQ(MPortText::Of(3, Ports()), "/dev/ttyUSB2: FTDI adapter");
    EXPECT_EQ(MPortText::Of(4, Ports()), "/dev/ttyS3");
}

TEST(MPortTextTest, TellsThatThereIsNone) {
    EXPECT_EQ(MPortText::Of(5, Ports()), "no such port");
    EXPECT_EQ(MPortText::Of(1, {}), "no such port");
}

TEST(MPortTextTest, EveryEntryOfTheSetupTellsItAndTheListThatOfTheChosenOne) {
    CInterface objInterface;
    CFakeMessageBox objBoxes;
    FmInterfaceSetup objDialog(objBoxes);
    ASSERT_TRUE(objDialog.InitializeItem(objInterface, CInterface::SerialInterface));
    objDialog.TellPorts(Ports());
    auto& cmbComPort = *objDialog.findChild<QComboBox*>("cmbComPort");
    for (int i = 0; i < cmbComPort.count(); ++i) {
        EXPECT_EQ(cmbComPort.itemData(i, Qt::ToolTipRole).toString(),
                  MPortText::Of(i + 1, Ports()));
    }
    EXPECT_TRUE(cmbComPort.accessibleDescription().contains("/dev/ttyUSB0: FTDI FT232R USB UART"));
    cmbComPort.setCurrentIndex(8);
    EXPECT_TRUE(cmbComPort.toolTip().contains("no such port"));
    EXPECT_EQ(cmbComPort.currentText(), "COM9");
}

}  // namespace
