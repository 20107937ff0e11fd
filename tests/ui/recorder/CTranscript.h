#pragma once

#include "tests/fakes/CFakeClock.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// What the window does, a line for each thing, in the order in which it happens.
///
/// Time is told where it passes: a line such as "-- 1.0 s" for each half second in which nothing
/// happened, rounded, so that a wait that yields once more or less reads the same. Bytes that run
/// on make one line, and so do buttons that are switched one after the other.
class CTranscript {
public:
    /// The clock is not owned. p_strButtons are the buttons that belong together, in their order: a
    /// line that switches all or most of them in it says so in place of their names.
    CTranscript(const CFakeClock& p_objClock, std::vector<std::string> p_strButtons);

    /// Called before each line: tells by Add what has changed without telling.
    void SetWatch(std::function<void()> p_fnWatch) { m_fnWatch = std::move(p_fnWatch); }
    /// Calls the watch now.
    void Look();

    void Add(const std::string& p_strLine);

    /// Bytes on their way, p_strWay such as "COM sends". A command's end ends the line, and so does
    /// whatever else happens, but for what runs the other way on a serial line.
    void Bytes(const std::string& p_strWay, std::string_view p_strBytes);

    void Switched(const std::string& p_strButton, bool p_bEnabled);

    /// The lines so far, which are forgotten. The time counts from here.
    std::vector<std::string> Take();

    /// Puts back what Take gave. The time counts from here.
    void Restore(std::vector<std::string> p_strLines);

    /// p_strBytes as text: "<01>" for a byte that cannot be printed, and for "<".
    static std::string Printable(std::string_view p_strBytes);

private:
    /// A line that is not finished.
    struct Run {
        std::string m_strWay;
        std::string m_strBytes;
        std::vector<std::string> m_strButtons;
    };

    void Touch();
    void Flush();
    void Write(const Run& p_objRun);
    [[nodiscard]] std::string Describe(const std::vector<std::string>& p_strButtons) const;

    const CFakeClock& m_objClock;
    std::vector<std::string> m_strAllButtons;
    std::function<void()> m_fnWatch;
    std::vector<std::string> m_strLines;
    std::vector<Run> m_objRuns;
    std::int64_t m_iLast = 0;
    bool m_bLooking = false;
};
