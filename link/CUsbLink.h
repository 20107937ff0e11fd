#pragma once

#include "link/CAnswerRouter.h"
#include "link/CLinkState.h"
#include "link/CWaiter.h"
#include "link/ILink.h"
#include "platform/IMessageBox.h"
#include "platform/IUsbLibrary.h"

/// The printer on USB, which is opened and closed around every single transfer. The answer to a
/// command is in the receive buffer when its exchange ends.
class CUsbLink : public ILink {
public:
    /// The words for an answer that does not come.
    static constexpr const char* NoAnswer = "Please confirm the connection of USB.";
    /// How long after it began to receive it goes on receiving behind an answer that it has
    /// dropped.
    static constexpr double DroppedAnswerSeconds = 1;

    /// None is owned; all outlive this.
    CUsbLink(IUsbLibrary& p_objLibrary, const CAnswerRouter& p_objRouter, CLinkState& p_objState,
             CWaiter& p_objWaiter, IMessageBox& p_objMessageBox);

    /// Opens the printer and leaves it open; true after two yields.
    bool Open() override;

    bool Close() override;

    /// Sends, then takes one answer: the library waits for it, about a second. Settings of another
    /// group than the one asked for are dropped, and the next answer is taken if it comes in time.
    /// A printer that cannot be had is told by p_strError alone, and nothing is sent. When no
    /// answer came it beeps and returns true, with a text in p_strError. A handler inside that uses
    /// the printer too runs to its end first; what its use of it has cut short is done again behind
    /// it.
    bool Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer, std::string& p_strError,
                  std::int16_t& p_iReceivedCount, std::int16_t p_iReceiveLength) override;

private:
    std::int32_t OpenLibrary();
    bool SendUsb(const Bytes& p_objBytes);
    bool ReceiveAnswer(Bytes& p_objReceiveBuffer, std::string& p_strError,
                       std::int16_t& p_iReceivedCount);
    [[nodiscard]] static bool MayReceiveAgain(bool p_bDropped, double p_dElapsed);
    std::int16_t ReceiveUsb(Bytes& p_objBuffer);
    bool Fail(const char* p_strText);

    IUsbLibrary& m_objLibrary;
    const CAnswerRouter& m_objRouter;
    CLinkState& m_objState;
    CWaiter& m_objWaiter;
    IMessageBox& m_objMessageBox;
};
