#include "platform/qt/CQtTcpClient.h"

#include "platform/qt/MSocketNumber.h"
#include "platform/qt/MText.h"

#include <QHostAddress>
#include <QNetworkProxy>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <utility>

namespace {

/// What a socket holds of what has arrived until it is fetched; the system holds the rest back.
constexpr qint64 ReadBufferBytes = 16384;

/// Twelve megabytes a second, as much as the network brings that printers have. The longest answer
/// has less than a hundred bytes, and one that comes byte by byte is not held back either.
constexpr CFloodGate::Share FloodShare{3 * ReadBufferBytes, 64};

constexpr std::int32_t HighestPort = 65535;

}  // namespace

CQtTcpClient::CQtTcpClient()
    : m_objGate(FloodShare) {
    m_objShut.setSingleShot(true);
    m_objShut.setTimerType(Qt::PreciseTimer);
    connect(&m_objShut, &QTimer::timeout, this, &CQtTcpClient::OpenGate);
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
    connect(&m_objSocket, &QTcpSocket::readyRead, this, &CQtTcpClient::HandleReadyRead);
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
    m_objShut.stop();
    m_objSocket.setReadBufferSize(ReadBufferBytes);
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
    m_objGate.Take(static_cast<std::size_t>(objData.size()));
    return {objData.begin(), objData.end()};
}

void CQtTcpClient::HandleReadyRead() {
    if (!m_objShut.isActive()) {
        m_objGate.Arrive(std::chrono::steady_clock::now());
        TellArrival();
    }
}

void CQtTcpClient::TellArrival() {
    const std::uint64_t iConnection = m_iConnection;
    if (m_objEvents != nullptr) {
        m_objEvents->OnDataArrival();
    }
    if (iConnection == m_iConnection && m_objGate.IsShut()) {
        // A socket that holds all that it may reads nothing.
        m_objSocket.setReadBufferSize(std::max<qint64>(m_objSocket.bytesAvailable(), 1));
        m_objShut.start(m_objGate.Left(std::chrono::steady_clock::now()));
    }
}

void CQtTcpClient::OpenGate() {
    m_objSocket.setReadBufferSize(ReadBufferBytes);
    if (m_objSocket.bytesAvailable() > 0) {
        HandleReadyRead();
    }
}

void CQtTcpClient::TellHeld() {
    if (m_objShut.isActive()) {
        m_objShut.stop();
        OpenGate();
    }
}

void CQtTcpClient::HandleDisconnected() {
    if (m_bClosing) {
        return;
    }
    // Whoever hears of what was held may have closed, or connected anew: this is no event then.
    const std::uint64_t iConnection = m_iConnection;
    TellHeld();
    if (iConnection == m_iConnection && m_objEvents != nullptr) {
        m_objEvents->OnClose();
    }
}

void CQtTcpClient::HandleError(QAbstractSocket::SocketError p_iError, int p_iSystem) {
    // The other side's closing is an error to the toolkit; "disconnected" follows and tells it.
    if (m_bClosing || p_iError == QAbstractSocket::RemoteHostClosedError) {
        return;
    }
    const std::string strDescription = MText::FromQt(m_objSocket.errorString());
    const std::uint64_t iConnection = m_iConnection;
    TellHeld();
    if (iConnection == m_iConnection) {
        QueueError(MSocketNumber::Of(p_iError, p_iSystem), strDescription);
    }
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
