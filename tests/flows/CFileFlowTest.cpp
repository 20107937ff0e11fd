#include "flows/CFileFlow.h"

#include "model/CConversionError.h"
#include "tests/fakes/CFakeEventLoop.h"
#include "tests/fakes/CFakeFileDialog.h"
#include "tests/fakes/CFakeFileStore.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using namespace std::string_literals;

constexpr const char* Normal = "Normal termination";
constexpr const char* Abnormal = "Abnormal termination";
constexpr const char* RefreshError = "Error RefreshParameterSettingItem";
constexpr const char* OverwriteQuestion = "The file already exists. Do you overwrite?";
constexpr const char* Folder = "/opt/tool";

/// One kind of settings file and what it looks like for two settings.
struct Kind {
    const char* m_strName;
    CFileFlow::Kind (*m_fnKind)();
    std::string m_strExtension;
    std::string m_strDefault;  ///< the file of a new catalogue
    std::string m_strChanged;  ///< the file after Change
    void (*m_fnChange)(const CItemManager&);
    std::string m_strGoodLine;  ///< the line that tells the two apart
};

void PrintTo(const Kind& p_objKind, std::ostream* p_objStream) {
    *p_objStream << p_objKind.m_strName;
}

const std::string Feed =
    MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}});
const std::string Port = MGolden::With(MGolden::SocketPort, {{"SocketPortNumber", "09100"}});

const Kind Kinds[] = {
    {"Parameter", &CFileFlow::ParameterKind, "dt1", MGolden::File(MGolden::SetCommands()),
     MGolden::File({MGolden::Parameters, Feed}),
     [](const CItemManager& p_objItems) {
         p_objItems.m_objFeedDirection->SetValue("-");
         p_objItems.m_objFeedAdjustment->SetValue("-123");
     },
     MGolden::File({Feed})},
    {"Lan", &CFileFlow::LanKind, "dt2", MGolden::File(MGolden::LanSetCommands()),
     MGolden::File(
         {MGolden::IpAddress, MGolden::Gateway, MGolden::SubnetMask, Port, MGolden::Dhcp}),
     [](const CItemManager& p_objItems) { p_objItems.m_objSocketPortNumber->SetValue("9100"); },
     MGolden::File({Port})},
};

class CFileFlowTest : public ::testing::TestWithParam<Kind> {
protected:
    /// The bytes that a catalogue would be saved as.
    std::string Bytes(const CItemManager& p_objItems) {
        std::string strBytes;
        for (const std::string& strLine :
             GetParam().m_fnKind().m_objFormat.m_objBuildLines(p_objItems)) {
            strBytes += strLine + "\r\n";
        }
        return strBytes;
    }

    [[nodiscard]] std::string Path() const { return "/folder/name." + GetParam().m_strExtension; }

    CItemManager m_objItems;
    CFakeSettingsPage m_objPage;
    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CWaiter m_objWaiter{m_objEventLoop, m_objClock};
    CFakeFileDialog m_objFileDialog;
    CFakeFileStore m_objFileStore;
    CFakeMessageBox m_objMessageBox;
    CFilePlatform m_objFiles{m_objMessageBox, m_objFileDialog, m_objFileStore, Folder};
    CFileFlow m_objFlow{GetParam().m_fnKind(), m_objItems, m_objPage, m_objWaiter, m_objFiles};
};

INSTANTIATE_TEST_SUITE_P(, CFileFlowTest, ::testing::ValuesIn(Kinds),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST_P(CFileFlowTest, ShowsTheDialogToSave) {
    m_objFlow.Save();
    ASSERT_EQ(m_objFileDialog.Calls().size(), 1U);
    const auto& [iKind, objRecord] = m_objFileDialog.Calls().front();
    const std::string& strExtension = GetParam().m_strExtension;
    EXPECT_EQ(iKind, CFakeFileDialog::Kind::Save);
    EXPECT_EQ(objRecord.m_iStructSize, 76U);
    EXPECT_EQ(objRecord.m_iFileNameSize, 511U);
    EXPECT_EQ(objRecord.m_iFilterIndex, 0U);
    EXPECT_EQ(objRecord.m_strDialogTitle, "Save File");
    EXPECT_EQ(objRecord.m_strInitialFolder, Folder);
    EXPECT_EQ(objRecord.m_strFilter, strExtension + " files(*." + strExtension + ")\0*."s +
                                         strExtension + "\0All files(*.*)\0*.*\0\0"s);
}

TEST_P(CFileFlowTest, ShowsTheDialogToLoad) {
    m_objFlow.Load();
    ASSERT_EQ(m_objFileDialog.Calls().size(), 1U);
    const auto& [iKind, objRecord] = m_objFileDialog.Calls().front();
    const std::string& strExtension = GetParam().m_strExtension;
    EXPECT_EQ(iKind, CFakeFileDialog::Kind::Open);
    EXPECT_EQ(objRecord.m_iStructSize, 76U);
    EXPECT_EQ(objRecord.m_iFileNameSize, 511U);
    EXPECT_EQ(objRecord.m_strDialogTitle, "Load File");
    EXPECT_EQ(objRecord.m_strInitialFolder, Folder);
    EXPECT_EQ(objRecord.m_strFilter, "dat files(*." + strExtension + ")\0*."s + strExtension +
                                         "\0All files(*.*)\0*.*\0\0"s);
}

TEST_P(CFileFlowTest, EveryDialogBeginsInTheSameFolderWithAnEmptyName) {
    m_objFileDialog.Choose("/elsewhere/name");
    m_objMessageBox.Expect(Normal);
    m_objFlow.Save();
    m_objFileDialog.CancelAfterTyping("");
    m_objFlow.Save();
    m_objFlow.Load();
    ASSERT_EQ(m_objFileDialog.Calls().size(), 3U);
    for (const CFakeFileDialog::Call& objCall : m_objFileDialog.Calls()) {
        EXPECT_EQ(objCall.m_objRecord.m_strInitialFolder, Folder);
        EXPECT_EQ(objCall.m_objRecord.m_arrFileName.front(), '\0');
    }
}

TEST_P(CFileFlowTest, ACancelledDialogEndsSilently) {
    m_objFileStore.m_strFiles[Path()] = "old";
    m_objFileDialog.CancelAfterTyping(Path());
    m_objFlow.Save();
    m_objFlow.Load();
    EXPECT_EQ(m_objFileDialog.Calls().size(), 2U);
    EXPECT_EQ(m_objFileStore.Operations(), 0);
    EXPECT_EQ(m_objPage.m_iStores, 0);
    EXPECT_EQ(m_objPage.m_iRefreshes, 0);
}

TEST_P(CFileFlowTest, SavesWhatThePageShows) {
    m_objPage.m_fnStore = [this] {
        GetParam().m_fnChange(m_objItems);
        return true;
    };
    m_objFileDialog.Choose("/folder/name");
    m_objMessageBox.Expect(Normal);
    m_objFlow.Save();
    EXPECT_EQ(m_objFileStore.m_strFiles.size(), 1U);
    EXPECT_EQ(m_objFileStore.m_strFiles[Path()], GetParam().m_strChanged);
    EXPECT_EQ(m_objPage.m_iStores, 1);
    EXPECT_EQ(m_objPage.m_iRefreshes, 0);
    EXPECT_EQ(m_objFileStore.OpenFiles(), 0);
}

TEST_P(CFileFlowTest, TheSecondFilterKeepsTheName) {
    m_objFileDialog.Choose("/folder/settings.txt", 2);
    m_objMessageBox.Expect(Normal);
    m_objFlow.Save();
    EXPECT_EQ(m_objFileStore.m_strFiles.size(), 1U);
    EXPECT_EQ(m_objFileStore.m_strFiles["/folder/settings.txt"], GetParam().m_strDefault);
}

TEST_P(CFileFlowTest, AsksAboutTheNameWithItsExtension) {
    m_objFileStore.m_strFiles["/folder/name"] = "old";
    m_objFileDialog.Choose("/folder/name");
    m_objMessageBox.Expect(Normal);
    m_objFlow.Save();
    m_objMessageBox.ExpectQuestion(OverwriteQuestion, false);
    m_objFlow.Save();
    EXPECT_EQ(m_objFileStore.m_strFiles["/folder/name"], "old");
}

TEST_P(CFileFlowTest, NoLeavesTheFileAndThePageAlone) {
    m_objFileStore.m_strFiles[Path()] = "old";
    m_objFileDialog.Choose(Path());
    m_objMessageBox.ExpectQuestion(OverwriteQuestion, false);
    m_objFlow.Save();
    EXPECT_EQ(m_objFileStore.m_strFiles[Path()], "old");
    EXPECT_EQ(m_objFileStore.Operations(), 0);
    EXPECT_EQ(m_objPage.m_iStores, 0);
}

TEST_P(CFileFlowTest, YesReplacesTheWholeFile) {
    m_objFileStore.m_strFiles[Path()] = std::string(1000, 'x');
    m_objFileDialog.Choose(Path());
    m_objMessageBox.ExpectQuestion(OverwriteQuestion, true);
    m_objMessageBox.Expect(Normal);
    m_objFlow.Save();
    EXPECT_EQ(m_objFileStore.m_strFiles[Path()], GetParam().m_strDefault);
}

TEST_P(CFileFlowTest, AHiddenFileIsOverwrittenWithoutTheQuestion) {
    m_objFileStore.m_strFiles[Path()] = "old";
    m_objFileStore.m_strHidden.insert(Path());
    m_objFileDialog.Choose(Path());
    m_objMessageBox.Expect(Normal);
    m_objFlow.Save();
    EXPECT_EQ(m_objFileStore.m_strFiles[Path()], GetParam().m_strDefault);
}

TEST_P(CFileFlowTest, NothingIsWrittenWhenThePageCannotBeStored) {
    m_objFileStore.m_strFiles[Path()] = "old";
    m_objFileDialog.Choose(Path());
    for (const bool bThrows : {false, true}) {
        m_objPage.m_fnStore = [bThrows]() -> bool {
            return bThrows ? throw CConversionError("no number") : false;
        };
        m_objMessageBox.ExpectQuestion(OverwriteQuestion, true);
        m_objMessageBox.Expect(Abnormal);
        m_objFlow.Save();
        m_objMessageBox.Verify();
    }
    EXPECT_EQ(m_objFileStore.Operations(), 0);
    EXPECT_EQ(m_objFileStore.m_strFiles[Path()], "old");
}

TEST_P(CFileFlowTest, NothingIsWrittenFromAnItemThatIsNoNumber) {
    m_objItems.m_objFeedAdjustment->SetValue("abc");
    m_objItems.m_objIpAddress1->SetValue("...");
    m_objFileDialog.Choose(Path());
    m_objMessageBox.Expect(Abnormal);
    m_objFlow.Save();
    EXPECT_TRUE(m_objFileStore.m_strFiles.empty());
}

TEST_P(CFileFlowTest, AFailureOfAnyWritingOperationLeavesTheOldFile) {
    m_objFileDialog.Choose("/folder/other." + GetParam().m_strExtension);
    m_objMessageBox.Expect(Normal);
    m_objFlow.Save();
    const int iOperations = m_objFileStore.Operations();
    EXPECT_GE(iOperations, 3);
    m_objFileDialog.Choose(Path());
    m_objFileStore.m_strFiles[Path()] = "old";
    for (int i = 1; i <= iOperations; ++i) {
        m_objFileStore.FailAt(m_objFileStore.Operations() + i);
        m_objMessageBox.ExpectQuestion(OverwriteQuestion, true);
        m_objMessageBox.Expect(Abnormal);
        m_objFlow.Save();
        m_objMessageBox.Verify();
        EXPECT_EQ(m_objFileStore.m_strFiles[Path()], "old") << i;
        EXPECT_EQ(m_objFileStore.OpenFiles(), 0) << i;
    }
}

TEST_P(CFileFlowTest, LoadsAFileAndRefreshesThePage) {
    m_objFileStore.m_strFiles[Path()] = GetParam().m_strChanged;
    m_objFileDialog.Choose("  " + Path() + " ");
    std::string strSeen;
    m_objPage.m_fnRefresh = [&] {
        strSeen = Bytes(m_objItems);
        EXPECT_EQ(m_objFileStore.OpenFiles(), 0);
        return true;
    };
    m_objMessageBox.Expect(Normal);
    m_objFlow.Load();
    EXPECT_EQ(strSeen, GetParam().m_strChanged);
    EXPECT_EQ(m_objPage.m_iRefreshes, 1);
    EXPECT_EQ(m_objPage.m_iStores, 0);
    EXPECT_EQ(m_objFileStore.m_strFiles[Path()], GetParam().m_strChanged);
    ASSERT_EQ(m_objPage.m_objNotes.size(), 1U);
    EXPECT_EQ(m_objPage.m_objNotes[0].m_iKind, CPageNote::Kind::Loaded);
    EXPECT_EQ(m_objPage.m_objNotes[0].m_strText, Path());
}

TEST_P(CFileFlowTest, AnEmptyFileRefreshesThePageFromTheUnchangedItems) {
    m_objFileStore.m_strFiles[Path()] = "";
    m_objFileDialog.Choose(Path());
    m_objMessageBox.Expect(Normal);
    m_objFlow.Load();
    EXPECT_EQ(Bytes(m_objItems), GetParam().m_strDefault);
    EXPECT_EQ(m_objPage.m_iRefreshes, 1);
}

TEST_P(CFileFlowTest, AWrongLineKeepsTheLinesBeforeItAndDoesNotRefreshThePage) {
    for (const std::string strWrong : {"\r\n", "wrong\r\n", "{Z2;3", "{IP;5,001,002,003,004|}\n"}) {
        m_objFileStore.m_strFiles[Path()] = GetParam().m_strGoodLine + strWrong;
        m_objFileDialog.Choose(Path());
        m_objMessageBox.Expect(Abnormal);
        m_objFlow.Load();
        m_objMessageBox.Verify();
        EXPECT_EQ(Bytes(m_objItems), GetParam().m_strChanged) << strWrong;
        EXPECT_EQ(m_objPage.m_iRefreshes, 0);
        EXPECT_EQ(m_objFileStore.OpenFiles(), 0);
    }
}

TEST_P(CFileFlowTest, AFileThatCannotBeReadDoesNotRefreshThePage) {
    m_objFileDialog.Choose("/not/there");
    m_objMessageBox.Expect(Abnormal);
    m_objFlow.Load();
    m_objMessageBox.Verify();
    ASSERT_EQ(m_objPage.m_objNotes.size(), 1U);
    EXPECT_EQ(m_objPage.m_objNotes[0].m_iKind, CPageNote::Kind::LoadEnded);
    EXPECT_EQ(m_objPage.m_objNotes[0].m_strText, "/not/there");
    m_objFileDialog.Choose(Path());
    m_objFileStore.m_strFiles[Path()] = GetParam().m_strDefault;
    for (int i = 1; i <= 3; ++i) {  // opening, the block, the end
        m_objFileStore.FailAt(m_objFileStore.Operations() + i);
        m_objMessageBox.Expect(Abnormal);
        m_objFlow.Load();
        m_objMessageBox.Verify();
    }
    EXPECT_EQ(m_objPage.m_iRefreshes, 0);
    EXPECT_EQ(m_objFileStore.OpenFiles(), 0);
}

TEST_P(CFileFlowTest, ARefreshThatFailsShowsTwoBoxes) {
    m_objFileStore.m_strFiles[Path()] = GetParam().m_strChanged;
    m_objFileDialog.Choose(Path());
    m_objPage.m_fnRefresh = [] { return false; };
    m_objMessageBox.Expect(RefreshError);
    m_objMessageBox.Expect(Abnormal);
    m_objFlow.Load();
    EXPECT_EQ(Bytes(m_objItems), GetParam().m_strChanged);
}

TEST_P(CFileFlowTest, ARefreshThatThrowsShowsOneBox) {
    m_objFileStore.m_strFiles[Path()] = GetParam().m_strChanged;
    m_objFileDialog.Choose(Path());
    m_objPage.m_fnRefresh = []() -> bool { throw std::out_of_range("beyond the list"); };
    m_objMessageBox.Expect(Abnormal);
    m_objFlow.Load();
    EXPECT_EQ(Bytes(m_objItems), GetParam().m_strChanged);
}

TEST_P(CFileFlowTest, AnErrorInTheDialogIsAnAbnormalTermination) {
    m_objFileDialog.WhileShown([] { throw std::runtime_error("no dialog"); });
    m_objMessageBox.Expect(Abnormal);
    m_objFlow.Save();
    m_objMessageBox.Verify();
    m_objMessageBox.Expect(Abnormal);
    m_objFlow.Load();
    EXPECT_EQ(m_objFileStore.Operations(), 0);
}

TEST_P(CFileFlowTest, LoadsWhatItHasSaved) {
    m_objFileDialog.Choose(Path());
    GetParam().m_fnChange(m_objItems);
    m_objMessageBox.Expect(Normal);
    m_objFlow.Save();
    CItemManager objOther;
    CFileFlow objOtherFlow(GetParam().m_fnKind(), objOther, m_objPage, m_objWaiter, m_objFiles);
    m_objMessageBox.Expect(Normal);
    objOtherFlow.Load();
    EXPECT_EQ(Bytes(objOther), GetParam().m_strChanged);
}

}  // namespace
