#include "tests/platform_widgets/CModalPerson.h"
#include "tests/ui/CFormFixture.h"
#include "tests/ui/CModalAnswer.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

#include <vector>

namespace {

/// What was typed and not checked, however that came about, gets no further.
class FmMainUncheckedTest : public CFormFixture {
protected:
    struct Unchecked {
        const char* m_strField;
        const char* m_strText;   ///< outside the range
        const char* m_strValue;  ///< what the field holds
    };

    /// In tab order, of all three tabs.
    static const std::vector<Unchecked>& AllUnchecked() {
        static const std::vector<Unchecked> objAll{
            {"SeFowardPosition", "5.1", "0.0"}, {"SeEuroCode", "7fff", "B0"},
            {"SeToneAdjT", "12345", "0"},       {"SeThresholdT", "9", "1.4"},
            {"SeIssueCount", "0", "1"},         {"SeGateway4", "999", "0"},
            {"SeSocetPort", "99999", "8000"},
        };
        return objAll;
    }

    /// Leaves the text in the field as if typed, whatever has the focus.
    void Put(const char* p_strField, const char* p_strText) {
        m_objWindow.Field(p_strField).findChild<QLineEdit*>("CText")->setText(p_strText);
    }

    void PutAll() {
        for (const Unchecked& objRow : AllUnchecked()) {
            Put(objRow.m_strField, objRow.m_strText);
        }
    }

    /// Expects the first so many to be put back and the others to be as they were.
    void ExpectPutBack(std::size_t p_iCount) {
        for (std::size_t i = 0; i < AllUnchecked().size(); ++i) {
            const Unchecked& objRow = AllUnchecked()[i];
            EXPECT_EQ(Shown(objRow.m_strField), i < p_iCount ? objRow.m_strValue : objRow.m_strText)
                << objRow.m_strField;
        }
    }

    void ExpectRangeBox() { m_objBoxes.Expect("It is a value that exceeds the useful range. "); }

    /// Lets go of the mouse while the box stands, as who answers it does.
    void ReleaseWhileABoxStands() {
        m_objBoxes.WhileShown(
            [this](const auto&) { QTest::mouseRelease(&m_objWindow.Form(), Qt::LeftButton); });
    }
};

TEST_F(FmMainUncheckedTest, EveryButtonHasAllFieldsCheckedInTabOrderUntilOneIsRefused) {
    m_objWindow.Choose("cmbInterface", 1);
    ASSERT_TRUE(m_objWindow.SetUp("127.0.0.1"));
    m_objCalls.Forget();
    const CModalPerson objPerson([](QWidget& p_objDialog) {
        ADD_FAILURE() << "a button has opened its dialog";
        p_objDialog.close();
    });
    for (const QString& strButton : CMainWindow::ActionButtons()) {
        SCOPED_TRACE(strButton.toStdString());
        m_objWindow.BringToFront(strButton);
        PutAll();
        for (std::size_t i = 1; i <= AllUnchecked().size(); ++i) {
            ExpectRangeBox();
            QTest::mouseClick(&m_objWindow.Button(strButton), Qt::LeftButton);
            m_objBoxes.Verify();
            ExpectPutBack(i);
        }
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    }
    EXPECT_EQ(m_objCalls.All(), std::vector<std::string>());
}

TEST_F(FmMainUncheckedTest, AllFieldsAreCheckedInAWindowThatTheToolkitTakesForInactive) {
    QWidget objFront;
    objFront.show();
    objFront.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&objFront));
    ASSERT_FALSE(m_objWindow.Form().isActiveWindow());
    m_objWindow.Type("SeToneAdjT", "12345");
    m_objWindow.Type("SeEuroCode", "7fff");
    m_objWindow.Type("SeFeedAdj", "abc");
    m_objWindow.Type("SeXAdj", "-1.5");
    ASSERT_EQ(Shown("SeToneAdjT"), "12345") << "nobody saw the focus move";
    for (const char* strTone : {"12345", "0"}) {
        ExpectRangeBox();
        m_objWindow.Click("btnSet");
        m_objBoxes.Verify();
        EXPECT_EQ(Shown("SeEuroCode"), "B0");
        EXPECT_EQ(Shown("SeToneAdjT"), strTone);
        EXPECT_EQ(m_objCalls.All(), std::vector<std::string>());
    }
    m_objWindow.Click("btnSet");
    EXPECT_EQ(Shown("SeFeedAdj"), "0.0");
    EXPECT_EQ(m_objWindow.Field("SeXAdj").GetValue(), CItemValue(-15));
}

TEST_F(FmMainUncheckedTest, AnotherTabHasAllFieldsChecked) {
    PutAll();
    auto& objTabs = m_objWindow.Get<QTabWidget>("SSTab1");
    for (std::size_t i = 1; i <= AllUnchecked().size(); ++i) {
        ExpectRangeBox();
        objTabs.setCurrentIndex(static_cast<int>(i % 3));
        m_objBoxes.Verify();
        ExpectPutBack(i);
    }
    objTabs.setCurrentIndex(2);
}

TEST_F(FmMainUncheckedTest, NoListOpensByAPressThatWaitedBehindTheRangeBox) {
    ReleaseWhileABoxStands();
    const std::vector<Unchecked> objTyped{
        {"SeToneAdjT", "11", "0"}, {"SeIssueCount", "0", "1"}, {"SeGateway4", "256", "0"}};
    qsizetype iLists = 0;
    for (const Unchecked& objRow : objTyped) {
        m_objWindow.BringToFront(objRow.m_strField);
        for (QComboBox* const cmb : m_objWindow.Form().findChildren<QComboBox*>()) {
            if (!cmb->isVisible()) {
                continue;
            }
            SCOPED_TRACE(cmb->objectName().toStdString());
            ++iLists;
            const int iPosition = cmb->currentIndex();
            m_objWindow.Type(objRow.m_strField, objRow.m_strText);
            ExpectRangeBox();
            QTest::mousePress(cmb, Qt::LeftButton);
            m_objBoxes.Verify();
            EXPECT_EQ(Shown(objRow.m_strField), objRow.m_strValue);
            EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
            EXPECT_TRUE(cmb->hasFocus());
            EXPECT_EQ(cmb->currentIndex(), iPosition);

            QTest::mouseClick(cmb, Qt::LeftButton);  // the next one opens it
            EXPECT_TRUE(cmb->view()->isVisible());
            cmb->hidePopup();
        }
    }
    EXPECT_EQ(iLists, m_objWindow.Form().findChildren<QComboBox*>().size() + 2)
        << "every list, that of the interfaces on each tab";
}

TEST_F(FmMainUncheckedTest, TheSecondPressOfADoubleClickThatWaitedOpensNothingEither) {
    ReleaseWhileABoxStands();
    m_objWindow.Type("SeToneAdjT", "11");
    ExpectRangeBox();
    QTest::mouseDClick(&m_objWindow.List("cmbSpeed"), Qt::LeftButton);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(FmMainUncheckedTest, TheKeyThatLeavesARefusedFieldDoesNothingMore) {
    m_objWindow.Type("SeFowardPosition", "9");
    ExpectRangeBox();
    QTest::keyClick(&m_objWindow.Field("SeFowardPosition"), Qt::Key_Tab);
    m_objBoxes.Verify();
    EXPECT_TRUE(m_objWindow.List("cmbCode").hasFocus());
    EXPECT_EQ(Shown("cmbCode"), "AUTO");
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(FmMainUncheckedTest, NoListOfTheSetupOpensByAPressThatWaitedBehindTheRangeBox) {
    ReleaseWhileABoxStands();
    const CModalAnswer objAnswer("FmInterfaceSetup", [this](QWidget& p_objDialog) {
        auto* const Se = p_objDialog.findChild<UCSpinEdit*>("SeLan1");
        // Addresses and lists are never enabled together; here they are.
        p_objDialog.findChild<QWidget*>("FrLanSetup")->setEnabled(true);
        Se->SetEnable(true);
        for (QComboBox* const cmb : p_objDialog.findChildren<QComboBox*>()) {
            SCOPED_TRACE(cmb->objectName().toStdString());
            // The dialog may not have the keyboard yet.
            ASSERT_TRUE(QTest::qWaitFor([&] {
                p_objDialog.activateWindow();
                Se->setFocus();
                return Se->hasFocus();
            }));
            Se->selectAll();
            QTest::keyClicks(Se, "256");
            ExpectRangeBox();
            QTest::mousePress(cmb, Qt::LeftButton);
            m_objBoxes.Verify();
            EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
            cmb->hidePopup();
        }
        p_objDialog.close();
    });
    m_objWindow.Click("btnSetup");
    EXPECT_TRUE(objAnswer.Done());
}

}  // namespace
