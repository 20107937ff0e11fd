#include "link/CLanLink.h"

#include "model/MNumber.h"

namespace {

constexpr double SendLimitSeconds = 2;
constexpr const char* OpenError = "'LAN' Open Error !!";
constexpr const char* SendError = "'LAN' Send Error !!";

std::string Describe(const SocketError& p_objError) {
    const std::string strLineEnd = "\r\n";
    return "Number=" + std::to_string(p_objError.m_iNumber) + "  " + p_objError.m_strDescription +
           strLineEnd + "Scode=" + std::to_string(p_objError.m_iScode) + strLineEnd +
           "Source=" + p_objError.m_strSource + strLineEnd +
           "HelpFile=" + p_objError.m_strHelpFile + strLineEnd +
           "HelpContext=" + std::to_string(p_objError.m_iHelpContext) + strLineEnd +
           "CancelDisplay=" + (p_objError.m_bCancelDisplay ? "True" : "False");
}

}  // namespace

CLanLink::CLanLink(ITcpClient& p_objSocket, const CInterface& p_objInterface,
                   CAnswerRouter& p_objRouter, CLinkState& p_objState, CBusy& p_objBusy,
                   CWaiter& p_objWaiter, IMessageBox& p_objMessageBox)
    : m_objSocket(p_objSocket)
    , m_objInterface(p_objInterface)
    , m_objRouter(p_objRouter)
    , m_objState(p_objState)
    , m_objBusy(p_objBusy)
    , m_objWaiter(p_objWaiter)
    , m_objMessageBox(p_objMessageBox) {
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
    m_objState.m_iConnected = 0;
    m_objState.m_iSendComplete = 0;
    m_objState.m_iLinkError = 0;
    m_objState.m_iReplyReceived = 0;
    m_objState.m_iStatusReceived = 0;
    SetRemote();
    m_objSocket.Connect();
    const CBusy::Flow objFlow(m_objBusy);
    while (m_objWaiter.Yield()) {
        if (m_bHasConnected) {
            return true;
        }
        if (m_objState.m_iLinkError == -1) {
            m_objMessageBox.Show(OpenError, MessageIcon::Critical);
            return false;
        }
    }
    Close();
    return false;
}

bool CLanLink::Close() {
    ++m_iConnection;
    Disconnect();
    return true;
}

void CLanLink::Disconnect() {
    m_objSocket.Close();
    m_objState.m_iConnected = 0;
}

std::string CLanLink::WordsWithoutConnection() const {
    return SendError;
}

bool CLanLink::Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer,
                        std::string& p_strError, std::int16_t& /*p_iReceivedCount*/,
                        std::int16_t p_iReceiveLength) {
    p_objReceiveBuffer.assign(static_cast<std::size_t>(p_iReceiveLength), 0);
    while (!m_objSocket.GetData().empty()) {
        // What a former exchange has left must not pass for this command's answer.
    }
    m_objState.m_iSendComplete = 0;  // what an earlier command has set says nothing of this one
    if (m_objState.m_iConnected != 1 || !m_objSocket.SendData(p_objCommand)) {
        p_strError = SendError;
        return false;
    }
    if (WaitSent()) {
        return true;
    }
    if (!m_objWaiter.MustStop()) {
        p_strError = SendError;
    }
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
        if (objWaited.Elapsed() > SendLimitSeconds) {
            Close();  // what is left must not go out when nobody expects it any more
            return false;
        }
        if (!m_objWaiter.Yield()) {
            return false;
        }
    }
}

void CLanLink::SetRemote() {
    m_objSocket.SetRemote(m_objInterface.GetIpAddress(),
                          MNumber::ToInt32(m_objInterface.GetSocketPortNumber()));
}

void CLanLink::OnConnect() {
    m_bHasConnected = true;
    m_objState.m_iConnected = 1;
}

void CLanLink::OnClose() {
    m_objState.m_iConnected = 0;
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
        m_objMessageBox.Show(Describe(p_objError), MessageIcon::None);
        Disconnect();
        SetRemote();
    } catch (...) {
        m_objWaiter.StoreFault();
    }
    m_objBusy.EndBusy();
    m_objState.m_iLinkError = -1;
}
