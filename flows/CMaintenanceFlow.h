#pragma once

#include "link/CPrinterSession.h"
#include "protocol/MCommand.h"

#include <functional>

/// The service functions: each sends its command and lets the printer do the rest.
///
/// Each is one handler: it runs to its end, shows its own failures, lets no exception out and
/// leaves the buttons enabled. Nothing is asked before and nothing is told after; what the printer
/// answers is shown as its status. Arguments are list positions, counted from 0; with one that has
/// not just a single digit nothing is sent.
class CMaintenanceFlow {
public:
    /// p_objSession is not owned and outlives this.
    explicit CMaintenanceFlow(CPrinterSession& p_objSession);

    /// Asks for the printer's status and shows it; as the result of a head check that has had none
    /// so far.
    void GetStatus();

    /// Has the print head checked; the answer goes to the head check's own label, however late it
    /// comes, unless the command could not be sent at all. Takes about a second, on USB five: there
    /// the answer has to be asked for. On USB it ends at once when the command could not be sent.
    void HeadCheck();

    /// Puts the settings or the counters back, as p_iMode says. p_iDestination counts in mode 0
    /// only; below 1 it is none.
    void RamClear(std::int16_t p_iMode, std::int16_t p_iDestination);

    void ThresholdCalib(std::int16_t p_iSensor);

    // The three steps of the sensor adjustment. Each works alone and holds the buttons for a
    // second after its command. A step whose command cannot be sent ends at once, quietly; the
    // last one sends both its commands whatever becomes of them.
    void SensorAdjustReflect();
    void SensorAdjustTrans();
    void SensorAdjustPaperEnd();

    /// p_objFields is asked for the fields inside the handler; it may throw. Nothing is sent then,
    /// nor when they do not have their exact widths.
    void TestPrint(const std::function<MCommand::TestPrintFields()>& p_objFields);
    void DiagPrint(std::int16_t p_iPrintType);

private:
    void RunHeadCheck();
    void SendAsHandler(const std::string& p_strCommand);
    void AdjustSensor(const std::string& p_strCommand);
    void AdjustPaperEnd();

    CPrinterSession& m_objSession;
    CCommandExchange& m_objExchange;  // the session's, as the next one
    CWaiter& m_objWaiter;
};
