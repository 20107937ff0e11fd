#pragma once

#include "simulator/CPrinter.h"
#include "simulator/CSession.h"
#include "simulator/ISimulatorLog.h"
#include "tests/kernel/CDeviceSettings.h"
#include "tests/kernel/MUsbIp.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// A printer on the kernel's virtual host controller, played by a thread at the other end of the
/// socket that the controller was given.
///
/// What is written goes to the printer's session; its answers wait to be read, one transfer each.
/// A settings answer goes out behind the byte 0x02 and one byte more, as on every USB link.
class CUsbIpDevice : private ISimulatorLog {
public:
    /// @param p_iSocket connected; the device becomes its owner.
    /// @param p_fnUnplug takes the device off its port; called from the device's thread.
    CUsbIpDevice(CDeviceSettings p_objSettings, int p_iSocket, std::function<void()> p_fnUnplug);
    CUsbIpDevice(const CUsbIpDevice&) = delete;
    CUsbIpDevice& operator=(const CUsbIpDevice&) = delete;
    /// Hangs up if the controller has not let go of the device before.
    ~CUsbIpDevice();

    /// The bytes taken of each write, in order.
    [[nodiscard]] std::vector<std::string> Writes() const;
    /// How many writes were given up before they ended.
    [[nodiscard]] std::size_t WritesGivenUp() const;
    /// How many answers wait to be read.
    [[nodiscard]] std::size_t Waiting() const;

private:
    using Time = std::chrono::steady_clock::time_point;

    struct Transfer {
        MUsbIp::Request m_objRequest;
        Time m_objDue;  ///< of a write: when it ends
    };

    struct Step {
        Time m_objDue;
        CWireStep m_objStep;
    };

    void Line(std::size_t p_iConnection, std::string_view p_strLine) override;

    void Run();
    void Take(const MUsbIp::Request& p_objRequest);
    void Control(const MUsbIp::Request& p_objRequest);
    std::optional<std::string> Tell(const MUsbIp::Setup& p_objSetup);
    [[nodiscard]] std::optional<std::string> Descriptor(unsigned p_iKind) const;
    void GiveUp(const MUsbIp::Request& p_objRequest);
    void UnplugSoon();
    [[nodiscard]] bool HasTaken() const;

    /// What is due is done; when the next thing will be.
    std::optional<Time> Work();
    void CarryOut(const CWireStep& p_objStep);
    void EndWrite(const MUsbIp::Request& p_objRequest);
    void Answer(const std::vector<CWireStep>& p_objSteps);
    void EndReads();
    void EndRead(const MUsbIp::Request& p_objRequest);

    const CDeviceSettings m_objSettings;
    const int m_iSocket;
    const std::function<void()> m_fnUnplug;

    // All of this is the thread's own.
    CPrinter m_objPrinter;
    CSession m_objSession;
    std::deque<Transfer> m_objWriting;
    std::deque<MUsbIp::Request> m_objReading;
    std::deque<MUsbIp::Request> m_objUnanswered;  ///< requests for the identification
    int m_iAsked = 0;                             ///< how often it was asked for that
    std::deque<Step> m_objSteps;
    std::deque<std::string> m_strAnswers;
    std::optional<Time> m_objUnplug;
    bool m_bHalted;

    mutable std::mutex m_objMutex;  // for what follows
    std::vector<std::string> m_strWrites;
    std::size_t m_iWritesGivenUp = 0;
    std::size_t m_iWaiting = 0;

    std::thread m_objThread;
};
