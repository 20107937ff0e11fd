#include "platform/qt/CStateFolder.h"

#include "platform/qt/CFileHandle.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/platform_qt/CForkedProcess.h"
#include "tests/platform_qt/CSteppedProcess.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using Ended = CSteppedProcess::Ended;
using Nameless = CSteppedProcess::Nameless;
using Names = std::vector<std::string>;

constexpr std::size_t MiB = 1U << 20U;

class CStateFolderTest : public ::testing::Test {
protected:
    std::unique_ptr<IStateStore::ILock> Lock(const std::string& p_strName,
                                             const std::string& p_strHolder = "me") {
        m_strWhy.clear();
        m_bHeld = false;
        return m_objStore.Lock(p_strName, p_strHolder, m_strWhy, m_bHeld);
    }

    /// The work as somebody who is not allowed everything; true when it gives true.
    static bool AsAnybody(const std::function<bool()>& p_fnWork) {
        constexpr uid_t iNobody = 65534;
        return CSteppedProcess::Run(
                   [&] { return (::geteuid() != 0 || ::setuid(iNobody) == 0) && p_fnWork(); },
                   Nameless::Exist,
                   [](const auto&) { return CSteppedProcess::Pass; }) == Ended::Done;
    }

    CFolder m_objFolder;
    CStateFolder m_objStore{m_objFolder.Path("one/two/state")};
    std::string m_strWhy;
    bool m_bHeld = false;
};

// Files.

TEST_F(CStateFolderTest, TheFolderIsMadeWhenItIsNeededAndForItsOwnerAlone) {
    const mode_t iMask = ::umask(0);
    EXPECT_EQ(m_objStore.Names(""), Names{});
    EXPECT_EQ(m_objStore.Read("a"), std::nullopt);
    EXPECT_TRUE(m_objStore.Remove("a")) << "none stands there";
    EXPECT_EQ(m_objFolder.Names(), Names{});
    EXPECT_TRUE(m_objStore.Write("a", "bytes"));
    ::umask(iMask);
    for (const char* const strFolder : {"one", "one/two", "one/two/state"}) {
        EXPECT_EQ(m_objFolder.Mode(strFolder), 0700U) << strFolder;
    }
    EXPECT_EQ(m_objFolder.Mode("one/two/state/a"), 0600U);
    EXPECT_EQ(m_objStore.Path("a"), m_objFolder.Path("one/two/state/a"));
}

TEST_F(CStateFolderTest, WhatIsWrittenIsRead) {
    const std::string strBytes("a\0b\r\n\xFF", 6);
    EXPECT_TRUE(m_objStore.Write("a", "old"));
    EXPECT_TRUE(m_objStore.Write("a", strBytes));
    EXPECT_EQ(m_objStore.Read("a"), strBytes);
    EXPECT_TRUE(m_objStore.Write("a", ""));
    EXPECT_EQ(m_objStore.Read("a"), "");
    EXPECT_TRUE(m_objStore.Remove("a"));
    EXPECT_EQ(m_objStore.Read("a"), std::nullopt);
    EXPECT_TRUE(m_objStore.Remove("a"));
    EXPECT_EQ(m_objStore.Names(""), Names{});
}

TEST_F(CStateFolderTest, AFileThatOthersMightReadIsWrittenAnewForItsOwnerAlone) {
    EXPECT_TRUE(m_objStore.Write("a", "old"));
    ASSERT_EQ(::chmod(m_objStore.Path("a").c_str(), 0644), 0);
    EXPECT_TRUE(m_objStore.Write("a", "new"));
    EXPECT_EQ(m_objFolder.Mode("one/two/state/a"), 0600U);
}

TEST_F(CStateFolderTest, TheNamesAreThoseOfFilesThatEndSoInTheirOrder) {
    for (const char* const strName : {"b.journal", "a.journal", "journal", "c.other"}) {
        EXPECT_TRUE(m_objStore.Write(strName, "bytes"));
    }
    fs::create_directory(m_objStore.Path("d.journal"));
    fs::create_symlink("a.journal", m_objStore.Path("e.journal"));
    m_objFolder.Make("one/two/state/.hidden.journal", "bytes");
    m_objFolder.Make("one/two/state/no name.journal", "bytes");
    EXPECT_EQ(m_objStore.Names(".journal"), (Names{"a.journal", "b.journal"}));
    EXPECT_EQ(m_objStore.Names(""), (Names{"a.journal", "b.journal", "c.other", "journal"}));
}

TEST_F(CStateFolderTest, ANameThatIsNoneGivesNothing) {
    EXPECT_TRUE(m_objStore.Write("a", "bytes"));
    m_objFolder.Make("one/two/outside", "bytes");
    for (const std::string& strName :
         {std::string(), std::string("."), std::string(".."), std::string("../outside"),
          std::string("/etc/hostname"), std::string("a/b"), std::string(".hidden"),
          std::string("a b"), std::string("a\n"), std::string("\xE4"), std::string("a\0", 2),
          std::string("a*"), std::string("a:b"), std::string("~"), std::string(300, 'a')}) {
        SCOPED_TRACE(strName);
        EXPECT_FALSE(m_objStore.Write(strName, "new"));
        EXPECT_EQ(m_objStore.Read(strName), std::nullopt);
        EXPECT_EQ(Lock(strName), nullptr);
        EXPECT_NE(m_strWhy, "");
        EXPECT_FALSE(m_bHeld);
        if (strName.size() < 300) {  // of a name that the system refuses there is no file
            EXPECT_FALSE(m_objStore.Remove(strName));
        }
    }
    EXPECT_EQ(m_objFolder.Content("one/two/outside"), "bytes");
    EXPECT_EQ(m_objStore.Names(""), Names{"a"});
}

TEST_F(CStateFolderTest, WhatIsNoFileIsNeitherReadNorReplacedNorRemoved) {
    EXPECT_TRUE(m_objStore.Write("file", "bytes"));
    fs::create_directory(m_objStore.Path("folder"));
    fs::create_symlink("file", m_objStore.Path("link"));
    ASSERT_EQ(::mkfifo(m_objStore.Path("pipe").c_str(), 0600), 0);
    for (const char* const strName : {"folder", "link", "pipe"}) {
        SCOPED_TRACE(strName);
        EXPECT_FALSE(m_objStore.Write(strName, "new"));
        EXPECT_EQ(m_objStore.Read(strName), std::nullopt);
        EXPECT_FALSE(m_objStore.Remove(strName));
        EXPECT_TRUE(fs::exists(fs::symlink_status(m_objStore.Path(strName))));
    }
    EXPECT_EQ(m_objStore.Read("file"), "bytes");
}

TEST_F(CStateFolderTest, MoreThanAMebibyteIsNeitherWrittenNorRead) {
    EXPECT_TRUE(m_objStore.Write("a", std::string(MiB, 'x')));
    EXPECT_EQ(m_objStore.Read("a"), std::string(MiB, 'x'));
    EXPECT_FALSE(m_objStore.Write("a", std::string(MiB + 1, 'y')));
    EXPECT_EQ(m_objStore.Read("a"), std::string(MiB, 'x'));
    m_objFolder.Make("one/two/state/b", std::string(MiB + 1, 'y'));
    EXPECT_EQ(m_objStore.Read("b"), std::nullopt);
    EXPECT_TRUE(m_objStore.Remove("b"));
}

TEST_F(CStateFolderTest, WhereNothingMayBeWrittenWhatStandsThereStays) {
    EXPECT_TRUE(m_objStore.Write("a", "old"));
    for (const char* const strFolder : {"one", "one/two", "one/two/state"}) {
        ASSERT_EQ(::chmod(m_objFolder.Path(strFolder).c_str(), 0555), 0);
    }
    ASSERT_EQ(::chmod(m_objFolder.Path().c_str(), 0755), 0);
    EXPECT_FALSE(AsAnybody([&] { return m_objStore.Write("a", "new"); }));
    EXPECT_FALSE(AsAnybody([&] { return m_objStore.Write("b", "new"); }));
    EXPECT_FALSE(AsAnybody([&] { return m_objStore.Remove("a"); }));
    EXPECT_TRUE(AsAnybody(
        [&] { return Lock("a") == nullptr && !m_bHeld && m_strWhy == "Permission denied"; }));
    EXPECT_FALSE(AsAnybody(
        [&] { return CStateFolder(m_objFolder.Path("one/new/state")).Write("a", "new"); }));
    for (const char* const strFolder : {"one", "one/two", "one/two/state"}) {
        ASSERT_EQ(::chmod(m_objFolder.Path(strFolder).c_str(), 0755), 0);
    }
    EXPECT_EQ(m_objStore.Names(""), Names{"a"});
    EXPECT_EQ(m_objStore.Read("a"), "old");
}

TEST_F(CStateFolderTest, AFileInTheFoldersPlaceIsAFailureAndStays) {
    m_objFolder.Make("file", "bytes");
    for (const std::string strFolder : {"file", "file/state", "file/", ""}) {
        CStateFolder objStore(strFolder.empty() ? "" : m_objFolder.Path(strFolder));
        EXPECT_FALSE(objStore.Write("a", "new")) << strFolder;
        EXPECT_EQ(objStore.Read("a"), std::nullopt) << strFolder;
        EXPECT_EQ(objStore.Lock("a", "me", m_strWhy, m_bHeld), nullptr) << strFolder;
        EXPECT_EQ(objStore.Names(""), Names{}) << strFolder;
    }
    EXPECT_EQ(m_objFolder.Content("file"), "bytes");
}

// The disk.

/// The calls of some work that wait for the disk, and for what: file or folder.
Names Waits(const std::function<bool()>& p_fnWork) {
    Names strWaits;
    EXPECT_EQ(CSteppedProcess::Run(p_fnWork, Nameless::Exist,
                                   [&](const CSteppedProcess::Call& p_objCall) {
                                       if (p_objCall.m_iNumber == SYS_fsync) {
                                           strWaits.push_back(fs::is_directory(p_objCall.m_strFile)
                                                                  ? p_objCall.m_strFile
                                                                  : "file");
                                       }
                                       return CSteppedProcess::Pass;
                                   }),
              Ended::Done);
    return strWaits;
}

TEST_F(CStateFolderTest, EveryStepIsSafelyOnTheDisk) {
    const std::string strState = m_objFolder.Path("one/two/state");
    EXPECT_EQ(Waits([&] { return m_objStore.Write("a", "new"); }),
              (Names{m_objFolder.Path(), m_objFolder.Path("one"), m_objFolder.Path("one/two"),
                     "file", strState}));
    EXPECT_EQ(Waits([&] { return m_objStore.Write("a", "newer"); }), (Names{"file", strState}));
    EXPECT_EQ(Waits([&] { return m_objStore.Remove("a"); }), Names{strState});
    EXPECT_EQ(Waits([&] { return m_objStore.Remove("a"); }), Names{strState})
        << "a removal before may have been killed";
}

TEST_F(CStateFolderTest, WhatTheDiskDoesNotTakeIsNotWritten) {
    EXPECT_TRUE(m_objStore.Write("a", "old"));
    for (int iFails = 0;; ++iFails) {
        int iCall = 0;
        const auto fnDecide = [&](const CSteppedProcess::Call& p_objCall) {
            return p_objCall.m_iNumber == SYS_fsync && iCall++ == iFails ? EIO
                                                                         : CSteppedProcess::Pass;
        };
        const Ended iEnded = CSteppedProcess::Run([&] { return m_objStore.Write("a", "new"); },
                                                  Nameless::Exist, fnDecide);
        if (iEnded == Ended::Done) {
            EXPECT_EQ(iFails, 2) << "file and folder";
            return;
        }
        EXPECT_EQ(m_objStore.Read("a"), iFails == 0 ? "old" : "new") << "it is whole in any case";
        EXPECT_EQ(CSteppedProcess::Run([&] { return m_objStore.Remove("b"); }, Nameless::Exist,
                                       [](const CSteppedProcess::Call& p_objCall) {
                                           return p_objCall.m_iNumber == SYS_fsync
                                                      ? EIO
                                                      : CSteppedProcess::Pass;
                                       }),
                  Ended::Refused);
    }
}

// Locks.

TEST_F(CStateFolderTest, ALockIsHadOnceAndNamesItsHolder) {
    auto objLock = Lock("a", "varden write, process 17");
    ASSERT_NE(objLock, nullptr);
    EXPECT_EQ(Lock("a"), nullptr);
    EXPECT_TRUE(m_bHeld);
    EXPECT_EQ(m_strWhy, "varden write, process 17");
    EXPECT_NE(Lock("b"), nullptr) << "another one";
    objLock.reset();
    EXPECT_EQ(m_objStore.Names(""), Names{}) << "nothing is left";
    EXPECT_NE(Lock("a"), nullptr);
}

TEST_F(CStateFolderTest, ALocksFileIsForItsOwnerAlone) {
    const mode_t iMask = ::umask(0);
    const auto objLock = Lock("a");
    ::umask(iMask);
    EXPECT_EQ(m_objFolder.Mode("one/two/state/a.lock"), 0600U);
}

TEST_F(CStateFolderTest, AnotherProcessHasTheLockUntilItIsKilled) {
    CForkedProcess objOther([&] {
        static auto objLock = Lock("a", "a longer line than the one that comes behind it");
        return objLock != nullptr;
    });
    ASSERT_TRUE(objOther.IsDone());
    EXPECT_EQ(Lock("a"), nullptr);
    EXPECT_TRUE(m_bHeld);
    EXPECT_EQ(m_strWhy, "a longer line than the one that comes behind it");
    objOther.Kill();
    EXPECT_EQ(m_objStore.Names(""), Names{"a.lock"}) << "what it leaves holds nobody back";
    const auto objLock = Lock("a", "me");
    ASSERT_NE(objLock, nullptr);
    EXPECT_EQ(Lock("a"), nullptr);
    EXPECT_EQ(m_strWhy, "me");
}

TEST_F(CStateFolderTest, AProgramThatIsStartedMeanwhileDoesNotInheritTheLock) {
    const auto objLock = Lock("a");
    ASSERT_NE(objLock, nullptr);
    const std::string strLook = "ls -l /proc/self/fd | grep -q '" + m_objStore.Path("a.lock") + "'";
    EXPECT_NE(std::system(strLook.c_str()), 0);
}

TEST_F(CStateFolderTest, WhatIsNoFileInALocksPlaceIsNobodysLock) {
    EXPECT_TRUE(m_objStore.Write("file", "bytes"));
    fs::create_directory(m_objStore.Path("folder.lock"));
    fs::create_symlink("file", m_objStore.Path("link.lock"));
    ASSERT_EQ(::mkfifo(m_objStore.Path("pipe.lock").c_str(), 0600), 0);
    for (const char* const strName : {"folder", "link", "pipe"}) {
        EXPECT_EQ(Lock(strName), nullptr) << strName;
        EXPECT_FALSE(m_bHeld) << strName;
        EXPECT_NE(m_strWhy, "") << strName;
    }
    EXPECT_EQ(m_objStore.Read("file"), "bytes");
}

TEST_F(CStateFolderTest, ALockWhoseFileGoesWithItsFormerHolderIsTakenAnew) {
    int iTries = 0;
    const auto fnTake = [&] {
        static auto objLock = Lock("a", "next");
        // Whoever comes now must find the lock of this one, in its file.
        return objLock != nullptr && Lock("a") == nullptr && m_strWhy == "next";
    };
    // Another has it, and lets go, when this one has opened the file and not locked it yet.
    EXPECT_EQ(CSteppedProcess::Run(fnTake, Nameless::Exist,
                                   [&](const CSteppedProcess::Call& p_objCall) {
                                       if (p_objCall.m_iNumber == SYS_flock && iTries++ == 0) {
                                           EXPECT_NE(Lock("a", "former"), nullptr);
                                       }
                                       return CSteppedProcess::Pass;
                                   }),
              Ended::Done);
    EXPECT_EQ(iTries, 3) << "in vain, again, and in vain by another";
}

TEST_F(CStateFolderTest, WhereTheDiskHasNoLocksThereIsNone) {
    EXPECT_EQ(
        CSteppedProcess::Run(
            [&] { return Lock("a") == nullptr && !m_bHeld && m_strWhy == "No locks available"; },
            Nameless::Exist,
            [](const CSteppedProcess::Call& p_objCall) {
                return p_objCall.m_iNumber == SYS_flock ? ENOLCK : CSteppedProcess::Pass;
            }),
        Ended::Done);
}

// Where it is.

/// The default folder in an environment of a test's own; null: a variable is not set.
std::string Default(const char* p_strState, const char* p_strHome) {
    const auto fnSet = [](const char* p_strName, const char* p_strValue) {
        p_strValue != nullptr ? ::setenv(p_strName, p_strValue, 1) : ::unsetenv(p_strName);
    };
    const char* const strState = std::getenv("XDG_STATE_HOME");
    const std::string strStateBefore = strState != nullptr ? strState : "";
    const std::string strHomeBefore = std::getenv("HOME") != nullptr ? std::getenv("HOME") : "/";
    const bool bState = strState != nullptr;
    fnSet("XDG_STATE_HOME", p_strState);
    fnSet("HOME", p_strHome);
    const std::string strDefault = CStateFolder::Default();
    fnSet("XDG_STATE_HOME", bState ? strStateBefore.c_str() : nullptr);
    fnSet("HOME", strHomeBefore.c_str());
    return strDefault;
}

TEST_F(CStateFolderTest, TheDefaultIsWhereTheUserKeepsState) {
    EXPECT_EQ(Default("/state", "/home/a"), "/state/varden");
    for (const char* const strNone : {static_cast<const char*>(nullptr), "", "relative"}) {
        EXPECT_EQ(Default(strNone, "/home/a"), "/home/a/.local/state/varden");
    }
    EXPECT_TRUE(Default(nullptr, nullptr).ends_with("/.local/state/varden"));
}

TEST_F(CStateFolderTest, ARelativeFolderIsMeantWhereTheProgramStarts) {
    EXPECT_EQ(CStateFolder("state").Path("a"), fs::current_path().string() + "/state/a");
}

}  // namespace
