#include "cli/MFailureText.h"

#include "cli/MAccessText.h"
#include "cli/MIpAddress.h"
#include "cli/MUtf8.h"
#include "platform/qt/MSerialPortName.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <stdexcept>
#include <vector>

namespace {

using Kind = CFailure::Kind;
using Link = CTarget::Link;
using MFailureText::Devices;
using Texts = CCommandError::Texts;

constexpr const char* Again = "see that it is plugged in and switched on, and try again";
constexpr const char* ShowPorts = "varden ports shows what is plugged in";
constexpr const char* Restart = "switch the printer off and on if it happens again";
constexpr const char* OwnFault = "this is a fault of the program";

/// A failure. "{}" in a text stands for the printer.
struct Row {
    Kind m_iKind;
    const char* m_strWhat;
    const char* m_strCause;
    const char* m_strHint;
    /// Bytes may have gone out even where no request has gone out whole.
    bool m_bMaySend = false;
};

constexpr std::array Failures{
    Row{Kind::SerialHeld, "Cannot open {}", "another program has the port",
        "end that program, or wait until it is done"},
    Row{Kind::SerialNotOpened, "Cannot open {}",
        "it is no serial port, or one that does not take this speed and format", ShowPorts},
    Row{Kind::SerialNotOpen, "{} is not open", "the port went away before anything was sent",
        Again},
    Row{Kind::SerialNotSent, "Sending to {} has failed",
        "the port was lost or closed while the command went out", Again, true},
    Row{Kind::SerialLost, "{} is gone", "the port went away before an answer came", Again, true},
    Row{Kind::SerialOverrun, "Characters from {} were lost",
        "the port's hardware was not emptied in time",
        "try a lower speed: set it at the printer and name it in the target", true},
    Row{Kind::LanError, "Cannot reach {}", "the network has failed", ""},
    Row{Kind::LanNotConnected, "Cannot reach {}", "the connection could not be made", ""},
    Row{Kind::LanNotSent, "Sending to {} has failed",
        "the printer has not taken the whole command in time", Restart, true},
    Row{Kind::LanClosed, "{} has closed the connection", "no answer came before that", Restart,
        true},
    Row{Kind::UsbNotOpened, "Cannot open {}", "the printer went away meanwhile", Again},
    Row{Kind::UsbNotReady, "Cannot open {}", "another program has the printer",
        "end that program, or wait until it is done"},
    Row{Kind::UsbNoDeviceId, "Cannot tell what {} is", "its identification cannot be read",
        "plug its cable out and in again"},
    Row{Kind::UsbMismatch, "{} is no Varden printer", "its identification names another maker",
        ShowPorts},
    Row{Kind::UsbNotSent, "Sending to {} has failed",
        "the printer has not taken the whole command in time", Restart, true},
    Row{Kind::UsbNoAnswer, "No answer from {}", "nothing that was asked for came back", Restart,
        true},
    Row{Kind::UsbStrayAnswer, "No answer from {}",
        "what came back was the answer to another command", "try again", true},
    Row{Kind::NoReply, "No answer from {}", "the command went out, and no answer came in time", "",
        true},
    Row{Kind::NoLink, "There is no way to {}", OwnFault, ""},
    Row{Kind::TimeUp, "{} takes too long", "the time to open it or to send is over", ""},
    Row{Kind::ParallelNotOpened, "Cannot open {}", "the parallel port does not open", ""},
    Row{Kind::ParallelNotSent, "Sending to {} has failed",
        "the parallel port has not taken the whole command", "", true},
};

/// What the system's number of a socket's failure means.
struct SocketRow {
    int m_iNumber;
    const char* m_strCause;
    const char* m_strHint;
};

constexpr const char* SeeAddress = "see that the address is right, that the printer is switched "
                                   "on, and that this computer is in its network";

constexpr std::array SocketFailures{
    SocketRow{ECONNREFUSED, "nothing listens at that port",
              "see that the address and the port are the printer's, as in lan:HOST:8000, and that "
              "no other program holds its connection"},
    SocketRow{ETIMEDOUT, "nothing at that address answers", SeeAddress},
    SocketRow{EHOSTUNREACH, "no way leads to that address", SeeAddress},
    SocketRow{ENETUNREACH, "no way leads to that network", SeeAddress},
    SocketRow{EHOSTDOWN, "nothing at that address answers", SeeAddress},
    SocketRow{ENETDOWN, "this computer's network is down", "connect this computer to the network"},
    SocketRow{EADDRNOTAVAIL, "there is no such address", SeeAddress},
    SocketRow{ECONNRESET, "the printer has dropped the connection", Restart},
    SocketRow{ECONNABORTED, "the connection was broken off", Restart},
    SocketRow{EPIPE, "the printer has dropped the connection", Restart},
    SocketRow{EACCES, "the system does not let this program connect",
              "see whether a firewall of this computer forbids it"},
    SocketRow{EMFILE, "this program has too many files open", "see what ulimit -n allows"},
};

constexpr SocketRow NoSuchName{
    EADDRNOTAVAIL, "no computer of that name is known",
    "see that the name is written right, or name the printer by its address"};

/// What to look at where a printer is silent or slow.
const char* SilenceHint(Link p_iLink) {
    switch (p_iLink) {
    case Link::Lan:
        return "see that the address and the port are the printer's, and that it is ready";
    case Link::Com:
        return "see that the cable leads to the printer, and that speed, parity, data bits and "
               "stop "
               "bits are its own, as in com:DEVICE,9600,E,8,1";
    case Link::Usb:
        break;
    }
    return "see that the printer is switched on and ready";
}

const Row& Find(Kind p_iKind) {
    const auto* const objFound = std::ranges::find(Failures, p_iKind, &Row::m_iKind);
    if (objFound == Failures.end()) {
        throw std::logic_error("no words for failure " + std::to_string(static_cast<int>(p_iKind)));
    }
    return *objFound;
}

std::string Filled(std::string p_strText, const std::string& p_strName) {
    const std::size_t iPlace = p_strText.find("{}");
    return iPlace == std::string::npos ? p_strText : p_strText.replace(iPlace, 2, p_strName);
}

void AddSocketWords(const CFailure& p_objFailure, const CTarget& p_objTarget, Texts& p_objTexts) {
    const SocketError& objSocket = p_objFailure.m_objSocket;
    const bool bName =
        MIpAddress::IsHostName(p_objTarget.m_strHost) && !MIpAddress::IsV4(p_objTarget.m_strHost);
    const auto* const objFound =
        std::ranges::find(SocketFailures, objSocket.m_iNumber, &SocketRow::m_iNumber);
    if (objSocket.m_iNumber == NoSuchName.m_iNumber && bName) {
        p_objTexts.m_strCause = NoSuchName.m_strCause;
        p_objTexts.m_strHint = NoSuchName.m_strHint;
    } else if (objFound != SocketFailures.end()) {
        p_objTexts.m_strCause = objFound->m_strCause;
        p_objTexts.m_strHint = objFound->m_strHint;
    } else {
        if (!objSocket.m_strDescription.empty()) {
            p_objTexts.m_strCause = MUtf8::FromLatin1(objSocket.m_strDescription);
        }
        p_objTexts.m_strHint = SeeAddress;
    }
}

/// The device file of a serial port, as far as it can be told.
std::string SerialDevice(const CFailure& p_objFailure, const CTarget& p_objTarget) {
    constexpr std::string_view strCom = "COM";
    if (p_objFailure.m_strDevice.starts_with('/')) {
        return p_objFailure.m_strDevice;
    }
    const std::string& strWritten = p_objTarget.m_strDevice;
    if (strWritten.find('/') != std::string::npos) {
        return strWritten;
    }
    std::int16_t iNumber = 0;
    if (strWritten.starts_with(strCom)) {
        std::from_chars(strWritten.data() + strCom.size(), strWritten.data() + strWritten.size(),
                        iNumber);
    }
    const std::string strDevice = MSerialPortName::DeviceOf(iNumber);
    return strDevice.empty() ? MSerialPortName::DeviceFolder + ("/" + strWritten) : strDevice;
}

/// The printers on USB that the target can mean.
std::vector<CUsbPrinterEntry> Meant(const CTarget& p_objTarget, const Devices& p_objDevices) {
    std::vector<CUsbPrinterEntry> objMeant = p_objDevices.m_objUsbPrinters.UsbPrinters();
    std::erase_if(objMeant, [&](const CUsbPrinterEntry& p_objEntry) {
        if (!p_objTarget.m_iPorts.empty()) {
            return p_objEntry.m_iBus != p_objTarget.m_iBus ||
                   p_objEntry.m_iPorts != p_objTarget.m_iPorts;
        }
        return !p_objTarget.m_strSerialNumber.empty() &&
               p_objEntry.m_strSerialNumber != p_objTarget.m_strSerialNumber;
    });
    return objMeant;
}

/// What the system tells of a printer on USB that cannot be had. Nothing where it sees no reason.
std::optional<Texts> UsbProblem(const CTarget& p_objTarget, const Devices& p_objDevices) {
    const std::vector<CUsbPrinterEntry> objMeant = Meant(p_objTarget, p_objDevices);
    if (objMeant.empty()) {
        const bool bAny = p_objTarget.m_iPorts.empty() && p_objTarget.m_strSerialNumber.empty();
        return Texts{bAny ? "There is no printer on USB" : "There is no " + p_objTarget.m_strText,
                     {},
                     {},
                     bAny ? Again : ShowPorts};
    }
    for (const CUsbPrinterEntry& objEntry : objMeant) {
        if (auto objProblem =
                MAccessText::Problem(objEntry.m_strDevice, MAccessText::Device::UsbPrinter,
                                     p_objDevices.m_objAccess.Look(objEntry.m_strDevice))) {
            return objProblem;
        }
    }
    return std::nullopt;
}

/// The system's own reason for a device that could not be had, where it tells one.
std::optional<Texts> DeviceProblem(const CFailure& p_objFailure, const CTarget& p_objTarget,
                                   const Devices& p_objDevices) {
    switch (p_objFailure.m_iKind) {
    case Kind::SerialHeld:
    case Kind::SerialNotOpened: {
        const std::string strDevice = SerialDevice(p_objFailure, p_objTarget);
        return MAccessText::Problem(strDevice, MAccessText::Device::SerialPort,
                                    p_objDevices.m_objAccess.Look(strDevice));
    }
    case Kind::UsbNotReady:
    case Kind::UsbNotOpened:
        return UsbProblem(p_objTarget, p_objDevices);
    default:
        return std::nullopt;
    }
}

Texts Words(const Row& p_objRow, const CFailure& p_objFailure, bool p_bSent,
            const CTarget& p_objTarget) {
    Texts objTexts{Filled(p_objRow.m_strWhat, p_objTarget.m_strText),
                   p_objRow.m_strCause,
                   {},
                   p_objRow.m_strHint};
    const bool bSocket =
        p_objRow.m_iKind == Kind::LanError || p_objRow.m_iKind == Kind::LanNotConnected;
    if (bSocket) {
        AddSocketWords(p_objFailure, p_objTarget, objTexts);
        if (p_bSent) {
            objTexts.m_strWhat = "The connection to " + p_objTarget.m_strText + " broke";
        }
    }
    const bool bSilence = p_objRow.m_iKind == Kind::NoReply || p_objRow.m_iKind == Kind::TimeUp;
    if (bSilence) {
        objTexts.m_strHint = SilenceHint(p_objTarget.m_iLink);
    }
    return objTexts;
}

}  // namespace

namespace MFailureText {

CCommandError Of(const CFailure& p_objFailure, bool p_bSent, const CTarget& p_objTarget,
                 const Devices& p_objDevices) {
    const Row& objRow = Find(p_objFailure.m_iKind);
    const auto objProblem = DeviceProblem(p_objFailure, p_objTarget, p_objDevices);
    Texts objTexts = objProblem ? *objProblem : Words(objRow, p_objFailure, p_bSent, p_objTarget);
    objTexts.m_strTarget = p_objTarget.m_strText;
    return {p_bSent || objRow.m_bMaySend ? MExitCode::Failed : MExitCode::NotReachable, objTexts};
}

}  // namespace MFailureText
