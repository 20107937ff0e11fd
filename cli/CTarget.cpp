#include "cli/CTarget.h"

#include "cli/CCommandError.h"
#include "cli/MIpAddress.h"
#include "platform/qt/MSerialSettings.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace {

constexpr std::string_view Lan = "lan:";
constexpr std::string_view Com = "com:";
constexpr std::string_view Usb = "usb";
constexpr std::string_view UsbWith = "usb:";

constexpr const char* LanHint =
    "lan:HOST or lan:HOST:PORT; an IPv6 address in brackets, as in lan:[fe80::1]:8000";
constexpr const char* ComHint = "com:DEVICE or com:DEVICE,9600,E,8,1: speed 2400 to 115200, parity "
                                "N, E or O, 7 or 8 data bits, "
                                "1 or 2 stop bits";
constexpr const char* UsbHint =
    "usb, usb:BUS-PORT as in usb:1-2.3, or usb: and the serial number; varden ports shows them";
constexpr const char* AnyHint = "lan:HOST[:PORT], com:DEVICE[,9600,E,8,1], usb or usb:BUS-PORT";

[[noreturn]] void Refuse(const CTarget& p_objTarget, const std::string& p_strCause,
                         const std::string& p_strHint) {
    throw CCommandError(MExitCode::Wrong, {"\"" + p_objTarget.m_strText + "\" names no printer",
                                           p_strCause, p_objTarget.m_strText, p_strHint});
}

/// The number that p_strText is, if it is nothing but digits and lies between the two.
std::optional<int> Number(std::string_view p_strText, int p_iLowest, int p_iHighest) {
    int iNumber = 0;
    const char* const strEnd = p_strText.data() + p_strText.size();
    const auto objRead = std::from_chars(p_strText.data(), strEnd, iNumber);
    const bool bNumber = objRead.ec == std::errc() && objRead.ptr == strEnd &&
                         p_strText.front() != '-' && iNumber >= p_iLowest && iNumber <= p_iHighest;
    return bNumber ? std::optional(iNumber) : std::nullopt;
}

std::optional<int> PortNumber(std::string_view p_strText) {
    return Number(p_strText, 1, 65'535);
}

void SetPort(CTarget& p_objTarget, std::string_view p_strPort) {
    const std::optional<int> iPort = PortNumber(p_strPort);
    if (!iPort) {
        Refuse(p_objTarget,
               "the port is a number from 1 to 65535, not \"" + std::string(p_strPort) + "\"",
               LanHint);
    }
    p_objTarget.m_iPort = static_cast<std::uint16_t>(*iPort);
}

/// An address between brackets, and perhaps a port behind them.
void ParseBracketed(CTarget& p_objTarget, std::string_view p_strRest) {
    const std::size_t iEnd = p_strRest.find(']');
    const std::string_view strHost = p_strRest.substr(1, iEnd - std::min<std::size_t>(iEnd, 1));
    if (iEnd == std::string_view::npos || !MIpAddress::IsV6(strHost)) {
        Refuse(p_objTarget, "there is no IPv6 address in the brackets", LanHint);
    }
    p_objTarget.m_strHost = strHost;
    const std::string_view strPort = p_strRest.substr(iEnd + 1);
    if (!strPort.empty()) {
        if (strPort.front() != ':') {
            Refuse(p_objTarget, "behind the brackets only a port can follow", LanHint);
        }
        SetPort(p_objTarget, strPort.substr(1));
    }
}

/// An address of several colons without brackets: refused where its end could be a port as well.
void ParseBare(CTarget& p_objTarget, std::string_view p_strRest) {
    const std::size_t iColon = p_strRest.rfind(':');
    const std::string strHost(p_strRest.substr(0, iColon));
    const std::string strEnd(p_strRest.substr(iColon + 1));
    const bool bWithPort = MIpAddress::IsV6(strHost) && PortNumber(strEnd);
    const bool bWhole = MIpAddress::IsV6(p_strRest);
    if (!bWhole) {
        Refuse(p_objTarget, "it is no IPv6 address", LanHint);
    }
    if (bWithPort) {
        Refuse(p_objTarget, "its end can be a port or a part of the address",
               "lan:[" + strHost + "]:" + strEnd + " or lan:[" + std::string(p_strRest) + "]");
    }
    p_objTarget.m_strHost = p_strRest;
}

void ParseLan(CTarget& p_objTarget, std::string_view p_strRest) {
    p_objTarget.m_iLink = CTarget::Link::Lan;
    if (p_strRest.starts_with('[')) {
        ParseBracketed(p_objTarget, p_strRest);
        return;
    }
    if (std::ranges::count(p_strRest, ':') > 1) {
        ParseBare(p_objTarget, p_strRest);
        return;
    }
    const std::size_t iColon = p_strRest.find(':');
    p_objTarget.m_strHost = p_strRest.substr(0, iColon);
    if (!MIpAddress::IsHostName(p_objTarget.m_strHost)) {
        Refuse(p_objTarget, "it has no name and no address of a computer", LanHint);
    }
    if (iColon != std::string_view::npos) {
        SetPort(p_objTarget, p_strRest.substr(iColon + 1));
    }
}

void ParseCom(CTarget& p_objTarget, std::string_view p_strRest) {
    p_objTarget.m_iLink = CTarget::Link::Com;
    const std::size_t iComma = p_strRest.find(',');
    p_objTarget.m_strDevice = p_strRest.substr(0, iComma);
    if (p_objTarget.m_strDevice.empty()) {
        Refuse(p_objTarget, "the device is missing", ComHint);
    }
    if (iComma != std::string_view::npos) {
        p_objTarget.m_strLine = p_strRest.substr(iComma + 1);
    }
    if (!MSerialSettings::Parse(p_objTarget.m_strLine)) {
        Refuse(p_objTarget, "\"" + p_objTarget.m_strLine + "\" is no format of a line", ComHint);
    }
}

/// "1-2.3": the bus, and the way to the port.
bool ParsePorts(CTarget& p_objTarget, std::string_view p_strRest) {
    constexpr int Most = 255;
    const std::size_t iDash = p_strRest.find('-');
    const std::optional<int> iBus = iDash == 0 || iDash == std::string_view::npos
                                        ? std::nullopt
                                        : Number(p_strRest.substr(0, iDash), 1, Most);
    if (!iBus) {
        return false;
    }
    p_strRest.remove_prefix(iDash + 1);
    std::vector<int> iPorts;
    for (bool bMore = true; bMore;) {
        const std::size_t iEnd = p_strRest.find('.');
        const std::string_view strPort = p_strRest.substr(0, iEnd);
        const std::optional<int> iPort = strPort.empty() ? std::nullopt : Number(strPort, 1, Most);
        if (!iPort) {
            return false;
        }
        iPorts.push_back(*iPort);
        bMore = iEnd != std::string_view::npos;
        p_strRest.remove_prefix(bMore ? iEnd + 1 : p_strRest.size());
    }
    p_objTarget.m_iBus = *iBus;
    p_objTarget.m_iPorts = iPorts;
    return true;
}

void ParseUsb(CTarget& p_objTarget, std::string_view p_strRest) {
    p_objTarget.m_iLink = CTarget::Link::Usb;
    const bool bPlain =
        std::ranges::all_of(p_strRest, [](char p_c) { return p_c > ' ' && p_c <= '~'; });
    if (p_strRest.empty() || !bPlain) {
        Refuse(p_objTarget, "neither a port nor a serial number follows", UsbHint);
    }
    if (!ParsePorts(p_objTarget, p_strRest)) {
        p_objTarget.m_strSerialNumber = p_strRest;
    }
}

}  // namespace

CTarget CTarget::Parse(const std::string& p_strText) {
    CTarget objTarget;
    objTarget.m_strText = p_strText;
    const std::string_view strText = p_strText;
    if (strText.starts_with(Lan)) {
        ParseLan(objTarget, strText.substr(Lan.size()));
    } else if (strText.starts_with(Com)) {
        ParseCom(objTarget, strText.substr(Com.size()));
    } else if (strText.starts_with(UsbWith)) {
        ParseUsb(objTarget, strText.substr(UsbWith.size()));
    } else if (strText == Usb) {
        objTarget.m_iLink = Link::Usb;
    } else {
        Refuse(objTarget, {}, AnyHint);
    }
    return objTarget;
}

CTarget CTarget::At(const CPrinterPlace& p_objPlace) const {
    CTarget objTarget = *this;
    if (m_iLink == Link::Lan && (p_objPlace.m_iPort || !p_objPlace.m_strHost.empty())) {
        objTarget.m_strHost = p_objPlace.m_strHost.empty() ? m_strHost : p_objPlace.m_strHost;
        objTarget.m_iPort = p_objPlace.m_iPort.value_or(m_iPort);
        const bool bColons = objTarget.m_strHost.find(':') != std::string::npos;
        objTarget.m_strText = std::string(Lan) + (bColons ? "[" : "") + objTarget.m_strHost +
                              (bColons ? "]:" : ":") + std::to_string(objTarget.m_iPort);
    }
    if (m_iLink == Link::Com && !p_objPlace.m_strLine.empty()) {
        objTarget.m_strLine = p_objPlace.m_strLine;
        objTarget.m_strText = std::string(Com) + m_strDevice + "," + p_objPlace.m_strLine;
    }
    return objTarget;
}

bool CTarget::IsMeant(std::string_view p_strText) {
    return p_strText == Usb || p_strText.starts_with(Lan) || p_strText.starts_with(Com) ||
           p_strText.starts_with(UsbWith);
}

std::vector<std::string> CTarget::Beginnings() {
    return {std::string(Lan), std::string(Com), std::string(Usb), std::string(UsbWith)};
}
