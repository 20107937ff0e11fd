#include "tests/cli/CCliFixture.h"

namespace {

class CPortsCommandTest : public CCliFixture {
protected:
    CPortsCommandTest() {
        CSerialPortEntry objSerial;
        objSerial.m_strDevice = "/dev/ttyUSB0";
        objSerial.m_iComNumbers = {1, 3};
        objSerial.m_strDescription = "Serial Adapter";
        objSerial.m_strManufacturer = "Acme";
        objSerial.m_iVendor = 0x1234;
        objSerial.m_iProduct = 0xABC;
        m_objSerialPorts.m_objEntries = {objSerial};
        CUsbPrinterEntry objUsb;
        objUsb.m_iBus = 1;
        objUsb.m_iPorts = {2, 3};
        objUsb.m_strDevice = "/dev/bus/usb/001/004";
        objUsb.m_iVendor = 0x1209;
        objUsb.m_iProduct = 1;
        objUsb.m_strProduct = "Label Printer";
        objUsb.m_strSerialNumber = "A17";
        m_objUsbPrinters.m_objEntries = {objUsb};
    }

    void Forbid(const std::string& p_strDevice, const std::string& p_strGroup,
                bool p_bMember = false) {
        m_objAccess.m_objStates[p_strDevice] = {
            CDeviceState::Use::Forbidden, p_strGroup, p_bMember, {}};
    }

    Json SerialProblem() { return RunJson({"ports"}).m_objJson["serial"][0]["problem"]; }
};

TEST_F(CPortsCommandTest, ShowsWhatIsThere) {
    EXPECT_EQ(Run({"ports"}).m_strOut, "SERIAL PORT   COM         WHAT                 USABLE\n"
                                       "/dev/ttyUSB0  COM1, COM3  Acme Serial Adapter  yes\n"
                                       "USB PRINTER  SERIAL NUMBER  WHAT           USABLE\n"
                                       "usb:1-2.3    A17            Label Printer  yes\n");
}

TEST_F(CPortsCommandTest, ShowsItAsJson) {
    const Ran objRan = RunJson({"ports"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["serial"], Json::parse(R"([{"target": "com:/dev/ttyUSB0",
        "device": "/dev/ttyUSB0", "com": [1, 3], "description": "Serial Adapter",
        "manufacturer": "Acme", "serial_number": null, "vendor": "1234", "product": "0abc",
        "usable": true, "problem": null}])"));
    EXPECT_EQ(objRan.m_objJson["usb"], Json::parse(R"([{"target": "usb:1-2.3",
        "device": "/dev/bus/usb/001/004", "bus": 1, "ports": [2, 3],
        "description": "Label Printer", "manufacturer": null, "serial_number": "A17",
        "vendor": "1209", "product": "0001", "usable": true, "problem": null}])"));
}

TEST_F(CPortsCommandTest, NothingThereIsNoFailure) {
    m_objSerialPorts.m_objEntries.clear();
    m_objUsbPrinters.m_objEntries.clear();
    EXPECT_EQ(Run({"ports"}).m_strOut, "No serial port\nNo printer on USB\n");
    const Ran objRan = RunJson({"ports"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson, Json::parse(R"({"serial": [], "usb": []})"));
}

TEST_F(CPortsCommandTest, NoPermissionNamesTheGroupThatHasIt) {
    Forbid("/dev/ttyUSB0", "dialout");
    EXPECT_TRUE(
        Has(Run({"ports"}).m_strOut,
            "no: No permission for /dev/ttyUSB0: join the group dialout (sudo adduser $USER "
            "dialout), then log in again\n"));
    EXPECT_EQ(SerialProblem(),
              Json::parse(R"({"what": "No permission for /dev/ttyUSB0", "cause": null,
        "hint": "join the group dialout (sudo adduser $USER dialout), then log in again"})"));
    EXPECT_EQ(RunJson({"ports"}).m_objJson["serial"][0]["usable"], false);
}

TEST_F(CPortsCommandTest, WhoHasJoinedTheGroupLogsInAgain) {
    Forbid("/dev/ttyUSB0", "dialout", true);
    EXPECT_EQ(SerialProblem()["hint"], "you are in the group dialout already: log in again");
}

TEST_F(CPortsCommandTest, ADeviceOfNoGroupIsGivenToOne) {
    Forbid("/dev/ttyUSB0", "");
    Forbid("/dev/bus/usb/001/004", "");
    EXPECT_EQ(SerialProblem()["hint"],
              "let an administrator give it to a group; join the group dialout (sudo adduser $USER "
              "dialout), then log in again");
    EXPECT_EQ(
        RunJson({"ports"}).m_objJson["usb"][0]["problem"]["hint"],
        "put 70-varden-printer.rules into /etc/udev/rules.d and plug the printer in again; join "
        "the group lp (sudo adduser $USER lp), then log in again");
}

TEST_F(CPortsCommandTest, APortInUseNamesWhoHasIt) {
    m_objAccess.m_objStates["/dev/ttyUSB0"] = {
        CDeviceState::Use::Held, {}, false, "minicom (4711)"};
    EXPECT_EQ(SerialProblem()["what"], "/dev/ttyUSB0 is in use");
    EXPECT_EQ(SerialProblem()["cause"], "minicom (4711) has it");
    m_objAccess.m_objStates["/dev/ttyUSB0"].m_strHolder.clear();
    EXPECT_EQ(SerialProblem()["cause"], "another program has it");
}

TEST_F(CPortsCommandTest, APortThatHasJustGoneIsMissing) {
    m_objAccess.m_objStates["/dev/ttyUSB0"] = {CDeviceState::Use::Missing, {}, false, {}};
    EXPECT_EQ(SerialProblem()["what"], "There is no /dev/ttyUSB0");
}

TEST_F(CPortsCommandTest, AUsbPrinterWhoseWayIsNotKnownIsTheOneThatThereIs) {
    m_objUsbPrinters.m_objEntries[0].m_iPorts.clear();
    EXPECT_EQ(RunJson({"ports"}).m_objJson["usb"][0]["target"], "usb");
}

}  // namespace
