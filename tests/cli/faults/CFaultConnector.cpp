#include "tests/cli/faults/CFaultConnector.h"

#include "cli/CInterruptLoop.h"
#include "cli/MStateName.h"
#include "cli/MUsbChoice.h"
#include "jobs/CLinkedPrinter.h"
#include "tests/fakes/CFakeSessionEvents.h"

namespace {

std::int16_t InterfaceOf(CTarget::Link p_iLink) {
    switch (p_iLink) {
    case CTarget::Link::Lan:
        return CInterface::LanInterface;
    case CTarget::Link::Com:
        return CInterface::SerialInterface;
    case CTarget::Link::Usb:
        break;
    }
    return CInterface::UsbInterface;
}

/// What failures name.
std::string DeviceOf(const CTarget& p_objTarget) {
    switch (p_objTarget.m_iLink) {
    case CTarget::Link::Lan:
        return p_objTarget.m_strHost + ":" + std::to_string(p_objTarget.m_iPort);
    case CTarget::Link::Com:
        return p_objTarget.m_strDevice;
    case CTarget::Link::Usb:
        break;
    }
    return CFaultConnector::UsbDevice;
}

}  // namespace

/// The printer as CConnectedPrinter puts it together, with doubles for its ends.
class CFaultConnector::CEnd : public IPrinter {
public:
    CEnd(CFaultConnector& p_objConnector, const CTarget& p_objTarget, ISessionEvents& p_objEvents,
         const CPrinterLimits& p_objLimits)
        : m_objInterrupt(p_objConnector.m_objInterrupt)
        , m_objPrinter(p_objConnector.m_objPrinter)
        , m_strPlace(p_objConnector.PlaceOf(p_objTarget))
        , m_objInterruptLoop(p_objConnector.m_objEventLoop, m_objInterrupt)
        , m_objLoop(m_objInterruptLoop, p_objConnector.m_objClock)
        , m_objLinked({m_objLoop,
                       {m_objLoop, p_objConnector.m_objClock, m_objPrinter.m_objSocket,
                        m_objPrinter.m_objSerialPort, m_objPrinter.m_objUsb},
                       p_objEvents},
                      InterfaceOf(p_objTarget.m_iLink), DeviceOf(p_objTarget), p_objLimits) {}

    CReadReport Read(std::span<const MSettings::Row* const> p_objRows) override {
        return Held([&] { return m_objLinked.Read(p_objRows); });
    }
    CStatusReport Status() override {
        return Held([&] { return m_objLinked.Status(); });
    }
    CStatusReport Send(const std::string& p_strCommand) override {
        return Held([&] { return m_objLinked.Send(p_strCommand); });
    }
    bool CanOpen() {
        return Held([&] { return m_objLinked.CanOpen(); });
    }

private:
    template <typename Job>
    auto Held(const Job& p_fnJob) -> decltype(p_fnJob()) {
        decltype(p_fnJob()) objReport{};
        m_objPrinter.m_strPlace = m_strPlace;
        m_objInterrupt.RunHeld([&] { objReport = p_fnJob(); });
        return objReport;
    }

    CEndingInterrupt& m_objInterrupt;
    CFaultyPrinter& m_objPrinter;
    std::string m_strPlace;
    CInterruptLoop m_objInterruptLoop;
    CDeadlineLoop m_objLoop;
    CLinkedPrinter m_objLinked;
};

CFaultConnector::CFaultConnector(CFakeEventLoop& p_objEventLoop, const IClock& p_objClock,
                                 CEndingInterrupt& p_objInterrupt, CFaultyPrinter& p_objPrinter)
    : m_objEventLoop(p_objEventLoop)
    , m_objClock(p_objClock)
    , m_objInterrupt(p_objInterrupt)
    , m_objPrinter(p_objPrinter)
    , m_strHome(p_objPrinter.Place()) {}

std::unique_ptr<IPrinter> CFaultConnector::Connect(const CTarget& p_objTarget,
                                                   std::chrono::milliseconds p_iPause,
                                                   ISessionEvents& p_objEvents) {
    Choose(p_objTarget);
    CPrinterLimits objLimits;
    objLimits.m_dPause = std::chrono::duration<double>(p_iPause).count();
    return std::make_unique<CEnd>(*this, p_objTarget, p_objEvents, objLimits);
}

bool CFaultConnector::IsTaken(const CTarget& p_objTarget) {
    CFakeSessionEvents objNobody;
    CPrinterLimits objLimits;
    objLimits.m_dOpen = 2;
    return CEnd(*this, p_objTarget, objNobody, objLimits).CanOpen();
}

std::string CFaultConnector::KeyOf(const CTarget& p_objTarget) {
    Choose(p_objTarget);
    return MStateName::Of(MFaults::Name(p_objTarget.m_iLink), DeviceOf(p_objTarget));
}

void CFaultConnector::Wait(double p_dSeconds) {
    const double dEnd = Now() + p_dSeconds;
    while (Now() < dEnd) {
        m_objEventLoop.YieldFor(dEnd - Now());
    }
}

/// Throws when the printer is none of those on USB.
void CFaultConnector::Choose(const CTarget& p_objTarget) {
    if (p_objTarget.m_iLink != CTarget::Link::Usb) {
        return;
    }
    std::vector<CUsbPrinterEntry> objEntries;
    if (m_objPrinter.IsPluggedIn()) {
        objEntries.push_back({1, {2}, UsbDevice, 0, 0, "Varden", "Label Printer", {}});
    }
    MUsbChoice::Choose(p_objTarget, objEntries, [](const CUsbPrinterEntry&) { return false; });
}

/// As CFaultyPrinter has it: what the target leaves open is where the printer was at first.
std::string CFaultConnector::PlaceOf(const CTarget& p_objTarget) const {
    const std::size_t iColon = m_strHome.find(':');
    switch (p_objTarget.m_iLink) {
    case CTarget::Link::Lan:
        return (p_objTarget.m_strHost == Host ? m_strHome.substr(0, iColon)
                                              : p_objTarget.m_strHost) +
               (p_objTarget.m_iPort == CTarget::DefaultPort
                    ? m_strHome.substr(iColon)
                    : ":" + std::to_string(p_objTarget.m_iPort));
    case CTarget::Link::Com:
        return p_objTarget.m_strLine == CTarget::DefaultLine ? m_strHome : p_objTarget.m_strLine;
    case CTarget::Link::Usb:
        break;
    }
    return m_strHome;
}
