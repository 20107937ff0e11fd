#pragma once

#include "link/CAnswerAssembler.h"
#include "link/CLinkState.h"
#include "link/IExchangeView.h"
#include "model/CItemManager.h"

#include <span>

/// What the command in flight waits for.
enum class AwaitedAnswer : std::int16_t {
    Any,       ///< whatever the printer answers
    Settings,  ///< a settings answer; a status that comes in between is shown and waited past
};

/// Takes the printer's answers as they arrive, asked for or not, and brings each to its place:
/// a status to the view, settings into the items of the group that was asked for.
class CAnswerRouter {
public:
    /// None is owned; all outlive this.
    CAnswerRouter(const CItemManager& p_objItemManager, CLinkState& p_objState,
                  IExchangeView& p_objView);

    /// Names the group that the next settings answer fills (MAnswer::Group).
    void SetAnswerSelector(std::int16_t p_iGroup) { m_iAnswerSelector = p_iGroup; }
    [[nodiscard]] std::int16_t AnswerSelector() const { return m_iAnswerSelector; }

    /// The next status that is shown is the result of a head check, and goes there instead, however
    /// late it comes and whatever has asked for it.
    void ExpectHeadCheck() { m_bHeadCheck = true; }
    /// None is expected any more.
    void ForgetHeadCheck() { m_bHeadCheck = false; }
    [[nodiscard]] bool ExpectsHeadCheck() const { return m_bHeadCheck; }

    /// A command goes out: forgets what a former exchange has left and clears the flags of answers.
    void BeginCommand(AwaitedAnswer p_iAwaited);

    /// Takes bytes of a stream. Sets the reply flag when the answer that is waited for is in its
    /// place. Whatever fails on the way of an answer comes out as the exception it is; the bytes
    /// behind that answer are lost.
    void TakeStream(std::span<const std::uint8_t> p_objBytes);

    /// Takes one answer as USB brings it, a byte 0x01 (status) or 0x02 (settings, two bytes before
    /// the answer as the other links have it) in front; any other goes nowhere.
    ///
    /// @param p_objReceived what has come; may be empty.
    /// @param p_iReceiveLength the receive length of the command, which bounds the answer.
    /// @return false for settings that no group was named for. Throws std::out_of_range for
    ///         settings that are too short; a status that ends before its code goes nowhere.
    bool TakeUsbAnswer(std::span<const std::uint8_t> p_objReceived, std::int16_t p_iReceiveLength);

    /// Shows what a status answer tells; at least StatusLength bytes.
    void RouteStatus(std::span<const std::uint8_t> p_objAnswer);

    /// Stores a settings answer in the items of the group that was asked for. False, and nothing
    /// stored, when none was. Throws std::out_of_range for an answer that is too short.
    bool RouteSettings(std::span<const std::uint8_t> p_objAnswer);

private:
    void Route(CAnswerAssembler::Result p_iResult);
    void TakeReply(bool p_bSettings);

    const CItemManager& m_objItemManager;
    CLinkState& m_objState;
    IExchangeView& m_objView;
    CAnswerAssembler m_objAssembler;
    AwaitedAnswer m_iAwaited = AwaitedAnswer::Any;
    std::int16_t m_iAnswerSelector = -1;
    bool m_bHeadCheck = false;
};
