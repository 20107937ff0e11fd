#include "tests/golden/MGolden.h"
#include "tests/ui/CModalAnswer.h"
#include "tests/ui/CUsbWindowFixture.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// What the window does with a printer on USB that behaves, in the time that it takes.

namespace {

using Texts = std::vector<std::string>;

const std::string StatusAnswer = "<01><02>000000000<03><04>";

class FmMainUsbTest : public CUsbWindowFixture {
protected:
    FmMainUsbTest()
        : CUsbWindowFixture(Pace::Real) {
        m_objTime.start();
    }

    QElapsedTimer m_objTime;
};

TEST_F(FmMainUsbTest, ReadFillsThePageInItsPausesAndGivesThePrinterBack) {
    TeachPrinter();
    CEmulatedPrinter& objDevice = Plug();
    m_objTime.restart();
    Press("btnRead");
    EXPECT_GE(m_objTime.elapsed(), 2950);
    EXPECT_EQ(Taken(), "{Z5;0|}{Z5;1|}{Z5;4|}");
    EXPECT_EQ(
        Answers(),
        (Texts{"<02>0" + MGolden::All(MGolden::Answer(0), &MGolden::Item::m_strOther),
               "<02>0" + MGolden::With(MGolden::All(MGolden::Answer(1), &MGolden::Item::m_strOther),
                                       {{"PrintPosCorrectionDirection", "+"},
                                        {"PrintPosCorrectionValue", "000"},
                                        {"Country", "0"}}),
               "<02>0" + MGolden::With(MGolden::All(MGolden::Answer(4), &MGolden::Item::m_strOther),
                                       {{"KeyboardIF", "0"}})}));
    MTaughtPrinter::ExpectPage(m_objWindow);
    EXPECT_FALSE(objDevice.IsClaimed());
    EXPECT_TRUE(objDevice.HasDriver());
    ExpectBeeps(0);
}

TEST_F(FmMainUsbTest, SetSendsBothCommandsWithoutAPause) {
    Plug();
    m_objWindow.Type("SeFeedAdj", "12.3");
    m_objTime.restart();
    Press("btnSet");
    EXPECT_LT(m_objTime.elapsed(), 2000);
    EXPECT_EQ(Taken(), MGolden::Parameters +
                           MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", "123"}}));
    EXPECT_EQ(Answers(), (Texts{StatusAnswer, StatusAnswer}));
    EXPECT_EQ(Shown("lblStatus"), "ON LINE");
    EXPECT_TRUE(m_objPrinter.SettingsAnswer(0).starts_with("{0+123+000+00"));
}

TEST_F(FmMainUsbTest, LanSetAndLanReadGoOverUsbToo) {
    Plug();
    m_objWindow.Type("SeIpAddress4", "77");
    m_objWindow.Type("txtDhcpName", "label printer 01");
    QStringList strDisabled{"not looked at"};
    QTimer::singleShot(0, [&] { strDisabled = m_objWindow.DisabledButtons(); });
    Press("btnLanSet");
    EXPECT_EQ(strDisabled, QStringList("btnSetup"));  // as it was: LAN SET switches none
    EXPECT_EQ(Taken(), MGolden::With(MGolden::IpAddress, {{"IpAddress4", "077"}}) +
                           MGolden::Gateway + MGolden::SubnetMask + MGolden::SocketPort +
                           MGolden::With(MGolden::Dhcp, {{"DhcpClientHost", "label printer 01"}}));
    m_objPrinter.Handle("{IP;2,192,168,010,078|}");  // by somebody else
    m_objTime.restart();
    Press("btnLanRead");
    EXPECT_GE(m_objTime.elapsed(), 950);
    EXPECT_EQ(Taken(), "{Z5;3|}");
    EXPECT_EQ(Answers().back(), "<02>0" + MGolden::With(MGolden::Answer(3),
                                                        {{"IpAddress4", "078"},
                                                         {"DhcpClientHost", "label printer 01"}}));
    EXPECT_EQ(Shown("SeIpAddress4"), "78");
    EXPECT_EQ(Shown("txtDhcpName"), "label printer 01");
}

// The library lets the buttons work while it opens, sends and receives.
TEST_F(FmMainUsbTest, WhateverIsPressedInsideOfLanSetAllFiveAreSentOnceAndInTheirOrder) {
    const std::string strLanSet = UsbAction::All()[2].Wire();
    CFaultSettings objFaults;
    objFaults.m_iDelay = std::chrono::milliseconds(10);
    CUsbBehaviour objBehaviour;
    objBehaviour.m_iSlow = std::chrono::milliseconds(5);
    objBehaviour.m_iMostTaken = 10;
    Plug(objBehaviour, objFaults);
    int iInside = 0;
    for (int iTurns = 1; iTurns <= 40; iTurns += 3) {
        SCOPED_TRACE(iTurns);
        int iTurn = 0;
        bool bRuns = true;
        QTimer objTurns;  // one in each turn of the event loop
        objTurns.callOnTimeout([&] {
            if (++iTurn == iTurns) {
                objTurns.stop();
                m_objWindow.Click("btnGetStatus");
                iInside += bRuns ? 1 : 0;
            }
        });
        objTurns.start(0);
        Press("btnLanSet");
        bRuns = false;
        objTurns.stop();
        std::string strTaken = Taken();
        if (iTurn >= iTurns) {
            const std::size_t iStatus = strTaken.find("{WS|}");
            ASSERT_NE(iStatus, std::string::npos);
            strTaken.erase(iStatus, 5);
        }
        ASSERT_EQ(strTaken, strLanSet);
    }
    EXPECT_GE(iInside, 7);
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

TEST_F(FmMainUsbTest, AHeadCheckTakesFiveSecondsAndIsNoStatus) {
    m_objPrinter.SetStatus("14");
    Plug();
    Press("btnGetStatus");
    EXPECT_EQ(Shown("lblStatus"), "NO RIBBON");
    EXPECT_EQ(Shown("lblHeadCheck"), "");
    QStringList strDisabled;
    QTimer::singleShot(3000, [&] { strDisabled = m_objWindow.DisabledButtons(); });
    m_objTime.restart();
    Press("btnHeadCheck");
    EXPECT_GE(m_objTime.elapsed(), 4950);
    EXPECT_EQ(strDisabled, CMainWindow::ActionButtons());
    EXPECT_EQ(Shown("lblHeadCheck"), "NO RIBBON");
    EXPECT_EQ(Shown("lblStatus"), "");
    EXPECT_EQ(Taken(), "{WS|}{HD001,A|}{WS|}");
    Press("btnGetStatus");
    EXPECT_EQ(Shown("lblStatus"), "NO RIBBON");
}

TEST_F(FmMainUsbTest, ASensorAdjustmentHoldsTheButtonsForASecond) {
    Plug();
    QStringList strDisabled;
    QTimer::singleShot(700, [&] { strDisabled = m_objWindow.DisabledButtons(); });
    m_objTime.restart();
    Press("btnPaperEnd");
    EXPECT_GE(m_objTime.elapsed(), 950);
    EXPECT_EQ(strDisabled, CMainWindow::ActionButtons());
    EXPECT_EQ(Taken(), "{Z6;01|}{Z6;11|}");
}

// The toolkit's own boxes in place of the scripted ones: nothing of the platform is a double.
TEST_F(FmMainUsbTest, APersonIsToldOfAPrinterThatIsNotThere) {
    CMainWindow objWindow(m_objPlatform.Interfaces());
    ASSERT_TRUE(objWindow.Open());
    objWindow.Choose("cmbInterface", 2);
    QString strText;
    const CModalAnswer objAnswer("QMessageBox", [&](QWidget& p_objBox) {
        strText = qobject_cast<QMessageBox*>(&p_objBox)->text();
        QTest::keyClick(&p_objBox, Qt::Key_Return);
    });
    objWindow.Click("btnRead");
    EXPECT_TRUE(objAnswer.Done());
    EXPECT_EQ(strText, "USB Device not ready !!");
    EXPECT_EQ(objWindow.DisabledButtons(), QStringList());
}

}  // namespace
