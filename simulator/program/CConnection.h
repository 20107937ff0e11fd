#pragma once

#include "simulator/CSession.h"
#include "simulator/program/CStepQueue.h"

#include <QTcpSocket>
#include <QTimer>

#include <functional>

/// One accepted connection: feeds what arrives to a session and carries its steps out in time.
///
/// Holds a bounded amount whatever the other side does: it reads no further while too many steps
/// wait or too many bytes are not yet taken, and leaves the rest to the network. Deletes itself
/// when the connection ends.
class CConnection : public QObject {
public:
    /// @param p_objSocket connected; the connection becomes its owner.
    /// @param p_fnReceived called whenever the session has taken bytes.
    CConnection(QTcpSocket* p_objSocket, CSession p_objSession, std::function<void()> p_fnReceived,
                QObject* p_objParent);

    /// Begins: takes what has arrived, closes if the session says so.
    void Start();

    /// Ends it at once: what is to be sent is forgotten, what has come stays unread.
    void Abort();

    /// True when it ends by itself, behind the last answer.
    [[nodiscard]] bool IsEnding() const { return m_objSession.IsClosing(); }

private:
    void End();
    void Work();
    void Read();
    /// True when there may be more to do at once, and others have their turn first.
    bool Run();
    void CarryOut(const CWireStep& p_objStep);
    [[nodiscard]] bool CanTakeMore() const;

    QTcpSocket* m_objSocket;
    CSession m_objSession;
    std::function<void()> m_fnReceived;
    CStepQueue m_objSteps;
    QTimer m_objTurn;  // lets other connections have their turn before more is read
    bool m_bClosing = false;
    bool m_bEnded = false;
};
