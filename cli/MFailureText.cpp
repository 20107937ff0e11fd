#include "cli/MFailureText.h"

#include "cli/MAccessText.h"
#include "cli/MSaving.h"
#include "cli/MUtf8.h"
#include "platform/qt/MSerialPortName.h"
#include "protocol/MStatus.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <stdexcept>

namespace {

using Kind = CFailure::Kind;
using Link = CTarget::Link;
using Texts = CCommandError::Texts;

constexpr const char* Again = "see that it is plugged in and switched on, and try again";
constexpr const char* ShowPorts = "varden ports shows what is plugged in";
constexpr const char* Restart = "switch the printer off and on if it happens again";
constexpr const char* RestartLater = "try again, and switch the printer off and on if it stays so";
constexpr const char* OwnFault = "this is a fault of the program";

/// A failure. "{}" in a text stands for the printer.
struct Row {
    Kind m_iKind = Kind::None;
    const char* m_strWhat = "";
    const char* m_strCause = "";
    const char* m_strHint = "";
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
        "the port was lost or closed, or has not taken the command in time", Again, true},
    Row{Kind::SerialLost, "{} is gone", "the port went away before an answer came whole", Again,
        true},
    Row{Kind::SerialOverrun, "Characters from {} were lost",
        "the port's hardware was not emptied in time",
        "try a lower speed: set it at the printer and name it in the target", true},
    Row{Kind::LanError, "Cannot reach {}", "the network has failed", ""},
    Row{Kind::LanNotConnected, "Cannot reach {}", "the connection could not be made", ""},
    Row{Kind::LanNotSent, "Sending to {} has failed",
        "the way to the printer was closed, or it has not taken the command in time", Restart,
        true},
    Row{Kind::LanClosed, "{} has closed the connection",
        "no answer came before that, or not a whole one", Restart, true},
    Row{Kind::UsbNotOpened, "Cannot open {}", "the printer went away meanwhile", Again},
    Row{Kind::UsbNotReady, "Cannot open {}", "another program has the printer",
        "end that program, or wait until it is done"},
    Row{Kind::UsbNoDeviceId, "Cannot tell what {} is", "its identification cannot be read",
        "plug its cable out and in again"},
    Row{Kind::UsbMismatch, "{} is no Varden printer", "its identification names another maker",
        ShowPorts},
    Row{Kind::UsbNotSent, "Sending to {} has failed",
        "the way to the printer was closed, or it has not taken the command in time", Restart,
        true},
    Row{Kind::UsbNoAnswer, "No answer from {}", "nothing that was asked for came back", Restart,
        true},
    Row{Kind::UsbStrayAnswer, "No answer from {}",
        "what came back was the answer to another command", "try again", true},
    Row{Kind::NoReply, "No answer from {}",
        "the command went out, and no answer came in time, or not a whole one", "", true},
    Row{Kind::NoLink, "There is no way to {}", OwnFault, ""},
    Row{Kind::TimeUp, "{} takes too long", "the time to open it or to send is over", ""},
    Row{Kind::ParallelNotOpened, "Cannot open {}", "the parallel port does not open", ""},
    Row{Kind::ParallelNotSent, "Sending to {} has failed",
        "the parallel port has not taken the whole command", "", true},
};

/// What a number of the system's means.
struct SystemRow {
    int m_iNumber;
    const char* m_strCause;
    const char* m_strHint;
};

constexpr const char* SeeAddress = "see that the address is right, that the printer is switched "
                                   "on, and that this computer is in its network";

constexpr std::array SocketFailures{
    SystemRow{SocketError::NoSuchHost, "no computer of that name is known",
              "see that the name is written right, or name the printer by its address"},
    SystemRow{SocketError::NotResolved, "nobody could be asked for the address of that name",
              "see that this computer's network is up, or name the printer by its address"},
    SystemRow{ECONNREFUSED, "nothing listens at that port",
              "see that the address and the port are the printer's, as in lan:HOST:8000, and that "
              "no other program holds its connection"},
    SystemRow{ETIMEDOUT, "nothing at that address answers", SeeAddress},
    SystemRow{EHOSTUNREACH, "no way leads to that address", SeeAddress},
    SystemRow{ENETUNREACH, "no way leads to that network", SeeAddress},
#ifdef EHOSTDOWN  // not every system has it
    SystemRow{EHOSTDOWN, "nothing at that address answers", SeeAddress},
#endif
    SystemRow{ENETDOWN, "this computer's network is down", "connect this computer to the network"},
    SystemRow{EADDRNOTAVAIL, "there is no such address", SeeAddress},
    SystemRow{ECONNRESET, "the printer has dropped the connection", Restart},
    SystemRow{ECONNABORTED, "the connection was broken off", Restart},
    SystemRow{EPIPE, "the printer has dropped the connection", Restart},
    SystemRow{EACCES, "the system does not let this program connect",
              "see whether a firewall of this computer forbids it"},
    SystemRow{EMFILE, "this program has too many files open", "see what ulimit -n allows"},
};

/// What the system's number of a device's failure means.
constexpr std::array DeviceFailures{
    SystemRow{ENOENT, "there is no such device", ShowPorts},
    SystemRow{ENODEV, "it is not there any more", Again},
    SystemRow{ENXIO, "nothing is behind that device", ShowPorts},
    SystemRow{ENOTTY, "it is no serial port", ShowPorts},
    SystemRow{EACCES, "the system does not let this program use it", ShowPorts},
    SystemRow{EBUSY, "another program has it", "end that program, or wait until it is done"},
    SystemRow{EIO, "the device does not react", Again},
};

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

/// The row of a number, or null.
template <typename Rows>
const SystemRow* FindNumber(const Rows& p_objRows, int p_iNumber) {
    const auto* const objFound = std::ranges::find(p_objRows, p_iNumber, &SystemRow::m_iNumber);
    return objFound != p_objRows.end() ? objFound : nullptr;
}

/// Puts what the system has told of a failure in the place of what is said otherwise.
void AddSystemWords(const CFailure& p_objFailure, Texts& p_objTexts) {
    const bool bSocket =
        p_objFailure.m_iKind == Kind::LanError || p_objFailure.m_iKind == Kind::LanNotConnected;
    const bool bDevice =
        p_objFailure.m_iKind == Kind::SerialNotOpened || p_objFailure.m_iKind == Kind::UsbNotReady;
    const SystemRow* objFound = nullptr;
    if (bSocket) {
        objFound = FindNumber(SocketFailures, p_objFailure.m_objSocket.m_iNumber);
        if (!p_objFailure.m_objSocket.m_strDescription.empty()) {
            p_objTexts.m_strCause = MUtf8::FromLatin1(p_objFailure.m_objSocket.m_strDescription);
        }
        p_objTexts.m_strHint = SeeAddress;
    } else if (bDevice) {
        objFound = FindNumber(DeviceFailures, p_objFailure.m_iNumber);
    }
    if (objFound != nullptr) {
        p_objTexts.m_strCause = objFound->m_strCause;
        p_objTexts.m_strHint = objFound->m_strHint;
    }
}

/// The device that a failure is about, as far as it can be told.
std::string DeviceOf(const CFailure& p_objFailure, const CTarget& p_objTarget) {
    if (p_objFailure.m_strDevice.starts_with('/')) {
        return p_objFailure.m_strDevice;
    }
    return p_objTarget.m_iLink == Link::Com ? MSerialPortName::DeviceNamed(p_objTarget.m_strDevice)
                                            : std::string();
}

/// The system's own reason for a device that could not be had, where it tells one.
std::optional<Texts> DeviceProblem(const CFailure& p_objFailure, const CTarget& p_objTarget,
                                   const IDeviceAccess& p_objAccess) {
    constexpr std::array iKinds{Kind::SerialHeld, Kind::SerialNotOpened, Kind::UsbNotReady,
                                Kind::UsbNotOpened};
    const std::string strDevice = DeviceOf(p_objFailure, p_objTarget);
    // Who uses what is no serial port at all does not matter.
    if (strDevice.empty() || p_objFailure.m_iNumber == ENOTTY ||
        std::ranges::find(iKinds, p_objFailure.m_iKind) == iKinds.end()) {
        return std::nullopt;
    }
    const bool bSerial = p_objTarget.m_iLink == Link::Com;
    return MAccessText::Problem(
        strDevice, bSerial ? MAccessText::Device::SerialPort : MAccessText::Device::UsbPrinter,
        p_objAccess.Look(strDevice));
}

Texts Words(const Row& p_objRow, const CFailure& p_objFailure, bool p_bSent,
            const CTarget& p_objTarget) {
    Texts objTexts{Filled(p_objRow.m_strWhat, p_objTarget.m_strText),
                   p_objRow.m_strCause,
                   {},
                   p_objRow.m_strHint};
    AddSystemWords(p_objFailure, objTexts);
    if (p_objRow.m_iKind == Kind::LanError && p_bSent) {
        objTexts.m_strWhat = "The connection to " + p_objTarget.m_strText + " broke";
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
                 const IDeviceAccess& p_objAccess) {
    const Row& objRow = Find(p_objFailure.m_iKind);
    const auto objProblem = DeviceProblem(p_objFailure, p_objTarget, p_objAccess);
    Texts objTexts = objProblem ? *objProblem : Words(objRow, p_objFailure, p_bSent, p_objTarget);
    objTexts.m_strTarget = p_objTarget.m_strText;
    return {p_bSent || objRow.m_bMaySend ? MExitCode::Failed : MExitCode::NotReachable, objTexts};
}

CCommandError OfRead(const CReadReport& p_objReport, const CTarget& p_objTarget,
                     const IDeviceAccess& p_objAccess) {
    const Kind iKind = p_objReport.m_objFailure.m_iKind;
    const bool bSilent = iKind == Kind::NoReply || iKind == Kind::UsbNoAnswer;
    if (p_objReport.m_strStatusCode.empty() || !bSilent) {
        return Of(p_objReport.m_objFailure, p_objReport.m_bSent, p_objTarget, p_objAccess);
    }
    // It is there, and has said something: what that was is the way out.
    const bool bTrouble = MStatus::IsError(p_objReport.m_strStatusCode) &&
                          p_objReport.m_strStatusCode != CommandError;
    const std::string strStatus = MUtf8::FromLatin1(p_objReport.m_strStatusCode) + " " +
                                  MUtf8::FromLatin1(p_objReport.m_strStatusText);
    return {MExitCode::Failed,
            {"No settings from " + p_objTarget.m_strText,
             "in their place it has told the status " +
                 strStatus.substr(0, strStatus.find_last_not_of(' ') + 1),
             p_objTarget.m_strText,
             bTrouble ? "clear that at the printer, and try again" : RestartLater}};
}

CCommandError OfUnreadable(const std::vector<std::string>& p_strNames,
                           const std::string& p_strTarget) {
    return {MExitCode::Failed,
            {"Not everything could be read from " + p_strTarget,
             "what the printer holds is none of the values of " + MSaving::Joined(p_strNames),
             p_strTarget,
             {}}};
}

}  // namespace MFailureText
