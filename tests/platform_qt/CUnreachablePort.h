#pragma once

#include <QHostAddress>
#include <QTcpSocket>

#include <cstdint>
#include <memory>
#include <vector>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

/// A port of this machine that leaves whoever connects waiting for ever: its listener takes
/// nobody, and once its queue is full the system answers no one any more.
class CUnreachablePort {
public:
    CUnreachablePort()
        : m_iListener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in objAddress{};
        objAddress.sin_family = AF_INET;
        objAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* const objAny = reinterpret_cast<sockaddr*>(&objAddress);
        socklen_t iLength = sizeof objAddress;
        static_cast<void>(::bind(m_iListener, objAny, iLength));
        ::listen(m_iListener, 0);
        ::getsockname(m_iListener, objAny, &iLength);
        m_iNumber = ntohs(objAddress.sin_port);
        while (!m_bFull && m_objFirst.size() < MostFirst) {
            QTcpSocket& objSocket = *m_objFirst.emplace_back(std::make_unique<QTcpSocket>());
            objSocket.connectToHost(QHostAddress::LocalHost, m_iNumber);
            m_bFull = !objSocket.waitForConnected(PatienceMs) &&
                      objSocket.error() == QAbstractSocket::SocketTimeoutError;
        }
    }
    ~CUnreachablePort() { ::close(m_iListener); }
    CUnreachablePort(const CUnreachablePort&) = delete;
    CUnreachablePort& operator=(const CUnreachablePort&) = delete;

    [[nodiscard]] std::uint16_t Number() const { return m_iNumber; }

    /// Whether the next one really has to wait.
    [[nodiscard]] bool IsFull() const { return m_bFull; }

private:
    static constexpr std::size_t MostFirst = 64;
    static constexpr int PatienceMs = 400;

    int m_iListener;
    std::uint16_t m_iNumber = 0;
    std::vector<std::unique_ptr<QTcpSocket>> m_objFirst;  // those in the queue
    bool m_bFull = false;
};
