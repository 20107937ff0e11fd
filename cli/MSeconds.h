#pragma once

#include <chrono>

/// Times that a command line names. Throw CCommandError for what is none.
namespace MSeconds {

/// The pause between two answers: from 0 to 10 seconds.
std::chrono::milliseconds Pause(double p_dSeconds);

/// For how long a printer is sought: from 0 to 3600 seconds.
double Reach(double p_dSeconds);

}  // namespace MSeconds
