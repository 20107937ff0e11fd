#include "simulator/program/CConnection.h"

#include <utility>

namespace {

constexpr qint64 MostUnread = 65'536;   // bytes the socket holds for us
constexpr qint64 MostUnsent = 65'536;   // bytes the socket holds for the other side
constexpr qint64 ReadBlock = 512;       // bytes whose answers can be held at once
constexpr std::size_t MostSteps = 256;  // waiting steps above which nothing more is read

}  // namespace

CConnection::CConnection(QTcpSocket* p_objSocket, CSession p_objSession, QObject* p_objParent)
    : QObject(p_objParent)
    , m_objSocket(p_objSocket)
    , m_objSession(std::move(p_objSession))
    , m_objSteps([this] { Work(); }) {
    m_objSocket->setParent(this);
    m_objSocket->setReadBufferSize(MostUnread);
    // Pieces must leave as pieces.
    m_objSocket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_objTurn.setSingleShot(true);
    connect(m_objSocket, &QTcpSocket::readyRead, this, &CConnection::Work);
    connect(m_objSocket, &QTcpSocket::bytesWritten, this, &CConnection::Work);
    connect(m_objSocket, &QTcpSocket::disconnected, this, [this] {
        m_bClosing = true;
        m_objSession.Note("connection ended");
        deleteLater();
    });
    connect(&m_objTurn, &QTimer::timeout, this, &CConnection::Work);
}

void CConnection::Start() {
    m_objSession.Note("connected from " + m_objSocket->peerAddress().toString().toStdString() +
                      " port " + std::to_string(m_objSocket->peerPort()));
    m_objSteps.Add(m_objSession.Connected());
    Work();
}

void CConnection::Work() {
    Read();
    Run();
    if (CanTakeMore() && m_objSocket->bytesAvailable() > 0) {
        m_objTurn.start(0);
    }
}

bool CConnection::CanTakeMore() const {
    return !m_bClosing && m_objSteps.Size() < MostSteps && m_objSocket->bytesToWrite() < MostUnsent;
}

void CConnection::Read() {
    while (CanTakeMore() && m_objSocket->bytesAvailable() > 0) {
        const QByteArray arrBytes = m_objSocket->read(ReadBlock);
        if (arrBytes.isEmpty()) {
            return;
        }
        m_objSteps.Add(
            m_objSession.Received({reinterpret_cast<const std::uint8_t*>(arrBytes.constData()),
                                   static_cast<std::size_t>(arrBytes.size())}));
    }
}

void CConnection::Run() {
    while (!m_bClosing && m_objSocket->bytesToWrite() < MostUnsent) {
        const std::optional<CWireStep> objStep = m_objSteps.TakeDue();
        if (!objStep) {
            return;
        }
        CarryOut(*objStep);
    }
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
