#pragma once

#include "platform/ITcpClient.h"
#include "platform/qt/CFloodGate.h"

#include <QTcpSocket>
#include <QTimer>

/// A TCP client socket of the toolkit, always direct: no proxy of the system stands between.
///
/// It holds no more than a block of what has arrived, and of a flood it takes so much in a time
/// that the processor is left to others.
class CQtTcpClient : public QObject, public ITcpClient {
public:
    CQtTcpClient();
    ~CQtTcpClient() override;
    CQtTcpClient(const CQtTcpClient&) = delete;
    CQtTcpClient& operator=(const CQtTcpClient&) = delete;

    void SetEvents(ITcpClientEvents* p_objEvents) override { m_objEvents = p_objEvents; }
    void SetRemote(const std::string& p_strHost, std::int32_t p_iPort) override;
    void Connect() override;
    void Close() override;
    bool SendData(std::span<const std::uint8_t> p_objBytes) override;
    std::vector<std::uint8_t> GetData() override;

private:
    void HandleReadyRead();
    /// Tells of what has arrived, and shuts the gate if that was its share.
    void TellArrival();
    void OpenGate();
    /// Tells of what waits at the gate: something that comes behind it is to be told.
    void TellHeld();
    void HandleDisconnected();
    void HandleError(QAbstractSocket::SocketError p_iError, int p_iSystem);
    void QueueError(std::int32_t p_iNumber, std::string p_strDescription);

    QTcpSocket m_objSocket;
    CFloodGate m_objGate;
    QTimer m_objShut;  // runs while the gate is shut
    ITcpClientEvents* m_objEvents = nullptr;
    std::string m_strHost;
    std::int32_t m_iPort = 0;
    // Counts connections, so that an error that waits in the queue cannot reach a later one.
    std::uint64_t m_iConnection = 0;
    bool m_bClosing = false;  // this side closes: no event
};
