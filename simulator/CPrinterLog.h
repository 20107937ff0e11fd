#pragma once

#include "simulator/CEventLog.h"
#include "simulator/CStreamLog.h"
#include "simulator/ISimulatorLog.h"

#include <cstddef>
#include <string>

/// The log of one printer of several: says of every line and every event whose it is.
class CPrinterLog : public ISimulatorLog {
public:
    /// Whose log it is.
    struct Printer {
        std::size_t m_iNumber = 1;  ///< counted from 1
        bool m_bAlone = true;       ///< no other is there: lines need not name it
        std::string m_strLink;      ///< "lan", "com" or "usb"
    };

    /// @param p_objLines, p_objEvents not owned, must outlive the log; no events are written when
    ///        p_objEvents is null.
    CPrinterLog(Printer p_objPrinter, CStreamLog& p_objLines, CEventLog* p_objEvents);

    /// Where the printer is from now on: an address with its port, a port's name; empty where
    /// there is no such thing.
    void SetAddress(std::string p_strAddress) { m_strAddress = std::move(p_strAddress); }
    [[nodiscard]] const std::string& Address() const { return m_strAddress; }
    [[nodiscard]] const Printer& Whose() const { return m_objPrinter; }

    void Line(std::size_t p_iConnection, std::string_view p_strLine) override;
    void Event(std::size_t p_iConnection, std::string_view p_strName,
               const CJsonObject& p_objDetails) override;

private:
    Printer m_objPrinter;
    CStreamLog& m_objLines;
    CEventLog* m_objEvents;
    std::string m_strAddress;
};
