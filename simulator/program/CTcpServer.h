#pragma once

#include "simulator/CFaultSettings.h"
#include "simulator/CPrinter.h"
#include "simulator/CPrinterLog.h"
#include "simulator/program/CConnectionRoom.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTimer>

#include <cstddef>
#include <cstdint>

/// Puts a printer on the network: every connection speaks to the same one, and there may be as many
/// as the system has room for. Further ones wait until there is.
///
/// Without power the printer is not reachable: its connections are dropped, new ones refused. When
/// it has moved by its settings it is reachable at the new place only, provided that this is an
/// address of 127.0.0.0/8 that can be had, and nowhere otherwise.
class CTcpServer : public QObject {
public:
    /// None of the references is owned; all must outlive the server.
    CTcpServer(CPrinter& p_objPrinter, CFaultSettings p_objFaults, CPrinterLog& p_objLog,
               CConnectionRoom& p_objRoom);

    /// Takes this address for it, any free port when p_iPort is 0. False when the address cannot be
    /// had; ErrorText() says why.
    bool Listen(const QHostAddress& p_objHost, std::uint16_t p_iPort);
    [[nodiscard]] QString ErrorText() const { return m_objServer.errorString(); }

    /// The port listened on, and the address with it as text.
    [[nodiscard]] std::uint16_t Port() const { return m_objServer.serverPort(); }
    [[nodiscard]] const std::string& Address() const { return m_objLog.Address(); }

    /// Gives the address back, as before Listen.
    void Close() { m_objServer.close(); }

    /// The address stays; tells so. With p_bTeach the printer's settings name it, which must be one
    /// of four numbers.
    void Begin(bool p_bTeach);

    /// The room is full, or so no longer: takes no more connections, or those that have waited.
    void FollowRoom();

    /// Takes the printer's power, and gives it back after the time that its faults tell. Does
    /// nothing while there is no power.
    void PowerCycle();

private:
    void Accept();
    void Look();
    void LosePower();
    void ComeBack();
    void Move();
    void Drop(bool p_bAll);
    bool ListenAtPlace();
    void CannotAccept();

    CPrinter& m_objPrinter;
    CFaultSettings m_objFaults;
    CPrinterLog& m_objLog;
    CConnectionRoom& m_objRoom;
    QTcpServer m_objServer;
    QTimer m_objPowerBack;
    QTimer m_objAcceptAgain;
    QTimer m_objTurn;  // runs when connections have been taken this turn
    int m_iTakenThisTurn = 0;
    QHostAddress m_objHost;     // where it was put
    std::uint16_t m_iPort = 0;  // there
    CPlace m_objPlace;          // the printer's, as far as this has followed it
    bool m_bOn = true;
    std::size_t m_iConnections = 0;  // ever accepted
};
