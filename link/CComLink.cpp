#include "link/CComLink.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace {

constexpr std::int16_t NoHandshaking = 0;
constexpr std::int16_t SingleCharacter = 1;

}  // namespace

CComLink::CComLink(ISerialPort& p_objPort, const CInterface& p_objInterface,
                   CAnswerRouter& p_objRouter, CLinkState& p_objState, ISessionEvents& p_objEvents,
                   CWaiter& p_objWaiter)
    : m_objPort(p_objPort)
    , m_objInterface(p_objInterface)
    , m_objRouter(p_objRouter)
    , m_objState(p_objState)
    , m_objEvents(p_objEvents)
    , m_objWaiter(p_objWaiter) {
    m_objPort.SetEvents(this);
}

CComLink::~CComLink() {
    m_objPort.SetEvents(nullptr);
}

bool CComLink::Open() {
    if (m_objWaiter.MustStop() || !OpenComPort() || !IsComPortOpen()) {
        return false;
    }
    return m_objWaiter.Yield();
}

bool CComLink::Close() {
    CloseComPort();
    TellState(CLinkStatus::State::Closed);
    return true;
}

bool CComLink::OpenComPort() {
    CloseComPort();
    const std::string strSettings = m_objInterface.GetSerialInfo();
    const std::int16_t iPort = m_objInterface.GetComPortNumber();
    m_strPort = "COM" + std::to_string(iPort);
    m_strLine = strSettings;
    m_objPort.SetSettings(strSettings);
    m_objPort.SetHandshaking(NoHandshaking);
    m_objPort.SetReceiveThreshold(SingleCharacter);
    m_objPort.SetInputLength(SingleCharacter);
    m_objPort.SetSendThreshold(SingleCharacter);
    m_objPort.SetPortNumber(iPort);
    const std::int32_t iResult = m_objPort.Open();
    if (iResult != ISerialPort::Opened) {
        CFailure objFailure =
            Failure(iResult == ISerialPort::AlreadyOpen ? CFailure::Kind::SerialHeld
                                                        : CFailure::Kind::SerialNotOpened,
                    iResult);
        objFailure.m_iReason = iResult;
        objFailure.m_objRefusal = m_objPort.Refusal();
        Tell(objFailure);
        return false;
    }
    m_bOpened = true;
    TellState(CLinkStatus::State::Open);
    return true;
}

void CComLink::CloseComPort() {
    ++m_iConnection;
    FailSendings();
    m_objPort.Close();
    m_bOpened = false;
    m_bNotSentTold = false;
}

bool CComLink::IsComPortOpen() const {
    return m_objPort.IsOpen();
}

bool CComLink::Exchange(const Bytes& p_objCommand, Bytes& /*p_objReceiveBuffer*/,
                        CFailure& p_objFailure, std::int16_t& /*p_iReceivedCount*/,
                        std::int16_t p_iReceiveLength) {
    if (!IsComPortOpen()) {
        p_objFailure = m_bOpened ? Lost() : Failure(CFailure::Kind::SerialNotOpen);
        Tell(p_objFailure);
        return false;
    }
    m_iExpectedLength = p_iReceiveLength;
    m_objState.m_iPendingAnswers = 1;
    const std::int64_t iConnection = m_iConnection;
    if (WriteComBytes(p_objCommand)) {
        if (std::exchange(m_bNotSentTold, false)) {
            TellState(CLinkStatus::State::Open);  // the port takes bytes again
        }
        return true;
    }
    if (!m_objWaiter.MustStop()) {
        p_objFailure = Failure(CFailure::Kind::SerialNotSent);
        if (iConnection == m_iConnection) {  // else it says nothing of how it stands now
            m_bNotSentTold = true;
            TellState(CLinkStatus::State::Failed, p_objFailure);
        }
        m_objEvents.OnFailure(p_objFailure);
    }
    return false;
}

bool CComLink::WriteComBytes(const Bytes& p_objBytes) {
    struct Listed {
        std::vector<Sending*>& m_objSendings;
        ~Listed() { m_objSendings.pop_back(); }  // whoever sends inside is done before
    };
    Sending objOwn{p_objBytes};
    m_objSendings.push_back(&objOwn);
    const Listed objListed{m_objSendings};
    std::exception_ptr objFault;
    while (!objOwn.IsOver() && !m_objWaiter.IsClosing()) {
        WriteNextByte();
        if (objOwn.m_bFailed) {
            break;
        }
        try {
            m_objWaiter.Yield();
        } catch (...) {
            // Half a command would spoil the next one: it goes out whole before this is told.
            objFault = std::current_exception();
        }
    }
    if (objFault) {
        std::rethrow_exception(objFault);
    }
    return !objOwn.m_bFailed && !m_objWaiter.MustStop();
}

void CComLink::WriteNextByte() {
    const auto objNext = std::ranges::find_if(
        m_objSendings, [](const Sending* p_objSending) { return !p_objSending->IsOver(); });
    Sending& objSending = **objNext;  // at least the caller's is not over
    if (m_objPort.Output({&objSending.m_objBytes[objSending.m_iSent], 1})) {
        ++objSending.m_iSent;
        ++m_objState.m_iHandedOut;
    } else {
        FailSendings();
    }
}

void CComLink::FailSendings() {
    for (Sending* const objSending : m_objSendings) {
        objSending->m_bFailed |= !objSending->IsOver();
    }
}

void CComLink::OnComm(std::int16_t p_iEvent) {
    try {
        HandleEvent(p_iEvent);
    } catch (...) {
        // No exception may leave an event; the handler that waits, if one does, gets it.
        m_objWaiter.StoreFault();
    }
}

void CComLink::OnGone() {
    m_bNotSentTold = false;
    try {
        TellState(CLinkStatus::State::Failed, Failure(CFailure::Kind::SerialLost));
    } catch (...) {
        m_objWaiter.StoreFault();
    }
}

void CComLink::HandleEvent(std::int16_t p_iEvent) {
    switch (p_iEvent) {
    case SerialSend:
        m_objWaiter.Yield();
        break;
    case SerialReceive:
        Receive();
        break;
    case SerialClearToSend:
        ShowClearToSend();
        break;
    case SerialReceiveOverrun:
        m_objEvents.OnFailure(Failure(CFailure::Kind::SerialOverrun));
        break;
    default:
        break;
    }
}

void CComLink::Receive() {
    m_objPort.SetReceiveThreshold(SingleCharacter);
    m_objPort.SetInputLength(SingleCharacter);
    for (const std::uint8_t iCharacter : m_objPort.Input()) {
        m_objRouter.TakeSerial(iCharacter, m_iExpectedLength);
    }
}

void CComLink::ShowClearToSend() {
    const bool bClear = m_objPort.ClearToSend();
    if (!bClear && m_iOfflineShown == 0) {
        m_iOfflineShown = 1;
        m_objEvents.OnStatus("OFF LINE");
    } else if (bClear && m_iOfflineShown == 1) {
        m_iOfflineShown = 0;
        m_objEvents.OnStatus("ON LINE");
    }
}

CFailure CComLink::Lost() const {
    return IsComPortOpen() ? CFailure{} : Failure(CFailure::Kind::SerialLost);
}

CFailure CComLink::Failure(CFailure::Kind p_iKind, std::int32_t p_iNumber) const {
    CFailure objFailure{p_iKind};
    objFailure.m_iNumber = p_iNumber;
    objFailure.m_strDevice = m_strPort;
    return objFailure;
}

void CComLink::TellState(CLinkStatus::State p_iState, const CFailure& p_objFailure) {
    const std::string strWhere = m_strPort.empty() ? "" : m_strPort + " " + m_strLine;
    m_objEvents.OnLinkStatus({CInterface::SerialInterface, p_iState, strWhere, p_objFailure});
}

void CComLink::Tell(const CFailure& p_objFailure) {
    TellState(CLinkStatus::State::Failed, p_objFailure);
    m_objEvents.OnFailure(p_objFailure);
}
