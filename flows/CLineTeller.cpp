#include "flows/CLineTeller.h"

#include "flows/MDoingText.h"
#include "flows/MLinkText.h"

#include <utility>

using Kind = CFailure::Kind;
using State = CLinkStatus::State;

CLineTeller::Doing::Doing(CLineTeller& p_objTeller, std::string p_strName)
    : m_objTeller(p_objTeller)
    , m_objOuter(std::exchange(p_objTeller.m_objDoing, this)) {
    m_objState.m_strName = std::move(p_strName);
    m_objTeller.ShowDoing();
}

CLineTeller::Doing::~Doing() {
    m_objTeller.m_objDoing = m_objOuter;
    m_objTeller.ShowDoing();
}

CLineTeller::CLineTeller(ISessionEvents& p_objNext, const CInterface& p_objInterface,
                         IStatusLineView& p_objView)
    : m_objNext(p_objNext)
    , m_objInterface(p_objInterface)
    , m_objView(p_objView) {
    for (std::size_t i = 0; i < m_objStatus.size(); ++i) {
        m_objStatus[i].m_iInterface = static_cast<std::int16_t>(i);
    }
}

void CLineTeller::ShowLink() {
    const auto iActive = static_cast<std::size_t>(m_objInterface.GetActiveInterface());
    const std::string strPort = "COM" + std::to_string(m_objInterface.GetComPortNumber());
    m_objView.ShowLink(iActive < m_objStatus.size() ? MLinkText::Of(m_objStatus[iActive], strPort)
                                                    : "");
    if (m_fnLanPlace) {
        m_fnLanPlace();
    }
}

std::string CLineTeller::LanPlace() const {
    const CLinkStatus& objLan = m_objStatus[CInterface::LanInterface];
    const bool bTalks = m_objInterface.GetActiveInterface() == CInterface::LanInterface &&
                        objLan.m_iState == State::Open;
    return bTalks ? objLan.m_strWhere : "";
}

void CLineTeller::OnLinkStatus(const CLinkStatus& p_objStatus) {
    const auto iInterface = static_cast<std::size_t>(p_objStatus.m_iInterface);
    if (iInterface < m_objStatus.size()) {
        // Why a port did not open counts more than that a command has found it closed.
        CLinkStatus& objStatus = m_objStatus[iInterface];
        const bool bKnown = objStatus.m_iState == State::Failed &&
                            p_objStatus.m_iState == State::Failed &&
                            p_objStatus.m_objFailure.m_iKind == Kind::SerialNotOpen;
        objStatus = bKnown ? objStatus : p_objStatus;
        m_iLanConnections += p_objStatus.m_iInterface == CInterface::LanInterface &&
                                     p_objStatus.m_iState == State::Opening
                                 ? 1
                                 : 0;
        ShowLink();
        ShowDoing();
    }
    m_objNext.OnLinkStatus(p_objStatus);
}

void CLineTeller::OnStep(std::int16_t p_iStep, std::int16_t p_iSteps) {
    if (m_objDoing != nullptr) {
        m_objDoing->m_objState.m_iStep = p_iStep;
        m_objDoing->m_objState.m_iSteps = p_iSteps;
        ShowDoing();
    }
    m_objNext.OnStep(p_iStep, p_iSteps);
}

void CLineTeller::OnWaiting(std::int16_t p_iSeconds) {
    if (m_objDoing != nullptr) {
        m_objDoing->m_objState.m_iWaiting = p_iSeconds;
        ShowDoing();
    }
    m_objNext.OnWaiting(p_iSeconds);
}

void CLineTeller::OnFailure(const CFailure& p_objFailure) {
    if (p_objFailure.m_iKind != Kind::UsbNoAnswer) {  // a command that asks for one fails by it
        Note(p_objFailure);
    }
    m_objNext.OnFailure(p_objFailure);
}

void CLineTeller::OnCommandFailed(const CFailure& p_objFailure) {
    Note(p_objFailure);
    m_objNext.OnCommandFailed(p_objFailure);
}

void CLineTeller::Note(const CFailure& p_objFailure) {
    if (m_objDoing != nullptr && p_objFailure.m_iKind != Kind::SerialOverrun) {
        m_objDoing->m_objFailure = p_objFailure;
    }
}

bool CLineTeller::IsConnecting() const {
    return m_objStatus[CInterface::LanInterface].m_iState == State::Opening;
}

void CLineTeller::ShowDoing() {
    CDoingState objState = m_objDoing != nullptr ? m_objDoing->m_objState : CDoingState{};
    objState.m_bConnecting = IsConnecting();
    const bool bCounted = !objState.m_bConnecting && objState.m_iSteps > 1;
    m_objView.ShowDoing(MDoingText::Of(objState), bCounted ? objState.m_iStep : std::int16_t{0},
                        bCounted ? objState.m_iSteps : std::int16_t{0});
    m_objView.ShowStop(objState.m_bConnecting);
}
