#include "tests/cli/CCutDisk.h"

#include "platform/qt/CStateFolder.h"
#include "tests/platform_qt/CFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

using Decide = CSteppedProcess::Decide;
using Ended = CSteppedProcess::Ended;
using Files = std::vector<std::string>;
using Names = CCutDisk::Names;

/// Work in a folder that ends with a power cut.
class CCutDiskTest : public ::testing::TestWithParam<Names> {
protected:
    /// A power cut before call number p_iCall, counted from 1, or behind the end; whether the work
    /// was done by then.
    bool CutAt(int p_iCall, const std::function<bool()>& p_fnWork) {
        CCutDisk objDisk(m_objFolder.Path());
        int iCall = 0;
        const Ended iEnded =
            CSteppedProcess::Run(p_fnWork, CSteppedProcess::Nameless::Exist,
                                 [&](const CSteppedProcess::Call& p_objCall) {
                                     return objDisk.Hear(p_objCall) && ++iCall == p_iCall
                                                ? CSteppedProcess::Kill
                                                : CSteppedProcess::Pass;
                                 });
        if (iEnded != Ended::Killed) {
            objDisk.Settle();
        }
        objDisk.Cut(GetParam());
        return iEnded == Ended::Done;
    }

    bool CutBehind(const std::function<bool()>& p_fnWork) { return CutAt(0, p_fnWork); }

    CFolder m_objFolder;
    CStateFolder m_objStore{m_objFolder.Path("a/state")};
};

TEST_P(CCutDiskTest, WhatTheStoreHasWrittenIsThereAndWhatItHasRemovedIsGone) {
    EXPECT_TRUE(CutBehind([&] { return m_objStore.Write("a", "old"); }));
    EXPECT_EQ(m_objStore.Read("a"), "old");
    EXPECT_TRUE(CutBehind([&] { return m_objStore.Write("a", "new"); }));
    EXPECT_EQ(m_objStore.Read("a"), "new");
    EXPECT_TRUE(CutBehind([&] { return m_objStore.Remove("a"); }));
    EXPECT_EQ(m_objStore.Read("a"), std::nullopt);
}

TEST_P(CCutDiskTest, WhileTheStoreWritesOldOrNewIsWhole) {
    for (const bool bOld : {false, true}) {
        bool bDone = false;
        int iKept = 0;
        for (int iCall = 1; !bDone; ++iCall) {
            fs::remove_all(m_objFolder.Path("a"));
            ASSERT_TRUE(!bOld || m_objStore.Write("a", "old"));
            bDone = CutAt(iCall, [&] { return m_objStore.Write("a", "new"); });
            const std::optional<std::string> strHeld = m_objStore.Read("a");
            const bool bBefore =
                strHeld == (bOld ? std::optional<std::string>("old") : std::nullopt);
            EXPECT_TRUE(strHeld == "new" || (!bDone && bBefore))
                << "call " << iCall << ": " << strHeld.value_or("none");
            iKept += bBefore ? 1 : 0;
        }
        EXPECT_GT(iKept, 3);
    }
}

TEST_P(CCutDiskTest, WhileTheStoreRemovesTheFileIsWholeOrGone) {
    bool bDone = false;
    for (int iCall = 1; !bDone; ++iCall) {
        ASSERT_TRUE(m_objStore.Write("a", "old"));
        bDone = CutAt(iCall, [&] { return m_objStore.Remove("a"); });
        const std::optional<std::string> strHeld = m_objStore.Read("a");
        EXPECT_TRUE(!strHeld || (!bDone && strHeld == "old")) << "call " << iCall;
    }
}

// What is not careful loses what it has written: these are what the store is measured with.

TEST_P(CCutDiskTest, BytesThatNobodyHasSynchronisedAreLost) {
    m_objFolder.Make("file", "old");
    EXPECT_TRUE(CutBehind([&] {
        std::ofstream(m_objFolder.Path("file")) << "new";
        std::ofstream(m_objFolder.Path("other")) << "new";
        return true;
    }));
    EXPECT_EQ(m_objFolder.Content("file"), "");
    EXPECT_EQ(m_objFolder.Names(),
              GetParam() == Names::Kept ? (Files{"file", "other"}) : Files{"file"});
    EXPECT_TRUE(GetParam() == Names::Lost || m_objFolder.Content("other").empty());
}

/// Puts bytes in a file's place, safely but for its name.
bool Replace(const std::string& p_strPath, bool p_bSyncFile) {
    const std::string strTemporary = p_strPath + ".tmp";
    const int iFile = ::open(strTemporary.c_str(), O_CREAT | O_WRONLY, 0600);
    const bool bWritten = ::write(iFile, "new", 3) == 3 && (!p_bSyncFile || ::fsync(iFile) == 0);
    ::close(iFile);
    return bWritten && ::rename(strTemporary.c_str(), p_strPath.c_str()) == 0;
}

TEST_P(CCutDiskTest, ANameThatNobodyHasSynchronisedIsLostOrKept) {
    m_objFolder.Make("file", "old");
    EXPECT_TRUE(CutBehind([&] { return Replace(m_objFolder.Path("file"), true); }));
    EXPECT_EQ(m_objFolder.Content("file"), GetParam() == Names::Kept ? "new" : "old");
    EXPECT_EQ(m_objFolder.Names(), Files{"file"});
}

TEST_P(CCutDiskTest, ANameWithoutItsBytesIsWorseThanNone) {
    m_objFolder.Make("file", "old");
    EXPECT_TRUE(CutBehind([&] { return Replace(m_objFolder.Path("file"), false); }));
    EXPECT_EQ(m_objFolder.Content("file"), GetParam() == Names::Kept ? "" : "old");
}

TEST_P(CCutDiskTest, AFileThatIsRemovedMayComeBackWithItsFolder) {
    EXPECT_TRUE(CutBehind([&] {
        return fs::create_directory(m_objFolder.Path("folder")) &&
               Replace(m_objFolder.Path("folder/file"), true);
    }));
    EXPECT_EQ(fs::exists(m_objFolder.Path("folder")), GetParam() == Names::Kept);
    fs::remove_all(m_objFolder.Path("folder"));
    m_objFolder.Make("file", "old");
    EXPECT_TRUE(CutBehind([&] { return ::unlink(m_objFolder.Path("file").c_str()) == 0; }));
    EXPECT_EQ(m_objFolder.Names(), GetParam() == Names::Kept ? Files{} : Files{"file"});
}

INSTANTIATE_TEST_SUITE_P(, CCutDiskTest, ::testing::Values(Names::Lost, Names::Kept),
                         [](const auto& p_objInfo) {
                             return p_objInfo.param == Names::Lost ? "NamesLost" : "NamesKept";
                         });

}  // namespace
