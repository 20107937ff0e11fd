#include "cli/CPrinterConnector.h"

#include "cli/MStateName.h"
#include "cli/MUsbChoice.h"
#include "platform/qt/CQtEventLoop.h"
#include "platform/qt/CSteadyClock.h"
#include "platform/qt/MSerialPortName.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <filesystem>
#include <system_error>

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

const char* LinkName(CTarget::Link p_iLink) {
    switch (p_iLink) {
    case CTarget::Link::Lan:
        return "lan";
    case CTarget::Link::Com:
        return "com";
    case CTarget::Link::Usb:
        break;
    }
    return "usb";
}

/// How long a wait sleeps at most when an interrupt wakes it: a person is told each second of a
/// wait, and nothing else has to be looked at meanwhile.
constexpr int SleepMilliseconds = 250;

/// Hears of a session and tells nobody.
class CNobody : public ISessionEvents {
public:
    void OnBusy(bool /*p_bBusy*/) override {}
    void OnLinkStatus(const CLinkStatus& /*p_objStatus*/) override {}
    void OnStep(std::int16_t /*p_iStep*/, std::int16_t /*p_iSteps*/) override {}
    void OnStatus(const std::string& /*p_strText*/) override {}
    void OnHeadCheck(const std::string& /*p_strText*/) override {}
    void OnFailure(const CFailure& /*p_objFailure*/) override {}
    void OnCommandFailed(const CFailure& /*p_objFailure*/) override {}
    void OnWaiting(std::int16_t /*p_iSeconds*/) override {}
};

}  // namespace

/// The toolkit's part of waiting. A program has one application; whoever has made it already keeps
/// it.
struct CPrinterConnector::Toolkit {
    explicit Toolkit(int p_iWakeHandle)
        : m_objEventLoop(p_iWakeHandle < 0 ? CQtEventLoop::ShortMilliseconds : SleepMilliseconds) {
        if (p_iWakeHandle >= 0) {
            m_objWake = std::make_unique<QSocketNotifier>(p_iWakeHandle, QSocketNotifier::Read);
            // It stays readable: once is enough, for from then on nothing waits.
            QObject::connect(m_objWake.get(), &QSocketNotifier::activated, m_objWake.get(),
                             [this] { m_objWake->setEnabled(false); });
        }
    }

    int m_iArguments = 1;
    std::string m_strName = "varden";
    char* m_strArguments[2] = {m_strName.data(), nullptr};  // NOLINT(modernize-avoid-c-arrays)
    std::unique_ptr<QCoreApplication> m_objApplication =
        QCoreApplication::instance() == nullptr
            ? std::make_unique<QCoreApplication>(m_iArguments, m_strArguments)
            : nullptr;
    std::unique_ptr<QSocketNotifier> m_objWake;
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
        m_objToolkit = std::make_unique<Toolkit>(m_objInterrupt.WakeHandle());
    }
    return *m_objToolkit;
}

CConnectedPrinter::Place CPrinterConnector::PlaceOf(const CTarget& p_objTarget) {
    switch (p_objTarget.m_iLink) {
    case CTarget::Link::Lan:
        return LanPlace(p_objTarget);
    case CTarget::Link::Com:
        return SerialPlace(p_objTarget);
    case CTarget::Link::Usb:
        break;
    }
    return UsbPlace(ChooseUsb(p_objTarget));
}

std::unique_ptr<IPrinter> CPrinterConnector::Connect(const CTarget& p_objTarget,
                                                     std::chrono::milliseconds p_iPause,
                                                     ISessionEvents& p_objEvents) {
    const Place objPlace = PlaceOf(p_objTarget);
    CPrinterLimits objLimits = m_objLimits;
    objLimits.m_dPause = std::chrono::duration<double>(p_iPause).count();
    Toolkit& objToolkit = Life();
    return std::make_unique<CConnectedPrinter>(objPlace, objToolkit.m_objEventLoop,
                                               objToolkit.m_objClock, m_objInterrupt, p_objEvents,
                                               objLimits);
}

bool CPrinterConnector::IsTaken(const CTarget& p_objTarget) {
    CNobody objNobody;
    CPrinterLimits objLimits;
    objLimits.m_dOpen = 2;
    Toolkit& objToolkit = Life();
    CConnectedPrinter objPrinter(PlaceOf(p_objTarget), objToolkit.m_objEventLoop,
                                 objToolkit.m_objClock, m_objInterrupt, objNobody, objLimits);
    return objPrinter.CanOpen();
}

std::string CPrinterConnector::KeyOf(const CTarget& p_objTarget) {
    const Place objPlace = PlaceOf(p_objTarget);
    std::string strName = objPlace.m_strDevice;
    if (p_objTarget.m_iLink == CTarget::Link::Com) {
        // A name such as by-id/… is a link to the device.
        std::error_code objError;
        const auto objDevice = std::filesystem::canonical(strName, objError);
        strName = objError ? strName : objDevice.string();
    }
    if (objPlace.m_objUsb) {
        strName = std::to_string(objPlace.m_objUsb->m_iBus);
        for (const int iPort : objPlace.m_objUsb->m_iPorts) {
            strName += "." + std::to_string(iPort);
        }
    }
    return MStateName::Of(LinkName(p_objTarget.m_iLink), strName);
}

double CPrinterConnector::Now() {
    return Life().m_objClock.SecondsSinceMidnight();
}

void CPrinterConnector::Wait(double p_dSeconds) {
    const double dEnd = Now() + p_dSeconds;
    while (Now() < dEnd) {
        Life().m_objEventLoop.YieldFor(dEnd - Now());
    }
}

CUsbPrinterEntry CPrinterConnector::ChooseUsb(const CTarget& p_objTarget) {
    return MUsbChoice::Choose(
        p_objTarget, m_objUsbPrinters.UsbPrinters(), [this](const CUsbPrinterEntry& p_objEntry) {
            CUsbLibrary objLibrary(Life().m_objEventLoop,
                                   CUsbPort{p_objEntry.m_iBus, p_objEntry.m_iPorts}, {});
            return objLibrary.Dll_openUSB() == IUsbLibrary::Mismatch;
        });
}
