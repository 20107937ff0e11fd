#include "ui/FmAbout.h"

#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QTest>

#include <gtest/gtest.h>

namespace {

TEST(FmAboutTest, TellsNameAndVersion) {
    const FmAbout objAbout;
    EXPECT_EQ(objAbout.windowTitle(), "Varden Setting Tool");
    ASSERT_NE(objAbout.findChild<QLabel*>("lblVersion"), nullptr);
    EXPECT_EQ(objAbout.findChild<QLabel*>("lblVersion")->text(), "Version V002.003 (2.3.0)");
    ASSERT_NE(objAbout.findChild<QLabel*>("lblName"), nullptr);
    EXPECT_EQ(objAbout.findChild<QLabel*>("lblName")->text(), "Varden Setting Tool");
    EXPECT_EQ(objAbout.font().family(), "Arial");
}

TEST(FmAboutTest, TheNameStandsAboveTheVersion) {
    FmAbout objAbout;
    objAbout.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&objAbout));
    EXPECT_LT(objAbout.findChild<QLabel*>("lblName")->geometry().bottom(),
              objAbout.findChild<QLabel*>("lblVersion")->geometry().top());
}

TEST(FmAboutTest, IsWideEnoughForItsTitleBetweenAnIconAndThreeButtons) {
    FmAbout objAbout;
    objAbout.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&objAbout));
    QFont objBold = objAbout.font();
    objBold.setBold(true);
    const int iTitle = QFontMetrics(objBold).horizontalAdvance("Varden Setting Tool");
    const int iBar = objAbout.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    EXPECT_GE(objAbout.width(), iTitle + 4 * iBar);
}

TEST(FmAboutTest, OkCloses) {
    FmAbout objAbout;
    objAbout.show();
    auto* btnOk = objAbout.findChild<QPushButton*>("btnOk");
    ASSERT_NE(btnOk, nullptr);
    EXPECT_EQ(btnOk->text(), "OK");
    QTest::mouseClick(btnOk, Qt::LeftButton);
    EXPECT_FALSE(objAbout.isVisible());
    EXPECT_EQ(objAbout.result(), QDialog::Accepted);
}

TEST(FmAboutTest, ReturnAndEscCloseToo) {
    for (const auto iKey : {Qt::Key_Return, Qt::Key_Escape}) {
        FmAbout objAbout;
        objAbout.show();
        QTest::keyClick(&objAbout, iKey);
        EXPECT_FALSE(objAbout.isVisible());
    }
}

TEST(FmAboutTest, TheWindowBehindTakesNoInput) {
    QWidget objMain;
    auto* objButton = new QPushButton("behind", &objMain);
    int iClicks = 0;
    QObject::connect(objButton, &QPushButton::clicked, [&iClicks] { ++iClicks; });
    objMain.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&objMain));
    const QPoint objPlace = objButton->mapTo(&objMain, objButton->rect().center());
    {
        FmAbout objAbout(&objMain);
        objAbout.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&objAbout));
        EXPECT_TRUE(objAbout.isModal());
        QTest::mouseClick(objMain.windowHandle(), Qt::LeftButton, {}, objPlace);
        EXPECT_EQ(iClicks, 0);
    }
    QTest::mouseClick(objMain.windowHandle(), Qt::LeftButton, {}, objPlace);
    EXPECT_EQ(iClicks, 1);
}

}  // namespace
