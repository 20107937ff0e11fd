#pragma once

#include "platform/ITcpClient.h"
#include "tests/ui/CCallList.h"

#include <QTimer>

#include <string>
#include <vector>

/// A TCP client that notes every call, to show what a window does with it. Connecting succeeds,
/// sending does not.
///
/// Its calls are "LAN connect 192.168.10.20:8000", "LAN close", "LAN send {WS|}".
class CRecordingTcpClient : public ITcpClient {
public:
    /// p_objCalls outlives this.
    explicit CRecordingTcpClient(CCallList& p_objCalls)
        : m_objCalls(p_objCalls) {}

    void SetEvents(ITcpClientEvents* p_objEvents) override { m_objEvents = p_objEvents; }
    void SetRemote(const std::string& p_strHost, std::int32_t p_iPort) override {
        m_strRemote = p_strHost + ":" + std::to_string(p_iPort);
    }
    void Connect() override {
        m_objCalls.Add("LAN connect " + m_strRemote);
        QTimer::singleShot(0, &m_objContext, [this] {
            if (m_objEvents != nullptr) {
                m_objEvents->OnConnect();
            }
        });
    }
    void Close() override { m_objCalls.Add("LAN close"); }
    bool SendData(std::span<const std::uint8_t> p_objBytes) override {
        m_objCalls.Add("LAN send " + std::string(p_objBytes.begin(), p_objBytes.end()));
        return false;
    }
    std::vector<std::uint8_t> GetData() override { return {}; }

private:
    CCallList& m_objCalls;
    QObject m_objContext;
    ITcpClientEvents* m_objEvents = nullptr;
    std::string m_strRemote;
};
