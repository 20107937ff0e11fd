#include "link/CLanLink.h"

#include "model/MNumber.h"

namespace {

/// How long a wait may sleep that has no end of its own: whatever it is for wakes it.
constexpr double LongSeconds = 1;

}  // namespace

CLanLink::CLanLink(ITcpClient& p_objSocket, const CInterface& p_objInterface,
                   CAnswerRouter& p_objRouter, CLinkState& p_objState, CBusy& p_objBusy,
                   CWaiter& p_objWaiter, ISessionEvents& p_objEvents)
    : m_objSocket(p_objSocket)
    , m_objInterface(p_objInterface)
    , m_objRouter(p_objRouter)
    , m_objState(p_objState)
    , m_objBusy(p_objBusy)
    , m_objWaiter(p_objWaiter)
    , m_objEvents(p_objEvents) {
    m_objSocket.SetEvents(this);
}

CLanLink::~CLanLink() {
    m_objSocket.SetEvents(nullptr);
}

bool CLanLink::Open() {
    if (m_objWaiter.MustStop()) {
        return false;
    }
    ++m_iConnection;
    m_bHasConnected = false;
    m_bStopped = false;
    m_objState.m_iConnected = 0;
    m_objState.m_iSendComplete = 0;
    m_objState.m_iLinkError = 0;
    m_objState.m_iReplyReceived = 0;
    m_objState.m_iStatusReceived = 0;
    m_objError = {};
    SetRemote();
    m_objSocket.Connect();
    const CBusy::Flow objFlow(m_objBusy);
    TellState(CLinkStatus::State::Opening);
    while (m_objWaiter.YieldFor(LongSeconds) && !m_bStopped) {
        if (m_bHasConnected) {
            return true;
        }
        if (m_objState.m_iLinkError == -1) {
            m_objEvents.OnFailure(Failure(CFailure::Kind::LanNotConnected));
            return false;
        }
    }
    Close();
    return false;
}

void CLanLink::StopOpening() {
    m_bStopped = true;
    if (!m_bHasConnected) {
        Disconnect();  // it must not connect, nor tell an error, before the wait has ended
    }
}

bool CLanLink::Close() {
    ++m_iConnection;
    Disconnect();
    TellState(CLinkStatus::State::Closed);
    return true;
}

void CLanLink::Disconnect() {
    m_objSocket.Close();
    m_objState.m_iConnected = 0;
}

CFailure CLanLink::WithoutConnection() const {
    return Failure(CFailure::Kind::LanNotSent);
}

CFailure CLanLink::Lost() const {
    if (m_objState.m_iConnected == 1) {
        return {};
    }
    return Failure(m_objState.m_iLinkError == -1 ? CFailure::Kind::LanError
                                                 : CFailure::Kind::LanClosed);
}

bool CLanLink::Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer,
                        CFailure& p_objFailure, std::int16_t& /*p_iReceivedCount*/,
                        std::int16_t p_iReceiveLength) {
    p_objReceiveBuffer.assign(static_cast<std::size_t>(p_iReceiveLength), 0);
    while (!m_objSocket.GetData().empty()) {
        // What a former exchange has left must not pass for this command's answer.
    }
    m_objState.m_iSendComplete = 0;  // what an earlier command has set says nothing of this one
    if (m_objState.m_iConnected == 1 && m_objSocket.SendData(p_objCommand)) {
        ++m_objState.m_iHandedOut;
        if (WaitSent()) {
            return true;
        }
        if (m_objWaiter.MustStop()) {
            return false;
        }
    }
    p_objFailure = Failure(CFailure::Kind::LanNotSent);
    m_objEvents.OnFailure(p_objFailure);
    return false;
}

bool CLanLink::WaitSent() {
    const std::int64_t iConnection = m_iConnection;
    CWaiter::Stopwatch objWaited(m_objWaiter);
    for (;;) {
        if (iConnection != m_iConnection) {
            return false;
        }
        if (m_objState.m_iSendComplete == 1) {
            return true;
        }
        if (m_objState.m_iLinkError == -1) {
            return false;
        }
        const double dElapsed = objWaited.Elapsed();
        if (dElapsed > m_dSendSeconds) {
            Close();  // what is left must not go out when nobody expects it any more
            return false;
        }
        if (!m_objWaiter.YieldFor(m_dSendSeconds - dElapsed)) {
            return false;
        }
    }
}

void CLanLink::SetRemote() {
    const std::string strHost = m_objInterface.GetIpAddress();
    const std::int32_t iPort = MNumber::ToInt32(m_objInterface.GetSocketPortNumber());
    m_objSocket.SetRemote(strHost, iPort);
    m_strRemote = strHost + ":" + std::to_string(iPort);
}

void CLanLink::OnConnect() {
    m_bHasConnected = true;
    m_objState.m_iConnected = 1;
    TellState(CLinkStatus::State::Open);
}

void CLanLink::OnClose() {
    m_objState.m_iConnected = 0;
    TellState(CLinkStatus::State::ClosedByPrinter);
}

void CLanLink::OnSendComplete() {
    m_objState.m_iSendComplete = 1;
}

void CLanLink::OnDataArrival() {
    try {
        m_objRouter.TakeStream(m_objSocket.GetData());
    } catch (...) {
        // No exception may leave an event; the handler that waits for this answer gets it.
        m_objWaiter.StoreFault();
    }
    m_objBusy.EndBusy();
}

void CLanLink::OnError(const SocketError& p_objError) {
    try {
        Disconnect();
        m_objError = p_objError;
        const CFailure objFailure = Failure(CFailure::Kind::LanError);
        TellState(CLinkStatus::State::Failed, objFailure);
        m_objEvents.OnFailure(objFailure);
        Disconnect();
        SetRemote();
    } catch (...) {
        m_objWaiter.StoreFault();
    }
    m_objBusy.EndBusy();
    m_objState.m_iLinkError = -1;
}

CFailure CLanLink::Failure(CFailure::Kind p_iKind) const {
    return {p_iKind, m_objError, m_objError.m_iNumber, m_strRemote};
}

void CLanLink::TellState(CLinkStatus::State p_iState, const CFailure& p_objFailure) {
    try {
        m_objEvents.OnLinkStatus({CInterface::LanInterface, p_iState, m_strRemote, p_objFailure});
    } catch (...) {
        // No exception may leave an event; the handler that waits, if one does, gets it.
        m_objWaiter.StoreFault();
    }
}
