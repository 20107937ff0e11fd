#pragma once

#include "simulator/CFaultSettings.h"
#include "simulator/CPrinter.h"
#include "simulator/ISimulatorLog.h"

#include <QHostAddress>
#include <QTcpServer>

#include <cstddef>
#include <cstdint>

/// Puts a printer on the network: every connection speaks to the same one.
class CTcpServer : public QObject {
public:
    /// Further connections are closed at once, so that a flood of them cannot exhaust the system.
    static constexpr std::size_t MostConnections = 64;

    /// The printer and the log are not owned and must outlive the server.
    CTcpServer(CPrinter& p_objPrinter, CFaultSettings p_objFaults, ISimulatorLog& p_objLog);

    /// Begins to listen. False when the address cannot be had; ErrorText() says why.
    bool Listen(const QHostAddress& p_objHost, std::uint16_t p_iPort);
    [[nodiscard]] QString ErrorText() const { return m_objServer.errorString(); }

    /// The port listened on.
    [[nodiscard]] std::uint16_t Port() const { return m_objServer.serverPort(); }

private:
    void Accept();

    CPrinter& m_objPrinter;
    CFaultSettings m_objFaults;
    ISimulatorLog& m_objLog;
    QTcpServer m_objServer;
    std::size_t m_iConnections = 0;  // ever accepted
};
