#include "link/CCommandExchange.h"

#include "link/CUsbLink.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"

#include <algorithm>
#include <span>

CCommandExchange::CCommandExchange(CInterface& p_objInterface, CPrinterLinks& p_objLinks,
                                   CAnswerRouter& p_objRouter, CLinkState& p_objState,
                                   CBusy& p_objBusy, CWaiter& p_objWaiter, IExchangeView& p_objView,
                                   IMessageBox& p_objMessageBox)
    : m_objInterface(p_objInterface)
    , m_objLinks(p_objLinks)
    , m_objRouter(p_objRouter)
    , m_objState(p_objState)
    , m_objBusy(p_objBusy)
    , m_objWaiter(p_objWaiter)
    , m_objView(p_objView)
    , m_objMessageBox(p_objMessageBox) {}

bool CCommandExchange::TextToBytes(const std::string& p_strText, Bytes& p_objBytes) {
    p_objBytes.assign(p_strText.begin(), p_strText.end());
    return !p_objBytes.empty();
}

bool CCommandExchange::SendCommand(CInterface& p_objInterface, const Bytes& p_objCommand,
                                   Bytes& p_objReceiveBuffer, std::string& p_strError,
                                   std::int16_t& p_iReceivedCount, std::int16_t p_iReceiveLength,
                                   AwaitedAnswer p_iAwaited) {
    if (m_objWaiter.MustStop()) {
        return false;
    }
    m_objRouter.BeginCommand(p_iAwaited);
    const std::int16_t iInterface = p_objInterface.GetActiveInterface();
    ILink* const objLink = m_objLinks.Find(iInterface);
    if (objLink == nullptr || !objLink->Exchange(p_objCommand, p_objReceiveBuffer, p_strError,
                                                 p_iReceivedCount, p_iReceiveLength)) {
        return false;
    }
    if (iInterface != CInterface::UsbInterface) {
        return true;
    }
    // Only what was received: behind it the buffer holds nothing of the printer's.
    const std::size_t iCount =
        std::min(static_cast<std::size_t>(std::max<std::int16_t>(p_iReceivedCount, 0)),
                 p_objReceiveBuffer.size());
    return m_objRouter.TakeUsbAnswer(std::span(p_objReceiveBuffer).first(iCount), p_iReceiveLength);
}

bool CCommandExchange::WaitReply(std::int16_t p_iSeconds) {
    return WaitFlag(m_objState.m_iReplyReceived, p_iSeconds);
}

bool CCommandExchange::WaitStatusReply(std::int16_t p_iSeconds) {
    return WaitFlag(m_objState.m_iStatusReceived, p_iSeconds);
}

bool CCommandExchange::WaitFlag(const std::int16_t& p_iFlag, std::int16_t p_iSeconds) {
    const double dStart = m_objWaiter.Now();
    while (m_objWaiter.Yield()) {
        const double dNow = m_objWaiter.Now();
        const bool bOver = dNow - dStart > p_iSeconds;
        // What came in time is in time, also when nothing has shown its end by now.
        const bool bSettled = m_objRouter.SettleQuiet(dNow, bOver ? 0 : QuietSeconds);
        if (bOver && !bSettled) {
            m_objMessageBox.Beep();
            m_objMessageBox.Show("Device Time Out !!", MessageIcon::Critical, "Failure");
            return false;
        }
        if (p_iFlag == 1) {
            return true;
        }
    }
    return false;
}

void CCommandExchange::Pause(std::int16_t p_iSeconds) {
    const double dStart = m_objWaiter.Now();
    while (!m_objWaiter.MustStop() && m_objWaiter.Now() - dStart < p_iSeconds) {
        m_objWaiter.Yield();
        m_objRouter.SettleQuiet(m_objWaiter.Now(), QuietSeconds);
    }
}

bool CCommandExchange::SendText(const std::string& p_strCommand, std::int16_t p_iReceiveLength,
                                AwaitedAnswer p_iAwaited, std::string& p_strError) {
    if (p_iAwaited != AwaitedAnswer::Settings) {
        EndReading();
    }
    Bytes objCommand;
    std::int16_t iReceivedCount = 0;
    return TextToBytes(p_strCommand, objCommand) &&
           SendCommand(m_objInterface, objCommand, m_objReceiveBuffer, p_strError, iReceivedCount,
                       p_iReceiveLength, p_iAwaited);
}

bool CCommandExchange::Send(const std::string& p_strCommand) {
    std::string strError;
    return SendText(p_strCommand, MAnswer::StatusLength, AwaitedAnswer::Any, strError);
}

bool CCommandExchange::Attempt(const std::string& p_strCommand, std::int16_t p_iReceiveLength,
                               AwaitedAnswer p_iAwaited, std::string& p_strError) {
    // The active interface may change while the command goes out; the answer comes on its link.
    const std::int16_t iInterface = m_objInterface.GetActiveInterface();
    const bool bSent = SendText(p_strCommand, p_iReceiveLength, p_iAwaited, p_strError);
    if (p_iAwaited == AwaitedAnswer::Settings && iInterface == CInterface::UsbInterface) {
        return IsReadFromUsb(bSent, p_strError);
    }
    if (!bSent) {
        return false;
    }
    // On USB the link may have words although the command went out: no answer came. To a command
    // that is no read the answer does not matter.
    p_strError.clear();
    return iInterface != CInterface::LanInterface || WaitReply(ReplySeconds);
}

bool CCommandExchange::IsReadFromUsb(bool p_bSent, std::string& p_strError) const {
    if (p_bSent && m_objRouter.HasUsbFilledGroup()) {
        return true;
    }
    // An answer that has filled nothing is none to a read.
    if (m_objState.m_iReplyReceived == 1 && !m_objWaiter.MustStop()) {
        p_strError = CUsbLink::NoAnswer;
    }
    return false;
}

void CCommandExchange::ShowFailure(const std::string& p_strError) {
    if (!p_strError.empty()) {
        m_objMessageBox.Show(p_strError, MessageIcon::Exclamation);
    }
}

bool CCommandExchange::Request(const std::string& p_strCommand, std::int16_t p_iReceiveLength,
                               AwaitedAnswer p_iAwaited) {
    std::string strError;
    const bool bDone = Attempt(p_strCommand, p_iReceiveLength, p_iAwaited, strError);
    ShowFailure(strError);
    return bDone;
}

bool CCommandExchange::ReadGroup(std::int16_t p_iGroup) {
    m_objRouter.SetAnswerSelector(p_iGroup);
    std::string strError;
    const bool bRead = Attempt(MCommand::ReadRequest(p_iGroup), MAnswer::ReceiveLength(p_iGroup),
                               AwaitedAnswer::Settings, strError);
    EndBusy();
    ShowFailure(strError);
    return bRead;
}

void CCommandExchange::EndReading() {
    m_objRouter.SetAnswerSelector(MAnswer::NoGroup);
}

bool CCommandExchange::RequestStatus() {
    m_objView.ShowStatus({});
    return SendMaintenance(MCommand::StatusRequest);
}

bool CCommandExchange::SendMaintenance(const std::string& p_strCommand) {
    std::string strError;
    bool bDone = false;
    {
        const CBusy::Flow objFlow(m_objBusy);
        bDone = Attempt(p_strCommand, MAnswer::StatusLength, AwaitedAnswer::Any, strError);
    }
    ShowFailure(strError);
    return bDone;
}
