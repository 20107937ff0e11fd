#pragma once

#include "platform/ITcpClient.h"
#include "tests/fakes/CFakeEventLoop.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A TCP socket without a network. Connects, and has sent what it was given, in the next yield,
/// unless told otherwise; the rest of its life is what the test makes of it.
class CFakeTcpClient : public ITcpClient {
public:
    enum class ConnectResult : std::uint8_t { Connects, Never, Fails };

    struct Remote {
        std::string m_strHost;
        std::int32_t m_iPort;

        bool operator==(const Remote&) const = default;
    };

    /// What one GetData gives at most.
    static constexpr std::size_t BlockBytes = 65536;

    explicit CFakeTcpClient(CFakeEventLoop& p_objEventLoop)
        : m_objEventLoop(p_objEventLoop) {}

    ConnectResult m_iConnectResult = ConnectResult::Connects;
    SocketError m_objConnectError;           ///< what ConnectResult::Fails tells
    bool m_bCompletesSends = true;           ///< false: the network takes nothing
    bool m_bRefusesSends = false;            ///< true: SendData says no
    std::vector<Remote> m_objRemotes;        ///< every SetRemote
    std::vector<std::string> m_strSent;      ///< every SendData that was taken
    std::vector<std::int64_t> m_iSentTimes;  ///< the yield's time of each, in m_strSent's order
    int m_iConnects = 0;
    int m_iCloses = 0;
    /// Called with each command sent; null for nobody.
    std::function<void(const std::string&)> m_fnSent;

    [[nodiscard]] bool IsConnected() const { return m_bConnected; }
    [[nodiscard]] bool HasEvents() const { return m_objEvents != nullptr; }

    // What happens on the network. Call these between yields or from a scheduled action.

    /// Bytes arrive, in one piece.
    void Arrive(std::string_view p_strBytes) {
        Leave(p_strBytes);
        std::size_t iBefore = 0;
        do {
            iBefore = m_objArrived.size();
            if (m_objEvents != nullptr && iBefore != 0) {
                m_objEvents->OnDataArrival();
            }
        } while (m_objArrived.size() < iBefore);
    }

    /// Bytes lie in the socket; their event is yet to come.
    void Leave(std::string_view p_strBytes) {
        m_objArrived.insert(m_objArrived.end(), p_strBytes.begin(), p_strBytes.end());
    }

    /// The other side takes the connection, whatever m_iConnectResult says.
    void ConnectNow() {
        m_bConnected = true;
        if (m_objEvents != nullptr) {
            m_objEvents->OnConnect();
        }
    }

    void PeerCloses() {
        m_bConnected = false;
        if (m_objEvents != nullptr) {
            m_objEvents->OnClose();
        }
    }

    void Break(const SocketError& p_objError) {
        m_bConnected = false;
        if (m_objEvents != nullptr) {
            m_objEvents->OnError(p_objError);
        }
    }

    /// All that was given to SendData has left.
    void CompleteSend() {
        if (m_objEvents != nullptr) {
            m_objEvents->OnSendComplete();
        }
    }

    void SetEvents(ITcpClientEvents* p_objEvents) override { m_objEvents = p_objEvents; }

    void SetRemote(const std::string& p_strHost, std::int32_t p_iPort) override {
        m_objRemotes.push_back({p_strHost, p_iPort});
    }

    void Connect() override {
        CloseQuietly();
        ++m_iConnects;
        switch (m_iConnectResult) {
        case ConnectResult::Connects:
            Later([this] { ConnectNow(); });
            break;
        case ConnectResult::Fails:
            Later([this] { m_objEvents->OnError(m_objConnectError); });
            break;
        case ConnectResult::Never:
            break;
        }
    }

    void Close() override {
        ++m_iCloses;
        CloseQuietly();
    }

    bool SendData(std::span<const std::uint8_t> p_objBytes) override {
        if (!m_bConnected || m_bRefusesSends) {
            return false;
        }
        const std::string strSent(p_objBytes.begin(), p_objBytes.end());
        m_strSent.push_back(strSent);
        m_iSentTimes.push_back(m_objEventLoop.Elapsed());
        if (m_bCompletesSends) {
            Later([this] { m_objEvents->OnSendComplete(); });
        }
        if (m_fnSent) {
            m_fnSent(strSent);
        }
        return true;
    }

    std::vector<std::uint8_t> GetData() override {
        const auto iCount = static_cast<std::ptrdiff_t>(std::min(m_objArrived.size(), BlockBytes));
        std::vector<std::uint8_t> objBlock(m_objArrived.begin(), m_objArrived.begin() + iCount);
        m_objArrived.erase(m_objArrived.begin(), m_objArrived.begin() + iCount);
        return objBlock;
    }

private:
    void CloseQuietly() {
        ++m_iConnection;
        m_bConnected = false;
        m_objArrived.clear();
    }

    /// An event of the connection as it is now, in the next yield.
    void Later(std::function<void()> p_fnEvent) {
        m_objEventLoop.AtNextYield(
            [this, iConnection = m_iConnection, fnEvent = std::move(p_fnEvent)] {
                if (iConnection == m_iConnection && m_objEvents != nullptr) {
                    fnEvent();
                }
            });
    }

    CFakeEventLoop& m_objEventLoop;
    ITcpClientEvents* m_objEvents = nullptr;
    std::vector<std::uint8_t> m_objArrived;
    std::int64_t m_iConnection = 0;
    bool m_bConnected = false;
};
