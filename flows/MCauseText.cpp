#include "flows/MCauseText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>

namespace {

using Kind = CFailure::Kind;

struct Row {
    Kind m_iKind = Kind::None;
    const char* m_strText = "";
};

/// What a number of the system's means.
struct SystemRow {
    int m_iNumber = 0;
    const char* m_strText = "";
};

// A failure that the system may have a number for has the words here that stand without one.
constexpr std::array<Row, 23> Rows{{
    {Kind::None, ""},
    {Kind::SerialHeld, "held by another program"},
    {Kind::SerialNotOpened, "does not open"},
    {Kind::SerialNotOpen, "the port is closed"},
    {Kind::SerialNotSent, "not sent whole"},
    {Kind::SerialLost, "pulled out"},
    {Kind::SerialOverrun, "characters were lost"},
    {Kind::LanError, "failed"},
    {Kind::LanNotConnected, "not connected"},
    {Kind::LanNotSent, "not sent"},
    {Kind::LanClosed, "closed by the printer"},
    {Kind::UsbNotOpened, "not ready"},
    {Kind::UsbNotReady, "not ready"},
    {Kind::UsbNoDeviceId, "the printer does not tell what it is"},
    {Kind::UsbMismatch, "another maker's printer"},
    {Kind::UsbNotSent, "the printer does not take the command"},
    {Kind::UsbNoAnswer, "no answer"},
    {Kind::UsbStrayAnswer, "settings came in place of its answer"},
    {Kind::NoReply, "no answer"},
    {Kind::NoLink, "there is no such link"},
    {Kind::TimeUp, "it takes too long"},
    {Kind::ParallelNotOpened, "the parallel port does not open"},
    {Kind::ParallelNotSent, "the parallel port does not take the command"},
}};

constexpr std::array<SystemRow, 8> SerialRows{{
    {ENOENT, "no such port"},
    {ENODEV, "no such port"},
    {ENXIO, "no such port"},
    {ENOTTY, "no serial port"},
    {EISDIR, "no serial port"},
    {EBUSY, "held by another program"},
    {EIO, "the device does not react"},
    {EACCES, "no permission"},
}};

constexpr auto SocketRows = std::to_array<SystemRow>({
    {ECONNREFUSED, "refused"},
    {ETIMEDOUT, "timed out"},
    {EHOSTUNREACH, "no route"},
#ifdef EHOSTDOWN  // not every system has it
    {EHOSTDOWN, "no route"},
#endif
    {ENETUNREACH, "network unreachable"},
    {ENETDOWN, "network down"},
    {EADDRNOTAVAIL, "no such address"},
    {ECONNRESET, "connection broken"},
    {ECONNABORTED, "connection broken"},
    {EPIPE, "connection broken"},
    {EACCES, "forbidden by this computer"},
    {EMFILE, "too many files open"},
    {SocketError::NoSuchHost, "no such name"},
    {SocketError::NotResolved, "nobody to ask for the name"},
});

constexpr std::array<SystemRow, 4> UsbRows{{
    {ENODEV, "no printer"},
    {EACCES, "no permission for it (group lp)"},
    {EPERM, "no permission for it (group lp)"},
    {EBUSY, "held by another program"},
}};

std::string Words(std::span<const SystemRow> p_objRows, int p_iNumber) {
    const auto objFound = std::ranges::find(p_objRows, p_iNumber, &SystemRow::m_iNumber);
    return objFound != p_objRows.end() ? objFound->m_strText : "";
}

std::string Serial(const CFailure& p_objFailure) {
    std::string strWords = Words(SerialRows, p_objFailure.m_iReason);
    const DeviceRefusal& objRefusal = p_objFailure.m_objRefusal;
    if (p_objFailure.m_iReason != EACCES || objRefusal.m_strFile.empty()) {
        return strWords;
    }
    const std::string strAgain = objRefusal.m_bMember ? ": log in again" : "";
    const std::string strGroup =
        objRefusal.m_strGroup.empty() ? "" : " (group " + objRefusal.m_strGroup + strAgain + ")";
    return strWords + " for " + objRefusal.m_strFile + strGroup;
}

/// The socket's words are one byte a character.
std::string Utf8(const std::string& p_strText) {
    std::string strText;
    for (const char cCharacter : p_strText) {
        const auto iCode = static_cast<unsigned char>(cCharacter);
        if (iCode < 0x80) {
            strText += cCharacter;
        } else {
            strText += static_cast<char>(0xC0 | (iCode >> 6));
            strText += static_cast<char>(0x80 | (iCode & 0x3F));
        }
    }
    return strText;
}

std::string Socket(const SocketError& p_objError) {
    const std::string strWords = Words(SocketRows, p_objError.m_iNumber);
    return !strWords.empty() ? strWords : Utf8(p_objError.m_strDescription);
}

/// What the system has told; empty where it has not.
std::string SystemWords(const CFailure& p_objFailure) {
    switch (p_objFailure.m_iKind) {
    case Kind::SerialNotOpened:
        return Serial(p_objFailure);
    case Kind::LanError:
        return Socket(p_objFailure.m_objSocket);
    case Kind::UsbNotOpened:
    case Kind::UsbNotReady:
        return Words(UsbRows, p_objFailure.m_iReason);
    default:
        return {};
    }
}

}  // namespace

std::string MCauseText::Of(const CFailure& p_objFailure) {
    std::string strWords = SystemWords(p_objFailure);
    if (!strWords.empty()) {
        return strWords;
    }
    const auto* const objFound = std::ranges::find(Rows, p_objFailure.m_iKind, &Row::m_iKind);
    return objFound != Rows.end() ? objFound->m_strText : "";
}
