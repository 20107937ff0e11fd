#pragma once

#include "link/ILink.h"

#include <cstddef>

/// Puts the printer's answers together from a stream that may cut them anywhere.
///
/// A status answer is complete with its 13 bytes, a settings answer with the length that the
/// request's group has. Bytes that belong to neither are dropped up to the next byte that begins
/// an answer. Holds one answer at most, so no stream makes it grow.
class CAnswerAssembler {
public:
    /// What a byte has completed.
    enum class Result : std::uint8_t {
        Nothing,   ///< more bytes are needed
        Status,    ///< Answer() is a status answer
        Settings,  ///< Answer() is a settings answer
        Unknown,   ///< an answer of no known kind has begun; its bytes are dropped
    };

    /// Takes the next byte. p_iSettingsLength: the length of a settings answer in bytes.
    Result Append(std::uint8_t p_iByte, std::size_t p_iSettingsLength);

    /// The bytes put together; whole after Append has told so, until the next Append.
    [[nodiscard]] const Bytes& Answer() const { return m_objAnswer; }

    /// Throws away what is there.
    void Clear();

private:
    [[nodiscard]] bool IsComplete(std::size_t p_iSettingsLength) const;

    Bytes m_objAnswer;
    bool m_bComplete = false;  // the answer was handed out; the next byte begins another
    bool m_bUnknown = false;   // bytes of an unknown answer are being dropped
};
