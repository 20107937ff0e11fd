#include "link/CCommandExchange.h"

#include "link/CWaitTold.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"

#include <algorithm>
#include <span>

CCommandExchange::CCommandExchange(CInterface& p_objInterface, CPrinterLinks& p_objLinks,
                                   CAnswerRouter& p_objRouter, CLinkState& p_objState,
                                   CBusy& p_objBusy, CWaiter& p_objWaiter,
                                   ISessionEvents& p_objEvents,
                                   const CExchangeManners& p_objManners)
    : m_objInterface(p_objInterface)
    , m_objLinks(p_objLinks)
    , m_objRouter(p_objRouter)
    , m_objState(p_objState)
    , m_objBusy(p_objBusy)
    , m_objWaiter(p_objWaiter)
    , m_objEvents(p_objEvents)
    , m_objManners(p_objManners) {}

bool CCommandExchange::TextToBytes(const std::string& p_strText, Bytes& p_objBytes) {
    p_objBytes.assign(p_strText.begin(), p_strText.end());
    return !p_objBytes.empty();
}

bool CCommandExchange::SendCommand(CInterface& p_objInterface, const Bytes& p_objCommand,
                                   Bytes& p_objReceiveBuffer, CFailure& p_objFailure,
                                   std::int16_t& p_iReceivedCount, std::int16_t p_iReceiveLength,
                                   AwaitedAnswer p_iAwaited) {
    if (m_objWaiter.MustStop()) {
        return false;
    }
    m_objRouter.BeginCommand(p_iAwaited);
    ILink* const objLink = m_objLinks.Find(p_objInterface.GetActiveInterface());
    if (objLink == nullptr) {
        p_objFailure = {CFailure::Kind::NoLink};
        return false;
    }
    if (!objLink->Exchange(p_objCommand, p_objReceiveBuffer, p_objFailure, p_iReceivedCount,
                           p_iReceiveLength)) {
        return false;
    }
    if (objLink->HowItAnswers() != ILink::Answering::AtOnce) {
        return true;
    }
    // Only what was received: behind it the buffer holds nothing of the printer's.
    const std::size_t iCount =
        std::min(static_cast<std::size_t>(std::max<std::int16_t>(p_iReceivedCount, 0)),
                 p_objReceiveBuffer.size());
    return m_objRouter.TakeUsbAnswer(std::span(p_objReceiveBuffer).first(iCount), p_iReceiveLength);
}

bool CCommandExchange::WaitReply(std::int16_t p_iSeconds) {
    CFailure objFailure;
    return WaitAnswer(p_iSeconds, AwaitedAnswer::Settings, objFailure);
}

bool CCommandExchange::WaitAnswer(std::int16_t p_iSeconds, AwaitedAnswer p_iAwaited,
                                  CFailure& p_objFailure) {
    // A command of a handler inside takes the flag back that this one's answer has set, and a read
    // inside waits past what this one waits for.
    const std::int64_t iBefore = CountOf(p_iAwaited);
    return WaitUntil(
        [&] { return m_objState.m_iReplyReceived == 1 || CountOf(p_iAwaited) != iBefore; },
        p_iSeconds, nullptr, p_objFailure);
}

std::int64_t CCommandExchange::CountOf(AwaitedAnswer p_iAwaited) const {
    return p_iAwaited == AwaitedAnswer::Settings ? m_objState.m_iReplies : m_objState.m_iAnswers;
}

bool CCommandExchange::WaitStatusReply(std::int16_t p_iSeconds) {
    CFailure objFailure;
    return WaitUntil([this] { return m_objState.m_iStatusReceived == 1; }, p_iSeconds, nullptr,
                     objFailure);
}

bool CCommandExchange::WaitUntil(const std::function<bool()>& p_fnIsThere, std::int16_t p_iSeconds,
                                 const ILink* p_objLink, CFailure& p_objFailure) {
    const Connection objLan{CInterface::LanInterface, ConnectionNumber(CInterface::LanInterface)};
    CWaiter::Stopwatch objWaited(m_objWaiter);
    CWaitTold objTold(m_objEvents);
    double dLeft = p_iSeconds;
    while (m_objWaiter.YieldFor(m_objRouter.SleepBeforeSettling(dLeft, QuietSeconds)) &&
           !IsGone(objLan)) {
        const double dElapsed = objWaited.Elapsed();
        dLeft = p_iSeconds - dElapsed;
        const bool bOver = dElapsed > p_iSeconds;
        objTold.Tell(bOver ? 0 : dElapsed);
        // What came in time is in time, also when nothing has shown its end by now.
        const bool bSettled = m_objRouter.SettleQuiet(m_objWaiter.Now(), bOver ? 0 : QuietSeconds);
        if (bOver && !bSettled) {
            p_objFailure = {CFailure::Kind::NoReply};
            m_objEvents.OnFailure(p_objFailure);
            return false;
        }
        if (p_fnIsThere()) {
            return true;
        }
        if (p_objLink != nullptr && !p_objLink->Lost().IsNone()) {
            p_objFailure = p_objLink->Lost();
            m_objEvents.OnFailure(p_objFailure);
            return false;
        }
    }
    return false;
}

void CCommandExchange::Pause(std::int16_t p_iSeconds) {
    const double dStart = m_objWaiter.Now();
    while (!m_objWaiter.MustStop()) {
        const double dLeft = p_iSeconds - (m_objWaiter.Now() - dStart);
        if (dLeft <= 0) {
            return;
        }
        m_objWaiter.YieldFor(m_objRouter.SleepBeforeSettling(dLeft, QuietSeconds));
        m_objRouter.SettleQuiet(m_objWaiter.Now(), QuietSeconds);
    }
}

bool CCommandExchange::SendText(const std::string& p_strCommand, std::int16_t p_iReceiveLength,
                                AwaitedAnswer p_iAwaited, CFailure& p_objFailure,
                                std::int16_t& p_iReceivedCount) {
    if (p_iAwaited != AwaitedAnswer::Settings) {
        EndReading();
    }
    Bytes objCommand;
    return TextToBytes(p_strCommand, objCommand) &&
           SendCommand(m_objInterface, objCommand, m_objReceiveBuffer, p_objFailure,
                       p_iReceivedCount, p_iReceiveLength, p_iAwaited);
}

COutcome CCommandExchange::Send(const std::string& p_strCommand) {
    COutcome objOutcome;
    const std::int64_t iHandedOut = m_objState.m_iHandedOut;
    std::int16_t iReceivedCount = 0;
    objOutcome.m_bSent = SendText(p_strCommand, MAnswer::StatusLength, AwaitedAnswer::Any,
                                  objOutcome.m_objFailure, iReceivedCount);
    objOutcome.m_bTouched = m_objState.m_iHandedOut != iHandedOut;
    objOutcome.m_bDone = objOutcome.m_bSent;
    return objOutcome;
}

COutcome CCommandExchange::Attempt(const std::string& p_strCommand, std::int16_t p_iReceiveLength,
                                   AwaitedAnswer p_iAwaited) {
    // The active interface may change while the command goes out; the answer comes on its link.
    const ILink* const objLink = m_objLinks.Find(m_objInterface.GetActiveInterface());
    if (p_iAwaited != AwaitedAnswer::Settings) {
        EndReading();  // settings in doubt are a former command's answer and not this one's
    }
    COutcome objOutcome;
    const std::int64_t iBefore = CountOf(p_iAwaited);
    const std::int64_t iHandedOut = m_objState.m_iHandedOut;
    std::int16_t iReceivedCount = 0;
    const bool bSent = SendText(p_strCommand, p_iReceiveLength, p_iAwaited, objOutcome.m_objFailure,
                                iReceivedCount);
    // An answer that has no place to go is an answer: the command has gone out.
    objOutcome.m_bSent = bSent || iReceivedCount > 0;
    objOutcome.m_bTouched = m_objState.m_iHandedOut != iHandedOut;
    const bool bAtOnce = objLink != nullptr && objLink->HowItAnswers() == ILink::Answering::AtOnce;
    if (bAtOnce && p_iAwaited == AwaitedAnswer::Settings) {
        JudgeUsbRead(bSent, objOutcome);
    } else if (bSent) {
        if (CountOf(p_iAwaited) != iBefore) {
            m_objState.m_iReplyReceived = 1;  // taken back by a command of a handler inside
        }
        objOutcome.m_bDone = IsAnswered(objLink, p_iAwaited, objOutcome);
    } else if (objOutcome.m_bSent) {
        objOutcome.m_objFailure = {CFailure::Kind::UsbStrayAnswer};
    }
    const COutcome& objLearned = m_objRouter.Learned();
    objOutcome.m_strStatusCode = objLearned.m_strStatusCode;
    objOutcome.m_strStatusText = objLearned.m_strStatusText;
    objOutcome.m_iGroup = objLearned.m_iGroup;
    return objOutcome;
}

bool CCommandExchange::IsAnswered(const ILink* p_objLink, AwaitedAnswer p_iAwaited,
                                  COutcome& p_objOutcome) {
    const ILink::Answering iAnswering = p_objLink->HowItAnswers();
    const std::int16_t iSeconds = m_objManners.m_iReplySeconds;
    if (m_objManners.m_bAwaitsItsAnswer && iAnswering == ILink::Answering::AtOnce) {
        return m_objRouter.HasLearned(p_iAwaited);
    }
    if (m_objManners.m_bAwaitsItsAnswer) {
        return WaitUntil([&] { return m_objRouter.HasLearned(p_iAwaited); }, iSeconds, p_objLink,
                         p_objOutcome.m_objFailure);
    }
    // On USB the link may have told that no answer came, which to a command that is no read does
    // not matter.
    return iAnswering != ILink::Answering::Awaited ||
           WaitAnswer(iSeconds, p_iAwaited, p_objOutcome.m_objFailure);
}

void CCommandExchange::JudgeUsbRead(bool p_bSent, COutcome& p_objOutcome) const {
    p_objOutcome.m_bDone = p_bSent && m_objRouter.HasUsbFilledGroup();
    // An answer that has filled nothing is none to a read.
    if (!p_objOutcome.m_bDone && m_objState.m_iReplyReceived == 1 && !m_objWaiter.MustStop()) {
        p_objOutcome.m_objFailure = {CFailure::Kind::UsbNoAnswer};
    }
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

ILink::Answering CCommandExchange::ActiveAnswering() const {
    const ILink* const objLink = m_objLinks.Find(m_objInterface.GetActiveInterface());
    return objLink != nullptr ? objLink->HowItAnswers() : ILink::Answering::Later;
}

void CCommandExchange::TellFailure(const COutcome& p_objOutcome) {
    if (!p_objOutcome.m_bDone && !p_objOutcome.m_objFailure.IsNone()) {
        m_objEvents.OnCommandFailed(p_objOutcome.m_objFailure);
    }
}

COutcome CCommandExchange::Request(const std::string& p_strCommand, std::int16_t p_iReceiveLength,
                                   AwaitedAnswer p_iAwaited) {
    COutcome objOutcome = Attempt(p_strCommand, p_iReceiveLength, p_iAwaited);
    TellFailure(objOutcome);
    return objOutcome;
}

COutcome CCommandExchange::RequestOver(const Connection& p_objBegun,
                                       const std::string& p_strCommand,
                                       std::int16_t p_iReceiveLength, AwaitedAnswer p_iAwaited) {
    COutcome objOutcome;
    if (m_objWaiter.MustStop()) {
        return objOutcome;
    }
    if (IsGone(p_objBegun)) {
        objOutcome.m_objFailure = m_objLinks.Find(p_objBegun.m_iInterface)->WithoutConnection();
        TellFailure(objOutcome);
        return objOutcome;
    }
    objOutcome = Request(p_strCommand, p_iReceiveLength, p_iAwaited);
    objOutcome.m_bDone |= objOutcome.m_bSent && IsGone(p_objBegun);
    return objOutcome;
}

COutcome CCommandExchange::ReadGroup(std::int16_t p_iGroup) {
    m_objRouter.SetAnswerSelector(p_iGroup);
    COutcome objOutcome = Attempt(MCommand::ReadRequest(p_iGroup), MAnswer::ReceiveLength(p_iGroup),
                                  AwaitedAnswer::Settings);
    EndBusy();
    TellFailure(objOutcome);
    return objOutcome;
}

void CCommandExchange::EndReading() {
    m_objRouter.SetAnswerSelector(MAnswer::NoGroup);
}

COutcome CCommandExchange::RequestStatus() {
    m_objEvents.OnStatus({});
    return SendMaintenance(MCommand::StatusRequest);
}

COutcome CCommandExchange::SendMaintenance(const std::string& p_strCommand) {
    COutcome objOutcome;
    {
        const CBusy::Flow objFlow(m_objBusy);
        objOutcome = Attempt(p_strCommand, MAnswer::StatusLength, AwaitedAnswer::Status);
    }
    TellFailure(objOutcome);
    return objOutcome;
}
