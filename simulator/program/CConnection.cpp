#include "simulator/program/CConnection.h"

#include <utility>

namespace {

constexpr qint64 MostUnread = 65'536;   // bytes the socket holds for us
constexpr qint64 MostUnsent = 65'536;   // bytes the socket holds for the other side
constexpr qint64 ReadBlock = 128;       // bytes whose answers can be held at once
constexpr std::size_t MostSteps = 256;  // waiting steps above which nothing more is read
constexpr int StepsATurn = 16;          // carried out before other connections have their turn

}  // namespace

CConnection::CConnection(QTcpSocket* p_objSocket, CSession p_objSession,
                         std::function<void()> p_fnReceived, QObject* p_objParent)
    : QObject(p_objParent)
    , m_objSocket(p_objSocket)
    , m_objSession(std::move(p_objSession))
    , m_fnReceived(std::move(p_fnReceived))
    , m_objSteps([this] { Work(); }) {
    m_objSocket->setParent(this);
    m_objSocket->setReadBufferSize(MostUnread);
    // Pieces must leave as pieces.
    m_objSocket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_objTurn.setSingleShot(true);
    connect(m_objSocket, &QTcpSocket::readyRead, this, &CConnection::Work);
    connect(m_objSocket, &QTcpSocket::bytesWritten, this, &CConnection::Work);
    connect(m_objSocket, &QTcpSocket::disconnected, this, &CConnection::End);
    connect(&m_objTurn, &QTimer::timeout, this, &CConnection::Work);
}

void CConnection::Start() {
    const std::string strPeer = m_objSocket->peerAddress().toString().toStdString();
    m_objSession.Note("connected from " + strPeer + " port " +
                      std::to_string(m_objSocket->peerPort()));
    m_objSession.Event(
        "connected",
        CJsonObject().Text("peer", strPeer).Number("peer-port", m_objSocket->peerPort()));
    m_objSteps.Add(m_objSession.Connected());
    Work();
    if (m_objSocket->state() == QAbstractSocket::UnconnectedState && !m_bEnded) {
        End();  // it has ended while it waited to be taken
    }
}

void CConnection::End() {
    m_objSession.Note("connection ended");
    m_objSession.Event("closed", CJsonObject().Text("by", m_bClosing ? "printer" : "peer"));
    m_bClosing = true;
    m_bEnded = true;
    deleteLater();
}

void CConnection::Abort() {
    m_bClosing = true;
    m_objSteps.Clear();
    m_objSocket->abort();
}

void CConnection::Work() {
    Read();
    const bool bGoesOn = Run();
    if (bGoesOn || (CanTakeMore() && m_objSocket->bytesAvailable() > 0)) {
        m_objTurn.start(0);
    }
}

bool CConnection::CanTakeMore() const {
    return !m_bClosing && m_objSteps.Size() < MostSteps && m_objSocket->bytesToWrite() < MostUnsent;
}

void CConnection::Read() {
    // One block a turn: whoever floods waits for all others before more of it is read.
    if (!CanTakeMore() || m_objSocket->bytesAvailable() == 0) {
        return;
    }
    const QByteArray arrBytes = m_objSocket->read(ReadBlock);
    m_objSteps.Add(
        m_objSession.Received({reinterpret_cast<const std::uint8_t*>(arrBytes.constData()),
                               static_cast<std::size_t>(arrBytes.size())}));
    m_fnReceived();
}

bool CConnection::Run() {
    for (int i = 0; i < StepsATurn; ++i) {
        if (m_bClosing || m_objSocket->bytesToWrite() >= MostUnsent) {
            return false;
        }
        const std::optional<CWireStep> objStep = m_objSteps.TakeDue();
        if (!objStep) {
            return false;
        }
        CarryOut(*objStep);
    }
    return true;
}

void CConnection::CarryOut(const CWireStep& p_objStep) {
    m_objSession.Sent(p_objStep);
    if (!p_objStep.m_strBytes.empty()) {
        m_objSocket->write(p_objStep.m_strBytes.data(),
                           static_cast<qint64>(p_objStep.m_strBytes.size()));
        m_objSocket->flush();
    }
    if (p_objStep.m_bClose) {
        m_bClosing = true;
        // Closing over unread bytes would reset the connection, and the last answer be lost.
        m_objSocket->readAll();
        m_objSocket->disconnectFromHost();
    }
}
