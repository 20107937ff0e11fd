#pragma once

#include "jobs/CPrinterPlace.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A printer, as a command line names it:
///
///   lan:HOST[:PORT]               a name, an IPv4 or an IPv6 address ("lan:[fe80::1%eth0]:8000")
///   com:DEVICE[,9600,E,8,1]       a path, or a name such as ttyUSB0 or COM1
///   usb                           the one printer on USB
///   usb:BUS-PORT[.PORT...]        the one at that port
///   usb:SERIAL                    the one with that serial number
///
/// Says only how it is written; whether there is such a printer is another matter.
class CTarget {
public:
    enum class Link : std::uint8_t { Lan, Com, Usb };

    static constexpr std::uint16_t DefaultPort = 8000;
    static constexpr const char* DefaultLine = "9600,E,8,1";

    /// Throws CCommandError, with the right way to write it, for a text that names no printer.
    static CTarget Parse(const std::string& p_strText);

    /// True for a text that begins as a printer's name does, whether or not Parse takes it.
    static bool IsMeant(std::string_view p_strText);

    /// What the name of a printer can begin with; what ends with ":" goes on.
    static std::vector<std::string> Beginnings();

    /// The same printer at another place over the same link, written as Parse takes it.
    [[nodiscard]] CTarget At(const CPrinterPlace& p_objPlace) const;

    std::string m_strText;  ///< as it was written
    Link m_iLink = Link::Lan;

    // Of Link::Lan:
    std::string m_strHost;  ///< without brackets
    std::uint16_t m_iPort = DefaultPort;

    // Of Link::Com:
    std::string m_strDevice;              ///< as it was written
    std::string m_strLine = DefaultLine;  ///< as MSerialSettings reads it

    // Of Link::Usb: all empty for the one printer that there is.
    int m_iBus = 0;
    std::vector<int> m_iPorts;
    std::string m_strSerialNumber;
};
