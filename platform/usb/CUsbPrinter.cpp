#include "platform/usb/CUsbPrinter.h"

#include "platform/usb/MDeviceId.h"
#include "platform/usb/MUsbNumber.h"

#include <libusb.h>

#include <algorithm>
#include <utility>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds DeviceIdLimit{1000};
constexpr std::uint8_t GetDeviceId = 0;
constexpr std::size_t LargestTransfer = 16'384;
constexpr milliseconds Slice{2};        // between two looks at the event loop
constexpr milliseconds OldAnswer{10};   // how long an old answer may take to show itself
constexpr std::size_t OldBytes = 4096;  // and how long it is at most
constexpr milliseconds NextPacket{50};  // how long an answer may pause between two packets
constexpr milliseconds NoYield{50};     // how long transfers may follow each other without one

struct ConfigDeleter {
    void operator()(libusb_config_descriptor* p_objConfig) const {
        libusb_free_config_descriptor(p_objConfig);
    }
};
using Config = std::unique_ptr<libusb_config_descriptor, ConfigDeleter>;

Config ActiveConfig(libusb_device* p_objDevice) {
    libusb_config_descriptor* objConfig = nullptr;
    libusb_get_active_config_descriptor(p_objDevice, &objConfig);
    return Config(objConfig);
}

std::span<const libusb_interface> Interfaces(const libusb_config_descriptor& p_objConfig) {
    return {p_objConfig.interface, p_objConfig.bNumInterfaces};
}

std::span<const libusb_interface_descriptor> Alternates(const libusb_interface& p_objInterface) {
    return {p_objInterface.altsetting, static_cast<std::size_t>(p_objInterface.num_altsetting)};
}

bool IsPrinter(const libusb_interface_descriptor& p_objAlternate) {
    return p_objAlternate.bInterfaceClass == LIBUSB_CLASS_PRINTER;
}

/// The first bulk endpoint of either direction; nothing when one is missing.
std::optional<CUsbPrinter::Endpoints>
BulkEndpoints(const libusb_interface_descriptor& p_objAlternate) {
    CUsbPrinter::Endpoints objFound;
    const std::span objEndpoints(p_objAlternate.endpoint, p_objAlternate.bNumEndpoints);
    for (const libusb_endpoint_descriptor& objEndpoint : objEndpoints) {
        const int iKind = objEndpoint.bmAttributes & LIBUSB_TRANSFER_TYPE_MASK;
        if (iKind != LIBUSB_ENDPOINT_TRANSFER_TYPE_BULK) {
            continue;
        }
        const bool bIn = (objEndpoint.bEndpointAddress & LIBUSB_ENDPOINT_IN) != 0;
        if (bIn && objFound.m_iIn == 0) {
            objFound.m_iIn = objEndpoint.bEndpointAddress;
            objFound.m_iInPacket = std::max<std::size_t>(objEndpoint.wMaxPacketSize, 1);
        } else if (!bIn && objFound.m_iOut == 0) {
            objFound.m_iOut = objEndpoint.bEndpointAddress;
        }
    }
    objFound.m_iInterface = p_objAlternate.bInterfaceNumber;
    objFound.m_iAlternate = p_objAlternate.bAlternateSetting;
    const bool bBoth = objFound.m_iIn != 0 && objFound.m_iOut != 0;
    return bBoth ? std::optional(objFound) : std::nullopt;
}

std::optional<CUsbPrinter::Endpoints> FindEndpoints(libusb_device* p_objDevice) {
    const Config objConfig = ActiveConfig(p_objDevice);
    if (!objConfig) {
        return std::nullopt;
    }
    for (const libusb_interface& objInterface : Interfaces(*objConfig)) {
        for (const libusb_interface_descriptor& objAlternate : Alternates(objInterface)) {
            auto objFound = IsPrinter(objAlternate) ? BulkEndpoints(objAlternate) : std::nullopt;
            if (objFound) {
                objFound->m_bAlternates = objInterface.num_altsetting > 1;
                return objFound;
            }
        }
    }
    return std::nullopt;
}

/// LIBUSB_SUCCESS, or what has failed.
int Claim(libusb_device_handle* p_objHandle, const CUsbPrinter::Endpoints& p_objEndpoints) {
    // Where the system has no drivers to put aside this says so, and nothing is lost.
    libusb_set_auto_detach_kernel_driver(p_objHandle, 1);
    int iResult = libusb_claim_interface(p_objHandle, p_objEndpoints.m_iInterface);
    if (iResult == LIBUSB_SUCCESS && p_objEndpoints.m_bAlternates) {
        iResult = libusb_set_interface_alt_setting(p_objHandle, p_objEndpoints.m_iInterface,
                                                   p_objEndpoints.m_iAlternate);
        if (iResult != LIBUSB_SUCCESS) {
            libusb_release_interface(p_objHandle, p_objEndpoints.m_iInterface);
        }
    }
    return iResult;
}

}  // namespace

bool CUsbPrinter::IsPrinterClass(libusb_device* p_objDevice) {
    const Config objConfig = ActiveConfig(p_objDevice);
    return objConfig && std::ranges::any_of(Interfaces(*objConfig), [](const auto& p_objInterface) {
               return std::ranges::any_of(Alternates(p_objInterface), IsPrinter);
           });
}

std::shared_ptr<CUsbPrinter> CUsbPrinter::Open(const Context& p_objContext,
                                               libusb_device* p_objDevice,
                                               IEventLoop& p_objEventLoop,
                                               std::int32_t& p_iNumber) {
    const auto objEndpoints = FindEndpoints(p_objDevice);
    libusb_device_handle* objHandle = nullptr;
    int iResult = objEndpoints ? libusb_open(p_objDevice, &objHandle) : LIBUSB_ERROR_NOT_SUPPORTED;
    if (iResult == LIBUSB_SUCCESS) {
        iResult = Claim(objHandle, *objEndpoints);
        if (iResult != LIBUSB_SUCCESS) {
            libusb_close(objHandle);
        }
    }
    p_iNumber = MUsbNumber::Of(iResult);
    if (iResult != LIBUSB_SUCCESS) {
        return nullptr;
    }
    return std::make_shared<CUsbPrinter>(p_objContext, objHandle, *objEndpoints, p_objEventLoop);
}

CUsbPrinter::CUsbPrinter(Context p_objContext, libusb_device_handle* p_objHandle,
                         const Endpoints& p_objEndpoints, IEventLoop& p_objEventLoop)
    : m_objContext(std::move(p_objContext))
    , m_objHandle(p_objHandle)
    , m_objEndpoints(p_objEndpoints)
    , m_objEventLoop(p_objEventLoop) {}

CUsbPrinter::~CUsbPrinter() {
    Close();
}

void CUsbPrinter::Close() {
    FinishOutgoing();
    EndActive();
    if (m_objHandle == nullptr) {
        return;
    }
    libusb_release_interface(m_objHandle, m_objEndpoints.m_iInterface);
    libusb_close(m_objHandle);
    m_objHandle = nullptr;
}

std::optional<std::string> CUsbPrinter::ReadDeviceId() {
    constexpr int iHighByte = 8;
    constexpr std::uint8_t iRequest = static_cast<std::uint8_t>(LIBUSB_ENDPOINT_IN) |
                                      static_cast<std::uint8_t>(LIBUSB_REQUEST_TYPE_CLASS) |
                                      static_cast<std::uint8_t>(LIBUSB_RECIPIENT_INTERFACE);
    const auto iIndex = static_cast<std::uint16_t>((m_objEndpoints.m_iInterface << iHighByte) |
                                                   m_objEndpoints.m_iAlternate);
    std::vector<std::uint8_t> objBytes(LIBUSB_CONTROL_SETUP_SIZE + MDeviceId::LongestAnswer);
    libusb_fill_control_setup(objBytes.data(), iRequest, GetDeviceId, 0, iIndex,
                              MDeviceId::LongestAnswer);
    m_iYielded = steady_clock::now();
    const Result objResult =
        Transfer(CUsbTransfer::ControlEndpoint, objBytes, steady_clock::now() + DeviceIdLimit);
    if (!objResult.m_bComplete) {
        return std::nullopt;
    }
    std::string strText =
        MDeviceId::Text(std::span(objBytes).subspan(LIBUSB_CONTROL_SETUP_SIZE, objResult.m_iCount));
    return strText.empty() ? std::nullopt : std::optional(std::move(strText));
}

CUsbPrinter::Result CUsbPrinter::Send(std::span<const std::uint8_t> p_objBytes,
                                      milliseconds p_iLimit) {
    struct Listed {
        CUsbPrinter& m_objPrinter;
        Outgoing& m_objOutgoing;

        ~Listed() {
            if (m_objPrinter.m_objOutgoing == &m_objOutgoing) {
                m_objPrinter.m_objOutgoing = nullptr;
            }
        }
    };
    FinishOutgoing();
    m_iYielded = steady_clock::now();
    // The library takes the bytes to send as ones that it might change.
    Outgoing objOwn{{p_objBytes.begin(), p_objBytes.end()}, m_iYielded + p_iLimit};
    if (!DropOldAnswer()) {
        return {};
    }
    const Listed objListed{*this, objOwn};
    m_objOutgoing = &objOwn;
    DriveOutgoing(objOwn);
    return {objOwn.m_iCount, objOwn.m_iCount == objOwn.m_objBytes.size(), objOwn.m_bLost};
}

void CUsbPrinter::DriveOutgoing(Outgoing& p_objOutgoing) {
    const int iDriver = ++p_objOutgoing.m_iDrivers;
    while (p_objOutgoing.m_iCount < p_objOutgoing.m_objBytes.size()) {
        const auto objLeft = std::span(p_objOutgoing.m_objBytes).subspan(p_objOutgoing.m_iCount);
        const Result objPart = Transfer(m_objEndpoints.m_iOut,
                                        objLeft.first(std::min(objLeft.size(), LargestTransfer)),
                                        p_objOutgoing.m_iDeadline);
        if (iDriver != p_objOutgoing.m_iDrivers) {
            return;  // whoever has overtaken this one has counted these bytes
        }
        p_objOutgoing.m_iCount += objPart.m_iCount;
        p_objOutgoing.m_bLost = objPart.m_bLost;
        if (!objPart.m_bComplete || MustStop(p_objOutgoing.m_iDeadline)) {
            return;
        }
    }
}

void CUsbPrinter::FinishOutgoing() {
    Outgoing* const objOutgoing = m_objOutgoing;
    if (objOutgoing == nullptr) {
        return;
    }
    ++objOutgoing->m_iDrivers;
    if (const CUsbTransfer* const objTransfer = m_objActive) {
        EndActive();
        objOutgoing->m_iCount += objTransfer->Count();
    }
    if (objOutgoing->m_iCount > 0 && !MustStop(objOutgoing->m_iDeadline)) {
        DriveOutgoing(*objOutgoing);
    }
    if (m_objOutgoing == objOutgoing) {
        m_objOutgoing = nullptr;
    }
}

CUsbPrinter::Result CUsbPrinter::Receive(std::span<std::uint8_t> p_objBuffer,
                                         milliseconds p_iLimit) {
    m_iYielded = steady_clock::now();
    const TimePoint iEnd = m_iYielded + p_iLimit;
    TimePoint iDeadline = iEnd;
    Result objAll;
    objAll.m_iCount = TakeRest(p_objBuffer);
    if (objAll.m_iCount > 0) {
        iDeadline = std::min(iEnd, steady_clock::now() + NextPacket);
    }
    // Whole packets: a printer that sends more than was asked for would else break the transfer.
    const std::size_t iPacket = m_objEndpoints.m_iInPacket;
    std::vector<std::uint8_t> objBytes;
    while (objAll.m_iCount < p_objBuffer.size()) {
        const std::size_t iMissing = p_objBuffer.size() - objAll.m_iCount;
        objBytes.resize((iMissing + iPacket - 1) / iPacket * iPacket);
        const Result objPart = Transfer(m_objEndpoints.m_iIn, objBytes, iDeadline);
        TakePacket(std::span(objBytes).first(objPart.m_iCount), p_objBuffer, objAll);
        objAll.m_bLost = objPart.m_bLost;
        if (objPart.m_iCount > 0) {
            iDeadline = std::min(iEnd, steady_clock::now() + NextPacket);
        }
        if (!objPart.m_bComplete || MustStop(iDeadline)) {
            break;
        }
    }
    objAll.m_bComplete = objAll.m_iCount > 0;
    return objAll;
}

bool CUsbPrinter::DropOldAnswer() {
    m_objRest.clear();
    std::vector<std::uint8_t> objBytes(m_objEndpoints.m_iInPacket);
    const TimePoint iDeadline = steady_clock::now() + OldAnswer;
    Result objPart;
    std::size_t iDropped = 0;
    do {
        objPart = Transfer(m_objEndpoints.m_iIn, objBytes, iDeadline);
        iDropped += objPart.m_iCount;
    } while (objPart.m_bComplete && iDropped < OldBytes && !MustStop(iDeadline));
    return !objPart.m_bOvertaken;
}

std::size_t CUsbPrinter::TakeRest(std::span<std::uint8_t> p_objBuffer) {
    const std::size_t iCount = std::min(m_objRest.size(), p_objBuffer.size());
    const auto itEnd = m_objRest.begin() + static_cast<std::ptrdiff_t>(iCount);
    std::copy(m_objRest.begin(), itEnd, p_objBuffer.begin());
    m_objRest.erase(m_objRest.begin(), itEnd);
    return iCount;
}

void CUsbPrinter::TakePacket(std::span<const std::uint8_t> p_objBytes,
                             std::span<std::uint8_t> p_objBuffer, Result& p_objResult) {
    const std::size_t iFits =
        std::min(p_objBytes.size(), p_objBuffer.size() - p_objResult.m_iCount);
    std::ranges::copy(p_objBytes.first(iFits), p_objBuffer.subspan(p_objResult.m_iCount).begin());
    p_objResult.m_iCount += iFits;
    const auto objRest = p_objBytes.subspan(iFits);
    m_objRest.insert(m_objRest.end(), objRest.begin(), objRest.end());
}

CUsbPrinter::Result CUsbPrinter::Transfer(std::uint8_t p_iEndpoint,
                                          std::span<std::uint8_t> p_objBytes,
                                          TimePoint p_iDeadline) {
    EndActive();
    if (m_objHandle == nullptr) {
        return {};
    }
    CUsbTransfer objTransfer(m_objContext.get(), m_objHandle, p_iEndpoint, p_objBytes);
    const Drove objDrove = Drive(objTransfer, p_iDeadline);
    const CUsbTransfer::End iEnd = objTransfer.How();
    const bool bHalted =
        iEnd == CUsbTransfer::End::Stalled && p_iEndpoint != CUsbTransfer::ControlEndpoint;
    if (bHalted && m_objHandle != nullptr) {
        libusb_clear_halt(m_objHandle, p_iEndpoint);  // so that the next transfer may pass
    }
    return {objTransfer.Count(), objDrove == Drove::ToItsEnd && iEnd == CUsbTransfer::End::Done,
            iEnd == CUsbTransfer::End::Lost, objDrove == Drove::Overtaken};
}

CUsbPrinter::Drove CUsbPrinter::Drive(CUsbTransfer& p_objTransfer, TimePoint p_iDeadline) {
    struct Active {
        CUsbPrinter& m_objPrinter;
        CUsbTransfer* m_objTransfer;

        ~Active() {
            if (m_objPrinter.m_objActive == m_objTransfer) {
                m_objPrinter.m_objActive = nullptr;
            }
        }
    };
    const Active objActive{*this, &p_objTransfer};
    m_objActive = &p_objTransfer;
    while (!p_objTransfer.IsOver()) {
        p_objTransfer.Pump(Slice);
        if (p_objTransfer.IsOver()) {
            break;
        }
        if (MustStop(p_iDeadline)) {
            p_objTransfer.Cancel();
            return Drove::UntilStopped;
        }
        Yield();
    }
    // The next one may be over as soon, and so on: without this the window would stand still, and
    // a printer that has nothing to say but says so at once would keep the processor busy.
    const bool bForNothing =
        p_objTransfer.How() == CUsbTransfer::End::Done && p_objTransfer.Count() == 0;
    const bool bYields = bForNothing || steady_clock::now() - m_iYielded >= NoYield;
    if (m_objActive == &p_objTransfer && bYields && !MustStop(p_iDeadline)) {
        Yield();
    }
    return m_objActive == &p_objTransfer ? Drove::ToItsEnd : Drove::Overtaken;
}

void CUsbPrinter::Yield() {
    m_objEventLoop.Yield();
    m_iYielded = steady_clock::now();
}

bool CUsbPrinter::MustStop(TimePoint p_iDeadline) const {
    return m_objEventLoop.IsClosing() || steady_clock::now() >= p_iDeadline;
}

void CUsbPrinter::EndActive() {
    if (m_objActive != nullptr) {
        m_objActive->Cancel();
        m_objActive = nullptr;
    }
}
