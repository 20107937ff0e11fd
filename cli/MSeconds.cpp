#include "cli/MSeconds.h"

#include "cli/CCommandError.h"

namespace {

constexpr double LongestPause = 10;
constexpr double LongestReach = 3600;

/// Written so that what is no number at all is refused, too.
bool IsUpTo(double p_dSeconds, double p_dMost) {
    return p_dSeconds >= 0 && p_dSeconds <= p_dMost;
}

}  // namespace

namespace MSeconds {

std::chrono::milliseconds Pause(double p_dSeconds) {
    if (!IsUpTo(p_dSeconds, LongestPause)) {
        throw CCommandError(MExitCode::Wrong,
                            {"This is no pause", "it has from 0 to 10 seconds", {}, {}});
    }
    return std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(p_dSeconds));
}

double Reach(double p_dSeconds) {
    if (!IsUpTo(p_dSeconds, LongestReach)) {
        throw CCommandError(
            MExitCode::Wrong,
            {"This is no time to seek a printer", "it has from 0 to 3600 seconds", {}, {}});
    }
    return p_dSeconds;
}

}  // namespace MSeconds
