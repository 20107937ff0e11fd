#include "platform/qt/CFixedTcpClient.h"

#include "platform/qt/MText.h"

#include <QHostAddress>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace {

/// Failures of this computer's way to an address, which say nothing of the printer.
bool IsNoWay(std::int32_t p_iNumber) {
    return p_iNumber == ENETUNREACH || p_iNumber == EHOSTUNREACH || p_iNumber == EADDRNOTAVAIL;
}

SocketError LookupError(const QHostInfo& p_objInfo) {
    SocketError objError;
    objError.m_iNumber = p_objInfo.error() == QHostInfo::HostNotFound ? SocketError::NoSuchHost
                                                                      : SocketError::NotResolved;
    objError.m_strDescription = MText::FromQt(p_objInfo.errorString());
    return objError;
}

}  // namespace

CFixedTcpClient::CFixedTcpClient(const std::string& p_strHost, std::uint16_t p_iPort,
                                 std::chrono::milliseconds p_iLimit)
    : m_strHost(QString::fromStdString(p_strHost))
    , m_iPort(p_iPort)
    , m_iLimit(p_iLimit) {
    m_objSocket.SetEvents(this);
    m_objPatience.setSingleShot(true);
    connect(&m_objPatience, &QTimer::timeout, this, [this] {
        SocketError objError;
        objError.m_iNumber = ETIMEDOUT;
        m_objSocket.Close();
        Note(objError);
        TryNext();
    });
}

CFixedTcpClient::~CFixedTcpClient() {
    m_objSocket.SetEvents(nullptr);
    m_objEvents = nullptr;
    CFixedTcpClient::Close();
}

void CFixedTcpClient::Connect() {
    Close();
    m_objFailed.reset();
    m_bConnecting = true;
    m_objSinceConnect.start();
    const QHostAddress objAddress(m_strHost);
    if (!objAddress.isNull()) {
        m_objToTry = {objAddress};
        TryNext();
        return;
    }
    // By the slot's name: the toolkit never frees a function object whose lookup is given up.
    m_iLookup = QHostInfo::lookupHost(m_strHost, this, SLOT(TakeAddresses(QHostInfo)));
}

void CFixedTcpClient::Close() {
    if (m_iLookup) {
        QHostInfo::abortHostLookup(*m_iLookup);
        m_iLookup.reset();
    }
    m_bConnecting = false;
    m_objToTry.clear();
    m_objPatience.stop();
    m_objSocket.Close();
}

bool CFixedTcpClient::SendData(std::span<const std::uint8_t> p_objBytes) {
    return m_objSocket.SendData(p_objBytes);
}

void CFixedTcpClient::TakeAddresses(const QHostInfo& p_objInfo) {
    // One that was given up may have had its answer on the way already.
    if (m_iLookup != p_objInfo.lookupId()) {
        return;
    }
    m_iLookup.reset();
    const QList<QHostAddress> objAddresses = p_objInfo.addresses();
    if (objAddresses.isEmpty()) {
        Fail(LookupError(p_objInfo));
        return;
    }
    m_objToTry.assign(objAddresses.rbegin(), objAddresses.rend());
    TryNext();
}

void CFixedTcpClient::TryNext() {
    const QHostAddress objAddress = m_objToTry.back();
    m_objToTry.pop_back();
    m_objPatience.stop();
    if (!m_objToTry.empty()) {
        const auto iLeft = m_iLimit - std::chrono::milliseconds(m_objSinceConnect.elapsed());
        const auto iShares = static_cast<std::int64_t>(m_objToTry.size()) + 1;
        m_objPatience.start(std::max(iLeft / iShares, std::chrono::milliseconds(0)));
    }
    m_objSocket.SetRemote(MText::FromQt(objAddress.toString()), m_iPort);
    m_objSocket.Connect();
}

void CFixedTcpClient::OnConnect() {
    m_bConnecting = false;
    m_objToTry.clear();
    m_objPatience.stop();
    if (m_objEvents != nullptr) {
        m_objEvents->OnConnect();
    }
}

void CFixedTcpClient::OnClose() {
    if (m_objEvents != nullptr) {
        m_objEvents->OnClose();
    }
}

void CFixedTcpClient::OnSendComplete() {
    if (m_objEvents != nullptr) {
        m_objEvents->OnSendComplete();
    }
}

void CFixedTcpClient::OnDataArrival() {
    if (m_objEvents != nullptr) {
        m_objEvents->OnDataArrival();
    }
}

void CFixedTcpClient::OnError(const SocketError& p_objError) {
    if (!m_bConnecting) {
        Fail(p_objError);
        return;
    }
    Note(p_objError);
    if (m_objToTry.empty()) {
        Fail(*std::exchange(m_objFailed, std::nullopt));  // whoever hears of it may connect anew
    } else {
        TryNext();
    }
}

void CFixedTcpClient::Note(const SocketError& p_objError) {
    if (!m_objFailed || IsNoWay(m_objFailed->m_iNumber)) {
        m_objFailed = p_objError;
    }
}

void CFixedTcpClient::Fail(const SocketError& p_objError) {
    m_bConnecting = false;
    m_objPatience.stop();
    if (m_objEvents != nullptr) {
        m_objEvents->OnError(p_objError);
    }
}
