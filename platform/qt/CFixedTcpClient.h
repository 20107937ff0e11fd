#pragma once

#include "platform/qt/CQtTcpClient.h"

#include <QElapsedTimer>
#include <QHostInfo>
#include <QTimer>

#include <chrono>
#include <optional>
#include <vector>

/// A TCP client that connects to one place, named beforehand: a host's name, an IPv4 or an IPv6
/// address ("fe80::1%eth0").
///
/// A name is looked up at each Connect, and its addresses are tried in the system's order until one
/// takes the connection. Each but the last has its share of the time; the last one is tried until
/// whoever waits has had enough of it and calls Close. When all have failed, one OnError tells what
/// came closest to the printer: a refusal rather than a network that is not there.
class CFixedTcpClient : public QObject, public ITcpClient, private ITcpClientEvents {
    Q_OBJECT

public:
    /// @param p_iLimit how long whoever calls Connect is going to wait for it.
    CFixedTcpClient(const std::string& p_strHost, std::uint16_t p_iPort,
                    std::chrono::milliseconds p_iLimit);
    ~CFixedTcpClient() override;
    CFixedTcpClient(const CFixedTcpClient&) = delete;
    CFixedTcpClient& operator=(const CFixedTcpClient&) = delete;

    void SetEvents(ITcpClientEvents* p_objEvents) override { m_objEvents = p_objEvents; }
    /// Changes nothing: the place is fixed.
    void SetRemote(const std::string& /*p_strHost*/, std::int32_t /*p_iPort*/) override {}
    void Connect() override;
    void Close() override;
    bool SendData(std::span<const std::uint8_t> p_objBytes) override;
    std::vector<std::uint8_t> GetData() override { return m_objSocket.GetData(); }

private slots:
    void TakeAddresses(const QHostInfo& p_objInfo);

private:
    void OnConnect() override;
    void OnClose() override;
    void OnSendComplete() override;
    void OnDataArrival() override;
    void OnError(const SocketError& p_objError) override;

    void TryNext();
    void Note(const SocketError& p_objError);
    void Fail(const SocketError& p_objError);

    QString m_strHost;
    std::uint16_t m_iPort;
    std::chrono::milliseconds m_iLimit;
    CQtTcpClient m_objSocket;
    ITcpClientEvents* m_objEvents = nullptr;
    QTimer m_objPatience;  // with the address that is being tried
    QElapsedTimer m_objSinceConnect;
    std::optional<int> m_iLookup;            // the number of the one that runs
    std::vector<QHostAddress> m_objToTry;    // the next one last
    std::optional<SocketError> m_objFailed;  // what came closest so far
    bool m_bConnecting = false;
};
