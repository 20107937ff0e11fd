#include "simulator/usb/CUsbTransfers.h"

#include "simulator/CPrinter.h"

#include <linux/usbdevice_fs.h>
#include <umockdev.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <thread>
#include <utility>

namespace {

constexpr std::size_t SetupBytes = 8;
constexpr std::uint8_t ClassRequestIn = 0xA1;  // to an interface
constexpr std::uint8_t GetDeviceId = 0;

// The descriptor of an emulated device is always ready: without a rest a program that waits on it
// would keep a processor busy.
constexpr std::chrono::microseconds Rest{500};

}  // namespace

void CUsbTransfers::Deleter::operator()(_UMockdevIoctlData* p_objData) const {
    g_object_unref(p_objData);
}

usbdevfs_urb& CUsbTransfers::Urb::Fields() const {
    return *reinterpret_cast<usbdevfs_urb*>(m_objUrb->data);
}

std::span<std::uint8_t> CUsbTransfers::Urb::Bytes() const {
    return m_objBuffer ? std::span<std::uint8_t>(m_objBuffer->data,
                                                 static_cast<std::size_t>(Fields().buffer_length))
                       : std::span<std::uint8_t>();
}

void CUsbTransfers::Urb::End(int p_iStatus, std::size_t p_iCount) {
    Fields().status = p_iStatus;
    Fields().actual_length = static_cast<int>(p_iCount);
    m_bOver = true;
}

CUsbTransfers::CUsbTransfers(const CUsbBehaviour& p_objBehaviour, CUsbWire& p_objWire,
                             std::function<void()> p_fnUnplug)
    : m_objBehaviour(p_objBehaviour)
    , m_objWire(p_objWire)
    , m_fnUnplug(std::move(p_fnUnplug))
    , m_bHalted(p_objBehaviour.m_bHalted) {}

void CUsbTransfers::Submit(_UMockdevIoctlClient* p_objClient) {
    Urb objUrb;
    objUrb.m_objClient = p_objClient;
    objUrb.m_iSubmitted = CUsbWire::Clock::now();
    objUrb.m_objUrb.reset(umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(p_objClient), 0,
                                                      sizeof(usbdevfs_urb), nullptr));
    const int iLength = objUrb.m_objUrb ? objUrb.Fields().buffer_length : 0;
    if (iLength > 0) {
        objUrb.m_objBuffer.reset(
            umockdev_ioctl_data_resolve(objUrb.m_objUrb.get(), offsetof(usbdevfs_urb, buffer),
                                        static_cast<std::size_t>(iLength), nullptr));
    }
    m_objUrbs.push_back(std::move(objUrb));
    umockdev_ioctl_client_complete(p_objClient, 0, 0);
}

void CUsbTransfers::Discard(_UMockdevIoctlClient* p_objClient) {
    gulong iAddress = 0;
    const UMockdevIoctlData* const objArgument = umockdev_ioctl_client_get_arg(p_objClient);
    std::copy_n(objArgument->data, sizeof iAddress, reinterpret_cast<guint8*>(&iAddress));
    const auto itUrb = std::ranges::find_if(m_objUrbs, [&](const Urb& p_objUrb) {
        return p_objUrb.m_objUrb->client_addr == iAddress && !p_objUrb.m_bOver;
    });
    if (itUrb == m_objUrbs.end()) {
        umockdev_ioctl_client_complete(p_objClient, -1, EINVAL);
        return;
    }
    const bool bGives =
        itUrb->Fields().endpoint == InEndpoint && m_objBehaviour.m_bGivesAtTheLastMoment;
    if (bGives && m_objWire.HasAnswer()) {
        Fill(*itUrb, -ENOENT);
    } else {
        itUrb->End(-ENOENT, 0);
    }
    umockdev_ioctl_client_complete(p_objClient, 0, 0);
}

void CUsbTransfers::Reap(_UMockdevIoctlClient* p_objClient, bool p_bGone) {
    for (Urb& objUrb : m_objUrbs) {
        if (!objUrb.m_bOver) {
            Advance(objUrb);
        }
    }
    const auto itUrb = std::ranges::find_if(m_objUrbs, [&](const Urb& p_objUrb) {
        return p_objUrb.m_bOver && p_objUrb.m_objClient == p_objClient;
    });
    if (itUrb == m_objUrbs.end()) {
        std::this_thread::sleep_for(Rest);
        umockdev_ioctl_client_complete(p_objClient, -1, p_bGone ? ENODEV : EAGAIN);
        return;
    }
    const Data objPointer(umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(p_objClient), 0,
                                                      sizeof(void*), nullptr));
    umockdev_ioctl_data_set_ptr(objPointer.get(), 0, itUrb->m_objUrb.get());
    umockdev_ioctl_client_complete(p_objClient, 0, 0);
    m_objUrbs.erase(itUrb);
}

void CUsbTransfers::EndAll(int p_iError) {
    for (Urb& objUrb : m_objUrbs) {
        if (!objUrb.m_bOver) {
            objUrb.End(-p_iError, 0);
        }
    }
}

void CUsbTransfers::Forget(const _UMockdevIoctlClient* p_objClient) {
    std::erase_if(m_objUrbs,
                  [&](const Urb& p_objUrb) { return p_objUrb.m_objClient == p_objClient; });
}

void CUsbTransfers::Advance(Urb& p_objUrb) {
    if (p_objUrb.Fields().type == USBDEVFS_URB_TYPE_CONTROL) {
        if (!m_objBehaviour.m_bHangsOnDeviceId) {
            Control(p_objUrb);
        }
    } else if (CUsbWire::Clock::now() < p_objUrb.m_iSubmitted + m_objBehaviour.m_iSlow) {
        return;
    } else if (p_objUrb.Fields().endpoint == InEndpoint) {
        Give(p_objUrb);
    } else if (p_objUrb.Fields().endpoint == OutEndpoint && !m_bHalted) {
        Take(p_objUrb);
    } else {
        p_objUrb.End(-EPIPE, 0);
    }
}

bool CUsbTransfers::Clear(unsigned p_iEndpoint) {
    m_iCleared.push_back(p_iEndpoint);
    if (m_objBehaviour.m_bStaysHalted) {
        return false;
    }
    m_bHalted = m_bHalted && p_iEndpoint != OutEndpoint;
    return true;
}

void CUsbTransfers::Control(Urb& p_objUrb) const {
    const auto objBytes = p_objUrb.Bytes();
    if (objBytes.size() < SetupBytes || objBytes[0] != ClassRequestIn ||
        objBytes[1] != GetDeviceId || m_objBehaviour.m_bStallsDeviceId) {
        p_objUrb.End(-EPIPE, 0);
        return;
    }
    const std::string& strId = m_objBehaviour.m_strDeviceId;
    const std::size_t iCount = std::min(strId.size(), objBytes.size() - SetupBytes);
    std::copy_n(strId.begin(), iCount, objBytes.subspan(SetupBytes).begin());
    p_objUrb.End(0, iCount);
}

void CUsbTransfers::Take(Urb& p_objUrb) {
    if (m_objBehaviour.m_iUnplug == CUsbBehaviour::Unplug::InWrite) {
        m_fnUnplug();
        return;
    }
    if (m_objBehaviour.m_bTakesNothing) {
        return;
    }
    if (m_objBehaviour.m_bTakesNoBytes) {
        p_objUrb.End(0, 0);
        return;
    }
    auto objBytes = p_objUrb.Bytes();
    if (m_objBehaviour.m_iMostTaken > 0) {
        objBytes = objBytes.first(std::min(objBytes.size(), m_objBehaviour.m_iMostTaken));
    }
    const std::size_t iTaken = m_objWire.Write(objBytes);
    m_strTaken.append(objBytes.begin(), objBytes.begin() + static_cast<std::ptrdiff_t>(iTaken));
    p_objUrb.End(0, iTaken);
    const bool bLeaves =
        m_objBehaviour.m_iUnplug == CUsbBehaviour::Unplug::AfterWrite && m_strTaken.ends_with("|}");
    if (bLeaves || !m_objWire.IsOn()) {
        m_fnUnplug();
    }
}

void CUsbTransfers::Give(Urb& p_objUrb) {
    const bool bAsked = !m_strTaken.empty();
    if (bAsked && m_objBehaviour.m_iUnplug == CUsbBehaviour::Unplug::InRead) {
        m_fnUnplug();
        return;
    }
    if (bAsked && m_objBehaviour.m_iReadError != 0 && !std::exchange(m_bErrorGiven, true)) {
        p_objUrb.End(-m_objBehaviour.m_iReadError, 0);
        return;
    }
    if (m_objWire.IsClosed()) {
        m_fnUnplug();
        return;
    }
    if (!m_objWire.HasAnswer()) {
        GiveIdle(p_objUrb);
        return;
    }
    if (m_objBehaviour.m_bGivesAtTheLastMoment) {
        return;
    }
    if (m_objBehaviour.m_bEmptyBeforeAnswer && !std::exchange(m_bEmptyGiven, true)) {
        p_objUrb.End(0, 0);
        return;
    }
    Fill(p_objUrb, 0);
}

void CUsbTransfers::GiveIdle(Urb& p_objUrb) const {
    if (m_objBehaviour.m_iIdle == CUsbBehaviour::Idle::Waits) {
        return;
    }
    const bool bRepeats = m_objBehaviour.m_iIdle == CUsbBehaviour::Idle::Repeats;
    const std::string strBytes = bRepeats ? CPrinter::StatusAnswer("00") : std::string();
    const std::size_t iCount = std::min(strBytes.size(), p_objUrb.Bytes().size());
    std::copy_n(strBytes.begin(), iCount, p_objUrb.Bytes().begin());
    p_objUrb.End(0, iCount);
}

void CUsbTransfers::Fill(Urb& p_objUrb, int p_iStatus) {
    const auto objBytes = p_objUrb.Bytes();
    const std::size_t iWholePackets = objBytes.size() / PacketBytes * PacketBytes;
    const std::string strAnswer = m_objWire.Read(objBytes.size());
    if (strAnswer.size() > iWholePackets && m_objWire.HasAnswer()) {
        // A packet that does not fit breaks the transfer, and is lost.
        m_objWire.Drop();
        p_objUrb.End(-EOVERFLOW, iWholePackets);
        return;
    }
    std::ranges::copy(strAnswer, objBytes.begin());
    p_objUrb.End(p_iStatus, strAnswer.size());
}
