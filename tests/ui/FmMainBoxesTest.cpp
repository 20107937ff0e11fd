#include "platform/widgets/CQtPlatform.h"
#include "tests/platform_qt/CRefusedPort.h"
#include "tests/simulator/CSimulatorProcess.h"
#include "tests/ui/CMainWindow.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr int Lan = 1;

struct Box {
    QString m_strText;
    QString m_strTitle;
    QMessageBox::Icon m_iIcon;

    bool operator==(const Box&) const = default;

    friend std::ostream& operator<<(std::ostream& p_objStream, const Box& p_objBox) {
        return p_objStream << p_objBox.m_strTitle.toStdString() << ": "
                           << p_objBox.m_strText.toStdString() << ", icon " << p_objBox.m_iIcon;
    }
};

/// The window with nothing scripted; whoever sits there presses Return on every box.
class FmMainBoxesTest : public ::testing::Test {
protected:
    FmMainBoxesTest() {
        QObject::connect(&m_objPerson, &QTimer::timeout, [this] { Answer(); });
        m_objPerson.start(10);
    }

    void SetUp() override {
        ASSERT_TRUE(m_objWindow.Open());
        m_objWindow.Choose("cmbInterface", Lan);
    }

    void Answer() {
        auto* const objBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (objBox == nullptr || !objBox->isVisible()) {
            return;
        }
        EXPECT_EQ(objBox->standardButtons(), QMessageBox::Ok);
        EXPECT_EQ(objBox->parentWidget(), &m_objWindow.Form());
        m_objBoxes.push_back({objBox->text(), objBox->windowTitle(), objBox->icon()});
        QTest::keyClick(objBox, Qt::Key_Return);
    }

    CQtPlatform m_objPlatform;
    CMainWindow m_objWindow{m_objPlatform.Interfaces()};
    std::vector<Box> m_objBoxes;

private:
    QTimer m_objPerson;
};

TEST_F(FmMainBoxesTest, ASendErrorShowsTheExclamation) {
    m_objWindow.Click("btnRead");
    EXPECT_EQ(m_objBoxes, (std::vector<Box>{{"'LAN' Send Error !!", "Varden Setting Tool",
                                             QMessageBox::Warning}}));
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_F(FmMainBoxesTest, AFailedConnectShowsTheErrorThenTheOpenError) {
    const CRefusedPort objPort;
    m_objWindow.Form().Interface().m_objSocketPort->SetValue(objPort.Number());
    EXPECT_TRUE(m_objWindow.SetUp("127.0.0.1"));
    EXPECT_EQ(m_objBoxes,
              (std::vector<Box>{
                  {"Number=111  Connection refused\nScode=0\nSource=\nHelpFile=\nHelpContext=0\n"
                   "CancelDisplay=False",
                   "Varden Setting Tool", QMessageBox::NoIcon},
                  {"'LAN' Open Error !!", "Varden Setting Tool", QMessageBox::Critical}}));
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_F(FmMainBoxesTest, ASilentPrinterShowsTheTimeOutTitledFailure) {
    CSimulatorProcess objPrinter;
    ASSERT_TRUE(objPrinter.Start({"--silent"}));
    m_objWindow.Form().Interface().m_objSocketPort->SetValue(objPrinter.Port());
    EXPECT_TRUE(m_objWindow.SetUp("127.0.0.1"));
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(m_objBoxes,
              (std::vector<Box>{{"Device Time Out !!", "Failure", QMessageBox::Critical}}));
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_F(FmMainBoxesTest, ATextOutsideTheRangeShowsNoIcon) {
    m_objWindow.Type("SeToneAdjT", "11");
    QTest::keyClick(&m_objWindow.Field("SeToneAdjT"), Qt::Key_Tab);
    EXPECT_EQ(m_objBoxes, (std::vector<Box>{{"It is a value that exceeds the useful range. ",
                                             "Varden Setting Tool", QMessageBox::NoIcon}}));
    EXPECT_EQ(m_objWindow.Shown("SeToneAdjT"), "0");
}

}  // namespace
