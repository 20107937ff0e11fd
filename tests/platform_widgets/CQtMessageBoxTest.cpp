#include "platform/widgets/CQtMessageBox.h"

#include "platform/qt/CQtEventLoop.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>

namespace {

class CQtMessageBoxTest : public ::testing::Test {
protected:
    /// Shows a box and calls p_fnLook while it stands; a box that does not come fails the test.
    void Show(const std::function<void(QMessageBox&)>& p_fnLook, const std::string& p_strText,
              MessageIcon p_iIcon = MessageIcon::None,
              const std::string& p_strTitle = IMessageBox::ProgramTitle) {
        bool bCame = false;
        QTimer::singleShot(0, [&] {
            auto* const objBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(objBox, nullptr);
            bCame = true;
            p_fnLook(*objBox);
            QTest::mouseClick(objBox->button(QMessageBox::Ok), Qt::LeftButton);
        });
        m_objMessageBox.Show(p_strText, p_iIcon, p_strTitle);
        EXPECT_TRUE(bCame);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }

    CQtEventLoop m_objEventLoop;
    CQtMessageBox m_objMessageBox{m_objEventLoop};
};

TEST_F(CQtMessageBoxTest, HasTheTextAndOneOkButton) {
    Show(
        [](QMessageBox& p_objBox) {
            EXPECT_EQ(p_objBox.text(), QStringLiteral("'LAN' Send Error !!"));
            EXPECT_EQ(p_objBox.standardButtons(), QMessageBox::Ok);
            EXPECT_EQ(p_objBox.buttons().size(), 1);
        },
        "'LAN' Send Error !!");
}

TEST_F(CQtMessageBoxTest, ShowsItsTextAsItStands) {
    Show(
        [](QMessageBox& p_objBox) {
            EXPECT_EQ(p_objBox.text(), QStringLiteral("<b>&amp;</b> 1 < 2 \u00E9"));
            EXPECT_EQ(p_objBox.textFormat(), Qt::PlainText);
        },
        "<b>&amp;</b> 1 < 2 \xE9");
}

TEST_F(CQtMessageBoxTest, BreaksLinesWhereItIsTold) {
    Show(
        [](QMessageBox& p_objBox) {
            EXPECT_EQ(p_objBox.text(), QStringLiteral("Number=111  why\nScode=0\n\nSource="));
        },
        "Number=111  why\r\nScode=0\r\n\r\nSource=");
}

TEST_F(CQtMessageBoxTest, HasTheTitleItIsGivenOrTheProgramsOwn) {
    Show(
        [](QMessageBox& p_objBox) { EXPECT_EQ(p_objBox.windowTitle(), QStringLiteral("Failure")); },
        "text", MessageIcon::Critical, "Failure");
    QTimer::singleShot(0, [] {
        QWidget* const objBox = QApplication::activeModalWidget();
        ASSERT_NE(objBox, nullptr);
        EXPECT_EQ(objBox->windowTitle(), QStringLiteral("Varden Setting Tool"));
        QTest::keyClick(objBox, Qt::Key_Return);
    });
    m_objMessageBox.Show("text", MessageIcon::None);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

struct IconCase {
    MessageIcon m_iIcon;
    QMessageBox::Icon m_iShown;
};

void PrintTo(const IconCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << static_cast<int>(p_objCase.m_iIcon);
}

class CQtMessageBoxIconTest : public CQtMessageBoxTest,
                              public ::testing::WithParamInterface<IconCase> {};

TEST_P(CQtMessageBoxIconTest, HasItsPicture) {
    Show([](QMessageBox& p_objBox) { EXPECT_EQ(p_objBox.icon(), GetParam().m_iShown); }, "text",
         GetParam().m_iIcon);
}

INSTANTIATE_TEST_SUITE_P(, CQtMessageBoxIconTest,
                         ::testing::Values(IconCase{MessageIcon::None, QMessageBox::NoIcon},
                                           IconCase{MessageIcon::Exclamation, QMessageBox::Warning},
                                           IconCase{MessageIcon::Critical, QMessageBox::Critical}));

TEST_F(CQtMessageBoxTest, BelongsToTheWindow) {
    QWidget objWindow;
    objWindow.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&objWindow));
    Show([&](QMessageBox& p_objBox) { EXPECT_EQ(p_objBox.parentWidget(), &objWindow); }, "text");
}

TEST_F(CQtMessageBoxTest, BelongsToTheDialogInFront) {
    QWidget objWindow;
    objWindow.show();
    QDialog objDialog(&objWindow);
    objDialog.setModal(true);
    objDialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&objDialog));
    bool bCame = false;
    QTimer::singleShot(0, [&] {
        QWidget* const objBox = QApplication::activeModalWidget();
        ASSERT_NE(qobject_cast<QMessageBox*>(objBox), nullptr);
        EXPECT_EQ(objBox->parentWidget(), &objDialog);
        bCame = true;
        QTest::keyClick(objBox, Qt::Key_Return);
    });
    m_objMessageBox.Show("text", MessageIcon::None);
    EXPECT_TRUE(bCame);
}

TEST_F(CQtMessageBoxTest, EventsGoOnWhileItStands) {
    int iEvents = 0;
    QTimer objTimer;
    QObject::connect(&objTimer, &QTimer::timeout, [&] { ++iEvents; });
    objTimer.start(1);
    Show(
        [&](QMessageBox& /*p_objBox*/) {
            EXPECT_TRUE(QTest::qWaitFor([&] { return iEvents > 2; }));
        },
        "text");
}

TEST_F(CQtMessageBoxTest, DoesNotAppearOnceTheProgramCloses) {
    m_objEventLoop.RequestClose();
    bool bReturned = false;
    QTimer::singleShot(0, [&] {
        // Reached from inside the box's own event loop if one had come up after all.
        if (QWidget* const objBox = QApplication::activeModalWidget()) {
            ADD_FAILURE() << "a box appeared";
            objBox->close();
        }
        EXPECT_TRUE(bReturned);
    });
    m_objMessageBox.Show("text", MessageIcon::Critical);
    bReturned = true;
    QCoreApplication::processEvents();
}

}  // namespace
