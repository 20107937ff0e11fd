#include "simulator/program/CTcpServer.h"

#include "simulator/program/CConnection.h"
#include "simulator/program/MAddress.h"

#include <utility>

namespace {

constexpr int MostWaiting = 4096;  // connections that the system keeps until there is room

constexpr int MostATurn = 16;  // connections taken before those that stand have their turn

/// The time after which a connection that could not be taken is tried again.
constexpr std::chrono::milliseconds AcceptAgain{200};

constexpr std::uint32_t HighestPort = 65'535;

}  // namespace

CTcpServer::CTcpServer(CPrinter& p_objPrinter, CFaultSettings p_objFaults, CPrinterLog& p_objLog,
                       CConnectionRoom& p_objRoom)
    : m_objPrinter(p_objPrinter)
    , m_objFaults(std::move(p_objFaults))
    , m_objLog(p_objLog)
    , m_objRoom(p_objRoom) {
    // Without room the server takes one more and leaves the others to the system.
    m_objServer.setMaxPendingConnections(1);
    m_objServer.setListenBacklogSize(MostWaiting);
    m_objPowerBack.setSingleShot(true);
    m_objAcceptAgain.setSingleShot(true);
    m_objAcceptAgain.setInterval(AcceptAgain);
    m_objTurn.setSingleShot(true);
    connect(&m_objServer, &QTcpServer::newConnection, this, &CTcpServer::Accept);
    connect(&m_objTurn, &QTimer::timeout, this, [this] {
        m_iTakenThisTurn = 0;
        Accept();
    });
    connect(&m_objServer, &QTcpServer::acceptError, this, &CTcpServer::CannotAccept);
    connect(&m_objPowerBack, &QTimer::timeout, this, &CTcpServer::ComeBack);
    connect(&m_objAcceptAgain, &QTimer::timeout, this, &CTcpServer::FollowRoom);
}

bool CTcpServer::Listen(const QHostAddress& p_objHost, std::uint16_t p_iPort) {
    m_objHost = p_objHost;
    if (!m_objServer.listen(p_objHost, p_iPort)) {
        return false;
    }
    m_iPort = m_objServer.serverPort();
    m_objLog.SetAddress(MAddress::Text(m_objHost, m_iPort));
    return true;
}

void CTcpServer::Begin(bool p_bTeach) {
    if (p_bTeach) {
        const quint32 iAddress = m_objHost.toIPv4Address();
        const auto iByte = [&](unsigned p_iShift) {
            return static_cast<std::uint8_t>(iAddress >> p_iShift);
        };
        m_objPrinter.SetPlace({iByte(24), iByte(16), iByte(8), iByte(0)}, m_iPort);
    }
    m_objPlace = m_objPrinter.Place();
    m_objLog.Event(0, "listening", {});
}

void CTcpServer::Accept() {
    while (!m_objRoom.IsFull() && m_objServer.hasPendingConnections()) {
        m_objTurn.start(0);
        if (++m_iTakenThisTurn > MostATurn) {
            return;  // those who connect without end wait for all others
        }
        CSession objSession(++m_iConnections, m_objPrinter, m_objFaults, m_objLog);
        auto* const objConnection = new CConnection(
            m_objServer.nextPendingConnection(), std::move(objSession), [this] { Look(); }, this);
        connect(objConnection, &QObject::destroyed, this, [this] { m_objRoom.Leave(); });
        m_objRoom.Enter();
        if (m_objRoom.IsFull()) {
            m_objLog.Line(0,
                          "! no room for more connections: the system allows no more open files");
            m_objLog.Event(0, "full", {});
        }
        objConnection->Start();
    }
}

void CTcpServer::FollowRoom() {
    if (!m_objServer.isListening()) {
        return;
    }
    if (m_objRoom.IsFull()) {
        m_objServer.pauseAccepting();
        return;
    }
    Accept();
    if (!m_objRoom.IsFull()) {
        m_objServer.resumeAccepting();
    }
}

void CTcpServer::CannotAccept() {
    if (m_objAcceptAgain.isActive()) {
        return;
    }
    const std::string strWhy = m_objServer.errorString().toStdString();
    m_objLog.Line(0, "! a connection cannot be taken: " + strWhy);
    m_objLog.Event(0, "not-accepted", CJsonObject().Text("why", strWhy));
    m_objAcceptAgain.start();
}

void CTcpServer::PowerCycle() {
    if (m_objPrinter.IsOn()) {
        m_objPrinter.PowerOff();
        Look();
    }
}

void CTcpServer::Look() {
    if (m_bOn && !m_objPrinter.IsOn()) {
        LosePower();
    } else if (m_objPrinter.Place() != m_objPlace) {
        Drop(false);
        Move();
    }
}

void CTcpServer::LosePower() {
    m_bOn = false;
    m_objLog.Event(0, "power", CJsonObject().Flag("on", false));
    m_objServer.close();
    Drop(true);
    m_objLog.Line(0, "! power off");  // whoever reads this is refused from now on
    if (m_objPrinter.Faults().m_iPowerBack) {
        m_objPowerBack.start(*m_objPrinter.Faults().m_iPowerBack);
    }
}

void CTcpServer::ComeBack() {
    m_objPrinter.PowerOn();
    m_bOn = true;
    m_objLog.Event(0, "power", CJsonObject().Flag("on", true));
    Move();
    m_objLog.Line(0, "! power on");  // whoever reads this finds it reachable again
}

void CTcpServer::Move() {
    m_objServer.close();
    const CPlace objBefore = std::exchange(m_objPlace, m_objPrinter.Place());
    const bool bMoved = m_objPlace != objBefore;
    const bool bListens = ListenAtPlace();
    FollowRoom();
    if (bMoved || !bListens) {
        m_objLog.Line(0, "! " + std::string(bMoved ? "moved to " : "at ") + Address() +
                             (bListens ? "" : ", not reachable there"));
    }
    if (bMoved) {
        m_objLog.Event(0, "moved", {});
    }
    m_objLog.Event(0, bListens ? "listening" : "unreachable", {});
}

bool CTcpServer::ListenAtPlace() {
    const CPlace& objFirst = m_objPrinter.FirstPlace();
    const bool bHere = m_objPlace.m_strAddress == objFirst.m_strAddress;
    const auto objHost =
        bHere ? m_objHost : QHostAddress(QString::fromStdString(m_objPlace.m_strAddress));
    const std::uint32_t iPort =
        m_objPlace.m_iPort == objFirst.m_iPort ? m_iPort : m_objPlace.m_iPort;
    m_objLog.SetAddress(objHost.isNull() ? m_objPlace.m_strAddress + ":" + std::to_string(iPort)
                                         : MAddress::Text(objHost, iPort));
    const bool bAllowed = bHere || objHost.isInSubnet(QHostAddress("127.0.0.0"), 8);
    return m_objPlace.m_bSocket && bAllowed && iPort > 0 && iPort <= HighestPort &&
           m_objServer.listen(objHost, static_cast<std::uint16_t>(iPort));
}

void CTcpServer::Drop(bool p_bAll) {
    for (QObject* const objChild : QObjectList(children())) {
        auto* const objConnection = dynamic_cast<CConnection*>(objChild);
        if (objConnection != nullptr && (p_bAll || !objConnection->IsEnding())) {
            objConnection->Abort();
        }
    }
}
