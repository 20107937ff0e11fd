#pragma once

#include "simulator/usb/CUsbBehaviour.h"
#include "simulator/usb/CUsbWire.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

struct _UMockdevIoctlClient;  // NOLINT(readability-identifier-naming): the library's names
struct _UMockdevIoctlData;    // NOLINT(readability-identifier-naming)

/// The transfers that programs have handed to an emulated device and that it has not given back.
class CUsbTransfers {
public:
    /// The addresses of the two pipes, and what fits into one packet.
    static constexpr std::uint8_t OutEndpoint = 0x01;
    static constexpr std::uint8_t InEndpoint = 0x82;
    /// Those of two more, where a device has them; whatever is tried there is refused.
    static constexpr std::uint8_t InterruptOutEndpoint = 0x03;
    static constexpr std::uint8_t InterruptInEndpoint = 0x84;
    static constexpr std::size_t PacketBytes = 64;

    /// Neither is owned. p_fnUnplug is called when the device goes by itself.
    CUsbTransfers(const CUsbBehaviour& p_objBehaviour, CUsbWire& p_objWire,
                  std::function<void()> p_fnUnplug);

    /// What the system calls that concern transfers do. Each answers its call.
    void Submit(_UMockdevIoctlClient* p_objClient);
    void Discard(_UMockdevIoctlClient* p_objClient);
    void Reap(_UMockdevIoctlClient* p_objClient, bool p_bGone);

    /// Lets a pipe that was halted pass again. False when that is refused.
    bool Clear(unsigned p_iEndpoint);
    /// The pipes for which that was asked, in order.
    [[nodiscard]] const std::vector<unsigned>& Cleared() const { return m_iCleared; }

    /// The device is gone: ends all of them with this system error.
    void EndAll(int p_iError);

    /// Forgets those of a program that has gone.
    void Forget(const _UMockdevIoctlClient* p_objClient);

    /// Everything that the device has taken so far.
    [[nodiscard]] const std::string& Taken() const { return m_strTaken; }

private:
    struct Deleter {
        void operator()(_UMockdevIoctlData* p_objData) const;
    };
    using Data = std::unique_ptr<_UMockdevIoctlData, Deleter>;

    struct Urb {
        _UMockdevIoctlClient* m_objClient = nullptr;  // compared only
        Data m_objUrb;
        Data m_objBuffer;
        CUsbWire::Clock::time_point m_iSubmitted;
        bool m_bOver = false;

        [[nodiscard]] struct usbdevfs_urb& Fields() const;
        [[nodiscard]] std::span<std::uint8_t> Bytes() const;
        void End(int p_iStatus, std::size_t p_iCount);
    };

    void Advance(Urb& p_objUrb);
    void Control(Urb& p_objUrb) const;
    void Take(Urb& p_objUrb);
    void Give(Urb& p_objUrb);
    void GiveIdle(Urb& p_objUrb) const;
    void Fill(Urb& p_objUrb, int p_iStatus);

    const CUsbBehaviour& m_objBehaviour;
    CUsbWire& m_objWire;
    std::function<void()> m_fnUnplug;
    std::deque<Urb> m_objUrbs;
    std::string m_strTaken;
    std::vector<unsigned> m_iCleared;
    bool m_bHalted;
    bool m_bEmptyGiven = false;
    bool m_bErrorGiven = false;
};
