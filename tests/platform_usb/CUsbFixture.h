#pragma once

#include "platform/usb/CUsbLibrary.h"
#include "simulator/CPrinter.h"
#include "simulator/usb/CEmulatedPrinter.h"
#include "tests/fakes/CFakeClock.h"
#include "tests/fakes/CFakeEventLoop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

/// An event loop that sleeps in a yield as the real one does, where a test wants that.
class CRestingEventLoop : public CFakeEventLoop {
public:
    using CFakeEventLoop::CFakeEventLoop;

    std::chrono::milliseconds m_iRest{0};

    void Yield() override {
        std::this_thread::sleep_for(m_iRest);
        CFakeEventLoop::Yield();
    }
};

/// The library, and a USB bus that holds what the test has plugged in. The program must have been
/// started with the bus's library preloaded.
class CUsbFixture : public ::testing::Test {
protected:
    /// What passes is of no interest.
    class CNoLog : public ISimulatorLog {
        void Line(std::size_t /*p_iConnection*/, std::string_view /*p_strLine*/) override {}
    };

    using Milliseconds = std::chrono::milliseconds;

    void SetUp() override { ASSERT_TRUE(m_objWorld.IsInside()); }

    /// The library closes first: a device waits for its clients to go.
    void TearDown() override {
        m_objLibrary.Dll_closeUSB();
        for (const auto& objDevice : m_objDevices) {
            EXPECT_FALSE(objDevice->IsClaimed());
        }
        m_objDevices.clear();
    }

    CEmulatedPrinter& Plug(const CUsbBehaviour& p_objBehaviour = {},
                           const CFaultSettings& p_objFaults = {}) {
        const int iNumber = static_cast<int>(m_objDevices.size()) + 1;
        m_objDevices.push_back(std::make_unique<CEmulatedPrinter>(
            m_objWorld, m_objPrinter, m_objLog, p_objBehaviour, p_objFaults, iNumber));
        return *m_objDevices.back();
    }

    std::int32_t Send(const std::string& p_strBytes) {
        return m_objLibrary.Dll_sendUSB(
            std::vector<std::uint8_t>(p_strBytes.begin(), p_strBytes.end()));
    }

    /// What Dll_rcvUSB gives; the bytes are in m_strReceived.
    std::int32_t Receive(std::size_t p_iLength = 13) {
        std::vector<std::uint8_t> objBuffer(p_iLength, 0xEE);
        const std::int32_t iCount = m_objLibrary.Dll_rcvUSB(objBuffer);
        const auto iReceived = static_cast<std::ptrdiff_t>(std::max(iCount, 0));
        m_strReceived.assign(objBuffer.begin(), objBuffer.begin() + iReceived);
        return iCount;
    }

    /// How long something takes.
    template <typename Call>
    static Milliseconds Time(const Call& p_objCall) {
        const auto iStart = std::chrono::steady_clock::now();
        p_objCall();
        return std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now() - iStart);
    }

    /// How often the event loop runs while something takes its time: unlike that the same on a slow
    /// machine. A wait that ends at once comes to one more at most.
    template <typename Call>
    std::int64_t YieldsOf(const Call& p_objCall) {
        const std::int64_t iYields = m_objEventLoop.Yields();
        p_objCall();
        return m_objEventLoop.Yields() - iYields;
    }

    static constexpr const char* Status = "{WS|}";
    static std::string StatusAnswer() { return CPrinter::StatusAnswer("00"); }

    CFakeClock m_objClock;
    CRestingEventLoop m_objEventLoop{m_objClock};
    CPrinter m_objPrinter;
    CNoLog m_objLog;
    CUsbWorld m_objWorld;
    std::vector<std::unique_ptr<CEmulatedPrinter>> m_objDevices;
    CUsbLibrary m_objLibrary{m_objEventLoop};
    std::string m_strReceived;
};
