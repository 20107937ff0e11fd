#include "simulator/program/CTcpServer.h"

#include "simulator/program/CConnection.h"

#include <utility>

CTcpServer::CTcpServer(CPrinter& p_objPrinter, CFaultSettings p_objFaults, ISimulatorLog& p_objLog)
    : m_objPrinter(p_objPrinter)
    , m_objFaults(std::move(p_objFaults))
    , m_objLog(p_objLog) {
    connect(&m_objServer, &QTcpServer::newConnection, this, &CTcpServer::Accept);
}

bool CTcpServer::Listen(const QHostAddress& p_objHost, std::uint16_t p_iPort) {
    return m_objServer.listen(p_objHost, p_iPort);
}

void CTcpServer::Accept() {
    while (QTcpSocket* const objSocket = m_objServer.nextPendingConnection()) {
        CSession objSession(++m_iConnections, m_objPrinter, m_objFaults, m_objLog);
        if (static_cast<std::size_t>(children().size()) >= MostConnections) {
            objSession.Note("! closed at once: too many connections");
            objSocket->abort();
            objSocket->deleteLater();
            continue;
        }
        auto* const objConnection = new CConnection(objSocket, std::move(objSession), this);
        objConnection->Start();
    }
}
