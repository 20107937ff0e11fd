#pragma once

#include "platform/IUsbLibrary.h"
#include "tests/fakes/CFakeEventLoop.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <string>
#include <vector>

/// A printer on USB, by script. Keeps every call, checks that transfers happen while it is open,
/// and waits as the real one does: a receive with nothing to give yields for a second.
class CFakeUsbLibrary : public IUsbLibrary {
public:
    static constexpr std::int64_t ReceiveMilliseconds = 1000;

    explicit CFakeUsbLibrary(CFakeEventLoop& p_objEventLoop)
        : m_objEventLoop(p_objEventLoop) {}

    /// The results of the next openings; any further one succeeds.
    std::deque<std::int32_t> m_iOpenResults;
    /// Why an opening has given NotReady.
    std::int32_t m_iNotReadyNumber = 0;
    /// What a send gives in place of the count when it is negative.
    std::int32_t m_iSendResult = 0;
    /// What the printer has sent and nobody taken, one answer after the other.
    std::deque<std::string> m_strAnswers;
    /// What a receive gives when there is no answer.
    std::int32_t m_iNoAnswer = 0;
    /// False: a receive that has nothing does not wait.
    bool m_bWaits = true;
    /// Called with each command sent; may add answers.
    std::function<void(const std::string&)> m_fnSent;

    /// "open", "send {WS|}", "rcv 13", "close", in their order.
    std::vector<std::string> m_strCalls;
    std::vector<std::string> m_strSent;

    [[nodiscard]] bool IsOpen() const { return m_bOpen; }

    std::int32_t Dll_openUSB() override {
        m_strCalls.emplace_back("open");
        std::int32_t iResult = Opened;
        if (!m_iOpenResults.empty()) {
            iResult = m_iOpenResults.front();
            m_iOpenResults.pop_front();
        }
        m_bOpen = m_bOpen || iResult >= Opened;
        return iResult;
    }

    [[nodiscard]] std::int32_t NotReadyNumber() const override { return m_iNotReadyNumber; }

    std::int32_t Dll_sendUSB(std::span<const std::uint8_t> p_objBytes) override {
        const std::string strBytes(p_objBytes.begin(), p_objBytes.end());
        EXPECT_TRUE(m_bOpen);
        m_strCalls.push_back("send " + strBytes);
        if (m_iSendResult < 0) {
            return m_iSendResult;
        }
        m_strSent.push_back(strBytes);
        if (m_fnSent) {
            m_fnSent(strBytes);
        }
        return static_cast<std::int32_t>(strBytes.size());
    }

    std::int32_t Dll_rcvUSB(std::span<std::uint8_t> p_objBuffer) override {
        EXPECT_TRUE(m_bOpen);
        m_strCalls.push_back("rcv " + std::to_string(p_objBuffer.size()));
        const std::int64_t iEnd = m_objEventLoop.Elapsed() + ReceiveMilliseconds;
        while (m_bWaits && m_strAnswers.empty() && m_objEventLoop.Elapsed() < iEnd &&
               !m_objEventLoop.IsClosing()) {
            m_objEventLoop.Yield();
        }
        if (m_strAnswers.empty()) {
            return m_iNoAnswer;
        }
        const std::string strAnswer = m_strAnswers.front().substr(0, p_objBuffer.size());
        m_strAnswers.pop_front();
        std::copy(strAnswer.begin(), strAnswer.end(), p_objBuffer.begin());
        return static_cast<std::int32_t>(strAnswer.size());
    }

    std::int32_t Dll_closeUSB() override {
        m_strCalls.emplace_back("close");
        m_bOpen = false;
        return Opened;
    }

private:
    CFakeEventLoop& m_objEventLoop;
    bool m_bOpen = false;
};
