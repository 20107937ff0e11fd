#pragma once

#include "link/CLinkState.h"
#include "link/ILink.h"

#include <cstddef>

/// Puts the printer's answers together from single characters of a serial line.
///
/// 0x01 opens a status frame and "{" a settings frame, each throwing away what was there; what
/// comes outside a frame is dropped, and so are flow control and characters above 128. A settings
/// frame of another group, which shows by its end (MAnswer::JudgePart), is dropped; one of the
/// right length that shows no end stays open, in doubt, until more has come or Settle closes it.
class CSerialReceiver {
public:
    /// Counts the pending answers in p_objState, which is not owned and outlives this.
    explicit CSerialReceiver(CLinkState& p_objState)
        : m_objState(p_objState) {}

    /// What a character has completed.
    enum class Result : std::uint8_t { Nothing, Status, Settings };

    /// Takes the next character. p_iExpectedLength: the receive length of the command in flight;
    /// a settings frame is complete at half of it. While a frame is in doubt that stays the same; a
    /// character that opens another comes after Settle.
    Result Take(std::uint8_t p_iCharacter, std::int16_t p_iExpectedLength);

    [[nodiscard]] bool IsDoubtful() const { return m_iDoubtfulLength != 0; }

    /// Takes a frame in doubt for the answer that was asked for. True when there was one, and
    /// Frame() is that settings frame.
    bool Settle();

    /// The frame, its position 0 in place of the character that opened it, so that everything
    /// stands where it stands on the other links. Whole after Take has told so, until the next.
    [[nodiscard]] const Bytes& Frame() const { return m_objBuffer; }

    [[nodiscard]] bool XoffSeen() const { return m_bXoffSeen; }
    [[nodiscard]] bool XonSeen() const { return m_bXonSeen; }

private:
    enum class Open : std::uint8_t { None, Status, Settings };

    void Begin(Open p_iFrame);
    Result Append(std::uint8_t p_iCharacter, std::int16_t p_iExpectedLength);
    Result AppendSettings(std::int16_t p_iExpectedLength);
    Result CloseSettings();

    CLinkState& m_objState;
    Bytes m_objBuffer;
    Open m_iOpen = Open::None;
    std::size_t m_iDoubtfulLength = 0;  // that of the answer asked for, while it is in doubt
    bool m_bXoffSeen = false;
    bool m_bXonSeen = false;
};
