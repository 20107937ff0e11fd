#include "link/CUsbLink.h"

#include "link/CInterface.h"
#include "protocol/MAnswer.h"

#include <algorithm>
#include <utility>

namespace {

/// What an exchange says about a printer that cannot be opened; None when it says nothing.
CFailure::Kind OpenFailure(std::int32_t p_iResult) {
    switch (p_iResult) {
    case IUsbLibrary::Mismatch:
        return CFailure::Kind::UsbMismatch;
    case IUsbLibrary::NoDeviceId:
        return CFailure::Kind::UsbNoDeviceId;
    case IUsbLibrary::NotReady:
        return CFailure::Kind::UsbNotReady;
    default:
        return CFailure::Kind::None;
    }
}

}  // namespace

CUsbLink::CUsbLink(IUsbLibrary& p_objLibrary, const CAnswerRouter& p_objRouter,
                   CLinkState& p_objState, CWaiter& p_objWaiter, ISessionEvents& p_objEvents,
                   const CExchangeManners& p_objManners)
    : m_objLibrary(p_objLibrary)
    , m_objRouter(p_objRouter)
    , m_objState(p_objState)
    , m_objWaiter(p_objWaiter)
    , m_objEvents(p_objEvents)
    , m_objManners(p_objManners) {}

bool CUsbLink::Open() {
    if (m_objWaiter.MustStop()) {
        return false;
    }
    const std::int32_t iResult = m_objLibrary.Dll_openUSB();
    if (iResult < IUsbLibrary::Opened) {
        CFailure objFailure;
        return Fail(CFailure::Kind::UsbNotOpened, iResult, objFailure);
    }
    TellState(CLinkStatus::State::Open);
    if (!m_objWaiter.Yield() || !m_objWaiter.Yield()) {
        Close();
        return false;
    }
    return true;
}

bool CUsbLink::Close() {
    m_objLibrary.Dll_closeUSB();
    TellState(CLinkStatus::State::Closed);
    return true;
}

bool CUsbLink::Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer,
                        CFailure& p_objFailure, std::int16_t& p_iReceivedCount,
                        std::int16_t p_iReceiveLength) {
    const auto iLength = static_cast<std::size_t>(std::max<std::int16_t>(p_iReceiveLength, 0));
    p_objReceiveBuffer.assign(iLength, 0);
    p_iReceivedCount = 0;
    m_objState.m_iReplyReceived = 0;
    TellState(CLinkStatus::State::Opening);
    const std::int32_t iResult = OpenLibrary();
    const CFailure::Kind iFailure = OpenFailure(iResult);
    if (iFailure != CFailure::Kind::None) {
        // Events run while it opens: whoever must stop has nothing to say any more.
        if (!m_objWaiter.MustStop()) {
            p_objFailure = Failure(iFailure, iResult);
            Tell(p_objFailure);
        }
        return false;
    }
    TellState(CLinkStatus::State::Open);
    const bool bSent = Transfer(p_objCommand, p_objReceiveBuffer, p_objFailure, p_iReceivedCount);
    if (p_objFailure.IsNone()) {
        TellState(CLinkStatus::State::Closed);
    }
    return bSent;
}

bool CUsbLink::Transfer(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer,
                        CFailure& p_objFailure, std::int16_t& p_iReceivedCount) {
    try {
        return SendUsb(p_objCommand, p_objFailure) &&
               ReceiveAnswer(p_objReceiveBuffer, p_objFailure, p_iReceivedCount);
    } catch (...) {
        m_objLibrary.Dll_closeUSB();  // other programs must get at the printer
        throw;
    }
}

std::int32_t CUsbLink::OpenLibrary() {
    for (;;) {
        const CWaiter::Stopwatch objInside(m_objWaiter);
        const std::int32_t iResult = m_objLibrary.Dll_openUSB();
        // A handler that has used the printer meanwhile has ended the opening further out.
        if (iResult >= IUsbLibrary::Opened || !objInside.IsInterrupted() ||
            m_objWaiter.MustStop()) {
            return iResult;
        }
    }
}

bool CUsbLink::SendUsb(const Bytes& p_objBytes, CFailure& p_objFailure) {
    if (!m_objWaiter.Yield()) {
        m_objLibrary.Dll_closeUSB();
        return false;
    }
    for (;;) {
        const CWaiter::Stopwatch objInside(m_objWaiter);
        const std::int32_t iResult = OpenLibrary();
        if (iResult < IUsbLibrary::Opened) {
            return Fail(CFailure::Kind::UsbNotOpened, iResult, p_objFailure);
        }
        m_objState.m_iPendingAnswers = 1;
        m_objState.m_iReplyReceived = 0;  // what a handler inside was answered came before this
        ++m_objState.m_iHandedOut;
        const std::int32_t iSent = m_objLibrary.Dll_sendUSB(p_objBytes);
        if (iSent >= 0) {
            break;
        }
        // A handler that has used the printer meanwhile has ended the sending further out before
        // the command has left.
        if (!objInside.IsInterrupted() || m_objWaiter.MustStop()) {
            return Fail(CFailure::Kind::UsbNotSent, iSent, p_objFailure);
        }
    }
    m_objLibrary.Dll_closeUSB();
    return m_objWaiter.Yield();
}

bool CUsbLink::ReceiveAnswer(Bytes& p_objReceiveBuffer, CFailure& p_objFailure,
                             std::int16_t& p_iReceivedCount) {
    const std::size_t iLength = p_objReceiveBuffer.size();
    CWaiter::Stopwatch objWaited(m_objWaiter);
    Bytes objPiece;  // of an answer that was cut, where its rest is waited for
    while (m_objWaiter.Yield()) {
        // Answers come in the order of their commands, and the handler inside has taken its own.
        if (objWaited.IsInterrupted() && m_objState.m_iReplyReceived == 1) {
            p_iReceivedCount = 0;
            return true;
        }
        // Events run while it waits, and may use the caller's buffer for another command.
        Bytes objAnswer(iLength, 0);
        std::int16_t iCount = ReceiveUsb(objAnswer, p_objFailure);
        if (m_objWaiter.MustStop()) {
            return false;
        }
        if (m_objManners.m_bAwaitsItsAnswer) {
            if (!p_objFailure.IsNone()) {
                return true;  // it went out, and the printer has gone since
            }
            iCount = JoinPieces(objPiece, objAnswer, iCount);
        }
        const auto objReceived = std::span(objAnswer).first(static_cast<std::size_t>(iCount));
        const bool bDropped = IsDropped(objReceived, iLength);
        if (bDropped) {
            objAnswer.assign(iLength, 0);
            iCount = 0;
        } else if (iCount > 0) {
            m_objState.m_iReplyReceived = 1;
        }
        if (!m_objWaiter.Yield()) {
            return false;
        }
        p_iReceivedCount = iCount;
        p_objReceiveBuffer = std::move(objAnswer);
        if (iCount > 0 || m_objState.m_iReplyReceived == 1) {
            return true;
        }
        if (!MayReceiveAgain(bDropped, objWaited.Elapsed())) {
            p_objFailure = {CFailure::Kind::UsbNoAnswer};
            Tell(p_objFailure);
            return true;
        }
    }
    return false;
}

std::int16_t CUsbLink::JoinPieces(Bytes& p_objPiece, Bytes& p_objAnswer,
                                  std::int16_t p_iCount) const {
    const std::size_t iLength = p_objAnswer.size();
    const auto objReceived = std::span(p_objAnswer).first(static_cast<std::size_t>(p_iCount));
    // A status that comes byte by byte has second what settings begin with.
    const bool bSecond = p_objPiece == Bytes{MAnswer::StatusHead} && objReceived.size() == 1;
    if (!bSecond && CAnswerRouter::BeginsUsbAnswer(objReceived)) {
        p_objPiece.clear();  // the rest of the former one does not come any more
    }
    p_objPiece.insert(p_objPiece.end(), objReceived.begin(), objReceived.end());
    p_objPiece.resize(std::min(p_objPiece.size(), iLength));
    p_objAnswer.assign(iLength, 0);
    if (m_objRouter.IsCut(p_objPiece, iLength)) {
        return 0;
    }
    std::ranges::copy(p_objPiece, p_objAnswer.begin());
    const auto iCount = static_cast<std::int16_t>(p_objPiece.size());
    p_objPiece.clear();
    return iCount;
}

bool CUsbLink::IsDropped(std::span<const std::uint8_t> p_objReceived,
                         std::size_t p_iBufferLength) const {
    return m_objRouter.IsAnotherGroups(p_objReceived, p_iBufferLength) ||
           (m_objManners.m_bAwaitsItsAnswer && !p_objReceived.empty() &&
            !m_objRouter.IsOfAwaitedKind(p_objReceived));
}

bool CUsbLink::MayReceiveAgain(bool p_bDropped, double p_dElapsed) const {
    if (m_objManners.m_bAwaitsItsAnswer) {
        return p_dElapsed >= 0 && p_dElapsed < m_objManners.m_iReplySeconds;
    }
    // A printer that has only wrong answers is not listened to over midnight.
    const bool bBehindDropped = p_bDropped && p_dElapsed >= 0 && p_dElapsed < DroppedAnswerSeconds;
    // The library has done the waiting: once is enough, unless the clock stands still.
    return bBehindDropped || (!p_bDropped && p_dElapsed <= 0);
}

std::int16_t CUsbLink::ReceiveUsb(Bytes& p_objBuffer, CFailure& p_objFailure) {
    const std::int32_t iResult = OpenLibrary();
    if (iResult < IUsbLibrary::Opened) {
        Fail(CFailure::Kind::UsbNotOpened, iResult, p_objFailure);
        return 0;
    }
    const std::int32_t iCount = m_objLibrary.Dll_rcvUSB(p_objBuffer);
    m_objLibrary.Dll_closeUSB();
    m_objWaiter.Yield();
    const std::int32_t iMost = static_cast<std::int32_t>(p_objBuffer.size());
    return static_cast<std::int16_t>(std::clamp(iCount, 0, iMost));
}

void CUsbLink::TellState(CLinkStatus::State p_iState, const CFailure& p_objFailure) {
    m_objEvents.OnLinkStatus({CInterface::UsbInterface, p_iState, {}, p_objFailure});
}

void CUsbLink::Tell(const CFailure& p_objFailure) {
    TellState(CLinkStatus::State::Failed, p_objFailure);
    m_objEvents.OnFailure(p_objFailure);
}

CFailure CUsbLink::Failure(CFailure::Kind p_iKind, std::int32_t p_iResult) const {
    CFailure objFailure{p_iKind, {}, p_iResult};
    if (p_iResult == IUsbLibrary::NotReady && p_iKind != CFailure::Kind::UsbNotSent) {
        objFailure.m_iReason = m_objLibrary.NotReadyNumber();
    }
    return objFailure;
}

bool CUsbLink::Fail(CFailure::Kind p_iKind, std::int32_t p_iResult, CFailure& p_objFailure) {
    if (!m_objWaiter.MustStop()) {
        p_objFailure = Failure(p_iKind, p_iResult);
        Tell(p_objFailure);
    }
    m_objLibrary.Dll_closeUSB();
    return false;
}
