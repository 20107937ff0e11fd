#include "platform/qt/CLinuxFileWriter.h"

#include "platform/qt/CFileHandle.h"
#include "platform/qt/MSaveName.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/platform_qt/CSteppedProcess.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using Ended = CSteppedProcess::Ended;
using Nameless = CSteppedProcess::Nameless;
using Names = std::vector<std::string>;

bool Save(const std::string& p_strPath, const std::string& p_strBytes) {
    CLinuxFileWriter objWriter;
    return objWriter.Open(p_strPath) && objWriter.Write(p_strBytes) && objWriter.Commit();
}

/// Once where files can do without a name, and once where they cannot.
class CLinuxFileWriterTest : public ::testing::TestWithParam<Nameless> {
protected:
    Ended SaveInAProcess(const std::string& p_strName, const std::string& p_strBytes,
                         const CSteppedProcess::Decide& p_fnDecide) {
        return CSteppedProcess::Run([&] { return Save(m_objFolder.Path(p_strName), p_strBytes); },
                                    GetParam(), p_fnDecide);
    }

    Ended SaveInAProcess(const std::string& p_strName, const std::string& p_strBytes) {
        return SaveInAProcess(p_strName, p_strBytes,
                              [](const auto&) { return CSteppedProcess::Pass; });
    }

    /// Kills saves over p_strName, each a call later than the one before, and hands what is there
    /// then to p_fnCheck. The save that is not killed any more ends it; how many were.
    template <typename Check>
    int KillAtEachCall(const std::string& p_strName, const Check& p_fnCheck) {
        for (int iAt = 0;; ++iAt) {
            int iCall = 0;
            const Ended iEnded = SaveInAProcess(p_strName, "new", [&](const auto&) {
                return iCall++ == iAt ? CSteppedProcess::Kill : CSteppedProcess::Pass;
            });
            if (iEnded != Ended::Killed) {
                EXPECT_EQ(iEnded, Ended::Done);
                return iAt;
            }
            SCOPED_TRACE("killed before call " + std::to_string(iAt));
            p_fnCheck();
        }
    }

    [[nodiscard]] bool IsLeftOver(const std::string& p_strName) const {
        return p_strName.starts_with(".varden-save-") && p_strName.ends_with(".tmp");
    }

    /// The names in the folder but for those of MSaveName; how many they are is in m_iLeft.
    Names OtherNames() {
        Names strNames = m_objFolder.Names();
        m_iLeft = static_cast<int>(std::erase_if(
            strNames, [this](const std::string& p_strName) { return IsLeftOver(p_strName); }));
        return strNames;
    }

    void ExpectOnly(const std::string& p_strName, const std::string& p_strContent) {
        EXPECT_EQ(m_objFolder.Names(), Names{p_strName});
        EXPECT_EQ(m_objFolder.Content(p_strName), p_strContent);
    }

    [[nodiscard]] int TmpFile(const std::string& p_strTarget, int p_iNumber, int p_iFlags) const {
        return ::open(m_objFolder.Path(MSaveName::Of(p_strTarget, p_iNumber)).c_str(), p_iFlags,
                      0600);
    }

    CFolder m_objFolder;
    int m_iLeft = 0;
};

// Killing.

TEST_P(CLinuxFileWriterTest, ASaveKilledAnywhereLeavesTheOldOrTheNewAndTheNextClearsUp) {
    int iLeft = 0;
    m_objFolder.Make("a name", "old");
    const int iKilled = KillAtEachCall("a name", [&] {
        EXPECT_EQ(OtherNames(), Names{"a name"});
        EXPECT_LE(m_iLeft, 1);
        iLeft += m_iLeft;
        const std::string strContent = m_objFolder.Content("a name");
        EXPECT_TRUE(strContent == "old" || strContent == "new") << strContent;
        EXPECT_EQ(SaveInAProcess("a name", "next"), Ended::Done);
        ExpectOnly("a name", "next");
        m_objFolder.Make("a name", "old");
    });
    EXPECT_GE(iKilled, 8);
    EXPECT_GT(iLeft, 0) << "it has a name for a moment at least";
    ExpectOnly("a name", "new");
}

TEST_P(CLinuxFileWriterTest, SoDoesASaveOfANewFile) {
    const int iKilled = KillAtEachCall("a name", [&] {
        EXPECT_TRUE(OtherNames().empty() || m_objFolder.Content("a name") == "new");
        EXPECT_LE(m_iLeft, GetParam() == Nameless::Exist ? 0 : 1);
        EXPECT_EQ(SaveInAProcess("a name", "next"), Ended::Done);
        ExpectOnly("a name", "next");
        fs::remove(m_objFolder.Path("a name"));
    });
    EXPECT_GE(iKilled, 5);
    ExpectOnly("a name", "new");
}

TEST_P(CLinuxFileWriterTest, ManyKillsInARowLeaveNotMoreThanOne) {
    m_objFolder.Make("a name", "old");
    KillAtEachCall("a name", [&] {
        EXPECT_EQ(OtherNames(), Names{"a name"});
        EXPECT_LE(m_iLeft, 1);
    });
    ExpectOnly("a name", "new");
}

TEST_P(CLinuxFileWriterTest, WhereFilesNeedNoNameTheyBearOneBetweenTwoCallsOnly) {
    m_objFolder.Make("a name", "old");
    std::vector<int> iNamed;  // the calls before which it has one
    SaveInAProcess("a name", "new", [&](const CSteppedProcess::Call& p_objCall) {
        OtherNames();
        if (m_iLeft > 0) {
            iNamed.push_back(p_objCall.m_iNumber);
        }
        return CSteppedProcess::Pass;
    });
    if (GetParam() == Nameless::Exist) {
        EXPECT_EQ(iNamed.size(), 1U);
    } else {
        EXPECT_GT(iNamed.size(), 1U);
    }
    ASSERT_FALSE(iNamed.empty());
    EXPECT_TRUE(iNamed.back() == SYS_renameat || iNamed.back() == SYS_renameat2);
}

// Failing.

TEST_P(CLinuxFileWriterTest, AFailureOfAnyCallLeavesTheOldOrPutsTheNewAndNothingElse) {
    int iRefused = 0;
    for (const int iError : {EIO, ENOSPC, EPERM}) {
        bool bFailed = true;
        for (int iAt = 0; bFailed; ++iAt) {
            SCOPED_TRACE("call " + std::to_string(iAt) + " fails with " + std::to_string(iError));
            m_objFolder.Make("a name", "old");
            bFailed = false;
            int iCall = 0;
            const Ended iEnded = SaveInAProcess("a name", "new", [&](const auto&) {
                bFailed = bFailed || iCall == iAt;
                return iCall++ == iAt ? iError : CSteppedProcess::Pass;
            });
            ASSERT_NE(iEnded, Ended::Killed);
            ExpectOnly("a name", iEnded == Ended::Done ? "new" : "old");
            iRefused += iEnded == Ended::Refused ? 1 : 0;
        }
    }
    EXPECT_GE(iRefused, 3 * 5) << "folder, write, disk, close and rename";
}

TEST_P(CLinuxFileWriterTest, TheFileIsOnTheDiskBeforeItTakesItsPlaceAndTheFolderAfterwards) {
    for (const bool bOld : {true, false}) {
        fs::remove(m_objFolder.Path("a name"));
        if (bOld) {
            m_objFolder.Make("a name", "old");
        }
        std::string strOrder;
        SaveInAProcess("a name", "new", [&](const CSteppedProcess::Call& p_objCall) {
            if (p_objCall.m_iNumber == SYS_fsync) {
                const bool bFolder = fs::equivalent(p_objCall.m_strFile, m_objFolder.Path());
                strOrder += bFolder ? "folder " : "file ";
            } else if (p_objCall.m_iNumber == SYS_renameat ||
                       p_objCall.m_iNumber == SYS_renameat2 || p_objCall.m_iNumber == SYS_linkat) {
                strOrder += "place ";
            }
            return CSteppedProcess::Pass;
        });
        EXPECT_TRUE(strOrder.starts_with("file place ")) << strOrder;
        EXPECT_TRUE(strOrder.ends_with("place folder ")) << strOrder;
    }
}

TEST_P(CLinuxFileWriterTest, WhereTheSystemDoesNotShowOpenFilesItIsSavedWithAName) {
    m_objFolder.Make("a name", "old");
    const auto fnWithoutProc = [](const CSteppedProcess::Call& p_objCall) {
#ifdef SYS_access
        const bool bAsks = p_objCall.m_iNumber == SYS_access;
#else
        const bool bAsks = p_objCall.m_iNumber == SYS_faccessat && p_objCall.m_strFile.empty();
#endif
        return bAsks || p_objCall.m_iNumber == SYS_linkat ? ENOENT : CSteppedProcess::Pass;
    };
    EXPECT_EQ(SaveInAProcess("a name", "new", fnWithoutProc), Ended::Done);
    ExpectOnly("a name", "new");
}

// What bears such a name.

TEST_P(CLinuxFileWriterTest, TheNameTellsWhatItIsAndIsShort) {
    const std::string strName = MSaveName::Of(std::string(255, 'x'), 7);
    EXPECT_TRUE(IsLeftOver(strName));
    EXPECT_LE(strName.size(), 40U);
    EXPECT_EQ(strName, MSaveName::Of(std::string(255, 'x'), 7));
    EXPECT_NE(strName, MSaveName::Of(std::string(254, 'x'), 7));
    EXPECT_NE(strName, MSaveName::Of(std::string(255, 'x'), 6));
    EXPECT_EQ(strName.find('/'), std::string::npos);
}

TEST_P(CLinuxFileWriterTest, EveryNameOfTheLongestIsWrittenAndReplaced) {
    for (std::size_t iLength = 1; iLength <= 255; iLength += iLength < 240 ? 60 : 1) {
        const std::string strName(iLength, 'x');
        EXPECT_EQ(SaveInAProcess(strName, "new"), Ended::Done) << iLength;
        ExpectOnly(strName, "new");
        EXPECT_EQ(SaveInAProcess(strName, "newer"), Ended::Done) << iLength;
        ExpectOnly(strName, "newer");
        fs::remove(m_objFolder.Path(strName));
    }
    EXPECT_EQ(SaveInAProcess(std::string(256, 'x'), "new"), Ended::Refused);
    EXPECT_TRUE(m_objFolder.Names().empty());
}

TEST_P(CLinuxFileWriterTest, TheNextSaveRemovesAllThatIsLeftOfThatTargetAndNothingElse) {
    m_objFolder.Make("a name", "old");
    m_objFolder.Make("other", "old");
    for (int i = 0; i < MSaveName::Count; ++i) {
        m_objFolder.Make(MSaveName::Of("a name", i), "left");
    }
    const std::string strOthers = MSaveName::Of("other", 0);
    Names strStay{strOthers, ".a name.tmp", "a name.tmp", ".varden-save-notes.tmp"};
    for (const std::string& strName : strStay) {
        m_objFolder.Make(strName, "mine");
    }
    EXPECT_EQ(SaveInAProcess("a name", "new"), Ended::Done);
    strStay.insert(strStay.end(), {"a name", "other"});
    std::sort(strStay.begin(), strStay.end());
    EXPECT_EQ(m_objFolder.Names(), strStay);
    EXPECT_EQ(m_objFolder.Content("a name"), "new");
}

TEST_P(CLinuxFileWriterTest, TheFileOfASaveUnderWayStays) {
    m_objFolder.Make("a name", "old");
    const CFileHandle objFirst(TmpFile("a name", 0, O_CREAT | O_RDWR));
    ASSERT_EQ(::flock(objFirst.Number(), LOCK_EX), 0);
    EXPECT_EQ(SaveInAProcess("a name", "new"), Ended::Done);
    EXPECT_EQ(m_objFolder.Content("a name"), "new");
    EXPECT_EQ(OtherNames(), Names{"a name"});
    EXPECT_EQ(m_iLeft, 1);
    EXPECT_TRUE(MSaveName::IsNameOf(AT_FDCWD, m_objFolder.Path(MSaveName::Of("a name", 0)),
                                    objFirst.Number()));
}

TEST_P(CLinuxFileWriterTest, WithTooManySavesUnderWayItIsRefused) {
    m_objFolder.Make("a name", "old");
    std::vector<CFileHandle> objOthers;
    for (int i = 0; i < MSaveName::Count; ++i) {
        objOthers.emplace_back(TmpFile("a name", i, O_CREAT | O_RDWR));
        ASSERT_EQ(::flock(objOthers.back().Number(), LOCK_EX), 0);
    }
    EXPECT_EQ(SaveInAProcess("a name", "new"), Ended::Refused);
    EXPECT_EQ(m_objFolder.Content("a name"), "old");
    objOthers.erase(objOthers.begin() + 3);
    EXPECT_EQ(SaveInAProcess("a name", "new"), Ended::Done);
    EXPECT_EQ(m_objFolder.Content("a name"), "new");
}

TEST_P(CLinuxFileWriterTest, AFileThatAnotherSaveHasPutInThePlaceOfWhatWasLeftStays) {
    const std::string strName = MSaveName::Of("a name", 0);
    m_objFolder.Make("a name", "old");
    m_objFolder.Make(strName, "left");
    CFileHandle objOther;
    const Ended iEnded =
        SaveInAProcess("a name", "new", [&](const CSteppedProcess::Call& p_objCall) {
            if (p_objCall.m_iNumber == SYS_flock && p_objCall.m_strFile.ends_with(strName)) {
                fs::remove(m_objFolder.Path(strName));
                objOther = CFileHandle(TmpFile("a name", 0, O_CREAT | O_RDWR));
                EXPECT_EQ(::flock(objOther.Number(), LOCK_EX), 0);
            }
            return CSteppedProcess::Pass;
        });
    EXPECT_EQ(iEnded, Ended::Done);
    ASSERT_TRUE(objOther.IsOpen());
    EXPECT_TRUE(MSaveName::IsNameOf(AT_FDCWD, m_objFolder.Path(strName), objOther.Number()));
}

TEST_P(CLinuxFileWriterTest, SavesThatOverlapAreBothDone) {
    int iAfter = 0;  // how often the other one runs when the first is in its place already
    bool bRun = true;
    for (int iAt = 0; bRun; ++iAt) {
        SCOPED_TRACE("the other runs before call " + std::to_string(iAt));
        m_objFolder.Make("a name", "old");
        std::string strLast = "outer";
        bRun = false;
        int iCall = 0;
        const Ended iEnded = SaveInAProcess("a name", "outer", [&](const auto&) {
            if (iCall++ == iAt) {
                bRun = true;
                strLast = m_objFolder.Content("a name") == "outer" ? "inner" : "outer";
                EXPECT_TRUE(Save(m_objFolder.Path("a name"), "inner"));
                EXPECT_EQ(m_objFolder.Content("a name"), "inner");
            }
            return CSteppedProcess::Pass;
        });
        EXPECT_EQ(iEnded, Ended::Done);
        ExpectOnly("a name", strLast);
        iAfter += strLast == "inner" ? 1 : 0;
    }
    EXPECT_GT(iAfter, 0);
}

TEST_P(CLinuxFileWriterTest, WhatNoSaveHasMadeStays) {
    m_objFolder.Make("a name", "old");
    m_objFolder.Make("mine", "mine");
    fs::create_directory(m_objFolder.Path(MSaveName::Of("a name", 0)));
    fs::create_symlink("mine", m_objFolder.Path(MSaveName::Of("a name", 1)));
    ASSERT_EQ(::mkfifo(m_objFolder.Path(MSaveName::Of("a name", 2)).c_str(), 0600), 0);
    fs::create_hard_link(m_objFolder.Path("mine"), m_objFolder.Path(MSaveName::Of("a name", 3)));
    const Names strBefore = m_objFolder.Names();
    EXPECT_EQ(SaveInAProcess("a name", "new"), Ended::Done);
    EXPECT_EQ(m_objFolder.Names(), strBefore);
    EXPECT_EQ(m_objFolder.Content("a name"), "new");
    EXPECT_EQ(m_objFolder.Content("mine"), "mine");
}

// Owners.

struct stat Status(const std::string& p_strPath) {
    struct stat objStatus = {};
    EXPECT_EQ(::stat(p_strPath.c_str(), &objStatus), 0);
    return objStatus;
}

TEST_P(CLinuxFileWriterTest, OwnerGroupAndPermissionsStay) {
    m_objFolder.Make("a name", "old");
    const std::string strPath = m_objFolder.Path("a name");
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(strPath.c_str(), 1234, 5678), 0);
    }
    ASSERT_EQ(::chmod(strPath.c_str(), 0664), 0);
    const struct stat objBefore = Status(strPath);
    EXPECT_EQ(SaveInAProcess("a name", "new"), Ended::Done);
    const struct stat objAfter = Status(strPath);
    EXPECT_EQ(m_objFolder.Content("a name"), "new");
    EXPECT_NE(objAfter.st_ino, objBefore.st_ino) << "it is another file";
    EXPECT_EQ(objAfter.st_uid, objBefore.st_uid);
    EXPECT_EQ(objAfter.st_gid, objBefore.st_gid);
    EXPECT_EQ(objAfter.st_mode, objBefore.st_mode);
}

TEST_P(CLinuxFileWriterTest, NobodyMayReadTheNewWhoMightNotReadTheOld) {
    const mode_t iMask = ::umask(0);
    m_objFolder.Make("a name", "old");
    ASSERT_EQ(::chmod(m_objFolder.Path("a name").c_str(), 0600), 0);
    int iSeen = 0;
    SaveInAProcess("a name", "new", [&](const auto&) {
        for (const std::string& strName : m_objFolder.Names()) {
            EXPECT_EQ(m_objFolder.Mode(strName), 0600U) << strName;
            iSeen += IsLeftOver(strName) ? 1 : 0;
        }
        return CSteppedProcess::Pass;
    });
    ::umask(iMask);
    EXPECT_GT(iSeen, 0);
}

TEST_P(CLinuxFileWriterTest, WhoMayNotGiveAFileAwayKeepsItsGroupIfItIsHisAndSavesAnyway) {
    constexpr uid_t iNobody = 65534;
    constexpr gid_t iGroup = 4242;
    const bool bRoot = ::geteuid() == 0;
    const std::string strPath = m_objFolder.Path("a name");
    using Case = std::pair<bool, mode_t>;
    for (const auto& [bInGroup, iMode] :
         {Case{true, 0666}, Case{false, 0666}, Case{true, 0662}, Case{false, 0662}}) {
        m_objFolder.Make("a name", "old");
        ASSERT_EQ(::chmod(strPath.c_str(), iMode), 0);
        ASSERT_EQ(::chmod(m_objFolder.Path().c_str(), 0777), 0);
        ASSERT_TRUE(!bRoot || ::chown(strPath.c_str(), 1234, iGroup) == 0);
        const struct stat objBefore = Status(strPath);
        const gid_t iOwn = bInGroup ? iGroup : iNobody;
        const auto fnSave = [&] {
            return (!bRoot || (::setgroups(1, &iOwn) == 0 && ::setgid(iNobody) == 0 &&
                               ::setuid(iNobody) == 0)) &&
                   Save(strPath, "new");
        };
        EXPECT_EQ(CSteppedProcess::Run(fnSave, GetParam(),
                                       [](const auto&) { return CSteppedProcess::Pass; }),
                  Ended::Done);
        EXPECT_EQ(m_objFolder.Content("a name"), "new");
        const struct stat objAfter = Status(strPath);
        EXPECT_EQ(objAfter.st_uid, bRoot ? iNobody : objBefore.st_uid);
        EXPECT_EQ(objAfter.st_gid, bInGroup || !bRoot ? objBefore.st_gid : iNobody);
        // A strange group may do no more than anybody may.
        const bool bKept = bInGroup || !bRoot;
        EXPECT_EQ(objAfter.st_mode & 07777U, bKept || iMode == 0666 ? iMode : mode_t{0622});
        fs::remove(strPath);
    }
}

INSTANTIATE_TEST_SUITE_P(, CLinuxFileWriterTest,
                         ::testing::Values(Nameless::Exist, Nameless::Missing),
                         [](const auto& p_objInfo) {
                             return p_objInfo.param == Nameless::Exist ? "FilesWithoutName"
                                                                       : "FilesWithName";
                         });

}  // namespace
