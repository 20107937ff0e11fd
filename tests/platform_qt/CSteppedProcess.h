#pragma once

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

/// Work done in a process of its own, and by the program that it may turn into. Of each call to the
/// system that has to do with changing files this process hears first, and decides what becomes of
/// it.
class CSteppedProcess {
public:
    /// A call that is about to be carried out.
    struct Call {
        int m_iNumber;          ///< the system's (SYS_…)
        std::string m_strFile;  ///< what its first argument stands for when that is an open file
        pid_t m_iProcess;       ///< whose it is
        std::array<std::uint64_t, 6> m_iArguments;

        /// What an argument stands for when it is an open file, or the folder that paths begin at.
        [[nodiscard]] std::string FileOf(std::size_t p_iArgument) const;
        /// The text that an argument points to; empty when it points to none.
        [[nodiscard]] std::string TextOf(std::size_t p_iArgument) const;
    };

    /// Who decides: Pass, Kill, or the error number that the call fails with.
    using Decide = std::function<int(const Call&)>;
    static constexpr int Pass = 0;
    static constexpr int Kill = -1;

    /// Whether there are files without a name where the work is done.
    enum class Nameless { Exist, Missing };

    enum class Ended { Done, Refused, Killed };

    /// Runs p_fnWork in a new process; Done when it gives true. Throws std::runtime_error where
    /// the system does not let a process hear of another's calls.
    static Ended Run(const std::function<bool()>& p_fnWork, Nameless p_iNameless,
                     const Decide& p_fnDecide);

    /// The same for work that turns into a program; its exit code, or nothing when it was killed.
    static std::optional<int> RunProgram(const std::function<bool()>& p_fnWork,
                                         const Decide& p_fnDecide);
};
