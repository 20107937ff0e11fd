#pragma once

#include "link/CAnswerRouter.h"
#include "link/CExchangeManners.h"
#include "link/CLinkState.h"
#include "link/CWaiter.h"
#include "link/ILink.h"
#include "link/ISessionEvents.h"
#include "platform/IUsbLibrary.h"

#include <span>

/// The printer on USB, which is opened and closed around every single transfer. The answer to a
/// command is in the receive buffer when its exchange ends.
class CUsbLink : public ILink {
public:
    /// How long after it began to receive it goes on receiving behind an answer that it has
    /// dropped.
    static constexpr double DroppedAnswerSeconds = 1;

    /// None is owned; all outlive this.
    CUsbLink(IUsbLibrary& p_objLibrary, const CAnswerRouter& p_objRouter, CLinkState& p_objState,
             CWaiter& p_objWaiter, ISessionEvents& p_objEvents,
             const CExchangeManners& p_objManners = {});

    [[nodiscard]] Answering HowItAnswers() const override { return Answering::AtOnce; }

    /// Opens the printer and leaves it open; true after two yields.
    bool Open() override;

    bool Close() override;

    /// Sends, then takes one answer: the library waits for it, about a second. Settings of another
    /// group than the one asked for are dropped, and the next answer is taken if it comes in time.
    /// When no answer came it returns true all the same, with a failure. A handler inside that uses
    /// the printer too runs to its end first; what its use of it has cut short is done again behind
    /// it.
    /// Where just the awaited answer will do, any other is dropped, and receiving goes on until the
    /// reply time is over; an answer that comes in pieces is put together.
    bool Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer, CFailure& p_objFailure,
                  std::int16_t& p_iReceivedCount, std::int16_t p_iReceiveLength) override;

private:
    std::int32_t OpenLibrary();
    bool Transfer(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer, CFailure& p_objFailure,
                  std::int16_t& p_iReceivedCount);
    bool SendUsb(const Bytes& p_objBytes, CFailure& p_objFailure);
    bool ReceiveAnswer(Bytes& p_objReceiveBuffer, CFailure& p_objFailure,
                       std::int16_t& p_iReceivedCount);
    /// Joins what has come, the first p_iCount bytes of p_objAnswer, with the piece that was cut
    /// off before; both become it. 0 while more has to come, which is kept as the piece.
    std::int16_t JoinPieces(Bytes& p_objPiece, Bytes& p_objAnswer, std::int16_t p_iCount) const;
    [[nodiscard]] bool IsDropped(std::span<const std::uint8_t> p_objReceived,
                                 std::size_t p_iBufferLength) const;
    [[nodiscard]] bool MayReceiveAgain(bool p_bDropped, double p_dElapsed) const;
    std::int16_t ReceiveUsb(Bytes& p_objBuffer, CFailure& p_objFailure);
    void TellState(CLinkStatus::State p_iState, const CFailure& p_objFailure = {});
    void Tell(const CFailure& p_objFailure);
    [[nodiscard]] CFailure Failure(CFailure::Kind p_iKind, std::int32_t p_iResult) const;
    bool Fail(CFailure::Kind p_iKind, std::int32_t p_iResult, CFailure& p_objFailure);

    IUsbLibrary& m_objLibrary;
    const CAnswerRouter& m_objRouter;
    CLinkState& m_objState;
    CWaiter& m_objWaiter;
    ISessionEvents& m_objEvents;
    CExchangeManners m_objManners;
};
