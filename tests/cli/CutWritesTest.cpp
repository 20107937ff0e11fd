#include "cli/MExitCode.h"
#include "tests/cli/CCutDisk.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>

// The real program changes a printer's settings and is ended before each of its calls in turn, by
// kill -9 or by a power cut of its computer. Whatever it leaves, the printer holds what was before,
// or what was wanted, or "varden recover" brings it there.

namespace {

using Json = nlohmann::json;
using Words = std::vector<std::string>;

constexpr int PatienceMs = 60'000;

enum class End { Killed, NamesLost, NamesKept };

class CutWritesTest : public ::testing::TestWithParam<End> {
protected:
    void SetUp() override {
        ASSERT_TRUE(
            m_objSimulator.Start({"--dump", QString::fromStdString(m_objOwn.Path("dump"))}));
        m_strTarget = "lan:127.0.0.1:" + std::to_string(m_objSimulator.Port());
        ASSERT_EQ(Run(Before()), 0) << m_strOut;
        Clear();
        m_objBefore = Held();
        ASSERT_EQ(Run(Wanted()), 0) << m_strOut;
        m_objWanted = Held();
        ASSERT_NE(m_objBefore, m_objWanted);
        ASSERT_EQ(Run(Before()), 0) << m_strOut;
    }

    [[nodiscard]] Words Write(const Words& p_strSettings) const {
        Words strWords{"write", m_strTarget, "--allow-link-change", "--stop-bit-is", "1bit"};
        strWords.insert(strWords.end(), p_strSettings.begin(), p_strSettings.end());
        return strWords;
    }

    [[nodiscard]] Words Before() const {
        return Write({"feed-key=FEED", "feed-adj=1.5", "dhcp-host-name=before"});
    }

    /// Three commands.
    [[nodiscard]] Words Wanted() const {
        return Write({"feed-key=PRINT", "feed-adj=-1.5", "dhcp-host-name=wanted"});
    }

    /// Runs the program; its exit code, or nothing when it was killed.
    std::optional<int> Run(const Words& p_strWords, const CSteppedProcess::Decide& p_fnDecide) {
        Words strWords{VARDEN_PROGRAM};
        strWords.insert(strWords.end(), p_strWords.begin(), p_strWords.end());
        strWords.insert(strWords.end(), {"--state", m_objState.Path("a/state"), "--json"});
        if (p_strWords.size() > 1) {
            strWords.insert(strWords.end(), {"--pause", "0"});
        }
        const std::string strOut = m_objOwn.Path("out");
        const std::string strErrors = m_objOwn.Path("errors");
        const auto iCode = CSteppedProcess::RunProgram(
            [&] {
                std::vector<char*> strArguments;
                for (std::string& strWord : strWords) {
                    strArguments.push_back(strWord.data());
                }
                strArguments.push_back(nullptr);
                constexpr int iHow = O_CREAT | O_TRUNC | O_WRONLY;
                return ::dup2(::open(strOut.c_str(), iHow, 0600), STDOUT_FILENO) >= 0 &&
                       ::dup2(::open(strErrors.c_str(), iHow, 0600), STDERR_FILENO) >= 0 &&
                       ::execv(VARDEN_PROGRAM, strArguments.data()) == 0;
            },
            p_fnDecide);
        m_strOut = m_objOwn.Content("out");
        return iCode;
    }

    /// The same of one that nobody ends.
    int Run(const Words& p_strWords) {
        const auto iCode = Run(p_strWords, [](const auto&) { return CSteppedProcess::Pass; });
        m_objOut = Json::parse(m_strOut, nullptr, false);
        return iCode.value_or(-1);
    }

    /// Whether a call sends the printer what changes something in it.
    static bool Changes(const CSteppedProcess::Call& p_objCall) {
        const bool bSends =
            p_objCall.m_iNumber == SYS_write && p_objCall.m_strFile.starts_with("socket:");
        const std::string strSent = bSends ? p_objCall.TextOf(1) : "";
        return strSent.starts_with("{Z2;") || strSent.starts_with("{I");
    }

    /// Runs the program and ends it before step number p_iStep, counted from 1: a call that works
    /// on the state folder or changes something in the printer. The exit code, or nothing when it
    /// was ended.
    std::optional<int> RunUpTo(int p_iStep, const Words& p_strWords) {
        CCutDisk objDisk(m_objState.Path());
        int iStep = 0;
        const auto iCode = Run(p_strWords, [&](const CSteppedProcess::Call& p_objCall) {
            const bool bStep = objDisk.Hear(p_objCall) || Changes(p_objCall);
            return bStep && ++iStep == p_iStep ? CSteppedProcess::Kill : CSteppedProcess::Pass;
        });
        if (iCode) {
            objDisk.Settle();
        }
        if (GetParam() != End::Killed) {
            objDisk.Cut(GetParam() == End::NamesLost ? CCutDisk::Names::Lost
                                                     : CCutDisk::Names::Kept);
        }
        return iCode;
    }

    /// A change that was killed behind its first command.
    void LeaveHalf() {
        int iCommand = 0;
        ASSERT_EQ(Run(Wanted(),
                      [&](const CSteppedProcess::Call& p_objCall) {
                          return Changes(p_objCall) && ++iCommand == 2 ? CSteppedProcess::Kill
                                                                       : CSteppedProcess::Pass;
                      }),
                  std::nullopt);
        ASSERT_NE(Held(), m_objBefore);
    }

    /// What the printer holds by its own word.
    Json Held() {
        EXPECT_TRUE(m_objSimulator.Dump(PatienceMs));
        return Json::parse(m_objOwn.Content("dump"), nullptr, false)["printers"][0]["settings"];
    }

    void Clear() { std::filesystem::remove_all(m_objState.Path("a")); }

    /// The changes that are begun and not ended.
    std::size_t CountOpen() {
        EXPECT_EQ(Run({"recover"}), 0) << m_strOut;
        return m_objOut["journals"].size();
    }

    /// Sees that a change that was ended is whole, not begun, or can be brought to either.
    void CheckLeft(bool p_bRestore) {
        const Json objHeld = Held();
        const bool bOpen = CountOpen() > 0;
        if (!p_bRestore) {  // it reads a few times, for a printer that may be at it still
            EXPECT_EQ(Run({"recover", m_strTarget}), bOpen ? MExitCode::Different : MExitCode::Done)
                << m_strOut;
        }
        if (!bOpen) {
            EXPECT_TRUE(objHeld == m_objBefore || objHeld == m_objWanted) << objHeld;
            return;
        }
        ++m_iOpen;
        m_iHalf += objHeld != m_objBefore && objHeld != m_objWanted ? 1 : 0;
        EXPECT_EQ(Run(Wanted()), MExitCode::PersonNeeded) << "the change before is not ended";
        EXPECT_EQ(Held(), objHeld);
        const bool bRestore = p_bRestore || objHeld != m_objWanted;
        EXPECT_EQ(Run({"recover", m_strTarget, bRestore ? "--restore" : "--keep"}), 0) << m_strOut;
        EXPECT_EQ(Held(), bRestore ? m_objBefore : m_objWanted);
        EXPECT_EQ(CountOpen(), 0U);
    }

    CFolder m_objOwn;
    CFolder m_objState;
    CSimulatorProcess m_objSimulator;
    std::string m_strTarget;
    std::string m_strOut;
    Json m_objOut;
    Json m_objBefore;
    Json m_objWanted;
    int m_iOpen = 0;  // how often a change was left open
    int m_iHalf = 0;  // how often the printer was in between
};

TEST_P(CutWritesTest, WhereverItEndsThePrinterIsBroughtBackOrIsAsWanted) {
    for (int iStep = 1; !HasFailure(); ++iStep) {
        SCOPED_TRACE("ended before step " + std::to_string(iStep));
        Clear();
        ASSERT_EQ(Held(), m_objBefore);
        const auto iCode = RunUpTo(iStep, Wanted());
        if (iCode) {
            EXPECT_EQ(iCode, 0) << m_strOut;
            EXPECT_EQ(Held(), m_objWanted);
            EXPECT_EQ(CountOpen(), 0U) << "what is whole stays whole, whatever comes behind";
            EXPECT_GT(m_iOpen, 3);
            EXPECT_EQ(m_iHalf, 2) << "behind the first and the second command";
            return;
        }
        CheckLeft(iStep % 2 == 0);
        // A next change is carried out as if nothing had been.
        EXPECT_EQ(Run(Before()), 0) << m_strOut;
    }
}

TEST_P(CutWritesTest, WhereverTheBringingBackEndsItCanBeBegunAnew) {
    const Words strRestore{"recover", m_strTarget, "--restore"};
    for (int iStep = 1; !HasFailure(); ++iStep) {
        SCOPED_TRACE("ended before step " + std::to_string(iStep));
        Clear();
        ASSERT_EQ(Held(), m_objBefore);
        ASSERT_NO_FATAL_FAILURE(LeaveHalf());
        const auto iCode = RunUpTo(iStep, strRestore);
        m_iHalf += Held() != m_objBefore ? 1 : 0;
        EXPECT_EQ(iCode.value_or(0), 0) << m_strOut;
        EXPECT_TRUE(Held() == m_objBefore || (!iCode && CountOpen() == 1));
        EXPECT_EQ(Run(strRestore), 0) << m_strOut;
        EXPECT_EQ(Held(), m_objBefore);
        EXPECT_EQ(CountOpen(), 0U);
        if (iCode) {
            EXPECT_GT(m_iHalf, 3);
            return;
        }
    }
}

std::string NameOf(const ::testing::TestParamInfo<End>& p_objInfo) {
    switch (p_objInfo.param) {
    case End::Killed:
        return "ByKill";
    case End::NamesLost:
        return "ByPowerCutThatLosesNames";
    default:
        return "ByPowerCutThatKeepsNames";
    }
}

INSTANTIATE_TEST_SUITE_P(, CutWritesTest,
                         ::testing::Values(End::Killed, End::NamesLost, End::NamesKept), NameOf);

}  // namespace
