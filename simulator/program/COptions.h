#pragma once

#include "simulator/CFaultSettings.h"
#include "simulator/CPrinter.h"
#include "simulator/CStateFaults.h"

#include <QHostAddress>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

/// What the program's command line asks for.
class COptions {
public:
    /// More than anyone has wanted; each takes memory and an open file.
    static constexpr unsigned MostPrinters = 10'000;

    QHostAddress m_objHost{QHostAddress::LocalHost};
    std::uint16_t m_iPort = 8000;     ///< 0: any that is free
    std::size_t m_iPrinters = 1;      ///< on the network
    bool m_bByPort = false;           ///< each at its own port, not at its own address
    bool m_bOwnAddress = false;       ///< the settings name from the start where it listens
    bool m_bSerial = false;           ///< on a serial line, not on the network
    std::string m_strAlias;           ///< a path for a link to the serial line; empty: none
    QStringList m_strUsbProgram;      ///< a program to run with the printer on USB; empty: none
    std::string m_strStatus = "00";   ///< two printable characters
    char m_cFill = CPrinter::Blank;   ///< fills texts up in answers
    CFaultSettings m_objFaults;       ///< what goes wrong with answers
    CStateFaults m_objStateFaults;    ///< what goes wrong with the state
    std::set<std::size_t> m_iFaulty;  ///< the printers that this concerns; empty: all
    std::string m_strEvents;          ///< a file for events; empty: none
    std::string m_strDump;            ///< a file for the printers' settings; empty: none
    bool m_bHelp = false;             ///< HelpText() is asked for; the rest may be wrong
    QString m_strError;               ///< one sentence; empty when the command line is right

    /// @param p_strArguments the whole command line, the program's own name first.
    explicit COptions(const QStringList& p_strArguments);

    /// True when the faults, and the status, are those of printer p_iNumber, counted from 1.
    [[nodiscard]] bool IsFaulty(std::size_t p_iNumber) const;

    /// Makes p_objPrinter, which is new, printer p_iNumber.
    void Prepare(CPrinter& p_objPrinter, std::size_t p_iNumber) const;

    /// What goes wrong, in one line for people; "none" when nothing does.
    [[nodiscard]] std::string DescribeFaults() const;

    [[nodiscard]] static QString HelpText();
};
