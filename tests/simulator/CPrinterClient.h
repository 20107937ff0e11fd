#pragma once

#include "tests/simulator/CSimulatorProcess.h"

#include <QHostAddress>
#include <QTcpSocket>

#include <cstdint>
#include <string>
#include <vector>

/// A client of the simulator that notes what arrives, block by block.
class CPrinterClient {
public:
    static constexpr int PatienceMs = 20'000;

    explicit CPrinterClient(std::uint16_t p_iPort)
        : CPrinterClient("127.0.0.1", p_iPort) {}

    CPrinterClient(const QString& p_strHost, std::uint16_t p_iPort) {
        QObject::connect(&m_objSocket, &QTcpSocket::readyRead, &m_objSocket, [this] {
            m_strBlocks.push_back(m_objSocket.readAll().toStdString());
            m_strReceived += m_strBlocks.back();
        });
        m_objSocket.connectToHost(QHostAddress(p_strHost), p_iPort);
    }

    void Send(const std::string& p_strBytes) {
        m_objSocket.write(p_strBytes.data(), static_cast<qint64>(p_strBytes.size()));
    }
    bool WaitForConnection() {
        return CSimulatorProcess::WaitUntil(
            [this] { return m_objSocket.state() == QAbstractSocket::ConnectedState; }, PatienceMs);
    }
    bool WaitForBytes(std::size_t p_iCount) {
        return CSimulatorProcess::WaitUntil([&] { return m_strReceived.size() >= p_iCount; },
                                            PatienceMs);
    }
    bool WaitForEnd() {
        return CSimulatorProcess::WaitUntil(
            [this] { return m_objSocket.state() == QAbstractSocket::UnconnectedState; },
            PatienceMs);
    }

    /// Sends p_strCommand and gives what comes next, as many bytes as p_iCount.
    std::string Ask(const std::string& p_strCommand, std::size_t p_iCount) {
        m_strReceived.clear();
        Send(p_strCommand);
        WaitForBytes(p_iCount);
        return m_strReceived;
    }

    /// Whether a connection is refused.
    static bool IsRefused(const QString& p_strHost, std::uint16_t p_iPort) {
        CPrinterClient objClient(p_strHost, p_iPort);
        return objClient.WaitForEnd() &&
               objClient.m_objSocket.error() == QAbstractSocket::ConnectionRefusedError;
    }

    QTcpSocket m_objSocket;
    std::string m_strReceived;
    std::vector<std::string> m_strBlocks;
};
