#pragma once

#include "platform/qt/ILineState.h"

#include <cstdint>
#include <optional>

/// Finds out what has changed on a serial line since the last look.
class CSerialLineWatch {
public:
    struct Change {
        bool m_bClearToSend = false;  ///< the line is another than it was
        bool m_bOverrun = false;      ///< characters were lost

        bool operator==(const Change&) const = default;
    };

    /// p_objLine is not owned and outlives this.
    explicit CSerialLineWatch(const ILineState& p_objLine)
        : m_objLine(p_objLine) {}

    /// Begins to watch a port that was just opened: how it is now is no change. But a line that
    /// was off when the former port was left and is on now is one, at the next look.
    void Begin(ILineState::Handle p_iPort);

    /// What has changed since the last look.
    Change Look(ILineState::Handle p_iPort);

    /// False when the last look has shown nothing, and further ones will not either.
    [[nodiscard]] bool SeesAnything() const { return m_bSeesAnything; }

    /// The line as it was last seen; true where the system does not tell.
    [[nodiscard]] bool ClearToSend() const { return m_bClearToSend; }

private:
    const ILineState& m_objLine;
    std::optional<std::int64_t> m_iOverruns;
    bool m_bClearToSend = true;
    bool m_bSeesAnything = false;
};
