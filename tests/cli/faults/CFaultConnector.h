#pragma once

#include "cli/IPrinterConnector.h"
#include "platform/IUsbPrinterLister.h"
#include "tests/cli/faults/CFaultyPrinter.h"

/// Makes printers that lead to one CFaultyPrinter, of the parts and in the way of the program's
/// own connector; but for their ends and the clock, everything in them is real.
class CFaultConnector : public IPrinterConnector {
public:
    static constexpr const char* Host = "printer";
    static constexpr const char* Device = "/dev/ttyUSB0";
    static constexpr const char* UsbDevice = "/dev/bus/usb/001/002";

    /// None is owned; all outlive this.
    CFaultConnector(CFakeEventLoop& p_objEventLoop, const IClock& p_objClock,
                    CEndingInterrupt& p_objInterrupt, CFaultyPrinter& p_objPrinter);

    std::unique_ptr<IPrinter> Connect(const CTarget& p_objTarget,
                                      std::chrono::milliseconds p_iPause,
                                      ISessionEvents& p_objEvents) override;
    bool IsTaken(const CTarget& p_objTarget) override;
    std::string KeyOf(const CTarget& p_objTarget) override;
    [[nodiscard]] double Now() override { return m_objClock.SecondsSinceMidnight(); }
    void Wait(double p_dSeconds) override;

private:
    class CEnd;

    void Choose(const CTarget& p_objTarget);
    [[nodiscard]] std::string PlaceOf(const CTarget& p_objTarget) const;

    CFakeEventLoop& m_objEventLoop;
    const IClock& m_objClock;
    CEndingInterrupt& m_objInterrupt;
    CFaultyPrinter& m_objPrinter;
    std::string m_strHome;  // where the printer is to begin with
};
