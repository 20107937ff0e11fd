#include "flows/CMaintenanceFlow.h"

#include "flows/MHandler.h"

namespace {

constexpr std::int16_t PauseSeconds = 1;
constexpr std::int16_t AskedForHeadCheckSeconds = 5;

}  // namespace

CMaintenanceFlow::CMaintenanceFlow(CPrinterSession& p_objSession)
    : m_objSession(p_objSession)
    , m_objExchange(p_objSession.Exchange())
    , m_objWaiter(p_objSession.Waiter()) {}

void CMaintenanceFlow::GetStatus() {
    MHandler::Run(m_objWaiter, [this] { m_objExchange.RequestStatus(); });
}

void CMaintenanceFlow::HeadCheck() {
    MHandler::Run(m_objWaiter, [this] { RunHeadCheck(); });
}

void CMaintenanceFlow::RunHeadCheck() {
    CAnswerRouter& objRouter = m_objSession.Router();
    const bool bOtherWaits = objRouter.ExpectsHeadCheck();
    objRouter.ExpectHeadCheck();
    m_objSession.Events().OnStatus({});
    m_objSession.Events().OnHeadCheck({});
    const bool bSent = m_objExchange.SendMaintenance(MCommand::HeadCheck).m_bSent;
    if (!bSent && !bOtherWaits) {
        objRouter.ForgetHeadCheck();  // what was not asked for has no result
    }
    // A link whose answers come with the exchange has to be asked for the result.
    if (m_objExchange.ActiveAnswering() != ILink::Answering::AtOnce) {
        m_objExchange.Pause(PauseSeconds);
        return;
    }
    if (!bSent) {
        return;
    }
    {
        const CBusy::Flow objFlow(m_objSession.Busy());
        m_objExchange.Pause(AskedForHeadCheckSeconds);
    }
    objRouter.ExpectHeadCheck();
    m_objExchange.RequestStatus();
}

void CMaintenanceFlow::RamClear(std::int16_t p_iMode, std::int16_t p_iDestination) {
    const auto iDestination = static_cast<std::int16_t>(p_iDestination - 1);
    const bool bHasDestination = p_iMode == MCommand::ClearParameters && p_iDestination >= 1;
    if (MCommand::IsPosition(p_iMode) && (!bHasDestination || MCommand::IsPosition(iDestination))) {
        SendAsHandler(MCommand::RamClear(p_iMode, p_iDestination));
    }
}

void CMaintenanceFlow::ThresholdCalib(std::int16_t p_iSensor) {
    const auto iCountedFrom1 = static_cast<std::int16_t>(p_iSensor + 1);
    if (MCommand::IsPosition(p_iSensor) && MCommand::IsPosition(iCountedFrom1)) {
        SendAsHandler(MCommand::ThresholdCalib(p_iSensor));
    }
}

void CMaintenanceFlow::TestPrint(const std::function<MCommand::TestPrintFields()>& p_objFields) {
    MHandler::Run(m_objWaiter, [&] {
        const MCommand::TestPrintFields objFields = p_objFields();
        if (MCommand::IsTestPrintExact(objFields)) {
            m_objExchange.SendMaintenance(MCommand::TestPrint(objFields));
        }
    });
}

void CMaintenanceFlow::DiagPrint(std::int16_t p_iPrintType) {
    if (MCommand::IsPosition(p_iPrintType)) {
        SendAsHandler(MCommand::DiagPrint(p_iPrintType));
    }
}

void CMaintenanceFlow::SensorAdjustReflect() {
    MHandler::Run(m_objWaiter, [this] { AdjustSensor(MCommand::SensorAdjustReflect); });
}

void CMaintenanceFlow::SensorAdjustTrans() {
    MHandler::Run(m_objWaiter, [this] { AdjustSensor(MCommand::SensorAdjustTrans); });
}

void CMaintenanceFlow::SensorAdjustPaperEnd() {
    MHandler::Run(m_objWaiter, [this] { AdjustPaperEnd(); });
}

void CMaintenanceFlow::SendAsHandler(const std::string& p_strCommand) {
    MHandler::Run(m_objWaiter, [&] { m_objExchange.SendMaintenance(p_strCommand); });
}

void CMaintenanceFlow::AdjustSensor(const std::string& p_strCommand) {
    const CBusy::Flow objFlow(m_objSession.Busy());
    if (m_objExchange.Send(p_strCommand)) {
        m_objExchange.Pause(PauseSeconds);
    }
}

void CMaintenanceFlow::AdjustPaperEnd() {
    const CBusy::Flow objFlow(m_objSession.Busy());
    for (const std::int16_t iPass : {std::int16_t{0}, std::int16_t{1}}) {
        m_objExchange.Send(MCommand::SensorAdjustPaperEnd(iPass));
    }
    m_objExchange.Pause(PauseSeconds);
}
