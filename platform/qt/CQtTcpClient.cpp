#include "platform/qt/CQtTcpClient.h"

#include "platform/qt/MSocketNumber.h"
#include "platform/qt/MText.h"

#include <QHostAddress>
#include <QNetworkProxy>

#include <cerrno>
#include <utility>

namespace {

/// What a socket holds of what has arrived until it is fetched; the system holds the rest back.
constexpr qint64 ReadBufferBytes = 65536;
constexpr std::int32_t HighestPort = 65535;

}  // namespace

CQtTcpClient::CQtTcpClient() {
    m_objSocket.setProxy(QNetworkProxy::NoProxy);
    m_objSocket.setReadBufferSize(ReadBufferBytes);
    connect(&m_objSocket, &QTcpSocket::connected, this, [this] {
        m_objSocket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        if (m_objEvents != nullptr) {
            m_objEvents->OnConnect();
        }
    });
    connect(&m_objSocket, &QTcpSocket::disconnected, this, [this] { HandleDisconnected(); });
    connect(&m_objSocket, &QTcpSocket::errorOccurred, this,
            [this](QAbstractSocket::SocketError p_iError) { HandleError(p_iError, errno); });
    connect(&m_objSocket, &QTcpSocket::bytesWritten, this, [this] {
        if (m_objSocket.bytesToWrite() == 0 && m_objEvents != nullptr) {
            m_objEvents->OnSendComplete();
        }
    });
    connect(&m_objSocket, &QTcpSocket::readyRead, this, [this] {
        if (m_objEvents != nullptr) {
            m_objEvents->OnDataArrival();
        }
    });
}

CQtTcpClient::~CQtTcpClient() {
    m_objEvents = nullptr;
    Close();
}

void CQtTcpClient::SetRemote(const std::string& p_strHost, std::int32_t p_iPort) {
    m_strHost = p_strHost;
    m_iPort = p_iPort;
}

void CQtTcpClient::Connect() {
    Close();
    const QHostAddress objAddress(MText::ToQt(m_strHost));
    if (objAddress.isNull() || m_iPort < 0 || m_iPort > HighestPort) {
        QueueError(EADDRNOTAVAIL, "No such address: " + m_strHost + ":" + std::to_string(m_iPort));
        return;
    }
    m_objSocket.connectToHost(objAddress, static_cast<quint16>(m_iPort));
}

void CQtTcpClient::Close() {
    ++m_iConnection;
    m_bClosing = true;
    m_objSocket.disconnectFromHost();
    if (m_objSocket.state() != QAbstractSocket::UnconnectedState) {
        m_objSocket.abort();
    }
    m_objSocket.close();  // a disconnected socket still holds what was not read
    m_bClosing = false;
}

bool CQtTcpClient::SendData(std::span<const std::uint8_t> p_objBytes) {
    if (m_objSocket.state() != QAbstractSocket::ConnectedState) {
        return false;
    }
    const auto iCount = static_cast<qint64>(p_objBytes.size());
    return m_objSocket.write(reinterpret_cast<const char*>(p_objBytes.data()), iCount) == iCount;
}

std::vector<std::uint8_t> CQtTcpClient::GetData() {
    if (!m_objSocket.isOpen()) {
        return {};
    }
    const QByteArray objData = m_objSocket.readAll();
    return {objData.begin(), objData.end()};
}

void CQtTcpClient::HandleDisconnected() {
    if (!m_bClosing && m_objEvents != nullptr) {
        m_objEvents->OnClose();
    }
}

void CQtTcpClient::HandleError(QAbstractSocket::SocketError p_iError, int p_iSystem) {
    // The other side's closing is an error to the toolkit; "disconnected" follows and tells it.
    if (m_bClosing || p_iError == QAbstractSocket::RemoteHostClosedError) {
        return;
    }
    QueueError(MSocketNumber::Of(p_iError, p_iSystem), MText::FromQt(m_objSocket.errorString()));
}

void CQtTcpClient::QueueError(std::int32_t p_iNumber, std::string p_strDescription) {
    SocketError objError;
    objError.m_iNumber = p_iNumber;
    objError.m_strDescription = std::move(p_strDescription);
    // Connecting can fail inside the call that begins it; the event comes from the event loop.
    QMetaObject::invokeMethod(
        this,
        [this, iConnection = m_iConnection, objError] {
            if (iConnection == m_iConnection && m_objEvents != nullptr) {
                m_objEvents->OnError(objError);
            }
        },
        Qt::QueuedConnection);
}
