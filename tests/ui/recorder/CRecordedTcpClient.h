#pragma once

#include "tests/fakes/CFakeTcpClient.h"
#include "tests/ui/recorder/CTranscript.h"

#include <functional>
#include <string>

/// A socket whose connecting, closing and sending stand in the transcript.
class CRecordedTcpClient : public CFakeTcpClient {
public:
    CRecordedTcpClient(CFakeEventLoop& p_objEventLoop, CTranscript& p_objTranscript)
        : CFakeTcpClient(p_objEventLoop)
        , m_objTranscript(p_objTranscript) {}

    /// Called when a command is about to be sent; may change how that goes.
    std::function<void()> m_fnBegins;

    void Connect() override {
        const Remote& objRemote = m_objRemotes.back();
        m_objTranscript.Add("LAN connects to " + objRemote.m_strHost + ":" +
                            std::to_string(objRemote.m_iPort));
        CFakeTcpClient::Connect();
    }

    void Close() override {
        m_objTranscript.Add("LAN closes");
        CFakeTcpClient::Close();
    }

    bool SendData(std::span<const std::uint8_t> p_objBytes) override {
        m_fnBegins();
        const std::string strBytes(p_objBytes.begin(), p_objBytes.end());
        const bool bTakes = IsConnected() && !m_bRefusesSends;
        m_objTranscript.Bytes(bTakes ? "LAN sends" : "LAN refuses", strBytes);
        return CFakeTcpClient::SendData(p_objBytes);
    }

private:
    CTranscript& m_objTranscript;
};
