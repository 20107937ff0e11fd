#include "platform/qt/CQtSerialPortLister.h"
#include "simulator/CPrinter.h"
#include "simulator/usb/CEmulatedPrinter.h"
#include "tests/cli/CJsonSchema.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>
#include <cstdio>
#include <string>

// The real program, and what the toolkit tells of serial ports, in an emulated system.

namespace {

class CNoLog : public ISimulatorLog {
    void Line(std::size_t /*p_iConnection*/, std::string_view /*p_strLine*/) override {}
};

class VardenPortsTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_objWorld.IsInside()); }

    /// Plugs in an adapter, as the system tells of one.
    void PlugAdapter() {
        const std::string strDevice = "/devices/pci0000:00/0000:00:01.0/usb1/1-5";
        m_objWorld.Add("P: " + strDevice + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n");
        m_objWorld.Add("P: " + strDevice +
                       "/ttyUSB0\nE: SUBSYSTEM=usb-serial\nE: DRIVER=adapter\n");
        m_objWorld.Add("P: " + strDevice +
                       "/ttyUSB0/tty/ttyUSB0\nN: ttyUSB0\nE: SUBSYSTEM=tty\nE: "
                       "DEVNAME=/dev/ttyUSB0\nE: ID_MODEL=Serial_Adapter\nE: ID_VENDOR=Acme\nE: "
                       "ID_VENDOR_ID=1234\nE: ID_MODEL_ID=0abc\nE: ID_SERIAL_SHORT=A7\n");
    }

    /// What the program prints as JSON.
    static nlohmann::json Ports() {
        std::string strOut;
        std::FILE* const objPipe = ::popen(VARDEN_PROGRAM " ports --json", "r");
        std::array<char, 4096> arrBlock{};
        while (std::fgets(arrBlock.data(), static_cast<int>(arrBlock.size()), objPipe) != nullptr) {
            strOut += arrBlock.data();
        }
        EXPECT_EQ(::pclose(objPipe), 0);
        EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(strOut), "");
        return nlohmann::json::parse(strOut, nullptr, false);
    }

    CUsbWorld m_objWorld;
    CPrinter m_objPrinter;
    CNoLog m_objLog;
};

TEST_F(VardenPortsTest, AnAdapterIsToldWithEverythingThatTheSystemKnows) {
    PlugAdapter();
    const auto objEntries = CQtSerialPortLister().SerialPorts();
    ASSERT_EQ(objEntries.size(), 1U);
    EXPECT_EQ(objEntries[0].m_strDevice, "/dev/ttyUSB0");
    EXPECT_EQ(objEntries[0].m_iComNumbers, std::vector<std::int16_t>{1});
    EXPECT_EQ(objEntries[0].m_strDescription, "Serial Adapter");
    EXPECT_EQ(objEntries[0].m_strManufacturer, "Acme");
    EXPECT_EQ(objEntries[0].m_strSerialNumber, "A7");
    EXPECT_EQ(objEntries[0].m_iVendor, 0x1234);
    EXPECT_EQ(objEntries[0].m_iProduct, 0x0ABC);
}

TEST_F(VardenPortsTest, TheProgramShowsWhatIsPluggedIn) {
    PlugAdapter();
    CUsbBehaviour objBehaviour;
    objBehaviour.m_strSerialNumber = "A17";
    const CEmulatedPrinter objDevice(m_objWorld, m_objPrinter, m_objLog, objBehaviour, {}, 3);
    const nlohmann::json objPorts = Ports();
    ASSERT_EQ(objPorts["serial"].size(), 1U);
    EXPECT_EQ(objPorts["serial"][0]["target"], "com:/dev/ttyUSB0");
    EXPECT_EQ(objPorts["serial"][0]["description"], "Serial Adapter");
    EXPECT_EQ(objPorts["serial"][0]["usable"], true);
    ASSERT_EQ(objPorts["usb"].size(), 1U);
    EXPECT_EQ(objPorts["usb"][0]["target"], "usb:1-3");
    EXPECT_EQ(objPorts["usb"][0]["serial_number"], "A17");
    EXPECT_EQ(objPorts["usb"][0]["usable"], true);
}

TEST_F(VardenPortsTest, WithoutAPrinterThereIsNone) {
    PlugAdapter();
    EXPECT_EQ(Ports()["usb"], nlohmann::json::array());
}

}  // namespace
