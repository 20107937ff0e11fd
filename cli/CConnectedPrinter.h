#pragma once

#include "cli/CInterruptLoop.h"
#include "cli/CTarget.h"
#include "jobs/CDeadlineLoop.h"
#include "jobs/CLinkedPrinter.h"
#include "platform/qt/CFixedTcpClient.h"
#include "platform/qt/CQtSerialPort.h"
#include "platform/qt/CSystemLineState.h"
#include "platform/usb/CUsbLibrary.h"

/// A printer with everything that leads to it: the ends of all links, of which only the target's
/// leads anywhere.
class CConnectedPrinter : public IPrinter {
public:
    /// What a target stands for here.
    struct Place {
        std::int16_t m_iInterface = 0;  ///< CInterface's number
        std::string m_strDevice{};      ///< what failures name: "shop-3:8000", "/dev/ttyUSB0"
        std::string m_strHost{};        ///< of the LAN, with its port
        std::uint16_t m_iPort = 0;
        CSerialPlace m_objSerial{};          ///< of a serial port
        std::optional<CUsbPort> m_objUsb{};  ///< of a printer on USB
    };

    /// None of the references is owned; all outlive this. The event loop is the toolkit's, the
    /// clock one that never starts again. On Ctrl-C the link is closed before the program ends.
    CConnectedPrinter(const Place& p_objPlace, IEventLoop& p_objEventLoop, const IClock& p_objClock,
                      IInterrupt& p_objInterrupt, ISessionEvents& p_objEvents,
                      const CPrinterLimits& p_objLimits);

    CReadReport Read(std::span<const MSettings::Row* const> p_objRows) override {
        return Held([&] { return m_objPrinter.Read(p_objRows); });
    }
    CStatusReport Status() override {
        return Held([&] { return m_objPrinter.Status(); });
    }
    CStatusReport Send(const std::string& p_strCommand) override {
        return Held([&] { return m_objPrinter.Send(p_strCommand); });
    }

    /// Opens the link and closes it again; true when that was possible. Nothing is sent.
    bool CanOpen() {
        return Held([&] { return m_objPrinter.CanOpen(); });
    }

private:
    template <typename Job>
    auto Held(const Job& p_fnJob) -> decltype(p_fnJob()) {
        decltype(p_fnJob()) objReport{};
        m_objInterrupt.RunHeld([&] { objReport = p_fnJob(); });
        return objReport;
    }

    IInterrupt& m_objInterrupt;
    CInterruptLoop m_objInterruptLoop;
    CDeadlineLoop m_objLoop;
    CSystemLineState m_objLine;
    CFixedTcpClient m_objSocket;
    CQtSerialPort m_objSerialPort;
    CUsbLibrary m_objUsbLibrary;
    CLinkedPrinter m_objPrinter;
};
