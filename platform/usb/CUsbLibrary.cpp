#include "platform/usb/CUsbLibrary.h"

#include "platform/usb/CUsbDeviceList.h"
#include "platform/usb/CUsbPrinter.h"
#include "platform/usb/MDeviceId.h"

#include <libusb.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

namespace {

constexpr std::string_view Maker = "Varden";

CUsbPrinter::Context MakeContext() {
    libusb_context* objContext = nullptr;
    if (libusb_init(&objContext) != LIBUSB_SUCCESS) {
        return nullptr;
    }
    return {objContext, &libusb_exit};
}

/// Opened for a printer of the right maker; else how far it came.
std::int32_t Identify(const std::shared_ptr<CUsbPrinter>& p_objPrinter) {
    if (!p_objPrinter) {
        return IUsbLibrary::NotReady;
    }
    const auto strText = p_objPrinter->ReadDeviceId();
    if (!p_objPrinter->IsOpen()) {
        return IUsbLibrary::NotReady;
    }
    if (!strText) {
        return IUsbLibrary::NoDeviceId;
    }
    return MDeviceId::IsMaker(*strText, Maker) ? IUsbLibrary::Opened : IUsbLibrary::Mismatch;
}

}  // namespace

CUsbLibrary::CUsbLibrary(IEventLoop& p_objEventLoop)
    : CUsbLibrary(p_objEventLoop, {}, {}) {}

CUsbLibrary::CUsbLibrary(IEventLoop& p_objEventLoop, std::optional<CUsbPort> p_objPort,
                         const Limits& p_objLimits)
    : m_objEventLoop(p_objEventLoop)
    , m_objPort(std::move(p_objPort))
    , m_objLimits(p_objLimits) {}

CUsbLibrary::~CUsbLibrary() {
    CUsbLibrary::Dll_closeUSB();
}

bool CUsbLibrary::IsMeant(libusb_device* p_objDevice) const {
    return CUsbPrinter::IsPrinterClass(p_objDevice) &&
           (!m_objPort || *m_objPort == CUsbPort::Of(p_objDevice));
}

std::int32_t CUsbLibrary::Dll_openUSB() {
    if (m_objPrinter) {
        return Opened;
    }
    EndOpening();
    m_iNumber = ENODEV;
    const CUsbPrinter::Context objContext = MakeContext();
    if (!objContext) {
        return NotReady;
    }
    const CUsbDeviceList objList(objContext.get());
    std::int32_t iFurthest = NotReady;
    for (libusb_device* const objDevice : objList.Devices()) {
        if (!IsMeant(objDevice)) {
            continue;
        }
        auto objPrinter = CUsbPrinter::Open(objContext, objDevice, m_objEventLoop, m_iNumber);
        m_objOpening = objPrinter;
        const std::int32_t iResult = Identify(objPrinter);
        if (iResult == Opened) {
            m_objOpening.reset();
            m_objPrinter = std::move(objPrinter);
            return Opened;
        }
        if (objPrinter && !objPrinter->IsOpen()) {
            return NotReady;
        }
        iFurthest = std::min(iFurthest, iResult);
    }
    return iFurthest;
}

std::int32_t CUsbLibrary::Dll_sendUSB(std::span<const std::uint8_t> p_objBytes) {
    const std::shared_ptr<CUsbPrinter> objPrinter = m_objPrinter;
    if (!objPrinter) {
        return Failed;
    }
    const CUsbPrinter::Result objResult = objPrinter->Send(p_objBytes, m_objLimits.m_iSend);
    if (objResult.m_bLost) {
        GiveUp(objPrinter);
    }
    return objResult.m_bComplete ? static_cast<std::int32_t>(objResult.m_iCount) : Failed;
}

std::int32_t CUsbLibrary::Dll_rcvUSB(std::span<std::uint8_t> p_objBuffer) {
    constexpr std::size_t iMost = std::numeric_limits<std::int16_t>::max();
    const std::shared_ptr<CUsbPrinter> objPrinter = m_objPrinter;
    if (!objPrinter) {
        return Failed;
    }
    const auto objBuffer = p_objBuffer.first(std::min(p_objBuffer.size(), iMost));
    const CUsbPrinter::Result objResult = objPrinter->Receive(objBuffer, m_objLimits.m_iReceive);
    if (objResult.m_bLost) {
        GiveUp(objPrinter);
    }
    // What came before the printer went is an answer all the same.
    return objResult.m_bLost && !objResult.m_bComplete
               ? Failed
               : static_cast<std::int32_t>(objResult.m_iCount);
}

std::int32_t CUsbLibrary::Dll_closeUSB() {
    EndOpening();
    // Taken out first: what waits further out must find the library closed.
    if (const auto objPrinter = std::exchange(m_objPrinter, nullptr)) {
        objPrinter->Close();
    }
    return Opened;
}

void CUsbLibrary::EndOpening() {
    if (const auto objPrinter = m_objOpening.lock()) {
        objPrinter->Close();
    }
}

void CUsbLibrary::GiveUp(const std::shared_ptr<CUsbPrinter>& p_objPrinter) {
    p_objPrinter->Close();
    if (m_objPrinter == p_objPrinter) {
        m_objPrinter = nullptr;
    }
}
