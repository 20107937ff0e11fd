#pragma once

#include "platform/ITcpClient.h"

/// A TCP client that never tells that anything has left, in front of a real one: a network that
/// is stuck, to wait for.
class CLateSender : public ITcpClient, private ITcpClientEvents {
public:
    /// p_objReal is not owned and outlives this.
    explicit CLateSender(ITcpClient& p_objReal)
        : m_objReal(p_objReal) {
        m_objReal.SetEvents(this);
    }
    ~CLateSender() override { m_objReal.SetEvents(nullptr); }
    CLateSender(const CLateSender&) = delete;
    CLateSender& operator=(const CLateSender&) = delete;

    void SetEvents(ITcpClientEvents* p_objEvents) override { m_objEvents = p_objEvents; }
    void SetRemote(const std::string& p_strHost, std::int32_t p_iPort) override {
        m_objReal.SetRemote(p_strHost, p_iPort);
    }
    void Connect() override { m_objReal.Connect(); }
    void Close() override { m_objReal.Close(); }
    bool SendData(std::span<const std::uint8_t> p_objBytes) override {
        return m_objReal.SendData(p_objBytes);
    }
    std::vector<std::uint8_t> GetData() override { return m_objReal.GetData(); }

private:
    void OnConnect() override {
        if (m_objEvents != nullptr) {
            m_objEvents->OnConnect();
        }
    }
    void OnClose() override {
        if (m_objEvents != nullptr) {
            m_objEvents->OnClose();
        }
    }
    void OnSendComplete() override {}
    void OnDataArrival() override {
        if (m_objEvents != nullptr) {
            m_objEvents->OnDataArrival();
        }
    }
    void OnError(const SocketError& p_objError) override {
        if (m_objEvents != nullptr) {
            m_objEvents->OnError(p_objError);
        }
    }

    ITcpClient& m_objReal;
    ITcpClientEvents* m_objEvents = nullptr;
};
