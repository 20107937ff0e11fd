#pragma once

#include "simulator/CSession.h"
#include "simulator/program/CPortAlias.h"
#include "simulator/program/CPseudoTerminal.h"
#include "simulator/program/CStepQueue.h"

#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// Puts a printer on a serial line that any program can open.
///
/// A session lasts from the opening of the port to its closing; answers that are due after that
/// are lost, as on a line that nobody listens to. The fault that closes a connection pulls the
/// line out: the port hangs up, and a new one takes its place under the same alias. Without power
/// the port stays, and what is sent to it is lost.
class CSerialServer : public QObject {
public:
    /// What the server tells: the name of the port, each time there is a new one, and why there
    /// is none any more.
    struct Told {
        std::function<void(const std::string& p_strName)> m_fnListening;
        std::function<void(const std::string& p_strError)> m_fnFailed;
    };

    /// The printer and the log are not owned and must outlive the server.
    CSerialServer(CPrinter& p_objPrinter, CFaultSettings p_objFaults, ISimulatorLog& p_objLog,
                  Told p_objTold);

    /// Opens the line and tells its name.
    /// @param p_strAlias a path at which a link to it is made, and kept as long as this lives;
    ///        empty for none. Throws std::runtime_error when that or the line cannot be had.
    void Listen(const std::string& p_strAlias);

    /// Takes the printer's power, and gives it back after the time that its faults tell. Does
    /// nothing while there is no power.
    void PowerCycle();

private:
    void PlugIn();
    void PullOut();
    void Look();
    void Begin();
    void End(bool p_bPulledOut);
    void Work();
    void Read();
    void Run();
    void CarryOut(const CWireStep& p_objStep);
    void Send();
    void LosePower();
    void ComeBack();
    [[nodiscard]] bool CanTakeMore() const;

    CPrinter& m_objPrinter;
    CFaultSettings m_objFaults;
    ISimulatorLog& m_objLog;
    Told m_objTold;
    std::unique_ptr<CPortAlias> m_objAlias;
    std::unique_ptr<CPseudoTerminal> m_objTerminal;
    std::unique_ptr<QSocketNotifier> m_objArrived;
    std::optional<CSession> m_objSession;  // while a program has the port open
    CStepQueue m_objSteps;
    QTimer m_objLook;
    QTimer m_objPullOut;
    QTimer m_objPowerBack;
    std::string m_strUnsent;
    std::size_t m_iSessions = 0;  // ever begun
    bool m_bOn = true;
};
