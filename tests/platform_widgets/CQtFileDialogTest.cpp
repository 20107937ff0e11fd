#include "platform/widgets/CQtFileDialog.h"

#include "files/MFileDialog.h"
#include "platform/qt/CQtEventLoop.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/platform_widgets/CFileDialogDriver.h"
#include "tests/platform_widgets/CModalPerson.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace {

class CQtFileDialogTest : public ::testing::Test {
protected:
    /// The toolkit's dialog keeps how it was last looked at in a file of the person's own.
    static void SetUpTestSuite() {
        static const CFolder objSettings;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(objSettings.Path()));
    }

    CQtFileDialogTest() {
        MFileDialog::InitFileDialogRecord(
            m_objRecord,
            MFileDialog::BuildFileFilter({"dat files(*.dt1)", "*.dt1", "All files(*.*)", "*.*"}),
            "Load File", m_objFolder.Path());
    }

    /// What a person does in a file dialog, where no other may come up.
    static std::function<void(QWidget&)>
    Dialog(const std::function<void(QFileDialog&)>& p_fnAction) {
        return [p_fnAction](QWidget& p_objDialog) {
            p_fnAction(dynamic_cast<QFileDialog&>(p_objDialog));
        };
    }

    bool Save(const std::function<void(QFileDialog&)>& p_fnAction) {
        const CModalPerson objPerson(Dialog(p_fnAction));
        const bool bChosen = m_objFileDialog.GetSaveFileName(m_objRecord);
        EXPECT_EQ(objPerson.Count(), 1);
        return bChosen;
    }

    bool Open(const std::function<void(QFileDialog&)>& p_fnAction) {
        const CModalPerson objPerson(Dialog(p_fnAction));
        const bool bChosen = m_objFileDialog.GetOpenFileName(m_objRecord);
        EXPECT_EQ(objPerson.Count(), 1);
        return bChosen;
    }

    /// The path that came back, up to its first NUL.
    [[nodiscard]] std::string Chosen() const { return m_objRecord.m_arrFileName.data(); }

    CFolder m_objFolder;
    CFileDialogRecord m_objRecord;
    CQtEventLoop m_objEventLoop;
    CQtFileDialog m_objFileDialog{m_objEventLoop};
};

TEST_F(CQtFileDialogTest, IsTheToolkitsOwnWithTheTitleTheFolderAndAnEmptyName) {
    const auto fnLook = [&](QFileDialog& p_objDialog) {
        EXPECT_EQ(p_objDialog.windowTitle(), "Load File");
        EXPECT_EQ(p_objDialog.directory().absolutePath().toStdString(), m_objFolder.Path());
        EXPECT_EQ(CFileDialogDriver(p_objDialog).Name().text(), "");
        EXPECT_TRUE(p_objDialog.isModal());
        p_objDialog.reject();
    };
    EXPECT_FALSE(Save(fnLook));
    EXPECT_FALSE(Open(fnLook));
}

TEST_F(CQtFileDialogTest, ShowsTheDisplayNamesAsTheyAreGivenInTheirOrder) {
    Open([](QFileDialog& p_objDialog) {
        ASSERT_EQ(CFileDialogDriver(p_objDialog).Filters().count(), 2);
        EXPECT_EQ(CFileDialogDriver(p_objDialog).Filters().itemText(0), "dat files(*.dt1)");
        EXPECT_EQ(CFileDialogDriver(p_objDialog).Filters().itemText(1), "All files(*.*)");
        EXPECT_EQ(CFileDialogDriver(p_objDialog).Filters().currentIndex(), 0);
        p_objDialog.reject();
    });
}

TEST_F(CQtFileDialogTest, AcceptsATypedNameInItsFolderWithTheFirstFilter) {
    EXPECT_TRUE(Save(
        [](QFileDialog& p_objDialog) { CFileDialogDriver(p_objDialog).TypeAndEnter("settings"); }));
    EXPECT_EQ(Chosen(), m_objFolder.Path("settings"));
    EXPECT_EQ(m_objRecord.m_iFilterIndex, 1U);
    EXPECT_TRUE(m_objFolder.Names().empty());
}

TEST_F(CQtFileDialogTest, AQuotationMarkIsACharacterOfTheName) {
    for (const std::string strName : {"roll 5\"", "the \"A\" roll", "\"a\" \"b\"", "\""}) {
        SCOPED_TRACE(strName);
        const auto fnType = [&](QFileDialog& p_objDialog) {
            CFileDialogDriver(p_objDialog).TypeAndEnter(QString::fromStdString(strName));
        };
        EXPECT_TRUE(Save(fnType));
        EXPECT_EQ(Chosen(), m_objFolder.Path(strName));
        EXPECT_TRUE(Open(fnType));
        EXPECT_EQ(Chosen(), m_objFolder.Path(strName));
        EXPECT_TRUE(Save([&](QFileDialog& p_objDialog) {
            CFileDialogDriver(p_objDialog).Type(QString::fromStdString(strName));
            QPushButton* const btn = p_objDialog.findChild<QDialogButtonBox*>("buttonBox")
                                         ->button(QDialogButtonBox::Save);
            EXPECT_TRUE(btn->isEnabled());
            QTest::mouseClick(btn, Qt::LeftButton);
        }));
        EXPECT_EQ(Chosen(), m_objFolder.Path(strName));
    }
}

TEST_F(CQtFileDialogTest, AQuotationMarkInAPathLeadsThereAndIntoAFolder) {
    const std::string strFolder = m_objFolder.Path("5\" labels");
    std::filesystem::create_directory(strFolder);
    EXPECT_TRUE(Save([&](QFileDialog& p_objDialog) {
        CFileDialogDriver objDriver(p_objDialog);
        EXPECT_TRUE(objDriver.GoTo(QString::fromStdString(strFolder)));
        EXPECT_EQ(objDriver.Name().text(), "");
        objDriver.TypeAndEnter("first");
    }));
    EXPECT_EQ(Chosen(), strFolder + "/first");
    EXPECT_TRUE(Save([&](QFileDialog& p_objDialog) {
        CFileDialogDriver(p_objDialog).TypeAndEnter(QString::fromStdString(strFolder) + "/second");
    }));
    EXPECT_EQ(Chosen(), strFolder + "/second");
    EXPECT_TRUE(Save(
        [](QFileDialog& p_objDialog) { CFileDialogDriver(p_objDialog).TypeAndEnter("~/a\"b"); }));
    EXPECT_EQ(Chosen(), QDir::homePath().toStdString() + "/a\"b");
}

TEST_F(CQtFileDialogTest, TellsThatTheSecondFilterWasChosen) {
    const auto fnChoose = [](QFileDialog& p_objDialog) {
        CFileDialogDriver(p_objDialog).ChooseFilter(1);
        CFileDialogDriver(p_objDialog).TypeAndEnter("settings.txt");
    };
    EXPECT_TRUE(Save(fnChoose));
    EXPECT_EQ(Chosen(), m_objFolder.Path("settings.txt"));
    EXPECT_EQ(m_objRecord.m_iFilterIndex, 2U);
    m_objRecord.m_iFilterIndex = 0;
    EXPECT_TRUE(Open(fnChoose));
    EXPECT_EQ(m_objRecord.m_iFilterIndex, 2U);
}

TEST_F(CQtFileDialogTest, TellsTwoFiltersOfOneNameApartByTheirBeginning) {
    m_objRecord.m_strFilter = MFileDialog::BuildFileFilter({"All", "*.a", "All files", "*.b"});
    const auto fnChoose = [](int p_iFilter) {
        return [p_iFilter](QFileDialog& p_objDialog) {
            CFileDialogDriver(p_objDialog).ChooseFilter(p_iFilter);
            CFileDialogDriver(p_objDialog).TypeAndEnter("x");
        };
    };
    EXPECT_TRUE(Save(fnChoose(0)));
    EXPECT_EQ(m_objRecord.m_iFilterIndex, 1U);
    EXPECT_TRUE(Save(fnChoose(1)));
    EXPECT_EQ(m_objRecord.m_iFilterIndex, 2U);
}

TEST_F(CQtFileDialogTest, ACancelledDialogChoosesNothing) {
    const auto fnCancel = [](QFileDialog& p_objDialog) {
        CFileDialogDriver(p_objDialog).Type("typed");
        CFileDialogDriver(p_objDialog).Cancel();
    };
    EXPECT_FALSE(Save(fnCancel));
    EXPECT_FALSE(Open(fnCancel));
    EXPECT_FALSE(
        Save([](QFileDialog& p_objDialog) { QTest::keyClick(&p_objDialog, Qt::Key_Escape); }));
    EXPECT_EQ(Chosen(), "");
}

TEST_F(CQtFileDialogTest, ListsOnlyWhatTheFilterShows) {
    for (const char* strName : {"a.dt1", "b.dt2", "without a dot", "C.DT1.txt"}) {
        m_objFolder.Make(strName, "");
    }
    Open([](QFileDialog& p_objDialog) {
        using Names = std::vector<std::string>;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return CFileDialogDriver(p_objDialog).Listed() == Names{"a.dt1"}; }));
        CFileDialogDriver(p_objDialog).ChooseFilter(1);
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return CFileDialogDriver(p_objDialog).Listed() ==
                   Names{"C.DT1.txt", "a.dt1", "b.dt2", "without a dot"};
        }));
        p_objDialog.reject();
    });
}

TEST_F(CQtFileDialogTest, DoesNotAskAboutOverwriting) {
    m_objFolder.Make("old.dt1", "old");
    EXPECT_TRUE(Save(
        [](QFileDialog& p_objDialog) { CFileDialogDriver(p_objDialog).TypeAndEnter("old.dt1"); }));
    EXPECT_EQ(Chosen(), m_objFolder.Path("old.dt1"));
    EXPECT_EQ(m_objFolder.Content("old.dt1"), "old");
}

TEST_F(CQtFileDialogTest, AcceptsANameThatDoesNotExistForOpening) {
    EXPECT_TRUE(Open([](QFileDialog& p_objDialog) {
        CFileDialogDriver(p_objDialog).TypeAndEnter("not there");
    }));
    EXPECT_EQ(Chosen(), m_objFolder.Path("not there"));
}

TEST_F(CQtFileDialogTest, GivesBackAFilePickedFromTheList) {
    m_objFolder.Make("one.dt1", "");
    EXPECT_TRUE(Open([](QFileDialog& p_objDialog) {
        auto& objList = *p_objDialog.findChild<QListView*>("listView");
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return !CFileDialogDriver(p_objDialog).Listed().empty(); }));
        objList.setCurrentIndex(objList.model()->index(0, 0, objList.rootIndex()));
        QTest::mouseClick(
            p_objDialog.findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Open),
            Qt::LeftButton);
    }));
    EXPECT_EQ(Chosen(), m_objFolder.Path("one.dt1"));
}

TEST_F(CQtFileDialogTest, GivesBackAPathThatWasTypedWhole) {
    const CFolder objOther;
    EXPECT_TRUE(Save([&](QFileDialog& p_objDialog) {
        CFileDialogDriver(p_objDialog)
            .TypeAndEnter(QString::fromStdString(objOther.Path("settings.dt1")));
    }));
    EXPECT_EQ(Chosen(), objOther.Path("settings.dt1"));
}

TEST_F(CQtFileDialogTest, GivesBackANameInTheSystemsEncoding) {
    EXPECT_TRUE(Save([](QFileDialog& p_objDialog) {
        CFileDialogDriver(p_objDialog).TypeAndEnter(QStringLiteral("\u00E9\u5DE5"));
    }));
    EXPECT_EQ(Chosen(), m_objFolder.Path("\xC3\xA9\xE5\xB7\xA5"));
}

TEST_F(CQtFileDialogTest, LeavesNothingOfALongerPathBehindAShorterOne) {
    m_objRecord.m_arrFileName.fill('x');
    EXPECT_TRUE(
        Save([](QFileDialog& p_objDialog) { CFileDialogDriver(p_objDialog).TypeAndEnter("a"); }));
    const std::string strPath = m_objFolder.Path("a");
    EXPECT_EQ(std::string(m_objRecord.m_arrFileName.begin(), m_objRecord.m_arrFileName.end()),
              strPath + std::string(512 - strPath.size(), '\0'));
}

TEST_F(CQtFileDialogTest, APathOf511BytesFitsAndALongerOneIsAFailure) {
    std::string strFolder = m_objFolder.Path();
    while (strFolder.size() < 400) {
        strFolder += "/" + std::string(std::min<std::size_t>(100, 420 - strFolder.size()), 'd');
        std::filesystem::create_directory(strFolder);
    }
    m_objRecord.m_strInitialFolder = strFolder;
    const auto fnType = [&](std::size_t p_iPathLength) {
        // In the last place a letter of two bytes.
        const std::string strName(p_iPathLength - strFolder.size() - 3, 'n');
        return [strName](QFileDialog& p_objDialog) {
            CFileDialogDriver(p_objDialog)
                .TypeAndEnter(QString::fromStdString(strName) + QChar(u'\u00E9'));
        };
    };
    EXPECT_TRUE(Save(fnType(511)));
    EXPECT_EQ(Chosen().size(), 511U);
    EXPECT_TRUE(Chosen().ends_with("n\xC3\xA9"));
    m_objRecord.m_arrFileName.fill('\0');
    for (const std::size_t iLength : {512U, 513U, 530U}) {
        EXPECT_FALSE(Save(fnType(iLength))) << iLength;
        EXPECT_FALSE(Open(fnType(iLength))) << iLength;
        EXPECT_EQ(Chosen(), "");
    }
}

TEST_F(CQtFileDialogTest, EveryDialogBeginsInItsOwnFolderAgain) {
    const CFolder objOther;
    EXPECT_TRUE(Save([&](QFileDialog& p_objDialog) {
        CFileDialogDriver(p_objDialog)
            .TypeAndEnter(QString::fromStdString(objOther.Path("settings.dt1")));
    }));
    Save([&](QFileDialog& p_objDialog) {
        EXPECT_EQ(p_objDialog.directory().absolutePath().toStdString(), m_objFolder.Path());
        p_objDialog.reject();
    });
}

TEST_F(CQtFileDialogTest, BelongsToTheWindowInFront) {
    QWidget objWindow;
    objWindow.show();
    objWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&objWindow));
    Save([&](QFileDialog& p_objDialog) {
        EXPECT_EQ(p_objDialog.parentWidget(), &objWindow);
        p_objDialog.reject();
    });
}

TEST_F(CQtFileDialogTest, BelongsToTheWindowThatShowsWhenNoneHasTheKeyboard) {
    QWidget objWindow;
    objWindow.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&objWindow));
    for (int i = 0; i < 2; ++i) {  // the first dialog leaves the keyboard with nobody here
        Save([&](QFileDialog& p_objDialog) {
            EXPECT_EQ(p_objDialog.parentWidget(), &objWindow);
            p_objDialog.reject();
        });
        ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeWindow() == nullptr; }));
    }
}

TEST_F(CQtFileDialogTest, DoesNotAppearOnceTheProgramCloses) {
    m_objEventLoop.RequestClose();
    const CModalPerson objPerson([](QWidget& p_objDialog) {
        ADD_FAILURE() << "a dialog appeared";
        p_objDialog.close();
    });
    EXPECT_FALSE(m_objFileDialog.GetSaveFileName(m_objRecord));
    EXPECT_FALSE(m_objFileDialog.GetOpenFileName(m_objRecord));
    EXPECT_EQ(objPerson.Count(), 0);
}

}  // namespace
