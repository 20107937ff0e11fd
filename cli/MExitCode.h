#pragma once

/// How the program ends: what a script can rely on.
namespace MExitCode {

enum Code : int {
    Done = 0,          ///< also when there was nothing to do
    Failed = 1,        ///< it was tried, and did not work
    Wrong = 2,         ///< the command line, a value or a file is wrong; nothing was sent
    NotReachable = 3,  ///< no way to the printer; nothing was sent
    Different = 4,     ///< two sets of settings that were compared differ
    PersonNeeded =
        5,  ///< a printer is not as it was nor as wanted, or nobody knows: see the journal
    Interrupted = 130  ///< Ctrl-C, or asked to end in another way
};

}  // namespace MExitCode
