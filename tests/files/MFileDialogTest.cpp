#include "files/MFileDialog.h"

#include "tests/fakes/CFakeFileDialog.h"
#include "tests/fakes/CFakeFileStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

TEST(InitFileDialogRecordTest, FillsTheRecordFieldByField) {
    CFileDialogRecord objRecord;
    MFileDialog::InitFileDialogRecord(objRecord, "a\0*.b\0\0"s, "Save File", "/opt/tool");
    EXPECT_EQ(objRecord.m_iStructSize, 76U);
    EXPECT_EQ(objRecord.m_iOwner, 0U);
    EXPECT_EQ(objRecord.m_strFilter, "a\0*.b\0\0"s);
    EXPECT_EQ(objRecord.m_strCustomFilter, "");
    EXPECT_EQ(objRecord.m_iCustomFilterSize, 0U);
    EXPECT_EQ(objRecord.m_iFilterIndex, 0U);
    EXPECT_EQ(std::string(objRecord.m_arrFileName.begin(), objRecord.m_arrFileName.end()),
              std::string(512, '\0'));
    EXPECT_EQ(objRecord.m_iFileNameSize, 511U);
    EXPECT_EQ(std::string(objRecord.m_arrFileTitle.begin(), objRecord.m_arrFileTitle.end()),
              std::string(512, '\0'));
    EXPECT_EQ(objRecord.m_iFileTitleSize, 511U);
    EXPECT_EQ(objRecord.m_strInitialFolder, "/opt/tool");
    EXPECT_EQ(objRecord.m_strDialogTitle, "Save File");
    EXPECT_EQ(objRecord.m_iFlags, 0U);
    EXPECT_EQ(objRecord.m_iFileOffset, 0U);
    EXPECT_EQ(objRecord.m_iFileExtension, 0U);
    EXPECT_EQ(objRecord.m_strDefaultExtension, "");
    EXPECT_EQ(objRecord.m_iCustomData, 0U);
    EXPECT_EQ(objRecord.m_iHook, 0U);
    EXPECT_EQ(objRecord.m_iTemplate, 0U);
}

TEST(InitFileDialogRecordTest, LeavesNothingOfAnEarlierUse) {
    CFileDialogRecord objRecord;
    objRecord.m_iOwner = 1;
    objRecord.m_strCustomFilter = "x";
    objRecord.m_iCustomFilterSize = 1;
    objRecord.m_iFilterIndex = 2;
    objRecord.m_arrFileName.fill('x');
    objRecord.m_arrFileTitle.fill('x');
    objRecord.m_iFlags = 2;
    objRecord.m_iFileOffset = 3;
    objRecord.m_iFileExtension = 4;
    objRecord.m_strDefaultExtension = "dt1";
    objRecord.m_iCustomData = 5;
    objRecord.m_iHook = 6;
    objRecord.m_iTemplate = 7;
    MFileDialog::InitFileDialogRecord(objRecord, "", "", "");
    EXPECT_EQ(objRecord.m_iOwner, 0U);
    EXPECT_EQ(objRecord.m_strCustomFilter, "");
    EXPECT_EQ(objRecord.m_iCustomFilterSize, 0U);
    EXPECT_EQ(objRecord.m_iFilterIndex, 0U);
    EXPECT_EQ(std::ranges::count(objRecord.m_arrFileName, '\0'), 512);
    EXPECT_EQ(std::ranges::count(objRecord.m_arrFileTitle, '\0'), 512);
    EXPECT_EQ(objRecord.m_iFlags, 0U);
    EXPECT_EQ(objRecord.m_iFileOffset, 0U);
    EXPECT_EQ(objRecord.m_iFileExtension, 0U);
    EXPECT_EQ(objRecord.m_strDefaultExtension, "");
    EXPECT_EQ(objRecord.m_iCustomData, 0U);
    EXPECT_EQ(objRecord.m_iHook, 0U);
    EXPECT_EQ(objRecord.m_iTemplate, 0U);
}

struct FilterCase {
    const char* m_strName;
    std::vector<std::string> m_strTexts;
    std::string m_strFilter;
};

void PrintTo(const FilterCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class BuildFileFilterTest : public ::testing::TestWithParam<FilterCase> {};

TEST_P(BuildFileFilterTest, JoinsTheTexts) {
    EXPECT_EQ(MFileDialog::BuildFileFilter(GetParam().m_strTexts), GetParam().m_strFilter);
}

const FilterCase FilterCases[] = {
    {"Empty", {}, ""},
    {"OneAlone", {"All"}, "All\0*.*\0\0"s},
    {"OnePair", {"Texts", "*.txt"}, "Texts\0*.txt\0\0"s},
    {"LastWithoutPattern", {"Texts", "*.txt", "All"}, "Texts\0*.txt\0All\0*.*\0\0"s},
    {"TwoPairs",
     {"dt1 files(*.dt1)", "*.dt1", "All files(*.*)", "*.*"},
     "dt1 files(*.dt1)\0*.dt1\0All files(*.*)\0*.*\0\0"s},
};

INSTANTIATE_TEST_SUITE_P(, BuildFileFilterTest, ::testing::ValuesIn(FilterCases),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(FileExistsTest, AsksTheStore) {
    CFakeFileStore objFileStore;
    objFileStore.m_strFiles["/a/there"] = "";
    objFileStore.m_strFiles["/a/.hidden"] = "";
    objFileStore.m_strHidden.insert("/a/.hidden");
    EXPECT_TRUE(MFileDialog::FileExists(objFileStore, "/a/there"));
    EXPECT_FALSE(MFileDialog::FileExists(objFileStore, "/a/.hidden"));
    EXPECT_FALSE(MFileDialog::FileExists(objFileStore, "/a/not there"));
}

struct SaveCase {
    std::string m_strTyped;
    std::uint32_t m_iFilterIndex;
    std::string m_strName;
};

void PrintTo(const SaveCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << "'" << p_objCase.m_strTyped << "' with filter " << p_objCase.m_iFilterIndex;
}

class ShowSaveFileDialogTest : public ::testing::TestWithParam<SaveCase> {};

TEST_P(ShowSaveFileDialogTest, GivesTheChosenName) {
    CFakeFileDialog objFileDialog;
    objFileDialog.Choose(GetParam().m_strTyped, GetParam().m_iFilterIndex);
    CFileDialogRecord objRecord;
    MFileDialog::InitFileDialogRecord(objRecord, "", "", "");
    EXPECT_EQ(MFileDialog::ShowSaveFileDialog(objFileDialog, objRecord, "dt1"),
              GetParam().m_strName);
    ASSERT_EQ(objFileDialog.Calls().size(), 1U);
    EXPECT_EQ(objFileDialog.Calls().front().m_iKind, CFakeFileDialog::Kind::Save);
}

const SaveCase SaveCases[] = {
    {"abc", 1, "abc.dt1"},
    {"abc", 2, "abc"},
    {"abc", 0, "abc"},
    {"abc", 3, "abc"},
    {"abc.dt1", 1, "abc.dt1"},
    {"abc.dt1", 2, "abc.dt1"},
    {"abc.DT1", 1, "abc.DT1.dt1"},
    {"abc.Dt1", 1, "abc.Dt1.dt1"},
    {"abc.dt1 ", 1, "abc.dt1"},
    {"abcdt1", 1, "abcdt1.dt1"},
    {"dt1", 1, "dt1.dt1"},
    {".dt1", 1, ".dt1"},
    {"a.dt1.b", 1, "a.dt1.b.dt1"},
    {"abc.dt2", 1, "abc.dt2.dt1"},
    {"settings", 1, "settings.dt1"},
    {"settings.txt", 1, "settings.txt.dt1"},
    {"settings.txt", 2, "settings.txt"},
    {"  /a folder/abc  ", 1, "/a folder/abc.dt1"},
    {"  abc  ", 2, "abc"},
    {"\tabc", 2, "\tabc"},
    {"one\0two"s, 1, "one.dt1"},
    {"   ", 1, ".dt1"},
    {"   ", 2, ""},
    {"", 1, ".dt1"},
    {std::string(511, 'x'), 2, std::string(511, 'x')},
    {std::string(511, 'x'), 1, std::string(511, 'x') + ".dt1"},
    {std::string(512, 'x'), 2, ""},
};

INSTANTIATE_TEST_SUITE_P(, ShowSaveFileDialogTest, ::testing::ValuesIn(SaveCases));

TEST(ShowSaveFileDialogExtensionTest, AppendsTheOneItIsGiven) {
    CFakeFileDialog objFileDialog;
    objFileDialog.Choose("abc.dt1");
    CFileDialogRecord objRecord;
    MFileDialog::InitFileDialogRecord(objRecord, "", "", "");
    EXPECT_EQ(MFileDialog::ShowSaveFileDialog(objFileDialog, objRecord, "dt2"), "abc.dt1.dt2");
}

TEST(ShowSaveFileDialogCancelTest, ACancelledDialogGivesNoName) {
    CFakeFileDialog objFileDialog;
    objFileDialog.CancelAfterTyping("abc");
    CFileDialogRecord objRecord;
    MFileDialog::InitFileDialogRecord(objRecord, "", "", "");
    EXPECT_EQ(MFileDialog::ShowSaveFileDialog(objFileDialog, objRecord, "dt1"), "");
}

struct OpenCase {
    std::string m_strTyped;
    std::string m_strName;
};

class ShowOpenFileDialogTest : public ::testing::TestWithParam<OpenCase> {};

TEST_P(ShowOpenFileDialogTest, GivesTheChosenNameAndNoExtension) {
    CFakeFileDialog objFileDialog;
    objFileDialog.Choose(GetParam().m_strTyped);
    CFileDialogRecord objRecord;
    MFileDialog::InitFileDialogRecord(objRecord, "", "", "");
    EXPECT_EQ(MFileDialog::ShowOpenFileDialog(objFileDialog, objRecord), GetParam().m_strName);
    ASSERT_EQ(objFileDialog.Calls().size(), 1U);
    EXPECT_EQ(objFileDialog.Calls().front().m_iKind, CFakeFileDialog::Kind::Open);
}

const OpenCase OpenCases[] = {
    {"abc", "abc"},
    {"abc.DT1", "abc.DT1"},
    {"  /a folder/abc  ", "/a folder/abc"},
    {"one\0two"s, "one"},
    {"   ", ""},
    {std::string(511, 'x'), std::string(511, 'x')},
    {std::string(512, 'x'), ""},
};

INSTANTIATE_TEST_SUITE_P(, ShowOpenFileDialogTest, ::testing::ValuesIn(OpenCases));

TEST(ShowOpenFileDialogCancelTest, ACancelledDialogGivesNoName) {
    CFakeFileDialog objFileDialog;
    objFileDialog.CancelAfterTyping("abc");
    CFileDialogRecord objRecord;
    MFileDialog::InitFileDialogRecord(objRecord, "", "", "");
    EXPECT_EQ(MFileDialog::ShowOpenFileDialog(objFileDialog, objRecord), "");
}

}  // namespace
