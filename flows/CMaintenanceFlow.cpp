#include "flows/CMaintenanceFlow.h"

#include "flows/MHandler.h"

namespace {

constexpr std::int16_t PauseSeconds = 1;
constexpr std::int16_t UsbHeadCheckSeconds = 5;

}  // namespace

CMaintenanceFlow::CMaintenanceFlow(const CInterface& p_objInterface,
                                   CCommandExchange& p_objExchange, CAnswerRouter& p_objRouter,
                                   CBusy& p_objBusy, CWaiter& p_objWaiter, IExchangeView& p_objView)
    : m_objInterface(p_objInterface)
    , m_objExchange(p_objExchange)
    , m_objRouter(p_objRouter)
    , m_objBusy(p_objBusy)
    , m_objWaiter(p_objWaiter)
    , m_objView(p_objView) {}

void CMaintenanceFlow::GetStatus() {
    MHandler::Run(m_objWaiter, [this] { m_objExchange.RequestStatus(); });
}

void CMaintenanceFlow::HeadCheck() {
    MHandler::Run(m_objWaiter, [this] { RunHeadCheck(); });
}

void CMaintenanceFlow::RunHeadCheck() {
    const bool bOtherWaits = m_objRouter.ExpectsHeadCheck();
    m_objRouter.ExpectHeadCheck();
    m_objView.ShowStatus({});
    m_objView.ShowHeadCheck({});
    bool bSent = false;
    m_objExchange.SendMaintenance(MCommand::HeadCheck, bSent);
    if (!bSent && !bOtherWaits) {
        m_objRouter.ForgetHeadCheck();  // what was not asked for has no result
    }
    if (m_objInterface.GetActiveInterface() != CInterface::UsbInterface) {
        m_objExchange.Pause(PauseSeconds);
        return;
    }
    if (!bSent) {
        return;
    }
    {
        const CBusy::Flow objFlow(m_objBusy);
        m_objExchange.Pause(UsbHeadCheckSeconds);
    }
    m_objRouter.ExpectHeadCheck();
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
    const CBusy::Flow objFlow(m_objBusy);
    if (m_objExchange.Send(p_strCommand)) {
        m_objExchange.Pause(PauseSeconds);
    }
}

void CMaintenanceFlow::AdjustPaperEnd() {
    const CBusy::Flow objFlow(m_objBusy);
    for (const std::int16_t iPass : {std::int16_t{0}, std::int16_t{1}}) {
        m_objExchange.Send(MCommand::SensorAdjustPaperEnd(iPass));
    }
    m_objExchange.Pause(PauseSeconds);
}
