#include "cli/CInterrupt.h"

#include "cli/MExitCode.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Ended {
    int m_iStatus = 0;
    std::string m_strOut;
};

/// Runs p_fnDo in a process of its own; how it has ended, and what it has put on standard output.
template <typename Do>
Ended InAProcess(const Do& p_fnDo) {
    int iEnds[2]{};
    EXPECT_EQ(::pipe(iEnds), 0);
    const pid_t iChild = ::fork();
    if (iChild == 0) {
        ::dup2(iEnds[1], STDOUT_FILENO);
        p_fnDo();
        ::_exit(0);
    }
    ::close(iEnds[1]);
    Ended objEnded;
    char strBlock[256];
    for (ssize_t iCount = 0; (iCount = ::read(iEnds[0], strBlock, sizeof strBlock)) > 0;) {
        objEnded.m_strOut.append(strBlock, static_cast<std::size_t>(iCount));
    }
    ::close(iEnds[0]);
    ::waitpid(iChild, &objEnded.m_iStatus, 0);
    return objEnded;
}

TEST(CInterrupt, CtrlCEndsTheProgramWithItsOwnCode) {
    const Ended objEnded = InAProcess([] {
        const CInterrupt objInterrupt;
        std::raise(SIGINT);
    });
    ASSERT_TRUE(WIFEXITED(objEnded.m_iStatus));
    EXPECT_EQ(WEXITSTATUS(objEnded.m_iStatus), MExitCode::Interrupted);
    EXPECT_EQ(objEnded.m_strOut, "");
}

// A unit that is stopped, a time-out's end, a terminal that is closed: the link is closed, and what
// was begun is told.
TEST(CInterrupt, WhateverAsksTheProgramToEndIsHeardLikeCtrlC) {
    for (const int iSignal : {SIGTERM, SIGHUP}) {
        const Ended objEnded = InAProcess([iSignal] {
            CInterrupt objInterrupt;
            objInterrupt.SetLastWords("{}\n");
            objInterrupt.RunHeld([&] {
                std::raise(iSignal);
                if (objInterrupt.IsPending()) {
                    EXPECT_EQ(::write(STDOUT_FILENO, "closed ", 7), 7);
                }
            });
        });
        ASSERT_TRUE(WIFEXITED(objEnded.m_iStatus)) << iSignal;
        EXPECT_EQ(WEXITSTATUS(objEnded.m_iStatus), MExitCode::Interrupted);
        EXPECT_EQ(objEnded.m_strOut, "closed {}\n");
    }
}

TEST(CInterrupt, AProgramThatOutlivesItsTerminalGoesOn) {
    const Ended objEnded = InAProcess([] {
        std::signal(SIGHUP, SIG_IGN);
        const CInterrupt objInterrupt;
        std::raise(SIGHUP);
    });
    ASSERT_TRUE(WIFEXITED(objEnded.m_iStatus));
    EXPECT_EQ(WEXITSTATUS(objEnded.m_iStatus), 0);
}

TEST(CInterrupt, CtrlCPrintsTheLatestLastWords) {
    const Ended objEnded = InAProcess([] {
        CInterrupt objInterrupt;
        objInterrupt.SetLastWords("first\n");
        objInterrupt.SetLastWords("{}\n");
        std::raise(SIGINT);
    });
    EXPECT_EQ(WEXITSTATUS(objEnded.m_iStatus), MExitCode::Interrupted);
    EXPECT_EQ(objEnded.m_strOut, "{}\n");
}

TEST(CInterrupt, CtrlCPrintsTheLastNoteOnStandardErrorFirst) {
    const Ended objEnded = InAProcess([] {
        ::dup2(STDOUT_FILENO, STDERR_FILENO);
        CInterrupt objInterrupt;
        objInterrupt.SetLastWords("{}\n");
        objInterrupt.SetLastNote("note\n");
        std::raise(SIGINT);
    });
    EXPECT_EQ(objEnded.m_strOut, "note\n{}\n");
}

TEST(CInterrupt, WithoutItCtrlCEndsAProgramAsEver) {
    const Ended objEnded = InAProcess([] {
        { const CInterrupt objInterrupt; }
        std::raise(SIGINT);
    });
    ASSERT_TRUE(WIFSIGNALED(objEnded.m_iStatus));
    EXPECT_EQ(WTERMSIG(objEnded.m_iStatus), SIGINT);
}

TEST(CInterrupt, AProgramThatDoesNotHearCtrlCGoesOn) {
    const Ended objEnded = InAProcess([] {
        std::signal(SIGINT, SIG_IGN);
        const CInterrupt objInterrupt;
        std::raise(SIGINT);
    });
    ASSERT_TRUE(WIFEXITED(objEnded.m_iStatus));
    EXPECT_EQ(WEXITSTATUS(objEnded.m_iStatus), 0);
}

TEST(CInterrupt, WhatIsHeldIsClosedBeforeTheProgramEnds) {
    const Ended objEnded = InAProcess([] {
        CInterrupt objInterrupt;
        objInterrupt.SetLastWords("{}\n");
        objInterrupt.RunHeld([&] {
            std::raise(SIGINT);
            const char* const strWord = objInterrupt.IsPending() ? "closed " : "not told ";
            EXPECT_GT(::write(STDOUT_FILENO, strWord, std::string(strWord).size()), 0);
        });
        EXPECT_GT(::write(STDOUT_FILENO, "went on", 7), 0);
    });
    ASSERT_TRUE(WIFEXITED(objEnded.m_iStatus));
    EXPECT_EQ(WEXITSTATUS(objEnded.m_iStatus), MExitCode::Interrupted);
    EXPECT_EQ(objEnded.m_strOut, "closed {}\n");
}

TEST(CInterrupt, WakesWhoSleepsWhileSomethingIsHeld) {
    const Ended objEnded = InAProcess([] {
        CInterrupt objInterrupt;
        const auto fnTell = [&] {
            pollfd objWake{objInterrupt.WakeHandle(), POLLIN, 0};
            const char* const strWord = ::poll(&objWake, 1, 0) == 1 ? "awake " : "asleep ";
            EXPECT_GT(::write(STDOUT_FILENO, strWord, std::string(strWord).size()), 0);
        };
        objInterrupt.RunHeld([&] {
            fnTell();
            std::raise(SIGTERM);
            fnTell();
            std::raise(SIGTERM);
        });
    });
    EXPECT_EQ(WEXITSTATUS(objEnded.m_iStatus), MExitCode::Interrupted);
    EXPECT_EQ(objEnded.m_strOut, "asleep awake ");
}

TEST(CInterrupt, WhatWakesIsNeverAStandardStream) {
    const Ended objEnded = InAProcess([] {
        ::close(STDIN_FILENO);
        ::close(STDOUT_FILENO);
        ::close(STDERR_FILENO);
        const CInterrupt objInterrupt;
        const bool bIsOne = objInterrupt.WakeHandle() <= STDERR_FILENO ||
                            ::write(STDOUT_FILENO, "", 1) != -1 ||
                            ::write(STDERR_FILENO, "", 1) != -1;
        ::_exit(bIsOne ? 1 : 0);
    });
    ASSERT_TRUE(WIFEXITED(objEnded.m_iStatus));
    EXPECT_EQ(WEXITSTATUS(objEnded.m_iStatus), 0);
}

TEST(CInterrupt, WhatDoesNotCloseInTimeIsNotWaitedFor) {
    const auto iStart = std::chrono::steady_clock::now();
    const Ended objEnded = InAProcess([] {
        CInterrupt objInterrupt;
        objInterrupt.SetLastWords("{}\n");
        objInterrupt.RunHeld([] {
            std::raise(SIGINT);
            for (;;) {
                ::pause();
            }
        });
    });
    EXPECT_EQ(WEXITSTATUS(objEnded.m_iStatus), MExitCode::Interrupted);
    EXPECT_EQ(objEnded.m_strOut, "{}\n");
    EXPECT_GE(std::chrono::steady_clock::now() - iStart, std::chrono::milliseconds(60));
}

TEST(CInterrupt, WithoutCtrlCWhatIsHeldChangesNothing) {
    const Ended objEnded = InAProcess([] {
        CInterrupt objInterrupt;
        objInterrupt.RunHeld([] {});
        EXPECT_FALSE(objInterrupt.IsPending());
    });
    EXPECT_EQ(WEXITSTATUS(objEnded.m_iStatus), 0);
}

}  // namespace
