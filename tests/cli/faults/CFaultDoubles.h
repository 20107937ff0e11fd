#pragma once

#include "cli/IInterrupt.h"
#include "platform/IStateStore.h"
#include "tests/fakes/CFakeEventLoop.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CFakeStateStore.h"
#include "tests/fakes/CFakeTcpClient.h"
#include "tests/fakes/CFakeUsbLibrary.h"

#include <cerrno>
#include <functional>
#include <memory>
#include <optional>
#include <string>

/// Thrown where the program would end: by Ctrl-C.
struct CProgramEnded {};

/// Ctrl-C as the program knows it: what is open is closed first, and then the program has ended.
class CEndingInterrupt : public IInterrupt {
public:
    explicit CEndingInterrupt(const CFakeEventLoop& p_objEventLoop)
        : m_objEventLoop(p_objEventLoop) {}

    std::string m_strWords;
    std::optional<std::int64_t> m_iCame;  ///< when it came, by the clock

    /// It comes now. Whoever calls this outside of RunHeld hears that the program has ended.
    void Come() {
        m_iCame = m_objEventLoop.Elapsed();
        if (!m_bHeld) {
            throw CProgramEnded();
        }
    }

    void SetLastWords(const std::string& p_strBytes) override { m_strWords = p_strBytes; }
    void SetLastNote(const std::string& /*p_strBytes*/) override {}
    void RunHeld(const std::function<void()>& p_fnWork) override {
        m_bHeld = true;
        p_fnWork();
        m_bHeld = false;
        if (IsPending()) {
            throw CProgramEnded();
        }
    }
    [[nodiscard]] bool IsPending() const override { return m_iCame.has_value(); }
    [[nodiscard]] int WakeHandle() const override { return -1; }

private:
    const CFakeEventLoop& m_objEventLoop;
    bool m_bHeld = false;
};

/// An event loop that knows whether it is inside of itself.
class CCountedLoop : public CFakeEventLoop {
public:
    using CFakeEventLoop::CFakeEventLoop;

    void Yield() override {
        const struct Inside {
            explicit Inside(int& p_iDepth)
                : m_iDepth(p_iDepth) {
                ++m_iDepth;
            }
            ~Inside() { --m_iDepth; }
            Inside(const Inside&) = delete;
            Inside& operator=(const Inside&) = delete;
            int& m_iDepth;
        } objInside(m_iDepth);
        CFakeEventLoop::Yield();
    }
    [[nodiscard]] int Depth() const { return m_iDepth; }

private:
    int m_iDepth = 0;
};

/// A socket, a port and a USB library that ask before they open, and before something goes out.
class CFaultySocket : public CFakeTcpClient {
public:
    using CFakeTcpClient::CFakeTcpClient;

    std::function<void()> m_fnOpening;
    std::function<void()> m_fnSending;
    int m_iSendings = 0;  ///< every SendData, whether taken or not

    void Connect() override {
        m_fnOpening();
        CFakeTcpClient::Connect();
    }
    bool SendData(std::span<const std::uint8_t> p_objBytes) override {
        ++m_iSendings;
        m_fnSending();
        return CFakeTcpClient::SendData(p_objBytes);
    }
};

class CFaultySerialPort : public CFakeSerialPort {
public:
    using CFakeSerialPort::CFakeSerialPort;

    std::function<void()> m_fnOpening;
    /// Told how many bytes of a command are out.
    std::function<void(std::size_t)> m_fnSending;
    int m_iSendings = 0;  ///< every Output, whether taken or not

    std::int32_t Open() override {
        m_iOut = 0;
        m_fnOpening();
        return CFakeSerialPort::Open();
    }
    bool Output(std::span<const std::uint8_t> p_objBytes) override {
        if (!p_objBytes.empty() && p_objBytes.front() == '{') {
            m_iOut = 0;
        }
        ++m_iSendings;
        m_fnSending(m_iOut++);
        return CFakeSerialPort::Output(p_objBytes);
    }

private:
    std::size_t m_iOut = 0;
};

/// A printer on USB that can be pulled out. As the real library, one look lasts a quarter of a
/// second, and what an answer has more than there is room for comes with the next one.
class CFaultyUsb : public CFakeUsbLibrary {
public:
    explicit CFaultyUsb(CFakeEventLoop& p_objEventLoop)
        : CFakeUsbLibrary(p_objEventLoop)
        , m_objEventLoop(p_objEventLoop) {}

    static constexpr std::int64_t LookMilliseconds = 250;

    std::function<void()> m_fnOpening;
    std::function<void()> m_fnSending;
    std::int32_t m_iOpens = Opened;  ///< what an opening gives
    bool m_bGone = false;            ///< it is pulled out
    bool m_bAwaited = false;         ///< a command is out, and its answer is not taken yet
    int m_iSendings = 0;             ///< every send, whether taken or not

    std::int32_t Dll_openUSB() override {
        m_fnOpening();
        m_iNotReadyNumber = m_bGone ? ENODEV : m_iNotReadyNumber;
        m_iOpenResults.assign(1, m_bGone ? NotReady : m_iOpens);
        return CFakeUsbLibrary::Dll_openUSB();
    }
    std::int32_t Dll_sendUSB(std::span<const std::uint8_t> p_objBytes) override {
        ++m_iSendings;
        m_fnSending();
        const std::int32_t iSent = m_bGone ? Failed : CFakeUsbLibrary::Dll_sendUSB(p_objBytes);
        m_bAwaited = iSent > 0;
        return iSent;
    }
    std::int32_t Dll_rcvUSB(std::span<std::uint8_t> p_objBuffer) override {
        const std::int64_t iEnd = m_objEventLoop.Elapsed() + LookMilliseconds;
        while (m_strAnswers.empty() && !m_bGone && m_objEventLoop.Elapsed() < iEnd &&
               !m_objEventLoop.IsClosing()) {
            m_objEventLoop.Yield();
        }
        if (m_strAnswers.empty()) {
            return m_bGone ? Failed : 0;
        }
        const std::string strRest =
            m_strAnswers.front().substr(std::min(p_objBuffer.size(), m_strAnswers.front().size()));
        const std::int32_t iCount = CFakeUsbLibrary::Dll_rcvUSB(p_objBuffer);
        if (!strRest.empty()) {
            m_strAnswers.push_front(strRest);
        }
        m_bAwaited = m_bAwaited && !m_strAnswers.empty();
        return iCount;
    }

private:
    CFakeEventLoop& m_objEventLoop;
};

/// A state that outlives the commands that are handed it.
class CSharedState : public IStateStore {
public:
    explicit CSharedState(CFakeStateStore& p_objStore)
        : m_objStore(p_objStore) {}

    std::unique_ptr<ILock> Lock(const std::string& p_strName, const std::string& p_strHolder,
                                std::string& p_strWhy, bool& p_bHeld) override {
        return m_objStore.Lock(p_strName, p_strHolder, p_strWhy, p_bHeld);
    }
    bool Write(const std::string& p_strName, const std::string& p_strBytes) override {
        return m_objStore.Write(p_strName, p_strBytes);
    }
    [[nodiscard]] std::optional<std::string> Read(const std::string& p_strName) const override {
        return m_objStore.Read(p_strName);
    }
    [[nodiscard]] bool Stands(const std::string& p_strName) const override {
        return m_objStore.Stands(p_strName);
    }
    bool Remove(const std::string& p_strName) override { return m_objStore.Remove(p_strName); }
    [[nodiscard]] std::vector<std::string> Names(const std::string& p_strEnd) const override {
        return m_objStore.Names(p_strEnd);
    }
    [[nodiscard]] std::string Path(const std::string& p_strName) const override {
        return m_objStore.Path(p_strName);
    }

private:
    CFakeStateStore& m_objStore;
};
