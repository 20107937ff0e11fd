#include "link/CAnswerRouter.h"

#include "protocol/MAnswer.h"
#include "protocol/MStatus.h"

#include <algorithm>
#include <string>

CAnswerRouter::CAnswerRouter(const CItemManager& p_objItemManager, CLinkState& p_objState,
                             IExchangeView& p_objView)
    : m_objItemManager(p_objItemManager)
    , m_objState(p_objState)
    , m_objView(p_objView) {}

void CAnswerRouter::BeginCommand(AwaitedAnswer p_iAwaited) {
    m_objAssembler.Clear();
    m_iAwaited = p_iAwaited;
    m_objState.m_iReplyReceived = 0;
    m_objState.m_iStatusReceived = 0;
}

void CAnswerRouter::TakeStream(std::span<const std::uint8_t> p_objBytes) {
    for (const std::uint8_t iByte : p_objBytes) {
        const auto iSettingsLength =
            static_cast<std::size_t>(MAnswer::ReceiveLength(m_iAnswerSelector) / 2);
        Route(m_objAssembler.Append(iByte, iSettingsLength));
    }
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
    if (p_bSettings || m_iAwaited == AwaitedAnswer::Any) {
        m_objState.m_iReplyReceived = 1;
        ++m_objState.m_iReplies;
    }
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
        const std::size_t iLongest = static_cast<std::size_t>(p_iReceiveLength) / 2 + 1;
        const auto objAnswer =
            p_objReceived.subspan(std::min(MAnswer::UsbHeadLength, p_objReceived.size()));
        return RouteSettings(objAnswer.first(std::min(iLongest, objAnswer.size())));
    }
    default:
        return true;
    }
}

void CAnswerRouter::RouteStatus(std::span<const std::uint8_t> p_objAnswer) {
    const std::string strCode{static_cast<char>(p_objAnswer[MAnswer::StatusCodePosition]),
                              static_cast<char>(p_objAnswer[MAnswer::StatusCodePosition + 1])};
    std::string strText;
    bool bReceived = false;
    MStatus::StatusText(strCode, strText, bReceived);
    if (!bReceived) {
        return;  // what is shown stays: an unknown code tells nothing
    }
    m_objState.m_iStatusReceived = 1;
    if (m_bHeadCheck) {
        m_bHeadCheck = false;
        m_objView.ShowHeadCheck(strText);
    } else {
        m_objView.ShowStatus(strText);
    }
}

bool CAnswerRouter::RouteSettings(std::span<const std::uint8_t> p_objAnswer) {
    return MAnswer::DistributeAnswer(m_objItemManager, p_objAnswer, m_iAnswerSelector);
}
