#include "platform/qt/CQtFileWriter.h"

#include "tests/platform_qt/CFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

class CQtFileWriterTest : public ::testing::Test {
protected:
    [[nodiscard]] bool Save(const std::string& p_strName, const std::string& p_strBytes) const {
        CQtFileWriter objWriter;
        return objWriter.Open(m_objFolder.Path(p_strName)) && objWriter.Write(p_strBytes) &&
               objWriter.Commit();
    }

    CFolder m_objFolder;
};

TEST_F(CQtFileWriterTest, WritesNewFilesAndReplacesOldOnes) {
    EXPECT_TRUE(Save("file", std::string(100'000, 'x')));
    EXPECT_EQ(m_objFolder.Content("file"), std::string(100'000, 'x'));
    ASSERT_EQ(::chmod(m_objFolder.Path("file").c_str(), 0640), 0);
    EXPECT_TRUE(Save("file", "new"));
    EXPECT_EQ(m_objFolder.Content("file"), "new");
    EXPECT_EQ(m_objFolder.Mode("file"), 0640U);
    EXPECT_EQ(m_objFolder.Names(), Names{"file"});
}

TEST_F(CQtFileWriterTest, WithoutACommitNothingChanges) {
    m_objFolder.Make("file", "old");
    {
        CQtFileWriter objWriter;
        ASSERT_TRUE(objWriter.Open(m_objFolder.Path("file")));
        EXPECT_TRUE(objWriter.Write(std::string(100'000, 'x')));
    }
    EXPECT_EQ(m_objFolder.Content("file"), "old");
    EXPECT_EQ(m_objFolder.Names(), Names{"file"});
}

TEST_F(CQtFileWriterTest, WritesTheTargetOfALink) {
    m_objFolder.Make("file", "old");
    fs::create_symlink("file", m_objFolder.Path("link"));
    EXPECT_TRUE(Save("link", "new"));
    EXPECT_EQ(m_objFolder.Content("file"), "new");
    EXPECT_TRUE(fs::is_symlink(m_objFolder.Path("link")));
}

TEST_F(CQtFileWriterTest, RefusesWhatIsNoFile) {
    fs::create_directory(m_objFolder.Path("folder"));
    ASSERT_EQ(::mkfifo(m_objFolder.Path("pipe").c_str(), 0600), 0);
    fs::create_symlink("circle", m_objFolder.Path("circle"));
    for (const char* strName : {"folder", "pipe", "circle", "no folder/new"}) {
        EXPECT_FALSE(Save(strName, "new")) << strName;
    }
    EXPECT_EQ(m_objFolder.Names(), (Names{"circle", "folder", "pipe"}));
}

}  // namespace
