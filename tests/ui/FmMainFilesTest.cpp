#include "tests/golden/MGolden.h"
#include "tests/ui/CFilesFixture.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace {

/// One kind of settings file, and a field of its page to see it by.
struct KindRow {
    const char* m_strName;
    const char* m_strSave;
    const char* m_strLoad;
    const char* m_strSaveFilter;
    const char* m_strLoadFilter;
    std::string m_strExtension;
    std::string m_strDefaults;     ///< the file with the catalogue's defaults
    std::string m_strChanged;      ///< the same with the field changed
    std::string m_strChangedLine;  ///< the line of it that holds the field
    const char* m_strField;
    const char* m_strDefaultValue;
    const char* m_strChangedValue;
    ItemRef CItemManager::*m_objItem;
    const char* m_strItemDefault;
    const char* m_strItemChanged;
};

/// A failed test tells the kind by its name.
void PrintTo(const KindRow& p_objRow, std::ostream* p_objStream) {
    *p_objStream << p_objRow.m_strName;
}

using MGolden::File;

const std::string Feed =
    MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "125"}});
const std::string Address = MGolden::With(MGolden::IpAddress, {{"IpAddress4", "077"}});

const std::vector<KindRow> Kinds{
    {"Parameter", "btnSave", "btnLoad", "dt1 files(*.dt1)", "dat files(*.dt1)", ".dt1",
     File(MGolden::SetCommands()), File({MGolden::Parameters, Feed}), File({Feed}), "SeFeedAdj",
     "0.0", "-12.5", &CItemManager::m_objFeedAdjustment, "000", "125"},
    {"Lan", "btnLanSave", "btnLanLoad", "dt2 files(*.dt2)", "dat files(*.dt2)", ".dt2",
     File(MGolden::LanSetCommands()),
     File({Address, MGolden::Gateway, MGolden::SubnetMask, MGolden::SocketPort, MGolden::Dhcp}),
     File({Address}), "SeIpAddress4", "20", "77", &CItemManager::m_objIpAddress4, "020", "077"},
};

/// SAVE and LOAD of either page as a person uses them.
class FmMainFilesTest : public CFilesFixture, public ::testing::WithParamInterface<KindRow> {
protected:
    Boxes Save(const std::string& p_strName, bool p_bOverwrite = true) {
        return Press(GetParam().m_strSave, Enter(p_strName), p_bOverwrite);
    }
    Boxes Load(const std::string& p_strName) {
        return Press(GetParam().m_strLoad, Enter(p_strName));
    }

    [[nodiscard]] static std::string FileName(const std::string& p_strName = "settings") {
        return p_strName + GetParam().m_strExtension;
    }

    void ChangePage() { m_objWindow.Type(GetParam().m_strField, GetParam().m_strChangedValue); }
    QString Page() { return Shown(GetParam().m_strField); }
    std::string Item() {
        return (m_objWindow.Form().ItemManager().*GetParam().m_objItem)->GetValueString();
    }
};

TEST_P(FmMainFilesTest, SavesTheDefaultsAndAppendsTheExtension) {
    EXPECT_EQ(Save("settings"), Boxes{Normal()});
    EXPECT_EQ(m_objFolder.Names(), Names{FileName()});
    EXPECT_EQ(m_objFolder.Content(FileName()), GetParam().m_strDefaults);
}

TEST_P(FmMainFilesTest, TheFirstFilterAppendsUnlessTheNameEndsSo) {
    EXPECT_EQ(Save(FileName("a")), Boxes{Normal()});
    EXPECT_EQ(Save("b.txt"), Boxes{Normal()});
    EXPECT_EQ(m_objFolder.Names(), (Names{FileName("a"), FileName("b.txt")}));
}

TEST_P(FmMainFilesTest, TheSecondFilterKeepsTheName) {
    const auto fnAllFiles = [](QFileDialog& p_objDialog) {
        CFileDialogDriver(p_objDialog).ChooseFilter(1);
        CFileDialogDriver(p_objDialog).TypeAndEnter("settings.txt");
    };
    EXPECT_EQ(Press(GetParam().m_strSave, fnAllFiles), Boxes{Normal()});
    EXPECT_EQ(m_objFolder.Names(), Names{"settings.txt"});
    EXPECT_EQ(m_objFolder.Content("settings.txt"), GetParam().m_strDefaults);
}

TEST_P(FmMainFilesTest, SavesElsewhereByAPathTypedWhole) {
    const CFolder objOther;
    EXPECT_EQ(Save(objOther.Path("settings")), Boxes{Normal()});
    EXPECT_EQ(objOther.Names(), Names{FileName()});
    EXPECT_EQ(objOther.Content(FileName()), GetParam().m_strDefaults);
    EXPECT_EQ(m_objFolder.Names(), Names{});
}

TEST_P(FmMainFilesTest, WhatIsTypedIsSavedAndComesBack) {
    ChangePage();
    EXPECT_EQ(Save("settings"), Boxes{Normal()});
    EXPECT_EQ(m_objFolder.Content(FileName()), GetParam().m_strChanged);

    m_objWindow.Type(GetParam().m_strField, GetParam().m_strDefaultValue);
    EXPECT_EQ(Save("defaults"), Boxes{Normal()});
    EXPECT_EQ(m_objFolder.Content(FileName("defaults")), GetParam().m_strDefaults);

    EXPECT_EQ(Load(FileName()), Boxes{Normal()});
    EXPECT_EQ(Page(), GetParam().m_strChangedValue);
    EXPECT_EQ(Item(), GetParam().m_strItemChanged);
}

TEST_P(FmMainFilesTest, NoKeepsTheFile) {
    m_objFolder.Make(FileName(), "old");
    ChangePage();
    EXPECT_EQ(Save("settings", false), Boxes{Question()});
    EXPECT_EQ(m_objFolder.Names(), Names{FileName()});
    EXPECT_EQ(m_objFolder.Content(FileName()), "old");
    EXPECT_EQ(Page(), GetParam().m_strChangedValue);
    EXPECT_EQ(Item(), GetParam().m_strItemDefault);
}

TEST_P(FmMainFilesTest, YesReplacesTheWholeFile) {
    m_objFolder.Make(FileName(), std::string(1000, 'x'));
    ChangePage();
    EXPECT_EQ(Save("settings"), (Boxes{Question(), Normal()}));
    EXPECT_EQ(m_objFolder.Names(), Names{FileName()});
    EXPECT_EQ(m_objFolder.Content(FileName()), GetParam().m_strChanged);
}

TEST_P(FmMainFilesTest, OverwritesAHiddenFileWithoutAsking) {
    m_objFolder.Make(FileName(".hidden"), "old");
    EXPECT_EQ(Save(".hidden"), Boxes{Normal()});
    EXPECT_EQ(m_objFolder.Names(), Names{FileName(".hidden")});
    EXPECT_EQ(m_objFolder.Content(FileName(".hidden")), GetParam().m_strDefaults);
}

TEST_P(FmMainFilesTest, CancelSaysNothingAndChangesNothing) {
    m_objFolder.Make(FileName(), GetParam().m_strDefaults);
    ChangePage();
    const auto fnCancel = [](QFileDialog& p_objDialog) {
        CFileDialogDriver(p_objDialog).Type(QString::fromStdString(FileName()));
        CFileDialogDriver(p_objDialog).Cancel();
    };
    EXPECT_EQ(Press(GetParam().m_strSave, fnCancel), Boxes{});
    EXPECT_EQ(Press(GetParam().m_strLoad, fnCancel), Boxes{});
    EXPECT_EQ(m_objFolder.Names(), Names{FileName()});
    EXPECT_EQ(m_objFolder.Content(FileName()), GetParam().m_strDefaults);
    EXPECT_EQ(Page(), GetParam().m_strChangedValue);
    EXPECT_EQ(Item(), GetParam().m_strItemDefault);
}

TEST_P(FmMainFilesTest, TheDialogsHaveTheirTitlesAndFiltersAndAlwaysOpenInTheProgramsFolder) {
    const CFolder objOther;
    const auto fnLook = [&](const char* p_strTitle, const char* p_strFilter) {
        return [=, &objOther, this](QFileDialog& p_objDialog) {
            CFileDialogDriver objDriver(p_objDialog);
            EXPECT_EQ(p_objDialog.windowTitle(), p_strTitle);
            EXPECT_EQ(p_objDialog.directory().absolutePath().toStdString(), m_objFolder.Path());
            EXPECT_EQ(objDriver.Name().text(), "");
            EXPECT_EQ(objDriver.Filters().count(), 2);
            EXPECT_EQ(objDriver.Filters().currentIndex(), 0);
            EXPECT_EQ(objDriver.Filters().itemText(0), p_strFilter);
            EXPECT_EQ(objDriver.Filters().itemText(1), "All files(*.*)");
            EXPECT_TRUE(objDriver.GoTo(QString::fromStdString(objOther.Path())));
            objDriver.Cancel();
        };
    };
    for (int i = 0; i < 2; ++i) {
        Press(GetParam().m_strSave, fnLook("Save File", GetParam().m_strSaveFilter));
        Press(GetParam().m_strLoad, fnLook("Load File", GetParam().m_strLoadFilter));
    }
}

TEST_P(FmMainFilesTest, AFileThatCannotBeWrittenEndsAbnormally) {
    EXPECT_EQ(Save("no such folder/settings"), Boxes{Abnormal()});
    EXPECT_EQ(m_objFolder.Names(), Names{});

    const std::string strFolder = FileName("folder");
    std::filesystem::create_directory(m_objFolder.Path(strFolder));
    // A folder is not a file: there is nothing to ask about.
    EXPECT_EQ(Save("folder"), Boxes{Abnormal()});
    EXPECT_EQ(m_objFolder.Names(), Names{strFolder});
    EXPECT_TRUE(std::filesystem::is_empty(m_objFolder.Path(strFolder)));
}

TEST_P(FmMainFilesTest, AFileThatIsNotThereEndsAbnormallyAndChangesNothing) {
    ChangePage();
    EXPECT_EQ(Load("missing"), Boxes{Abnormal()});
    EXPECT_EQ(Page(), GetParam().m_strChangedValue);
    EXPECT_EQ(Item(), GetParam().m_strItemDefault);
    EXPECT_EQ(m_objFolder.Names(), Names{});
}

TEST_P(FmMainFilesTest, ABadLineLeavesThePageAsItIsButTheItemsChanged) {
    m_objFolder.Make("bad", GetParam().m_strChangedLine + "\r\n");
    const auto strBefore = m_objWindow.ShownFields();
    EXPECT_EQ(Load("bad"), Boxes{Abnormal()});
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    EXPECT_EQ(Page(), GetParam().m_strDefaultValue);
    EXPECT_EQ(Item(), GetParam().m_strItemChanged);
}

TEST_P(FmMainFilesTest, AnEmptyFileShowsTheItemsAgain) {
    m_objFolder.Make("empty", "");
    ChangePage();
    EXPECT_EQ(Load("empty"), Boxes{Normal()});
    EXPECT_EQ(Page(), GetParam().m_strDefaultValue);
    EXPECT_EQ(Item(), GetParam().m_strItemDefault);
}

INSTANTIATE_TEST_SUITE_P(, FmMainFilesTest, ::testing::ValuesIn(Kinds),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

}  // namespace
