#include "link/CUsbLink.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char* OpenError = "'USB' Open Error !!";
constexpr const char* SendTimeOut = "Device Time Out !!";

/// What an exchange says about a printer that cannot be opened; empty when there are no words.
const char* OpenFailure(std::int32_t p_iResult) {
    switch (p_iResult) {
    case IUsbLibrary::Mismatch:
        return "USB DeviceID mismatch error";
    case IUsbLibrary::NoDeviceId:
        return "USB DeviceID receive error";
    case IUsbLibrary::NotReady:
        return "USB Device not ready !!";
    default:
        return "";
    }
}

}  // namespace

CUsbLink::CUsbLink(IUsbLibrary& p_objLibrary, const CAnswerRouter& p_objRouter,
                   CLinkState& p_objState, CWaiter& p_objWaiter, IMessageBox& p_objMessageBox)
    : m_objLibrary(p_objLibrary)
    , m_objRouter(p_objRouter)
    , m_objState(p_objState)
    , m_objWaiter(p_objWaiter)
    , m_objMessageBox(p_objMessageBox) {}

bool CUsbLink::Open() {
    if (m_objWaiter.MustStop()) {
        return false;
    }
    if (m_objLibrary.Dll_openUSB() < IUsbLibrary::Opened) {
        return Fail(OpenError);
    }
    if (!m_objWaiter.Yield() || !m_objWaiter.Yield()) {
        Close();
        return false;
    }
    return true;
}

bool CUsbLink::Close() {
    m_objLibrary.Dll_closeUSB();
    return true;
}

bool CUsbLink::Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer,
                        std::string& p_strError, std::int16_t& p_iReceivedCount,
                        std::int16_t p_iReceiveLength) {
    const auto iLength = static_cast<std::size_t>(std::max<std::int16_t>(p_iReceiveLength, 0));
    p_objReceiveBuffer.assign(iLength, 0);
    p_iReceivedCount = 0;
    m_objState.m_iReplyReceived = 0;
    const std::string strFailure = OpenFailure(OpenLibrary());
    if (!strFailure.empty()) {
        // Events run while it opens: whoever must stop has nothing to say any more.
        if (!m_objWaiter.MustStop()) {
            p_strError = strFailure;
        }
        return false;
    }
    try {
        return SendUsb(p_objCommand) &&
               ReceiveAnswer(p_objReceiveBuffer, p_strError, p_iReceivedCount);
    } catch (...) {
        Close();  // other programs must get at the printer
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

bool CUsbLink::SendUsb(const Bytes& p_objBytes) {
    if (!m_objWaiter.Yield()) {
        Close();
        return false;
    }
    for (;;) {
        const CWaiter::Stopwatch objInside(m_objWaiter);
        if (OpenLibrary() < IUsbLibrary::Opened) {
            return Fail(OpenError);
        }
        m_objState.m_iPendingAnswers = 1;
        m_objState.m_iReplyReceived = 0;  // what a handler inside was answered came before this
        if (m_objLibrary.Dll_sendUSB(p_objBytes) >= 0) {
            break;
        }
        // A handler that has used the printer meanwhile has ended the sending further out before
        // the command has left.
        if (!objInside.IsInterrupted() || m_objWaiter.MustStop()) {
            return Fail(SendTimeOut);
        }
    }
    Close();
    return m_objWaiter.Yield();
}

bool CUsbLink::ReceiveAnswer(Bytes& p_objReceiveBuffer, std::string& p_strError,
                             std::int16_t& p_iReceivedCount) {
    const std::size_t iLength = p_objReceiveBuffer.size();
    CWaiter::Stopwatch objWaited(m_objWaiter);
    while (m_objWaiter.Yield()) {
        // Answers come in the order of their commands, and the handler inside has taken its own.
        if (objWaited.IsInterrupted() && m_objState.m_iReplyReceived == 1) {
            p_iReceivedCount = 0;
            return true;
        }
        // Events run while it waits, and may use the caller's buffer for another command.
        Bytes objAnswer(iLength, 0);
        std::int16_t iCount = ReceiveUsb(objAnswer);
        if (m_objWaiter.MustStop()) {
            return false;
        }
        const auto objReceived = std::span(objAnswer).first(static_cast<std::size_t>(iCount));
        const bool bDropped = m_objRouter.IsAnotherGroups(objReceived, iLength);
        if (bDropped) {
            objAnswer.assign(iLength, 0);
            iCount = 0;
        }
        if (iCount > 0) {
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
            m_objMessageBox.Beep();
            p_strError = NoAnswer;
            return true;
        }
    }
    return false;
}

bool CUsbLink::MayReceiveAgain(bool p_bDropped, double p_dElapsed) {
    // A printer that has only wrong answers is not listened to over midnight.
    const bool bBehindDropped = p_bDropped && p_dElapsed >= 0 && p_dElapsed < DroppedAnswerSeconds;
    // The library has done the waiting: once is enough, unless the clock stands still.
    return bBehindDropped || (!p_bDropped && p_dElapsed <= 0);
}

std::int16_t CUsbLink::ReceiveUsb(Bytes& p_objBuffer) {
    if (OpenLibrary() < IUsbLibrary::Opened) {
        Fail(OpenError);
        return 0;
    }
    const std::int32_t iCount = m_objLibrary.Dll_rcvUSB(p_objBuffer);
    Close();
    m_objWaiter.Yield();
    const std::int32_t iMost = static_cast<std::int32_t>(p_objBuffer.size());
    return static_cast<std::int16_t>(std::clamp(iCount, 0, iMost));
}

bool CUsbLink::Fail(const char* p_strText) {
    if (!m_objWaiter.MustStop()) {
        m_objMessageBox.Show(p_strText, MessageIcon::Critical);
    }
    Close();
    return false;
}
