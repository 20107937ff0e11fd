#pragma once

#include "simulator/CFaultSettings.h"

#include <QHostAddress>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <string>

/// What the program's command line asks for.
class COptions {
public:
    QHostAddress m_objHost{QHostAddress::LocalHost};
    std::uint16_t m_iPort = 8000;    ///< 0: any that is free
    bool m_bSerial = false;          ///< on a serial line, not on the network
    std::string m_strAlias;          ///< a path for a link to the serial line; empty: none
    QStringList m_strUsbProgram;     ///< a program to run with the printer on USB; empty: none
    std::string m_strStatus = "00";  ///< two printable characters
    CFaultSettings m_objFaults;
    bool m_bHelp = false;  ///< HelpText() is asked for; the rest may be wrong
    QString m_strError;    ///< one sentence; empty when the command line is right

    /// @param p_strArguments the whole command line, the program's own name first.
    explicit COptions(const QStringList& p_strArguments);

    [[nodiscard]] static QString HelpText();
};
