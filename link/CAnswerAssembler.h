#pragma once

#include "link/ILink.h"

#include <cstddef>

/// Puts the printer's answers together from a stream that may cut them anywhere.
///
/// A status answer is complete with its 13 bytes, a settings answer with the length that the
/// request's group has. One of another group, which shows by its end (MAnswer::JudgePart), is
/// dropped; one of the right length that shows no end stays in doubt until more has come or
/// Settle ends the wait for it. Bytes that belong to neither are dropped up to the next byte that
/// begins an answer. Holds one answer at most, so no stream makes it grow.
class CAnswerAssembler {
public:
    /// What a byte has completed.
    enum class Result : std::uint8_t {
        Nothing,   ///< more bytes are needed
        Status,    ///< Answer() is a status answer
        Settings,  ///< Answer() is a settings answer
        Unknown,   ///< an answer of no known kind has begun; its bytes are dropped
    };

    /// Takes the next byte. p_iSettingsLength: the length of a settings answer in bytes. While an
    /// answer is in doubt that stays the same; a byte that begins another comes after Settle.
    Result Append(std::uint8_t p_iByte, std::size_t p_iSettingsLength);

    /// The bytes put together; whole after Append has told so, until the next Append.
    [[nodiscard]] const Bytes& Answer() const { return m_objAnswer; }

    [[nodiscard]] bool IsDoubtful() const { return m_iDoubtfulLength != 0; }

    /// Takes an answer in doubt for the one that was asked for. True when there was one, and
    /// Answer() is that settings answer.
    bool Settle();

    /// Throws away what is there.
    void Clear();

private:
    Result AppendSettings(std::size_t p_iSettingsLength);

    Bytes m_objAnswer;
    std::size_t m_iDoubtfulLength = 0;  // that of the answer asked for, while it is in doubt
    bool m_bComplete = false;           // the answer was handed out; the next byte begins another
    bool m_bUnknown = false;            // bytes of an unknown answer are being dropped
};
