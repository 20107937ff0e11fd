#pragma once

#include "link/CAnswerAssembler.h"
#include "link/CLinkState.h"
#include "link/COutcome.h"
#include "link/CSerialReceiver.h"
#include "link/ISessionEvents.h"
#include "model/CItemManager.h"
#include "protocol/MAnswer.h"

#include <span>

/// What the command in flight waits for.
enum class AwaitedAnswer : std::int16_t {
    Any,       ///< whatever the printer answers
    Settings,  ///< a settings answer; a status that comes in between is shown and waited past
    Status,    ///< a status; who does not await just that one takes any answer for it
};

/// Takes the printer's answers as they arrive, asked for or not, and brings each to its place:
/// a status to who hears of the session, settings into the items of the group that was asked for.
///
/// Settings that show by their end that they are another group's, as a late answer to an earlier
/// read, go nowhere. Those that show no end are kept until the doubt is over: until more bytes
/// show it, another answer or command begins, or SettleQuiet finds that nothing more comes.
class CAnswerRouter {
public:
    /// None is owned; all outlive this.
    CAnswerRouter(const CItemManager& p_objItemManager, CLinkState& p_objState,
                  ISessionEvents& p_objEvents);

    /// Names the group that the next settings answer fills (MAnswer::Group). One in doubt is
    /// taken for the group named before.
    void SetAnswerSelector(std::int16_t p_iGroup);
    [[nodiscard]] std::int16_t AnswerSelector() const { return m_iAnswerSelector; }

    /// The next status that is shown is the result of a head check, and goes there instead, however
    /// late it comes and whatever has asked for it.
    void ExpectHeadCheck() { m_bHeadCheck = true; }
    /// None is expected any more.
    void ForgetHeadCheck() { m_bHeadCheck = false; }
    [[nodiscard]] bool ExpectsHeadCheck() const { return m_bHeadCheck; }

    /// A command goes out: takes an answer in doubt, forgets what else a former exchange has left
    /// and clears the flags of answers.
    void BeginCommand(AwaitedAnswer p_iAwaited);

    /// Takes bytes of a stream. Sets the reply flag when the answer that is waited for is in its
    /// place. Whatever fails on the way of an answer comes out as the exception it is; the bytes
    /// behind that answer are lost.
    void TakeStream(std::span<const std::uint8_t> p_objBytes);

    /// Takes one character of a serial line.
    /// @param p_iReceiveLength the receive length of the command in flight (CSerialReceiver::Take).
    void TakeSerial(std::uint8_t p_iCharacter, std::int16_t p_iReceiveLength);

    /// Takes settings in doubt for those that were asked for once nothing at all has come for
    /// p_dQuietSeconds. Called again and again while something waits: it measures from the first
    /// call that finds nothing new, so that one call alone takes nothing.
    /// @param p_dNow seconds since midnight.
    /// @return true when it has taken some.
    bool SettleQuiet(double p_dNow, double p_dQuietSeconds);

    /// How long a wait may sleep until SettleQuiet is to be called again, when nothing comes: no
    /// longer than p_dLeft seconds, which the wait has left itself.
    [[nodiscard]] double SleepBeforeSettling(double p_dLeft, double p_dQuietSeconds) const;

    /// True for settings from USB that show to be another group's than the one that was asked for,
    /// by their end or by the number of their bytes.
    /// @param p_objReceived as TakeUsbAnswer takes it.
    /// @param p_iBufferLength how many bytes could have been received.
    [[nodiscard]] bool IsAnotherGroups(std::span<const std::uint8_t> p_objReceived,
                                       std::size_t p_iBufferLength) const;

    /// True for an answer from USB of the kind that the command in flight waits for; a status
    /// without a code is none.
    [[nodiscard]] bool IsOfAwaitedKind(std::span<const std::uint8_t> p_objReceived) const;

    /// True for bytes from USB that begin an answer, and are not the rest of one.
    [[nodiscard]] static bool BeginsUsbAnswer(std::span<const std::uint8_t> p_objReceived);

    /// True for an answer from USB that has been cut before its end, so that more may come of it.
    /// @param p_objReceived as TakeUsbAnswer takes it.
    /// @param p_iBufferLength how many bytes could have been received.
    [[nodiscard]] bool IsCut(std::span<const std::uint8_t> p_objReceived,
                             std::size_t p_iBufferLength) const;

    /// Takes one answer as USB brings it, a byte 0x01 (status) or 0x02 (settings, two bytes before
    /// the answer as the other links have it) in front; any other goes nowhere. Nor does a status
    /// that ends before its code, or settings that are cut or another group's.
    ///
    /// @param p_objReceived what has come; may be empty.
    /// @param p_iReceiveLength the receive length of the command, which bounds the answer.
    /// @return false for settings that have filled nothing. Throws std::out_of_range when the
    ///         receive length leaves no room for the fields of the group that was asked for.
    bool TakeUsbAnswer(std::span<const std::uint8_t> p_objReceived, std::int16_t p_iReceiveLength);

    /// What has come since the command began: the status and its code, the group that was filled.
    [[nodiscard]] const COutcome& Learned() const { return m_objLearned; }

    /// True when the very answer that p_iAwaited names has come since the command began.
    [[nodiscard]] bool HasLearned(AwaitedAnswer p_iAwaited) const;

    /// True when TakeUsbAnswer has filled the group that was asked for since the command began.
    [[nodiscard]] bool HasUsbFilledGroup() const { return m_bUsbFilled; }

private:
    /// True while an answer is kept that shows no end.
    [[nodiscard]] bool IsInDoubt() const;
    void Route(CAnswerAssembler::Result p_iResult);
    void RouteSerial(CSerialReceiver::Result p_iResult);
    void RouteStatus(std::span<const std::uint8_t> p_objAnswer);
    bool RouteSettings(std::span<const std::uint8_t> p_objAnswer);
    void TakeReply(bool p_bSettings);
    [[nodiscard]] MAnswer::Frame JudgeUsb(std::span<const std::uint8_t> p_objReceived,
                                          std::size_t p_iBufferLength) const;
    void SettleStream();
    void SettleSerial();
    /// The bytes of the settings asked for, as the serial port and TCP bring them.
    [[nodiscard]] std::size_t AskedLength() const;

    const CItemManager& m_objItemManager;
    CLinkState& m_objState;
    ISessionEvents& m_objEvents;
    CAnswerAssembler m_objAssembler;
    CSerialReceiver m_objReceiver{m_objState};
    AwaitedAnswer m_iAwaited = AwaitedAnswer::Any;
    std::int16_t m_iAnswerSelector = -1;
    bool m_bHeadCheck = false;
    bool m_bUsbFilled = false;
    COutcome m_objLearned;  // of answers alone
    // What SettleQuiet goes by: the bytes that have come by now, and by its last call but those
    // that found nothing new; and the time of that one.
    std::uint64_t m_iTaken = 0;
    std::uint64_t m_iSeen = 0;
    double m_dSeenAt = 0;
};
