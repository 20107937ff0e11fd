#include "cli/MExitCode.h"
#include "tests/cli/CJsonSchema.h"
#include "tests/platform_qt/CFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

// The real program, in a process of its own.

namespace {

/// A program that runs, with its standard output in a pipe; a line of "sh" for all else.
class CRunning {
public:
    explicit CRunning(const std::string& p_strCommand) {
        int iEnds[2]{};
        EXPECT_EQ(::pipe(iEnds), 0);
        m_iOut = iEnds[0];
        m_iProcess = ::fork();
        if (m_iProcess == 0) {
            ::dup2(iEnds[1], STDOUT_FILENO);
            ::close(iEnds[0]);
            ::close(iEnds[1]);
            ::execl("/bin/sh", "sh", "-c", p_strCommand.c_str(), nullptr);
            ::_exit(127);
        }
        ::close(iEnds[1]);
    }
    ~CRunning() { ::close(m_iOut); }
    CRunning(const CRunning&) = delete;
    CRunning& operator=(const CRunning&) = delete;

    std::string Read() const {
        std::string strText;
        char strBlock[4096];
        for (ssize_t iCount = 0; (iCount = ::read(m_iOut, strBlock, sizeof strBlock)) > 0;) {
            strText.append(strBlock, static_cast<std::size_t>(iCount));
        }
        return strText;
    }

    int ExitCode() const {
        int iStatus = 0;
        ::waitpid(m_iProcess, &iStatus, 0);
        return WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -WTERMSIG(iStatus);
    }

    int m_iOut = -1;
    pid_t m_iProcess = 0;
};

struct Ran {
    int m_iCode = 0;
    std::string m_strOut;
};

Ran Shell(const std::string& p_strCommand) {
    const CRunning objRunning(p_strCommand);
    const std::string strOut = objRunning.Read();
    return {objRunning.ExitCode(), strOut};
}

const std::string Program = VARDEN_PROGRAM;
const std::string Golden = std::string(VARDEN_TEST_FILES) + "/golden/";

}  // namespace

TEST(VardenProgram, NoPartOfTheToolkitThatShowsAnythingComesAlong) {
    const Ran objRan = Shell("ldd " + Program);
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_NE(objRan.m_strOut.find("libQt6Core"), std::string::npos) << objRan.m_strOut;
    for (const char* const strLibrary : {"Gui", "Widgets", "X11", "libGL"}) {
        EXPECT_EQ(objRan.m_strOut.find(strLibrary), std::string::npos) << objRan.m_strOut;
    }
}

TEST(VardenProgram, TheExitCodesAreWhatTheHelpSays) {
    EXPECT_EQ(Shell(Program + " list").m_iCode, 0);
    EXPECT_EQ(Shell(Program + " --version").m_strOut,
              std::string("varden ") + VARDEN_VERSION + "\n");
    EXPECT_EQ(Shell(Program + " nonsense 2>/dev/null").m_iCode, 2);
    EXPECT_EQ(Shell(Program + " file none.dt1 2>/dev/null").m_iCode, 2);
    EXPECT_EQ(Shell(Program + " diff defaults " + Golden + "parameter-lowest.dt1").m_iCode, 4);
    EXPECT_EQ(Shell(Program + " diff defaults " + Golden + "parameter-default.dt1").m_iCode, 0);
    EXPECT_EQ(Shell(Program + " list >/dev/full 2>&1").m_iCode, 1);
    EXPECT_EQ(
        Shell(Program + " file " + Golden + "lan-default.dt2 --save /no/such/a.json 2>/dev/null")
            .m_iCode,
        1);
}

TEST(VardenProgram, EveryCommandPrintsOneObjectWithJson) {
    for (const char* const strCall :
         {"list", "ports", "--version", "--help", "list --help", "nonsense", "", "file",
          "completion bash", "diff defaults defaults", "file /dev/null", "list --nonsense"}) {
        const Ran objRan = Shell(Program + " " + strCall + " --json 2>/dev/null");
        EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(objRan.m_strOut), "") << strCall;
        EXPECT_EQ(nlohmann::json::parse(objRan.m_strOut).contains("error"), objRan.m_iCode != 0)
            << strCall;
    }
}

TEST(VardenProgram, ConvertsAFile) {
    const CFolder objFolder;
    const std::string strJson = objFolder.Path("a.json");
    EXPECT_EQ(
        Shell(Program + " file " + Golden + "parameter-highest.dt1 --save " + strJson).m_iCode, 0);
    EXPECT_EQ(CJsonSchema("settings-file.schema.json").Complaint(objFolder.Content("a.json")), "");
    EXPECT_EQ(Shell(Program + " diff " + strJson + " " + Golden + "parameter-highest.dt1").m_iCode,
              0);
}

TEST(VardenProgram, NoColourIsEverPrinted) {
    const Ran objRan = Shell("script -qec '" + Program + " list' /dev/null </dev/null");
    EXPECT_NE(objRan.m_strOut.find("feed-adj"), std::string::npos) << objRan.m_strOut;
    EXPECT_EQ(objRan.m_strOut.find('\x1B'), std::string::npos);
}

TEST(VardenProgram, CtrlCEndsItAtOnceWithItsOwnCode) {
    // Nobody reads what it prints, and the pipe has no room for all of it: it waits.
    const CRunning objRunning("exec " + Program + " list --json 2>/dev/null");
    ::fcntl(objRunning.m_iOut, F_SETPIPE_SZ, 4096);
    pollfd objPipe{objRunning.m_iOut, POLLIN, 0};
    ASSERT_EQ(::poll(&objPipe, 1, 30'000), 1);
    ::kill(objRunning.m_iProcess, SIGINT);
    const auto iStart = std::chrono::steady_clock::now();
    EXPECT_EQ(objRunning.ExitCode(), MExitCode::Interrupted);
    // It takes a few milliseconds; the rest is for a busy machine.
    EXPECT_LT(std::chrono::steady_clock::now() - iStart, std::chrono::seconds(2));
}
