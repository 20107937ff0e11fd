#pragma once

#include "platform/IEventLoop.h"
#include "platform/usb/CUsbLibrary.h"
#include "tests/kernel/CPluggedDevice.h"
#include "tests/simulator/MBytes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <numeric>
#include <string>
#include <string_view>
#include <thread>

/// An event loop without events: it sleeps a moment, counts, and may close the program.
class CIdleEventLoop : public IEventLoop {
public:
    void Yield() override {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (++m_iYields == m_iCloseAt) {
            RequestClose();
        }
    }
    [[nodiscard]] bool IsClosing() const override { return m_bClosing; }
    void RequestClose() override { m_bClosing = true; }

    std::size_t m_iYields = 0;
    std::size_t m_iCloseAt = 0;  ///< the yield in which the program closes; 0: none

private:
    bool m_bClosing = false;
};

/// The program's USB library in front of the kernel.
class CKernelFixture : public ::testing::Test {
protected:
    static constexpr const char* SystemDriver = "usblp";
    static constexpr const char* ProgramsDriver = "usbfs";

    std::int32_t Send(std::string_view p_strBytes) {
        return m_objLibrary.Dll_sendUSB(MBytes::Of(p_strBytes));
    }

    /// Asks for p_iLength bytes; what came. m_iReceived is the library's own result.
    std::string Receive(std::size_t p_iLength) {
        std::string strBytes(p_iLength, '?');
        m_iReceived = m_objLibrary.Dll_rcvUSB(
            {reinterpret_cast<std::uint8_t*>(strBytes.data()), strBytes.size()});
        return strBytes.substr(0, m_iReceived > 0 ? static_cast<std::size_t>(m_iReceived) : 0);
    }

    /// What a call takes, in seconds.
    static double Seconds(const std::function<void()>& p_fnCall) {
        const auto objBegin = std::chrono::steady_clock::now();
        p_fnCall();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - objBegin).count();
    }

    /// All bytes that a device has been sent.
    static std::string Written(const CPluggedDevice& p_objDevice) {
        const auto strWrites = p_objDevice.Device().Writes();
        return std::accumulate(strWrites.begin(), strWrites.end(), std::string());
    }

    CIdleEventLoop m_objEventLoop;
    CUsbLibrary m_objLibrary{m_objEventLoop};
    std::int32_t m_iReceived = 0;
};
