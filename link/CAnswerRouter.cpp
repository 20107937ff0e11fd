#include "link/CAnswerRouter.h"

#include "protocol/MAnswer.h"
#include "protocol/MStatus.h"

#include <algorithm>
#include <string>

namespace {

/// A settings answer from USB as the other links have it.
std::span<const std::uint8_t> BehindUsbHead(std::span<const std::uint8_t> p_objReceived) {
    return p_objReceived.subspan(std::min(MAnswer::UsbHeadLength, p_objReceived.size()));
}

/// Whether it is two digits, as every status code: what only begins like a status is none.
bool IsCode(const std::string& p_strCode) {
    return std::ranges::all_of(p_strCode, [](char p_c) { return p_c >= '0' && p_c <= '9'; });
}

/// The code of a status answer that has one.
std::string CodeOf(std::span<const std::uint8_t> p_objAnswer) {
    return {static_cast<char>(p_objAnswer[MAnswer::StatusCodePosition]),
            static_cast<char>(p_objAnswer[MAnswer::StatusCodePosition + 1])};
}

}  // namespace

CAnswerRouter::CAnswerRouter(const CItemManager& p_objItemManager, CLinkState& p_objState,
                             ISessionEvents& p_objEvents)
    : m_objItemManager(p_objItemManager)
    , m_objState(p_objState)
    , m_objEvents(p_objEvents) {}

void CAnswerRouter::SetAnswerSelector(std::int16_t p_iGroup) {
    SettleStream();
    SettleSerial();
    m_iAnswerSelector = p_iGroup;
}

std::size_t CAnswerRouter::AskedLength() const {
    return static_cast<std::size_t>(MAnswer::ReceiveLength(m_iAnswerSelector)) / 2;
}

void CAnswerRouter::BeginCommand(AwaitedAnswer p_iAwaited) {
    SettleStream();
    SettleSerial();
    m_objAssembler.Clear();
    m_iAwaited = p_iAwaited;
    m_objState.m_iReplyReceived = 0;
    m_objState.m_iStatusReceived = 0;
    m_bUsbFilled = false;
    m_objLearned = {};
}

void CAnswerRouter::TakeStream(std::span<const std::uint8_t> p_objBytes) {
    m_iTaken += p_objBytes.size();
    for (const std::uint8_t iByte : p_objBytes) {
        if (MAnswer::BeginsAnswer(iByte)) {
            SettleStream();
        }
        Route(m_objAssembler.Append(iByte, AskedLength()));
    }
}

void CAnswerRouter::SettleStream() {
    if (m_objAssembler.Settle()) {
        Route(CAnswerAssembler::Result::Settings);
    }
}

void CAnswerRouter::TakeSerial(std::uint8_t p_iCharacter, std::int16_t p_iReceiveLength) {
    ++m_iTaken;
    if (MAnswer::BeginsAnswer(p_iCharacter)) {
        SettleSerial();
    }
    RouteSerial(m_objReceiver.Take(p_iCharacter, p_iReceiveLength));
}

void CAnswerRouter::SettleSerial() {
    if (m_objReceiver.Settle()) {
        RouteSerial(CSerialReceiver::Result::Settings);
    }
}

void CAnswerRouter::RouteSerial(CSerialReceiver::Result p_iResult) {
    switch (p_iResult) {
    case CSerialReceiver::Result::Status:
        RouteStatus(m_objReceiver.Frame());
        break;
    case CSerialReceiver::Result::Settings:
        // Those that were cut at the length of another command than their group's read are none.
        if (m_objReceiver.Frame().size() >= AskedLength()) {
            RouteSettings(m_objReceiver.Frame());
        }
        m_objState.m_iPendingAnswers = 0;
        break;
    case CSerialReceiver::Result::Nothing:
        break;
    }
}

bool CAnswerRouter::SettleQuiet(double p_dNow, double p_dQuietSeconds) {
    const bool bNothingNew = m_iSeen == m_iTaken;
    if (!bNothingNew || p_dNow < m_dSeenAt) {  // at midnight the time of day starts again
        m_iSeen = m_iTaken;
        m_dSeenAt = p_dNow;
    }
    if (!IsInDoubt() || !bNothingNew || p_dNow - m_dSeenAt < p_dQuietSeconds) {
        return false;
    }
    SettleStream();
    SettleSerial();
    return true;
}

double CAnswerRouter::SleepBeforeSettling(double p_dLeft, double p_dQuietSeconds) const {
    // Quiet is measured in a few looks rather than in one: bytes that wait in front of a busy
    // machine must have had the time to come in.
    constexpr double dLooks = 8;
    return IsInDoubt() ? std::min(p_dLeft, p_dQuietSeconds / dLooks) : p_dLeft;
}

bool CAnswerRouter::IsInDoubt() const {
    return m_objAssembler.IsDoubtful() || m_objReceiver.IsDoubtful();
}

void CAnswerRouter::Route(CAnswerAssembler::Result p_iResult) {
    switch (p_iResult) {
    case CAnswerAssembler::Result::Nothing:
        break;
    case CAnswerAssembler::Result::Status:
        RouteStatus(m_objAssembler.Answer());
        TakeReply(false);
        break;
    case CAnswerAssembler::Result::Settings:
        // Settings that no group was named for have no place to go; they are an answer all the
        // same.
        RouteSettings(m_objAssembler.Answer());
        TakeReply(true);
        break;
    case CAnswerAssembler::Result::Unknown:
        TakeReply(false);
        break;
    }
}

void CAnswerRouter::TakeReply(bool p_bSettings) {
    ++m_objState.m_iAnswers;
    if (p_bSettings || m_iAwaited != AwaitedAnswer::Settings) {
        m_objState.m_iReplyReceived = 1;
        ++m_objState.m_iReplies;
    }
}

bool CAnswerRouter::IsOfAwaitedKind(std::span<const std::uint8_t> p_objReceived) const {
    const bool bSettings =
        !p_objReceived.empty() && p_objReceived.front() == MAnswer::UsbSettingsHead;
    const bool bStatus = !p_objReceived.empty() && p_objReceived.front() == MAnswer::StatusHead;
    switch (m_iAwaited) {
    case AwaitedAnswer::Settings:
        return bSettings;
    case AwaitedAnswer::Status:
        return bStatus && p_objReceived.size() >= MAnswer::StatusCodePosition + 2 &&
               IsCode(CodeOf(p_objReceived));
    case AwaitedAnswer::Any:
        break;
    }
    return true;
}

bool CAnswerRouter::BeginsUsbAnswer(std::span<const std::uint8_t> p_objReceived) {
    return !p_objReceived.empty() && (p_objReceived.front() == MAnswer::StatusHead ||
                                      p_objReceived.front() == MAnswer::UsbSettingsHead);
}

bool CAnswerRouter::IsCut(std::span<const std::uint8_t> p_objReceived,
                          std::size_t p_iBufferLength) const {
    if (p_objReceived.empty()) {
        return false;
    }
    if (p_objReceived.front() == MAnswer::StatusHead) {
        return p_objReceived.size() < MAnswer::StatusCodePosition + 2;
    }
    return p_objReceived.front() == MAnswer::UsbSettingsHead &&
           JudgeUsb(p_objReceived, p_iBufferLength) == MAnswer::Frame::Open;
}

bool CAnswerRouter::IsAnotherGroups(std::span<const std::uint8_t> p_objReceived,
                                    std::size_t p_iBufferLength) const {
    return !p_objReceived.empty() && p_objReceived.front() == MAnswer::UsbSettingsHead &&
           JudgeUsb(p_objReceived, p_iBufferLength) == MAnswer::Frame::Foreign;
}

MAnswer::Frame CAnswerRouter::JudgeUsb(std::span<const std::uint8_t> p_objReceived,
                                       std::size_t p_iBufferLength) const {
    return MAnswer::JudgeBlock(BehindUsbHead(p_objReceived), AskedLength(),
                               p_objReceived.size() >= p_iBufferLength);
}

bool CAnswerRouter::TakeUsbAnswer(std::span<const std::uint8_t> p_objReceived,
                                  std::int16_t p_iReceiveLength) {
    const std::uint8_t iHead = p_objReceived.empty() ? std::uint8_t{0} : p_objReceived.front();
    switch (iHead) {
    case MAnswer::StatusHead:
        // One that ends before its code tells nothing, like a code that is not known.
        if (p_objReceived.size() >= MAnswer::StatusCodePosition + 2) {
            RouteStatus(p_objReceived);
        }
        return true;
    case MAnswer::UsbSettingsHead: {
        const auto iLength = static_cast<std::size_t>(p_iReceiveLength);
        const auto objAnswer = BehindUsbHead(p_objReceived);
        m_bUsbFilled = JudgeUsb(p_objReceived, iLength) == MAnswer::Frame::Whole &&
                       RouteSettings(objAnswer.first(std::min(iLength / 2 + 1, objAnswer.size())));
        return m_bUsbFilled;
    }
    default:
        return true;
    }
}

void CAnswerRouter::RouteStatus(std::span<const std::uint8_t> p_objAnswer) {
    const std::string strCode = CodeOf(p_objAnswer);
    std::string strText;
    bool bReceived = false;
    MStatus::StatusText(strCode, strText, bReceived);
    if (IsCode(strCode)) {
        m_objLearned.m_strStatusCode = strCode;
        m_objLearned.m_strStatusText = bReceived ? strText : std::string();
    }
    if (!bReceived) {
        return;  // what is shown stays: an unknown code tells nothing
    }
    m_objState.m_iStatusReceived = 1;
    if (m_bHeadCheck) {
        m_bHeadCheck = false;
        m_objEvents.OnHeadCheck(strText);
    } else {
        m_objEvents.OnStatus(strText);
    }
}

bool CAnswerRouter::RouteSettings(std::span<const std::uint8_t> p_objAnswer) {
    const bool bFilled =
        MAnswer::DistributeAnswer(m_objItemManager, p_objAnswer, m_iAnswerSelector);
    if (bFilled) {
        m_objLearned.m_iGroup = m_iAnswerSelector;
    }
    return bFilled;
}

bool CAnswerRouter::HasLearned(AwaitedAnswer p_iAwaited) const {
    switch (p_iAwaited) {
    case AwaitedAnswer::Settings:
        return m_objLearned.m_iGroup.has_value();
    case AwaitedAnswer::Status:
        return m_objLearned.m_strStatusCode.has_value();
    case AwaitedAnswer::Any:
        break;
    }
    return m_objLearned.m_iGroup || m_objLearned.m_strStatusCode;
}
