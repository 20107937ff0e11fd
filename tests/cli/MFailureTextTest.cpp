#include "cli/MFailureText.h"

#include "tests/cli/CCliFixture.h"

#include <cerrno>

namespace {

using Kind = CFailure::Kind;
using Use = CDeviceState::Use;

constexpr int NotReachable = MExitCode::NotReachable;
constexpr int Failed = MExitCode::Failed;

/// A failure, and what is told of it. The cause and the hint have these words in them.
struct Case {
    std::string m_strName;
    std::string m_strTarget;
    Kind m_iKind;
    int m_iNumber;
    bool m_bSent;
    int m_iCode;
    std::string m_strWhat;
    std::string m_strCause;
    std::string m_strHint;
};

const std::vector<Case>& Cases() {
    static const std::string strLan = "lan:hall-3";
    static const std::string strCom = "com:/dev/ttyUSB0";
    static const std::string strUsb = "usb:1-2";
    static const std::vector<Case> Rows{
        {"SerialHeld", strCom, Kind::SerialHeld, 8005, false, NotReachable,
         "Cannot open com:/dev/ttyUSB0", "another program has the port", "end that program"},
        {"SerialNotOpened", strCom, Kind::SerialNotOpened, 1, false, NotReachable,
         "Cannot open com:/dev/ttyUSB0", "it is no serial port, or one", "varden ports"},
        {"SerialNoSerialPort", strCom, Kind::SerialNotOpened, ENOTTY, false, NotReachable,
         "Cannot open com:/dev/ttyUSB0", "it is no serial port", "varden ports"},
        {"SerialNothingBehind", strCom, Kind::SerialNotOpened, ENXIO, false, NotReachable,
         "Cannot open com:/dev/ttyUSB0", "nothing is behind that device", "varden ports"},
        {"SerialNoReaction", strCom, Kind::SerialNotOpened, EIO, false, NotReachable,
         "Cannot open com:/dev/ttyUSB0", "does not react", "plugged in"},
        {"SerialNotOpen", strCom, Kind::SerialNotOpen, 0, false, NotReachable,
         "com:/dev/ttyUSB0 is not open", "the port went away", "plugged in"},
        {"SerialNotSent", strCom, Kind::SerialNotSent, 0, false, Failed,
         "Sending to com:/dev/ttyUSB0 has failed", "or has not taken the command", "plugged in"},
        {"SerialLost", strCom, Kind::SerialLost, 0, true, Failed, "com:/dev/ttyUSB0 is gone",
         "before an answer came", "plugged in"},
        {"SerialOverrun", strCom, Kind::SerialOverrun, 0, true, Failed,
         "Characters from com:/dev/ttyUSB0 were lost", "was not emptied", "a lower speed"},
        {"SerialSilent", strCom, Kind::NoReply, 0, true, Failed, "No answer from com:/dev/ttyUSB0",
         "no answer came in time", "com:DEVICE,9600,E,8,1"},
        {"LanRefused", strLan, Kind::LanError, ECONNREFUSED, false, NotReachable,
         "Cannot reach lan:hall-3", "nothing listens at that port", "lan:HOST:8000"},
        {"LanTimedOut", strLan, Kind::LanError, ETIMEDOUT, false, NotReachable,
         "Cannot reach lan:hall-3", "nothing at that address answers", "switched on"},
        {"LanNoRoute", strLan, Kind::LanError, EHOSTUNREACH, false, NotReachable,
         "Cannot reach lan:hall-3", "no way leads to that address", "in its network"},
        {"LanNoNetwork", strLan, Kind::LanError, ENETUNREACH, false, NotReachable,
         "Cannot reach lan:hall-3", "no way leads to that network", "in its network"},
        {"LanNetworkDown", strLan, Kind::LanError, ENETDOWN, false, NotReachable,
         "Cannot reach lan:hall-3", "network is down", "connect this computer"},
        {"LanNoSuchName", strLan, Kind::LanError, SocketError::NoSuchHost, false, NotReachable,
         "Cannot reach lan:hall-3", "no computer of that name is known", "by its address"},
        {"LanNobodyToAsk", strLan, Kind::LanError, SocketError::NotResolved, false, NotReachable,
         "Cannot reach lan:hall-3", "nobody could be asked", "by its address"},
        {"LanNoSuchAddress", "lan:10.0.0.1", Kind::LanError, EADDRNOTAVAIL, false, NotReachable,
         "Cannot reach lan:10.0.0.1", "there is no such address", "in its network"},
        {"LanForbidden", strLan, Kind::LanError, EACCES, false, NotReachable,
         "Cannot reach lan:hall-3", "does not let this program connect", "firewall"},
        {"LanNoMoreFiles", strLan, Kind::LanError, EMFILE, false, NotReachable,
         "Cannot reach lan:hall-3", "too many files", "ulimit"},
        {"LanReset", strLan, Kind::LanError, ECONNRESET, true, Failed,
         "The connection to lan:hall-3 broke", "has dropped the connection", "off and on"},
        {"LanAborted", strLan, Kind::LanError, ECONNABORTED, true, Failed,
         "The connection to lan:hall-3 broke", "broken off", "off and on"},
        {"LanPipe", strLan, Kind::LanError, EPIPE, true, Failed,
         "The connection to lan:hall-3 broke", "has dropped the connection", "off and on"},
        {"LanNobodyKnows", strLan, Kind::LanError, 0, false, NotReachable,
         "Cannot reach lan:hall-3", "the network has failed", "in its network"},
        {"LanNotConnected", strLan, Kind::LanNotConnected, 0, false, NotReachable,
         "Cannot reach lan:hall-3", "could not be made", "in its network"},
        {"LanNotConnectedRefused", strLan, Kind::LanNotConnected, ECONNREFUSED, false, NotReachable,
         "Cannot reach lan:hall-3", "nothing listens", "lan:HOST:8000"},
        {"LanNotSent", strLan, Kind::LanNotSent, 0, false, Failed,
         "Sending to lan:hall-3 has failed", "not taken the command in time", "off and on"},
        {"LanClosed", strLan, Kind::LanClosed, 0, true, Failed,
         "lan:hall-3 has closed the connection", "no answer came", "off and on"},
        {"LanSilent", strLan, Kind::NoReply, 0, true, Failed, "No answer from lan:hall-3",
         "no answer came in time", "the address and the port"},
        {"LanTooLong", strLan, Kind::TimeUp, 0, false, NotReachable, "lan:hall-3 takes too long",
         "the time to open it", "the address and the port"},
        {"LanTooLongToSend", strLan, Kind::TimeUp, 0, true, Failed, "lan:hall-3 takes too long",
         "or to send", "the address and the port"},
        {"UsbNotOpened", strUsb, Kind::UsbNotOpened, -1, false, NotReachable, "Cannot open usb:1-2",
         "went away", "plugged in"},
        {"UsbNotReady", strUsb, Kind::UsbNotReady, -1, false, NotReachable, "Cannot open usb:1-2",
         "another program has the printer", "end that program"},
        {"UsbGone", strUsb, Kind::UsbNotReady, ENODEV, false, NotReachable, "Cannot open usb:1-2",
         "not there any more", "plugged in"},
        {"UsbForbidden", strUsb, Kind::UsbNotReady, EACCES, false, NotReachable,
         "Cannot open usb:1-2", "does not let this program", "varden ports"},
        {"UsbHeld", strUsb, Kind::UsbNotReady, EBUSY, false, NotReachable, "Cannot open usb:1-2",
         "another program has it", "end that program"},
        {"UsbNoDeviceId", strUsb, Kind::UsbNoDeviceId, -2, false, NotReachable,
         "Cannot tell what usb:1-2 is", "cannot be read", "plug its cable"},
        {"UsbMismatch", strUsb, Kind::UsbMismatch, -3, false, NotReachable,
         "usb:1-2 is no Varden printer", "another maker", "varden ports"},
        {"UsbNotSent", strUsb, Kind::UsbNotSent, -1, false, Failed, "Sending to usb:1-2 has failed",
         "not taken the command in time", "off and on"},
        {"UsbNoAnswer", strUsb, Kind::UsbNoAnswer, 0, true, Failed, "No answer from usb:1-2",
         "nothing that was asked for", "off and on"},
        {"UsbStrayAnswer", strUsb, Kind::UsbStrayAnswer, 0, true, Failed, "No answer from usb:1-2",
         "to another command", "try again"},
        {"UsbSilent", strUsb, Kind::NoReply, 0, true, Failed, "No answer from usb:1-2",
         "no answer came in time", "switched on"},
        {"NoLink", strUsb, Kind::NoLink, 0, false, NotReachable, "There is no way to usb:1-2",
         "a fault of the program", ""},
        {"ParallelNotOpened", strUsb, Kind::ParallelNotOpened, 0, false, NotReachable,
         "Cannot open usb:1-2", "does not open", ""},
        {"ParallelNotSent", strUsb, Kind::ParallelNotSent, 0, false, Failed,
         "Sending to usb:1-2 has failed", "not taken the whole command", ""},
    };
    return Rows;
}

/// How a case is called in a command line.
struct Call {
    std::string m_strName;
    std::vector<std::string> m_strBefore;
    std::vector<std::string> m_strBehind;
};

const std::vector<Call>& Calls() {
    static const std::vector<Call> Rows{
        {"Read", {"read"}, {}},
        {"ReadOne", {"read"}, {"speed"}},
        {"Status", {"status"}, {}},
        {"DiffA", {"diff"}, {"defaults"}},
        {"DiffB", {"diff", "defaults"}, {}},
    };
    return Rows;
}

class CFailingCommand : public CCliFixture {
protected:
    CFakePrinter& Fail(const std::string& p_strTarget, Kind p_iKind, int p_iNumber, bool p_bSent) {
        CFakePrinter& objPrinter = m_objPrinters.m_objPrinters[p_strTarget];
        objPrinter.m_objFailure.m_iKind = p_iKind;
        objPrinter.m_objFailure.m_iNumber = p_iNumber;
        objPrinter.m_objFailure.m_objSocket.m_iNumber = p_iNumber;
        objPrinter.m_bSent = p_bSent;
        return objPrinter;
    }

    Json Error(const std::string& p_strTarget, Kind p_iKind,
               const std::string& p_strDevice = std::string()) {
        Fail(p_strTarget, p_iKind, 0, false).m_objFailure.m_strDevice = p_strDevice;
        const Ran objRan = RunJson({"status", p_strTarget});
        EXPECT_EQ(objRan.m_iCode, NotReachable);
        EXPECT_EQ(objRan.m_objJson["error"]["target"], p_strTarget);
        return objRan.m_objJson["error"];
    }
};

class CFailingCommandCases : public CFailingCommand,
                             public ::testing::WithParamInterface<std::tuple<Case, Call>> {};

TEST_P(CFailingCommandCases, TellsItAndEndsWithItsCode) {
    const auto& [objCase, objCall] = GetParam();
    Fail(objCase.m_strTarget, objCase.m_iKind, objCase.m_iNumber, objCase.m_bSent);
    Arguments strArguments = objCall.m_strBefore;
    strArguments.push_back(objCase.m_strTarget);
    strArguments.insert(strArguments.end(), objCall.m_strBehind.begin(), objCall.m_strBehind.end());
    const Ran objRan = RunJson(strArguments);
    EXPECT_EQ(objRan.m_iCode, objCase.m_iCode);
    const Json& objError = objRan.m_objJson["error"];
    EXPECT_EQ(objError["what"], objCase.m_strWhat);
    EXPECT_TRUE(Has(objError["cause"], objCase.m_strCause)) << objError;
    EXPECT_EQ(objError["hint"].is_null(), objCase.m_strHint.empty());
    EXPECT_TRUE(Has(objError["hint"].dump(), objCase.m_strHint)) << objError;
    EXPECT_EQ(objError["target"], objCase.m_strTarget);
    const Ran objPeople = Run(strArguments);
    EXPECT_EQ(objPeople.m_iCode, objCase.m_iCode);
    EXPECT_EQ(objPeople.m_strOut, "");
    EXPECT_TRUE(objPeople.m_strError.starts_with("varden: " + objCase.m_strWhat + ": "))
        << objPeople.m_strError;
    EXPECT_EQ(std::ranges::count(objPeople.m_strError, '\n'), 1);
}

INSTANTIATE_TEST_SUITE_P(Every, CFailingCommandCases,
                         ::testing::Combine(::testing::ValuesIn(Cases()),
                                            ::testing::ValuesIn(Calls())),
                         [](const auto& p_objInfo) {
                             return std::get<0>(p_objInfo.param).m_strName +
                                    std::get<1>(p_objInfo.param).m_strName;
                         });

TEST_F(CFailingCommand, EveryFailureIsInTheTable) {
    for (int i = 1; i <= static_cast<int>(Kind::ParallelNotSent); ++i) {
        EXPECT_TRUE(std::ranges::any_of(Cases(), [&](const Case& p_objCase) {
            return p_objCase.m_iKind == static_cast<Kind>(i);
        })) << i;
    }
}

TEST_F(CFailingCommand, WhatTheSystemSaysOfANumberThatNobodyKnowsIsTold) {
    CFailure& objFailure = Fail("lan:a", Kind::LanError, 9999, false).m_objFailure;
    objFailure.m_objSocket.m_strDescription = "Le r\xE9seau est cass\xE9";
    EXPECT_EQ(RunJson({"status", "lan:a"}).m_objJson["error"]["cause"],
              "Le r\u00E9seau est cass\u00E9");
}

// Devices that cannot be had: the system knows why.

TEST_F(CFailingCommand, NoPermissionForASerialPortNamesTheGroup) {
    m_objAccess.m_objStates["/dev/ttyUSB0"] = {Use::Forbidden, "dialout", false, {}};
    const Json objExpected = Json::parse(R"({"what": "No permission for /dev/ttyUSB0",
        "cause": null, "target": "com:ttyUSB0",
        "hint": "join the group dialout (sudo adduser $USER dialout), then log in again"})");
    EXPECT_EQ(Error("com:ttyUSB0", Kind::SerialNotOpened), objExpected);
    EXPECT_EQ(Error("com:/dev/ttyUSB0", Kind::SerialNotOpened)["what"], objExpected["what"]);
    EXPECT_EQ(Run({"read", "com:ttyUSB0"}).m_strError,
              "varden: No permission for /dev/ttyUSB0: join the group dialout (sudo adduser $USER "
              "dialout), then log in again\n");
}

TEST_F(CFailingCommand, TheDeviceThatTheFailureNamesIsTheOne) {
    m_objAccess.m_objStates["/dev/ttyS0"] = {Use::Forbidden, "dialout", false, {}};
    EXPECT_EQ(Error("com:COM1", Kind::SerialNotOpened, "/dev/ttyS0")["what"],
              "No permission for /dev/ttyS0");
}

TEST_F(CFailingCommand, ASerialPortThatIsMissingOrInUse) {
    m_objAccess.m_objStates["/dev/ttyUSB7"] = {Use::Missing, {}, false, {}};
    m_objAccess.m_objStates["/dev/ttyUSB0"] = {Use::Held, {}, false, "minicom (4711)"};
    const Json objMissing = Error("com:ttyUSB7", Kind::SerialNotOpened);
    EXPECT_EQ(objMissing["what"], "There is no /dev/ttyUSB7");
    EXPECT_EQ(objMissing["hint"], "varden ports shows what is plugged in");
    const Json objHeld = Error("com:ttyUSB0", Kind::SerialHeld);
    EXPECT_EQ(objHeld["what"], "/dev/ttyUSB0 is in use");
    EXPECT_EQ(objHeld["cause"], "minicom (4711) has it");
}

TEST_F(CFailingCommand, WhoUsesWhatIsNoSerialPortDoesNotMatter) {
    m_objAccess.m_objStates["/dev/null"] = {Use::Held, {}, false, "bash (1)"};
    Fail("com:/dev/null", Kind::SerialNotOpened, ENOTTY, false);
    EXPECT_EQ(RunJson({"status", "com:/dev/null"}).m_objJson["error"]["cause"],
              "it is no serial port");
}

TEST_F(CFailingCommand, NoPermissionForAPrinterOnUsb) {
    m_objAccess.m_objStates["/dev/bus/usb/001/004"] = {Use::Forbidden, "lp", false, {}};
    EXPECT_EQ(Error("usb", Kind::UsbNotReady, "/dev/bus/usb/001/004")["hint"],
              "join the group lp (sudo adduser $USER lp), then log in again");
    m_objAccess.m_objStates["/dev/bus/usb/001/004"] = {Use::Forbidden, {}, false, {}};
    EXPECT_TRUE(Has(Error("usb:1-2", Kind::UsbNotReady, "/dev/bus/usb/001/004")["hint"],
                    "70-varden-printer.rules"));
}

TEST_F(CFailingCommand, APrinterOnUsbThatIsInUseOrGone) {
    m_objAccess.m_objStates["/dev/bus/usb/001/004"] = {Use::Held, {}, false, "cupsd (77)"};
    EXPECT_EQ(Error("usb", Kind::UsbNotReady, "/dev/bus/usb/001/004")["cause"],
              "cupsd (77) has it");
    m_objAccess.m_objStates["/dev/bus/usb/001/004"] = {Use::Missing, {}, false, {}};
    EXPECT_EQ(Error("usb", Kind::UsbNotOpened, "/dev/bus/usb/001/004")["hint"],
              "varden ports shows what is plugged in");
}

}  // namespace
