#include "platform/qt/CQtFileStore.h"

#include "files/CSettingsFile.h"
#include "files/MParameterFile.h"
#include "tests/fakes/CFakeFileStore.h"
#include "tests/platform_qt/CFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

class CQtFileStoreTest : public ::testing::Test {
protected:
    bool Save(const std::string& p_strPath, const std::string& p_strBytes) {
        const auto objWriter = m_objFileStore.OpenToWrite(p_strPath);
        return objWriter && objWriter->Write(p_strBytes) && objWriter->Commit();
    }

    CFolder m_objFolder;
    CQtFileStore m_objFileStore;
};

TEST_F(CQtFileStoreTest, WritesANewFile) {
    ASSERT_TRUE(Save(m_objFolder.Path("new"), "\r\n\xFF"));
    EXPECT_EQ(m_objFolder.Content("new"), "\r\n\xFF");
    EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{"new"});
}

TEST_F(CQtFileStoreTest, ANewFileHasTheUsualPermissions) {
    const mode_t iMask = ::umask(027);
    EXPECT_TRUE(Save(m_objFolder.Path("new"), "new"));
    ::umask(iMask);
    EXPECT_EQ(m_objFolder.Mode("new"), 0640U);
}

TEST_F(CQtFileStoreTest, ReplacesTheWholeContentOfAFile) {
    m_objFolder.Make("old", std::string(100'000, 'x'));
    ASSERT_TRUE(Save(m_objFolder.Path("old"), "new"));
    EXPECT_EQ(m_objFolder.Content("old"), "new");
    EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{"old"});
}

TEST_F(CQtFileStoreTest, WritesMoreThanItsBuffersHold) {
    const auto objWriter = m_objFileStore.OpenToWrite(m_objFolder.Path("large"));
    ASSERT_TRUE(objWriter);
    std::string strAll;
    for (int i = 0; i < 1000; ++i) {
        const std::string strPiece(300, static_cast<char>(i));
        ASSERT_TRUE(objWriter->Write(strPiece));
        strAll += strPiece;
    }
    ASSERT_TRUE(objWriter->Commit());
    EXPECT_EQ(m_objFolder.Content("large"), strAll);
}

TEST_F(CQtFileStoreTest, KeepsThePermissionsOfAFile) {
    for (const mode_t iMode : {0600U, 0644U, 0664U, 0666U}) {
        m_objFolder.Make("old", "old");
        ASSERT_EQ(::chmod(m_objFolder.Path("old").c_str(), iMode), 0);
        ASSERT_TRUE(Save(m_objFolder.Path("old"), "new"));
        EXPECT_EQ(m_objFolder.Content("old"), "new");
        EXPECT_EQ(m_objFolder.Mode("old"), iMode);
    }
}

TEST_F(CQtFileStoreTest, ShowsTheOldFileUntilTheCommit) {
    m_objFolder.Make("old", "old");
    const auto objWriter = m_objFileStore.OpenToWrite(m_objFolder.Path("old"));
    ASSERT_TRUE(objWriter);
    EXPECT_TRUE(objWriter->Write(std::string(100'000, 'x')));
    EXPECT_EQ(m_objFolder.Content("old"), "old");
    EXPECT_TRUE(objWriter->Commit());
    EXPECT_EQ(m_objFolder.Content("old"), std::string(100'000, 'x'));
}

TEST_F(CQtFileStoreTest, AFileThatIsNotCommittedLeavesNothing) {
    m_objFolder.Make("old", "old");
    for (const char* strName : {"old", "new"}) {
        const auto objWriter = m_objFileStore.OpenToWrite(m_objFolder.Path(strName));
        ASSERT_TRUE(objWriter);
        EXPECT_TRUE(objWriter->Write(std::string(100'000, 'x')));
    }
    EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{"old"});
    EXPECT_EQ(m_objFolder.Content("old"), "old");
}

TEST_F(CQtFileStoreTest, AFailureOfAnySaveOperationLeavesTheOldFileAndNothingElse) {
    m_objFolder.Make("old", "old");
    CFakeFileStore objFaulty(m_objFileStore);
    const CItemManager objItems;
    const CSettingsFile objFile({&MParameterFile::BuildLines, &MParameterFile::StoreLine}, objItems,
                                objFaulty);
    ASSERT_TRUE(objFile.Save(m_objFolder.Path("old")));
    const int iOperations = objFaulty.Operations();
    EXPECT_GE(iOperations, 4);
    m_objFolder.Make("old", "old");
    for (int i = 1; i <= iOperations; ++i) {
        objFaulty.FailAt(objFaulty.Operations() + i);
        EXPECT_FALSE(objFile.Save(m_objFolder.Path("old"))) << i;
        EXPECT_EQ(m_objFolder.Content("old"), "old") << i;
        EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{"old"}) << i;
    }
}

TEST_F(CQtFileStoreTest, WritesTheTargetOfALinkAndKeepsTheLink) {
    fs::create_directory(m_objFolder.Path("deep"));
    m_objFolder.Make("deep/target", "old");
    ASSERT_EQ(::chmod(m_objFolder.Path("deep/target").c_str(), 0600), 0);
    fs::create_symlink("deep/target", m_objFolder.Path("link"));
    fs::create_symlink(m_objFolder.Path("link"), m_objFolder.Path("link to link"));
    for (const char* strName : {"link", "link to link"}) {
        ASSERT_TRUE(Save(m_objFolder.Path(strName), strName));
        EXPECT_EQ(m_objFolder.Content("deep/target"), strName);
    }
    EXPECT_EQ(fs::read_symlink(m_objFolder.Path("link")), "deep/target");
    EXPECT_EQ(fs::read_symlink(m_objFolder.Path("link to link")), m_objFolder.Path("link"));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(m_objFolder.Path("deep/target"))));
    EXPECT_EQ(m_objFolder.Mode("deep/target"), 0600U);
    EXPECT_EQ(m_objFolder.Names(), (std::vector<std::string>{"deep", "link", "link to link"}));
}

TEST_F(CQtFileStoreTest, WritesThroughALinkToAFolder) {
    fs::create_directory(m_objFolder.Path("deep"));
    fs::create_symlink("deep", m_objFolder.Path("link"));
    ASSERT_TRUE(Save(m_objFolder.Path("link/new"), "new"));
    EXPECT_EQ(m_objFolder.Content("deep/new"), "new");
    EXPECT_EQ(fs::read_symlink(m_objFolder.Path("link")), "deep");
}

TEST_F(CQtFileStoreTest, MakesTheFileThatALinkPointsTo) {
    fs::create_symlink("not yet", m_objFolder.Path("link"));
    EXPECT_FALSE(m_objFileStore.Exists(m_objFolder.Path("link")));
    EXPECT_EQ(m_objFileStore.OpenToRead(m_objFolder.Path("link")), nullptr);
    ASSERT_TRUE(Save(m_objFolder.Path("link"), "new"));
    EXPECT_EQ(fs::read_symlink(m_objFolder.Path("link")), "not yet");
    EXPECT_EQ(m_objFolder.Content("not yet"), "new");
}

TEST_F(CQtFileStoreTest, RefusesLinksThatLeadNowhere) {
    fs::create_symlink("itself", m_objFolder.Path("itself"));
    fs::create_symlink("two", m_objFolder.Path("one"));
    fs::create_symlink("one", m_objFolder.Path("two"));
    fs::create_symlink("no folder/new", m_objFolder.Path("far"));
    for (const char* strName : {"itself", "one", "far"}) {
        EXPECT_EQ(m_objFileStore.OpenToWrite(m_objFolder.Path(strName)), nullptr) << strName;
        EXPECT_TRUE(fs::is_symlink(m_objFolder.Path(strName))) << strName;
        EXPECT_EQ(m_objFileStore.OpenToRead(m_objFolder.Path(strName)), nullptr) << strName;
    }
    EXPECT_EQ(m_objFolder.Names(), (std::vector<std::string>{"far", "itself", "one", "two"}));
}

TEST_F(CQtFileStoreTest, RefusesWhatIsNoFile) {
    fs::create_directory(m_objFolder.Path("folder"));
    ASSERT_EQ(::mkfifo(m_objFolder.Path("pipe").c_str(), 0600), 0);
    fs::create_symlink("pipe", m_objFolder.Path("link to pipe"));
    fs::create_symlink("/dev/null", m_objFolder.Path("link to device"));
    m_objFolder.Make("file", "file");
    for (const std::string& strPath :
         {m_objFolder.Path("folder"), m_objFolder.Path("pipe"), m_objFolder.Path("link to pipe"),
          m_objFolder.Path("link to device"), std::string("/dev/null"), std::string("/dev/zero"),
          m_objFolder.Path("file/below"), m_objFolder.Path("no folder/new"),
          m_objFolder.Path("folder/"), std::string()}) {
        EXPECT_FALSE(m_objFileStore.Exists(strPath)) << strPath;
        EXPECT_EQ(m_objFileStore.OpenToRead(strPath), nullptr) << strPath;
        EXPECT_EQ(m_objFileStore.OpenToWrite(strPath), nullptr) << strPath;
    }
    EXPECT_TRUE(fs::is_directory(m_objFolder.Path("folder")));
    EXPECT_TRUE(fs::is_fifo(m_objFolder.Path("pipe")));
    EXPECT_TRUE(fs::is_symlink(m_objFolder.Path("link to device")));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(m_objFolder.Content("file"), "file");
    EXPECT_EQ(m_objFolder.Names().size(), 5U);
}

TEST_F(CQtFileStoreTest, AHiddenFileCountsAsAbsentAndCanBeReadAndWritten) {
    m_objFolder.Make(".hidden", "old");
    m_objFolder.Make("shown", "old");
    EXPECT_TRUE(m_objFileStore.Exists(m_objFolder.Path("shown")));
    EXPECT_FALSE(m_objFileStore.Exists(m_objFolder.Path(".hidden")));
    EXPECT_NE(m_objFileStore.OpenToRead(m_objFolder.Path(".hidden")), nullptr);
    ASSERT_TRUE(Save(m_objFolder.Path(".hidden"), "new"));
    EXPECT_EQ(m_objFolder.Content(".hidden"), "new");
}

TEST_F(CQtFileStoreTest, AFileInAHiddenFolderIsNotHidden) {
    fs::create_directory(m_objFolder.Path(".folder"));
    m_objFolder.Make(".folder/file", "");
    EXPECT_TRUE(m_objFileStore.Exists(m_objFolder.Path(".folder/file")));
}

TEST_F(CQtFileStoreTest, ReadsAFileInPiecesToItsEnd) {
    m_objFolder.Make("file", "one\r\ntwo");
    const auto objReader = m_objFileStore.OpenToRead(m_objFolder.Path("file"));
    ASSERT_TRUE(objReader);
    std::array<char, 5> arrBuffer{};
    EXPECT_EQ(objReader->Read(arrBuffer), 5U);
    EXPECT_EQ(std::string(arrBuffer.data(), 5), "one\r\n");
    EXPECT_EQ(objReader->Read(arrBuffer), 3U);
    EXPECT_EQ(std::string(arrBuffer.data(), 3), "two");
    EXPECT_EQ(objReader->Read(arrBuffer), 0U);
    EXPECT_EQ(objReader->Read(arrBuffer), 0U);
}

TEST_F(CQtFileStoreTest, TellsHowLargeAFileIs) {
    m_objFolder.Make("file", "one\r\ntwo");
    m_objFolder.Make("empty", "");
    fs::create_symlink("file", m_objFolder.Path("link"));
    EXPECT_EQ(m_objFileStore.OpenToRead(m_objFolder.Path("file"))->Size(), 8U);
    EXPECT_EQ(m_objFileStore.OpenToRead(m_objFolder.Path("empty"))->Size(), 0U);
    EXPECT_EQ(m_objFileStore.OpenToRead(m_objFolder.Path("link"))->Size(), 8U);
    fs::resize_file(m_objFolder.Path("file"), 3'000'000'000U);
    EXPECT_EQ(m_objFileStore.OpenToRead(m_objFolder.Path("file"))->Size(), 3'000'000'000U);
}

TEST_F(CQtFileStoreTest, ReadsAnEmptyFile) {
    m_objFolder.Make("file", "");
    const auto objReader = m_objFileStore.OpenToRead(m_objFolder.Path("file"));
    ASSERT_TRUE(objReader);
    std::array<char, 5> arrBuffer{};
    EXPECT_EQ(objReader->Read(arrBuffer), 0U);
}

TEST_F(CQtFileStoreTest, NamesMayHoldAnyCharacter) {
    for (const std::string& strName :
         {std::string("\xC3\xA9tiquette"), std::string("e\xCC\x81tiquette"),
          std::string("\xE5\xB7\xA5\xE5\xA0\xB4"), std::string("a\nb"), std::string(" blanks "),
          std::string("100% *?\"<>|"), std::string("\xF0\x9F\x96\xA8"), std::string("%1"),
          std::string("-n")}) {
        ASSERT_TRUE(Save(m_objFolder.Path(strName), strName)) << strName;
        EXPECT_EQ(m_objFolder.Content(strName), strName);
        EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{strName});
        EXPECT_TRUE(m_objFileStore.Exists(m_objFolder.Path(strName))) << strName;
        EXPECT_NE(m_objFileStore.OpenToRead(m_objFolder.Path(strName)), nullptr) << strName;
        fs::remove(m_objFolder.Path(strName));
    }
}

TEST_F(CQtFileStoreTest, ANameInAnotherEncodingIsNeverTakenForAnotherName) {
    const std::string strLatin1 = m_objFolder.Path("\xE9tiquette");
    const std::string strReplaced = "\xEF\xBF\xBDtiquette";
    m_objFolder.Make("\xE9tiquette", "old");
    m_objFolder.Make(strReplaced, "other");
    EXPECT_FALSE(m_objFileStore.Exists(strLatin1));
    EXPECT_EQ(m_objFileStore.OpenToRead(strLatin1), nullptr);
    EXPECT_EQ(m_objFileStore.OpenToWrite(strLatin1), nullptr);
    EXPECT_EQ(m_objFolder.Content("\xE9tiquette"), "old");
    EXPECT_EQ(m_objFolder.Content(strReplaced), "other");
    EXPECT_EQ(m_objFolder.Names().size(), 2U);
}

TEST_F(CQtFileStoreTest, ANameMayBeAsLongAsTheSystemAllows) {
    EXPECT_TRUE(Save(m_objFolder.Path(std::string(255, 'x')), "new"));
    EXPECT_FALSE(Save(m_objFolder.Path(std::string(256, 'x')), "new"));
    EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{std::string(255, 'x')});
}

TEST_F(CQtFileStoreTest, AFileWithALongNameIsReplacedLikeAnyOther) {
    for (std::size_t iLength = 245; iLength <= 255; ++iLength) {
        const std::string strName(iLength, 'x');
        m_objFolder.Make(strName, "old");
        EXPECT_TRUE(Save(m_objFolder.Path(strName), "new")) << iLength;
        EXPECT_EQ(m_objFolder.Content(strName), "new") << iLength;
        EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{strName});
        fs::remove(m_objFolder.Path(strName));
    }
}

}  // namespace
