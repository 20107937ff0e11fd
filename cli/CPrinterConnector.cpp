#include "cli/CPrinterConnector.h"

#include "cli/CConnectedPrinter.h"
#include "cli/MUsbChoice.h"
#include "platform/qt/CQtEventLoop.h"
#include "platform/qt/CSteadyClock.h"
#include "platform/qt/MSerialPortName.h"

#include <QCoreApplication>

namespace {

using Place = CConnectedPrinter::Place;

Place LanPlace(const CTarget& p_objTarget) {
    const bool bColons = p_objTarget.m_strHost.find(':') != std::string::npos;
    const std::string strHost = bColons ? "[" + p_objTarget.m_strHost + "]" : p_objTarget.m_strHost;
    Place objPlace{CInterface::LanInterface, strHost + ":" + std::to_string(p_objTarget.m_iPort)};
    objPlace.m_strHost = p_objTarget.m_strHost;
    objPlace.m_iPort = p_objTarget.m_iPort;
    return objPlace;
}

Place SerialPlace(const CTarget& p_objTarget) {
    const std::string strDevice = MSerialPortName::DeviceNamed(p_objTarget.m_strDevice);
    // A COM port that is not there has no device to name.
    Place objPlace{CInterface::SerialInterface,
                   strDevice.empty() ? p_objTarget.m_strDevice : strDevice};
    objPlace.m_objSerial = {strDevice, p_objTarget.m_strLine};
    return objPlace;
}

Place UsbPlace(const CUsbPrinterEntry& p_objEntry) {
    Place objPlace{CInterface::UsbInterface, p_objEntry.m_strDevice};
    objPlace.m_objUsb = CUsbPort{p_objEntry.m_iBus, p_objEntry.m_iPorts};
    return objPlace;
}

}  // namespace

/// The toolkit's part of waiting. A program has one application; whoever has made it already keeps
/// it.
struct CPrinterConnector::Toolkit {
    int m_iArguments = 1;
    std::string m_strName = "varden";
    char* m_strArguments[2] = {m_strName.data(), nullptr};  // NOLINT(modernize-avoid-c-arrays)
    std::unique_ptr<QCoreApplication> m_objApplication =
        QCoreApplication::instance() == nullptr
            ? std::make_unique<QCoreApplication>(m_iArguments, m_strArguments)
            : nullptr;
    CQtEventLoop m_objEventLoop;
    CSteadyClock m_objClock;
};

CPrinterConnector::CPrinterConnector(IUsbPrinterLister& p_objUsbPrinters,
                                     IInterrupt& p_objInterrupt, const CPrinterLimits& p_objLimits)
    : m_objUsbPrinters(p_objUsbPrinters)
    , m_objInterrupt(p_objInterrupt)
    , m_objLimits(p_objLimits) {}

CPrinterConnector::~CPrinterConnector() = default;

CPrinterConnector::Toolkit& CPrinterConnector::Life() {
    if (!m_objToolkit) {
        m_objToolkit = std::make_unique<Toolkit>();
    }
    return *m_objToolkit;
}

std::unique_ptr<IPrinter> CPrinterConnector::Connect(const CTarget& p_objTarget,
                                                     std::chrono::milliseconds p_iPause,
                                                     ISessionEvents& p_objEvents) {
    Place objPlace;
    switch (p_objTarget.m_iLink) {
    case CTarget::Link::Lan:
        objPlace = LanPlace(p_objTarget);
        break;
    case CTarget::Link::Com:
        objPlace = SerialPlace(p_objTarget);
        break;
    case CTarget::Link::Usb:
        objPlace = UsbPlace(ChooseUsb(p_objTarget));
        break;
    }
    CPrinterLimits objLimits = m_objLimits;
    objLimits.m_dPause = std::chrono::duration<double>(p_iPause).count();
    Toolkit& objToolkit = Life();
    return std::make_unique<CConnectedPrinter>(objPlace, objToolkit.m_objEventLoop,
                                               objToolkit.m_objClock, m_objInterrupt, p_objEvents,
                                               objLimits);
}

CUsbPrinterEntry CPrinterConnector::ChooseUsb(const CTarget& p_objTarget) {
    return MUsbChoice::Choose(
        p_objTarget, m_objUsbPrinters.UsbPrinters(), [this](const CUsbPrinterEntry& p_objEntry) {
            CUsbLibrary objLibrary(Life().m_objEventLoop,
                                   CUsbPort{p_objEntry.m_iBus, p_objEntry.m_iPorts}, {});
            return objLibrary.Dll_openUSB() == IUsbLibrary::Mismatch;
        });
}
