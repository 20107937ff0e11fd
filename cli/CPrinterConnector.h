#pragma once

#include "cli/CConnectedPrinter.h"
#include "cli/IInterrupt.h"
#include "cli/IPrinterConnector.h"
#include "jobs/CPrinterLimits.h"
#include "platform/IUsbPrinterLister.h"

#include <memory>

/// Makes printers that are really there: over the network, a serial port or USB. What that needs
/// of the toolkit comes to life with the first of them, so that a command that asks no printer
/// does not pay for it.
class CPrinterConnector : public IPrinterConnector {
public:
    /// Neither reference is owned; both outlive this.
    /// @param p_objLimits those of every printer, but for the pause.
    CPrinterConnector(IUsbPrinterLister& p_objUsbPrinters, IInterrupt& p_objInterrupt,
                      const CPrinterLimits& p_objLimits = {});
    ~CPrinterConnector() override;
    CPrinterConnector(const CPrinterConnector&) = delete;
    CPrinterConnector& operator=(const CPrinterConnector&) = delete;

    /// The printer must not outlive this.
    std::unique_ptr<IPrinter> Connect(const CTarget& p_objTarget,
                                      std::chrono::milliseconds p_iPause,
                                      ISessionEvents& p_objEvents) override;

    bool IsTaken(const CTarget& p_objTarget) override;
    std::string KeyOf(const CTarget& p_objTarget) override;
    [[nodiscard]] double Now() override;
    void Wait(double p_dSeconds) override;

private:
    struct Toolkit;

    Toolkit& Life();
    CConnectedPrinter::Place PlaceOf(const CTarget& p_objTarget);
    CUsbPrinterEntry ChooseUsb(const CTarget& p_objTarget);

    IUsbPrinterLister& m_objUsbPrinters;
    IInterrupt& m_objInterrupt;
    CPrinterLimits m_objLimits;
    std::unique_ptr<Toolkit> m_objToolkit;  // null before it is needed
};
