#include "platform/qt/CQtFileStore.h"

#include "files/CSettingsFile.h"
#include "files/MParameterFile.h"
#include "tests/platform_qt/CFolder.h"

#include <gtest/gtest.h>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace {

/// How a save or a load went in a process of its own.
enum class Ended { Done, Refused, Killed, CouldNotTry };

/// What a process that tries it is put under beforehand; false when that cannot be done.
using Hindrance = std::function<bool()>;

class CQtFileStoreFaultTest : public ::testing::Test {
protected:
    /// Saves p_strBytes under p_objHindrance in a child process.
    Ended Save(const std::string& p_strName, const std::string& p_strBytes,
               const Hindrance& p_objHindrance) {
        return InAProcess(
            [&] { return TrySave(m_objFolder.Path(p_strName), p_strBytes, p_objHindrance); });
    }

    /// Loads a file of settings under p_objHindrance in a child process.
    Ended Load(const std::string& p_strName, const Hindrance& p_objHindrance) {
        return InAProcess([&] {
            CQtFileStore objFileStore;
            const CItemManager objItems;
            if (!p_objHindrance()) {
                return Ended::CouldNotTry;
            }
            return SettingsFile(objItems, objFileStore).Load(m_objFolder.Path(p_strName))
                       ? Ended::Done
                       : Ended::Refused;
        });
    }

    /// Makes a file that can be loaded.
    void MakeSettings(const std::string& p_strName) {
        CQtFileStore objFileStore;
        const CItemManager objItems;
        ASSERT_TRUE(SettingsFile(objItems, objFileStore).Save(m_objFolder.Path(p_strName)));
    }

    static CSettingsFile SettingsFile(const CItemManager& p_objItems, IFileStore& p_objFileStore) {
        return {
            {&MParameterFile::BuildLines, &MParameterFile::StoreLine}, p_objItems, p_objFileStore};
    }

    template <typename Call>
    static Ended InAProcess(const Call& p_objCall) {
        const pid_t iChild = ::fork();
        if (iChild == 0) {
            ::_exit(static_cast<int>(p_objCall()));
        }
        int iStatus = 0;
        if (iChild < 0 || ::waitpid(iChild, &iStatus, 0) != iChild) {
            return Ended::CouldNotTry;
        }
        return WIFSIGNALED(iStatus) ? Ended::Killed : static_cast<Ended>(WEXITSTATUS(iStatus));
    }

    static Ended TrySave(const std::string& p_strPath, const std::string& p_strBytes,
                         const Hindrance& p_objHindrance) {
        CQtFileStore objFileStore;
        if (!p_objHindrance()) {
            return Ended::CouldNotTry;
        }
        const auto objWriter = objFileStore.OpenToWrite(p_strPath);
        return objWriter && objWriter->Write(p_strBytes) && objWriter->Commit() ? Ended::Done
                                                                                : Ended::Refused;
    }

    void ExpectOnlyTheOldFile() {
        EXPECT_EQ(m_objFolder.Content("old"), "old");
        EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{"old"});
    }

    CFolder m_objFolder;
};

void PrintTo(Ended p_iEnded, std::ostream* p_objStream) {
    constexpr std::array<const char*, 4> strNames{"done", "refused", "killed", "could not try"};
    *p_objStream << strNames.at(static_cast<std::size_t>(p_iEnded));
}

bool NoHindrance() {
    return true;
}

/// No file may grow beyond p_iBytes, as on a disk that is full.
Hindrance FullAfter(rlim_t p_iBytes) {
    return [p_iBytes] {
        const rlimit objLimit{p_iBytes, p_iBytes};
        return ::signal(SIGXFSZ, SIG_IGN) != SIG_ERR && ::setrlimit(RLIMIT_FSIZE, &objLimit) == 0;
    };
}

/// Somebody without special rights, also when the tests run with all of them.
bool AsNobody() {
    constexpr uid_t iNobody = 65534;
    return ::geteuid() != 0 || (::setgid(iNobody) == 0 && ::setuid(iNobody) == 0);
}

/// From now on each of these system calls ends as p_iAction says (SECCOMP_RET_…).
Hindrance EachOf(const std::vector<unsigned>& p_iCalls, unsigned p_iAction) {
    return [p_iCalls, p_iAction] {
        std::vector<sock_filter> objSteps{
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
        for (const unsigned iCall : p_iCalls) {
            objSteps.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, iCall, 0, 1));
            objSteps.push_back(BPF_STMT(BPF_RET | BPF_K, p_iAction));
        }
        objSteps.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
        const sock_fprog objFilter{static_cast<unsigned short>(objSteps.size()), objSteps.data()};
        return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
               ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &objFilter) == 0;
    };
}

TEST_F(CQtFileStoreFaultTest, SavesWhenNothingHindersIt) {
    m_objFolder.Make("old", "old");
    EXPECT_EQ(Save("old", "new", NoHindrance), Ended::Done);
    EXPECT_EQ(m_objFolder.Content("old"), "new");
}

TEST_F(CQtFileStoreFaultTest, AFullDiskLeavesTheOldFile) {
    m_objFolder.Make("old", "old");
    for (const std::size_t iSize : {10U, 100U, 16'384U, 16'385U, 1'000'000U}) {
        for (const rlim_t iLimit : {rlim_t{0}, rlim_t{1}, rlim_t{iSize - 1}}) {
            EXPECT_EQ(Save("old", std::string(iSize, 'x'), FullAfter(iLimit)), Ended::Refused)
                << iSize << " bytes, room for " << iLimit;
            ExpectOnlyTheOldFile();
        }
    }
}

TEST_F(CQtFileStoreFaultTest, AFullDiskLeavesNoNewFile) {
    EXPECT_EQ(Save("new", "0123456789", FullAfter(5)), Ended::Refused);
    EXPECT_TRUE(m_objFolder.Names().empty());
}

TEST_F(CQtFileStoreFaultTest, AFolderThatMayNotBeWrittenKeepsItsFiles) {
    m_objFolder.Make("old", "old");
    ASSERT_EQ(::chmod(m_objFolder.Path("old").c_str(), 0666), 0);
    ASSERT_EQ(::chmod(m_objFolder.Path().c_str(), 0555), 0);
    EXPECT_EQ(Save("old", "new", AsNobody), Ended::Refused);
    EXPECT_EQ(Save("new", "new", AsNobody), Ended::Refused);
    ASSERT_EQ(::chmod(m_objFolder.Path().c_str(), 0755), 0);
    ExpectOnlyTheOldFile();
}

TEST_F(CQtFileStoreFaultTest, AFileThatMayNotBeWrittenStays) {
    m_objFolder.Make("old", "old");
    ASSERT_EQ(::chmod(m_objFolder.Path("old").c_str(), 0444), 0);
    ASSERT_EQ(::chmod(m_objFolder.Path().c_str(), 0777), 0);
    EXPECT_EQ(Save("old", "new", AsNobody), Ended::Refused);
    ExpectOnlyTheOldFile();
    EXPECT_EQ(m_objFolder.Mode("old"), 0444U);
    EXPECT_EQ(Save("new", "new", AsNobody), Ended::Done);
}

TEST_F(CQtFileStoreFaultTest, AProgramKilledBeforeTheCommitLeavesTheOldFile) {
    m_objFolder.Make("old", "old");
    const pid_t iChild = ::fork();
    if (iChild == 0) {
        CQtFileStore objFileStore;
        const auto objWriter = objFileStore.OpenToWrite(m_objFolder.Path("old"));
        if (objWriter && objWriter->Write(std::string(1'000'000, 'x'))) {
            ::raise(SIGKILL);
        }
        ::_exit(1);
    }
    int iStatus = 0;
    ASSERT_EQ(::waitpid(iChild, &iStatus, 0), iChild);
    EXPECT_TRUE(WIFSIGNALED(iStatus) && WTERMSIG(iStatus) == SIGKILL);
    EXPECT_EQ(m_objFolder.Content("old"), "old");
}

TEST_F(CQtFileStoreFaultTest, LoadsWhenNothingHindersIt) {
    MakeSettings("old");
    EXPECT_EQ(Load("old", NoHindrance), Ended::Done);
    EXPECT_EQ(Load("none", NoHindrance), Ended::Refused);
}

TEST_F(CQtFileStoreFaultTest, AFileThatMayNotBeReadIsNotLoaded) {
    MakeSettings("old");
    ASSERT_EQ(::chmod(m_objFolder.Path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(m_objFolder.Path("old").c_str(), 0644), 0);
    EXPECT_EQ(Load("old", AsNobody), Ended::Done);
    ASSERT_EQ(::chmod(m_objFolder.Path("old").c_str(), 0000), 0);
    EXPECT_EQ(Load("old", AsNobody), Ended::Refused);
}

TEST_F(CQtFileStoreFaultTest, AFileThatCannotBeOpenedIsNotLoaded) {
    MakeSettings("old");
    for (const int iError : {EACCES, EIO, EMFILE}) {
        EXPECT_EQ(
            Load("old", EachOf({SYS_openat}, SECCOMP_RET_ERRNO | static_cast<unsigned>(iError))),
            Ended::Refused)
            << iError;
    }
}

TEST_F(CQtFileStoreFaultTest, AFileWhoseDiskFailsIsNotLoaded) {
    MakeSettings("old");
    EXPECT_EQ(Load("old", EachOf({SYS_read}, SECCOMP_RET_ERRNO | unsigned{EIO})), Ended::Refused);
}

struct Step {
    const char* m_strName;
    std::vector<unsigned> m_iCalls;
};

void PrintTo(const Step& p_objStep, std::ostream* p_objStream) {
    *p_objStream << p_objStep.m_strName;
}

class CQtFileStoreStepTest : public CQtFileStoreFaultTest,
                             public ::testing::WithParamInterface<Step> {};

TEST_P(CQtFileStoreStepTest, AFailureThereLeavesTheOldFileAndNothingElse) {
    m_objFolder.Make("old", "old");
    for (const int iError : {EIO, ENOSPC, EDQUOT}) {
        EXPECT_EQ(
            Save("old", "new",
                 EachOf(GetParam().m_iCalls, SECCOMP_RET_ERRNO | static_cast<unsigned>(iError))),
            Ended::Refused);
        ExpectOnlyTheOldFile();
    }
}

TEST_P(CQtFileStoreStepTest, AnEndOfTheProgramThereLeavesTheOldFile) {
    m_objFolder.Make("old", "old");
    EXPECT_EQ(Save("old", "new", EachOf(GetParam().m_iCalls, SECCOMP_RET_KILL_PROCESS)),
              Ended::Killed);
    EXPECT_EQ(m_objFolder.Content("old"), "old");
}

const Step Steps[] = {
    {"Write", {SYS_write}},
    {"Sync", {SYS_fsync, SYS_fdatasync}},
    {"Close", {SYS_close}},
#ifdef SYS_rename
    {"Rename", {SYS_rename, SYS_renameat, SYS_renameat2}},
#else
    {"Rename", {SYS_renameat, SYS_renameat2}},
#endif
};

INSTANTIATE_TEST_SUITE_P(, CQtFileStoreStepTest, ::testing::ValuesIn(Steps),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

}  // namespace
