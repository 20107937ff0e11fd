#include "simulator/usb/CEmulatedPrinter.h"

#include "simulator/usb/MUsbDescriptors.h"

#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>
#include <umockdev.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <thread>
#include <utility>

namespace {

constexpr std::uint32_t Capabilities =
    USBDEVFS_CAP_ZERO_PACKET | USBDEVFS_CAP_BULK_CONTINUATION | USBDEVFS_CAP_NO_PACKET_SIZE_LIM |
    USBDEVFS_CAP_BULK_SCATTER_GATHER | USBDEVFS_CAP_REAP_AFTER_DISCONNECT;

std::string SysPath(int p_iNumber) {
    return "/devices/pci0000:00/0000:00:01.0/usb1/1-" + std::to_string(p_iNumber);
}

std::string Node(int p_iNumber) {
    return "bus/usb/001/00" + std::to_string(p_iNumber + 1);
}

/// A line of a device's record; nothing for an empty text.
std::string Attribute(const char* p_strName, const std::string& p_strText) {
    return p_strText.empty() ? "" : std::string("\nA: ") + p_strName + "=" + p_strText + "\\n";
}

void Complete(_UMockdevIoctlClient* p_objClient, int p_iError) {
    umockdev_ioctl_client_complete(p_objClient, p_iError == 0 ? 0 : -1, p_iError);
}

/// What a call's argument points to.
class CArgument {
public:
    CArgument(_UMockdevIoctlClient* p_objClient, std::size_t p_iBytes)
        : m_objData(umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(p_objClient), 0,
                                                p_iBytes, nullptr)) {}
    ~CArgument() { g_object_unref(m_objData); }
    CArgument(const CArgument&) = delete;
    CArgument& operator=(const CArgument&) = delete;

    [[nodiscard]] UMockdevIoctlData* Data() const { return m_objData; }

    void Store(const void* p_objBytes, std::size_t p_iCount) {
        std::memcpy(m_objData->data, p_objBytes, p_iCount);
    }

private:
    UMockdevIoctlData* m_objData;
};

}  // namespace

void CEmulatedPrinter::Deleter::operator()(_UMockdevIoctlClient* p_objClient) const {
    g_object_unref(p_objClient);
}

CEmulatedPrinter::CEmulatedPrinter(CUsbWorld& p_objWorld, CPrinter& p_objPrinter,
                                   ISimulatorLog& p_objLog, CUsbBehaviour p_objBehaviour,
                                   const CFaultSettings& p_objFaults, int p_iNumber)
    : m_objWorld(p_objWorld)
    , m_objBehaviour(std::move(p_objBehaviour))
    , m_iNumber(p_iNumber)
    , m_objWire(p_objPrinter, p_objFaults, p_objLog)
    , m_objTransfers(m_objBehaviour, m_objWire, [this] { UnplugNow(); })
    , m_objHandler(umockdev_ioctl_base_new())
    , m_bDriver(!m_objBehaviour.m_strDriver.empty()) {
    Connect();
}

void CEmulatedPrinter::Connect() {
    if (m_objBehaviour.m_bCannotBeOpened) {
        m_objWorld.Add(Record());
        m_objWorld.RemoveNode("/dev/" + Node(m_iNumber));
        return;
    }
    g_signal_connect(m_objHandler, "handle-ioctl", G_CALLBACK(&CEmulatedPrinter::OnCall), this);
    g_signal_connect(m_objHandler, "client-connected", G_CALLBACK(&CEmulatedPrinter::OnConnected),
                     this);
    // In this order: a device file is connected with its handler when it appears.
    umockdev_testbed_attach_ioctl(m_objWorld.Testbed(), ("/dev/" + Node(m_iNumber)).c_str(),
                                  m_objHandler, nullptr);
    m_objWorld.Add(Record());
}

CEmulatedPrinter::~CEmulatedPrinter() {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::seconds iPatience{10};
    constexpr std::chrono::milliseconds iStep{2};
    Unplug();
    const auto iEnd = Clock::now() + iPatience;
    while (Clients() > 0 && Clock::now() < iEnd) {
        std::this_thread::sleep_for(iStep);
    }
    if (!m_objBehaviour.m_bCannotBeOpened) {
        umockdev_testbed_detach_ioctl(m_objWorld.Testbed(), ("/dev/" + Node(m_iNumber)).c_str(),
                                      nullptr);
    }
    g_object_unref(m_objHandler);
}

std::string CEmulatedPrinter::Record() const {
    const std::string strDevice = std::to_string(m_iNumber + 1);
    return "P: " + SysPath(m_iNumber) + "\nN: " + Node(m_iNumber) +
           "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nE: BUSNUM=001\nE: DEVNUM=00" + strDevice +
           "\nE: DEVNAME=/dev/" + Node(m_iNumber) + "\nA: busnum=1\nA: devnum=" + strDevice +
           "\nA: speed=12\nA: bConfigurationValue=1" +
           Attribute("manufacturer", m_objBehaviour.m_strManufacturer) +
           Attribute("product", m_objBehaviour.m_strProduct) +
           Attribute("serial", m_objBehaviour.m_strSerialNumber) +
           "\nH: descriptors=" + MUsbDescriptors::Hex(m_objBehaviour) + "\n";
}

void CEmulatedPrinter::Unplug() {
    const std::lock_guard objLock(m_objMutex);
    UnplugNow();
}

void CEmulatedPrinter::UnplugNow() {
    if (std::exchange(m_bGone, true)) {
        return;
    }
    m_objTransfers.EndAll(m_objBehaviour.m_iUnplugError);
    m_objWorld.Remove("/sys" + SysPath(m_iNumber));
    if (m_fnGone) {
        m_fnGone();
    }
}

void CEmulatedPrinter::OnUnplugged(std::function<void()> p_fnGone) {
    const std::lock_guard objLock(m_objMutex);
    m_fnGone = std::move(p_fnGone);
}

void CEmulatedPrinter::Hold(const std::function<void()>& p_fnCall) const {
    const std::lock_guard objLock(m_objMutex);
    p_fnCall();
}

int CEmulatedPrinter::OnCall(_UMockdevIoctlBase* /*p_objHandler*/,
                             _UMockdevIoctlClient* p_objClient, void* p_objSelf) {
    auto& objSelf = *static_cast<CEmulatedPrinter*>(p_objSelf);
    const std::lock_guard objLock(objSelf.m_objMutex);
    if (!objSelf.Answer(p_objClient)) {
        Complete(p_objClient, ENOTTY);
    }
    return TRUE;
}

void CEmulatedPrinter::OnConnected(_UMockdevIoctlBase* /*p_objHandler*/,
                                   _UMockdevIoctlClient* p_objClient, void* p_objSelf) {
    auto& objSelf = *static_cast<CEmulatedPrinter*>(p_objSelf);
    const std::lock_guard objLock(objSelf.m_objMutex);
    g_object_ref(p_objClient);
    objSelf.m_objClients.emplace_back(p_objClient);
}

void CEmulatedPrinter::ForgetGone() {
    // The handler is not told of a program that closes the device; the client knows.
    std::erase_if(m_objClients, [this](const Client& p_objClient) {
        if (umockdev_ioctl_client_get_connected(p_objClient.get()) != FALSE) {
            return false;
        }
        m_objTransfers.Forget(p_objClient.get());
        if (m_objOwner == p_objClient.get()) {
            m_objOwner = nullptr;
        }
        return true;
    });
}

bool CEmulatedPrinter::Answer(_UMockdevIoctlClient* p_objClient) {
    switch (umockdev_ioctl_client_get_request(p_objClient)) {
    case USBDEVFS_GET_CAPABILITIES: {
        CArgument objArgument(p_objClient, sizeof Capabilities);
        objArgument.Store(&Capabilities, sizeof Capabilities);
        Complete(p_objClient, 0);
        return true;
    }
    case USBDEVFS_GETDRIVER:
        TellDriver(p_objClient);
        return true;
    case USBDEVFS_CLAIMINTERFACE:
        Claim(p_objClient, false);
        return true;
    case USBDEVFS_DISCONNECT_CLAIM:
        Claim(p_objClient, true);
        return true;
    case USBDEVFS_RELEASEINTERFACE:
        Release(p_objClient);
        return true;
    case USBDEVFS_SETINTERFACE:
        Choose(p_objClient);
        return true;
    case USBDEVFS_IOCTL:
        ForDriver(p_objClient);
        return true;
    default:
        return AnswerTransfer(p_objClient);
    }
}

bool CEmulatedPrinter::AnswerTransfer(_UMockdevIoctlClient* p_objClient) {
    switch (umockdev_ioctl_client_get_request(p_objClient)) {
    case USBDEVFS_SUBMITURB:
        if (m_bGone) {
            Complete(p_objClient, ENODEV);
        } else {
            m_objTransfers.Submit(p_objClient);
        }
        return true;
    case USBDEVFS_DISCARDURB:
        m_objTransfers.Discard(p_objClient);
        return true;
    case USBDEVFS_REAPURB:
    case USBDEVFS_REAPURBNDELAY:
        m_objTransfers.Reap(p_objClient, m_bGone);
        return true;
    case USBDEVFS_CLEAR_HALT:
        ClearHalt(p_objClient);
        return true;
    default:
        return false;
    }
}

void CEmulatedPrinter::Claim(_UMockdevIoctlClient* p_objClient, bool p_bPutAside) {
    ForgetGone();
    const bool bTaken = m_objOwner != nullptr && m_objOwner != p_objClient;
    if (m_bGone) {
        Complete(p_objClient, ENODEV);
        return;
    }
    if (m_objBehaviour.m_bClaimBusy || bTaken || (m_bDriver && !p_bPutAside)) {
        Complete(p_objClient, EBUSY);
        return;
    }
    m_bDriver = false;
    m_objOwner = p_objClient;
    ++m_iClaims;
    Complete(p_objClient, 0);
}

void CEmulatedPrinter::Release(_UMockdevIoctlClient* p_objClient) {
    const bool bOwner = m_objOwner == p_objClient;
    if (bOwner) {
        m_objOwner = nullptr;
    }
    Complete(p_objClient, bOwner ? 0 : EINVAL);
}

void CEmulatedPrinter::TellDriver(_UMockdevIoctlClient* p_objClient) const {
    if (!m_bDriver && m_objOwner == nullptr) {
        Complete(p_objClient, ENODATA);
        return;
    }
    CArgument objArgument(p_objClient, sizeof(usbdevfs_getdriver));
    usbdevfs_getdriver objAnswer{};
    const std::string strName = m_bDriver ? m_objBehaviour.m_strDriver : "usbfs";
    strName.copy(objAnswer.driver, sizeof objAnswer.driver - 1);
    objArgument.Store(&objAnswer, sizeof objAnswer);
    Complete(p_objClient, 0);
}

void CEmulatedPrinter::ForDriver(_UMockdevIoctlClient* p_objClient) {
    const CArgument objArgument(p_objClient, sizeof(usbdevfs_ioctl));
    usbdevfs_ioctl objCall{};
    std::memcpy(&objCall, objArgument.Data()->data, sizeof objCall);
    if (m_bGone) {
        Complete(p_objClient, ENODEV);
    } else if (static_cast<unsigned>(objCall.ioctl_code) == USBDEVFS_CONNECT) {
        const bool bFree = m_objOwner == nullptr && !m_bDriver;
        m_bDriver = m_bDriver || (bFree && !m_objBehaviour.m_strDriver.empty());
        Complete(p_objClient, bFree ? 0 : EBUSY);
    } else if (static_cast<unsigned>(objCall.ioctl_code) == USBDEVFS_DISCONNECT) {
        Complete(p_objClient, std::exchange(m_bDriver, false) ? 0 : ENODATA);
    } else {
        Complete(p_objClient, ENOTTY);
    }
}

void CEmulatedPrinter::Choose(_UMockdevIoctlClient* p_objClient) {
    const CArgument objArgument(p_objClient, sizeof(usbdevfs_setinterface));
    usbdevfs_setinterface objCall{};
    std::memcpy(&objCall, objArgument.Data()->data, sizeof objCall);
    if (m_bGone || m_objBehaviour.m_bRefusesAlternate) {
        Complete(p_objClient, m_bGone ? ENODEV : EIO);
        return;
    }
    m_iAlternate = objCall.altsetting;
    Complete(p_objClient, 0);
}

void CEmulatedPrinter::ClearHalt(_UMockdevIoctlClient* p_objClient) {
    unsigned iEndpoint = 0;
    const CArgument objArgument(p_objClient, sizeof iEndpoint);
    std::memcpy(&iEndpoint, objArgument.Data()->data, sizeof iEndpoint);
    if (m_bGone) {
        Complete(p_objClient, ENODEV);
    } else {
        Complete(p_objClient, m_objTransfers.Clear(iEndpoint) ? 0 : EIO);
    }
}

std::string CEmulatedPrinter::Taken() const {
    const std::lock_guard objLock(m_objMutex);
    return m_objTransfers.Taken();
}

bool CEmulatedPrinter::HasDriver() const {
    const std::lock_guard objLock(m_objMutex);
    return m_bDriver;
}

bool CEmulatedPrinter::IsClaimed() {
    const std::lock_guard objLock(m_objMutex);
    ForgetGone();
    return m_objOwner != nullptr;
}

int CEmulatedPrinter::Claims() const {
    const std::lock_guard objLock(m_objMutex);
    return m_iClaims;
}

unsigned CEmulatedPrinter::Alternate() const {
    const std::lock_guard objLock(m_objMutex);
    return m_iAlternate;
}

std::vector<unsigned> CEmulatedPrinter::Cleared() const {
    const std::lock_guard objLock(m_objMutex);
    return m_objTransfers.Cleared();
}

std::size_t CEmulatedPrinter::Clients() {
    const std::lock_guard objLock(m_objMutex);
    ForgetGone();
    return m_objClients.size();
}
