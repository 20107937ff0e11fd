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
    return WaitAnswer(p_iSeconds, AwaitedAnswer::Settings);
}

bool CCommandExchange::WaitAnswer(std::int16_t p_iSeconds, AwaitedAnswer p_iAwaited) {
    // A command of a handler inside takes the flag back that this one's answer has set, and a read
    // inside waits past what this one waits for.
    const std::int64_t iBefore = CountOf(p_iAwaited);
    return WaitUntil(
        [&] { return m_objState.m_iReplyReceived == 1 || CountOf(p_iAwaited) != iBefore; },
        p_iSeconds);
}

std::int64_t CCommandExchange::CountOf(AwaitedAnswer p_iAwaited) const {
    return p_iAwaited == AwaitedAnswer::Settings ? m_objState.m_iReplies : m_objState.m_iAnswers;
}

bool CCommandExchange::WaitStatusReply(std::int16_t p_iSeconds) {
    return WaitUntil([this] { return m_objState.m_iStatusReceived == 1; }, p_iSeconds);
}

bool CCommandExchange::WaitUntil(const std::function<bool()>& p_fnIsThere,
                                 std::int16_t p_iSeconds) {
    const Connection objLan{CInterface::LanInterface, ConnectionNumber(CInterface::LanInterface)};
    CWaiter::Stopwatch objWaited(m_objWaiter);
    while (m_objWaiter.Yield() && !IsGone(objLan)) {
        const bool bOver = objWaited.Elapsed() > p_iSeconds;
        // What came in time is in time, also when nothing has shown its end by now.
        const bool bSettled = m_objRouter.SettleQuiet(m_objWaiter.Now(), bOver ? 0 : QuietSeconds);
        if (bOver && !bSettled) {
            m_objMessageBox.Beep();
            m_objMessageBox.Show("Device Time Out !!", MessageIcon::Critical, "Failure");
            return false;
        }
        if (p_fnIsThere()) {
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
                                AwaitedAnswer p_iAwaited, std::string& p_strError,
                                std::int16_t& p_iReceivedCount) {
    if (p_iAwaited != AwaitedAnswer::Settings) {
        EndReading();
    }
    Bytes objCommand;
    return TextToBytes(p_strCommand, objCommand) &&
           SendCommand(m_objInterface, objCommand, m_objReceiveBuffer, p_strError, p_iReceivedCount,
                       p_iReceiveLength, p_iAwaited);
}

bool CCommandExchange::Send(const std::string& p_strCommand) {
    std::string strError;
    std::int16_t iReceivedCount = 0;
    return SendText(p_strCommand, MAnswer::StatusLength, AwaitedAnswer::Any, strError,
                    iReceivedCount);
}

CCommandExchange::Outcome CCommandExchange::Attempt(const std::string& p_strCommand,
                                                    std::int16_t p_iReceiveLength,
                                                    AwaitedAnswer p_iAwaited,
                                                    std::string& p_strError) {
    // The active interface may change while the command goes out; the answer comes on its link.
    const std::int16_t iInterface = m_objInterface.GetActiveInterface();
    if (p_iAwaited != AwaitedAnswer::Settings) {
        EndReading();  // settings in doubt are a former command's answer and not this one's
    }
    const std::int64_t iBefore = CountOf(p_iAwaited);
    std::int16_t iReceivedCount = 0;
    const bool bSent =
        SendText(p_strCommand, p_iReceiveLength, p_iAwaited, p_strError, iReceivedCount);
    if (p_iAwaited == AwaitedAnswer::Settings && iInterface == CInterface::UsbInterface) {
        return ReadFromUsb(bSent, p_strError);
    }
    if (!bSent) {
        // An answer that has no place to go is an answer: the command has gone out.
        return iReceivedCount > 0 ? Outcome::Unanswered : Outcome::NotSent;
    }
    // On USB the link may have words although the command went out: no answer came. To a command
    // that is no read the answer does not matter.
    p_strError.clear();
    if (CountOf(p_iAwaited) != iBefore) {
        m_objState.m_iReplyReceived = 1;  // taken back by a command of a handler inside
    }
    const bool bWaits = iInterface == CInterface::LanInterface;
    return !bWaits || WaitAnswer(ReplySeconds, p_iAwaited) ? Outcome::Done : Outcome::Unanswered;
}

CCommandExchange::Outcome CCommandExchange::ReadFromUsb(bool p_bSent,
                                                        std::string& p_strError) const {
    if (p_bSent && m_objRouter.HasUsbFilledGroup()) {
        return Outcome::Done;
    }
    // An answer that has filled nothing is none to a read.
    if (m_objState.m_iReplyReceived == 1 && !m_objWaiter.MustStop()) {
        p_strError = CUsbLink::NoAnswer;
    }
    return p_bSent ? Outcome::Unanswered : Outcome::NotSent;
}

std::int64_t CCommandExchange::ConnectionNumber(std::int16_t p_iInterface) const {
    const ILink* const objLink = m_objLinks.Find(p_iInterface);
    return objLink != nullptr ? objLink->Connection() : 0;
}

CCommandExchange::Connection CCommandExchange::ActiveConnection() const {
    const std::int16_t iInterface = m_objInterface.GetActiveInterface();
    return {iInterface, ConnectionNumber(iInterface)};
}

bool CCommandExchange::IsGone(const Connection& p_objConnection) const {
    return ConnectionNumber(p_objConnection.m_iInterface) != p_objConnection.m_iNumber;
}

void CCommandExchange::ShowFailure(const std::string& p_strError) {
    if (!p_strError.empty()) {
        m_objMessageBox.Show(p_strError, MessageIcon::Exclamation);
    }
}

bool CCommandExchange::Request(const std::string& p_strCommand, std::int16_t p_iReceiveLength,
                               AwaitedAnswer p_iAwaited) {
    std::string strError;
    const Outcome iOutcome = Attempt(p_strCommand, p_iReceiveLength, p_iAwaited, strError);
    ShowFailure(strError);
    return iOutcome == Outcome::Done;
}

bool CCommandExchange::RequestOver(const Connection& p_objBegun, const std::string& p_strCommand,
                                   std::int16_t p_iReceiveLength, AwaitedAnswer p_iAwaited) {
    if (m_objWaiter.MustStop()) {
        return false;
    }
    if (IsGone(p_objBegun)) {
        ShowFailure(m_objLinks.Find(p_objBegun.m_iInterface)->WordsWithoutConnection());
        return false;
    }
    std::string strError;
    const Outcome iOutcome = Attempt(p_strCommand, p_iReceiveLength, p_iAwaited, strError);
    ShowFailure(strError);
    return iOutcome == Outcome::Done || (iOutcome == Outcome::Unanswered && IsGone(p_objBegun));
}

bool CCommandExchange::ReadGroup(std::int16_t p_iGroup) {
    m_objRouter.SetAnswerSelector(p_iGroup);
    std::string strError;
    const Outcome iOutcome =
        Attempt(MCommand::ReadRequest(p_iGroup), MAnswer::ReceiveLength(p_iGroup),
                AwaitedAnswer::Settings, strError);
    EndBusy();
    ShowFailure(strError);
    return iOutcome == Outcome::Done;
}

void CCommandExchange::EndReading() {
    m_objRouter.SetAnswerSelector(MAnswer::NoGroup);
}

bool CCommandExchange::RequestStatus() {
    m_objView.ShowStatus({});
    return SendMaintenance(MCommand::StatusRequest);
}

bool CCommandExchange::SendMaintenance(const std::string& p_strCommand) {
    bool bSent = false;
    return SendMaintenance(p_strCommand, bSent);
}

bool CCommandExchange::SendMaintenance(const std::string& p_strCommand, bool& p_bSent) {
    std::string strError;
    Outcome iOutcome = Outcome::NotSent;
    {
        const CBusy::Flow objFlow(m_objBusy);
        iOutcome = Attempt(p_strCommand, MAnswer::StatusLength, AwaitedAnswer::Any, strError);
    }
    p_bSent = iOutcome != Outcome::NotSent;
    ShowFailure(strError);
    return iOutcome == Outcome::Done;
}
