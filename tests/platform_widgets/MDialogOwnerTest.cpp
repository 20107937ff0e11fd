#include "platform/widgets/MDialogOwner.h"

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

void Show(QWidget& p_objWindow) {
    p_objWindow.show();
    p_objWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&p_objWindow));
}

TEST(MDialogOwnerTest, IsNobodyWithoutAWindow) {
    EXPECT_EQ(MDialogOwner::Find(), nullptr);
    const QWidget objHidden;
    EXPECT_EQ(MDialogOwner::Find(), nullptr);
}

TEST(MDialogOwnerTest, IsTheWindowWithTheKeyboard) {
    QWidget objFirst;
    QWidget objSecond;
    Show(objFirst);
    Show(objSecond);
    EXPECT_EQ(MDialogOwner::Find(), &objSecond);
    Show(objFirst);
    EXPECT_EQ(MDialogOwner::Find(), &objFirst);
}

TEST(MDialogOwnerTest, IsTheDialogInFront) {
    QWidget objWindow;
    Show(objWindow);
    QDialog objDialog(&objWindow);
    objDialog.setModal(true);
    Show(objDialog);
    EXPECT_EQ(MDialogOwner::Find(), &objDialog);
    QDialog objBox(&objDialog);
    objBox.setModal(true);
    Show(objBox);
    EXPECT_EQ(MDialogOwner::Find(), &objBox);
}

TEST(MDialogOwnerTest, IsNoDialogThatHasJustBeenClosed) {
    QWidget objWindow;
    Show(objWindow);
    QDialog objDialog(&objWindow);
    Show(objDialog);
    objDialog.hide();
    QApplication::setActiveWindow(&objDialog);  // as until the system has noticed
    ASSERT_EQ(QApplication::activeWindow(), &objDialog);
    EXPECT_EQ(MDialogOwner::Find(), &objWindow);
}

TEST(MDialogOwnerTest, IsTheWindowThatShowsWhenNoneHasTheKeyboard) {
    const QWidget objHidden;
    QWidget objWindow;
    Show(objWindow);
    {
        QDialog objDialog(&objWindow);
        Show(objDialog);
    }  // leaves the keyboard with nobody here
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeWindow() == nullptr; }));
    EXPECT_EQ(MDialogOwner::Find(), &objWindow);
}

}  // namespace
