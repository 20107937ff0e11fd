#include "tests/ui/CFormFixture.h"
#include "ui/FmAbout.h"
#include "ui/FmInterfaceSetup.h"

#include <QApplication>
#include <QGroupBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

namespace {

/// What is in sight on small screens and at large scales.
class FmMainSightTest : public CFormFixture {
protected:
    QTabWidget& Tabs() { return m_objWindow.Get<QTabWidget>("SSTab1"); }

    /// Gives the window what is left of a screen of that size beside frame and title.
    void FillScreen(QSize p_objScreen) {
        const QStyle& objStyle = *m_objWindow.Form().style();
        const int iFrame = objStyle.pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
        const int iTitle = objStyle.pixelMetric(QStyle::PM_TitleBarHeight);
        const QSize objRoom = p_objScreen - QSize(2 * iFrame, 2 * iFrame + iTitle);
        m_objWindow.Form().resize(objRoom.boundedTo(QSize(1024, 740)));
        QCoreApplication::processEvents();
    }

    /// What is seen in p_objWindow and smaller than it asks to be.
    static QStringList TooSmall(const QWidget& p_objWindow) {
        QStringList strSmall;
        for (const auto* const objControl : p_objWindow.findChildren<QWidget*>()) {
            // Parts of the toolkit's own, and what has room to scroll, look after themselves.
            const bool bShows = qobject_cast<const QLabel*>(objControl) != nullptr ||
                                qobject_cast<const QAbstractButton*>(objControl) != nullptr ||
                                qobject_cast<const QComboBox*>(objControl) != nullptr ||
                                qobject_cast<const QAbstractSpinBox*>(objControl) != nullptr ||
                                qobject_cast<const QGroupBox*>(objControl) != nullptr ||
                                qobject_cast<const QTabBar*>(objControl) != nullptr;
            const QSize objHint = objControl->sizeHint();
            if (bShows && objControl->isVisible() && !objControl->objectName().startsWith("qt_") &&
                objControl->size().expandedTo(objHint) != objControl->size()) {
                strSmall.append(objControl->metaObject()->className() + QString(" ") +
                                objControl->objectName());
            }
        }
        return strSmall;
    }

    /// Whether the person sees the left side of the control, which nothing covers.
    bool IsOnTop(const QWidget& p_objControl) {
        for (const QPoint objCorner : {p_objControl.rect().topLeft() + QPoint(2, 2),
                                       p_objControl.rect().bottomLeft() + QPoint(2, -2)}) {
            const QWidget* const objSeen =
                m_objWindow.Form().childAt(p_objControl.mapTo(&m_objWindow.Form(), objCorner));
            if (objSeen != &p_objControl && !p_objControl.isAncestorOf(objSeen)) {
                return false;
            }
        }
        return true;
    }

    /// The buttons that the tab in front shows not at all or only in part.
    QStringList HiddenButtons() {
        QStringList strHidden;
        for (const auto* const btn : Tabs().currentWidget()->findChildren<QPushButton*>()) {
            if (btn->visibleRegion().boundingRect() != btn->rect()) {
                strHidden.append(btn->objectName());
            }
        }
        return strHidden;
    }
};

TEST_F(FmMainSightTest, EverythingHasTheSizeThatItAsksFor) {
    m_objWindow.Form().resize(1024, 740);
    for (int i = 0; i < Tabs().count(); ++i) {
        Tabs().setCurrentIndex(i);
        QCoreApplication::processEvents();
        // A moment after a page has come up the toolkit is done with the sizes of its lists.
        EXPECT_TRUE(QTest::qWaitFor([&] { return TooSmall(m_objWindow.Form()).isEmpty(); }))
            << "tab " << i << ": " << TooSmall(m_objWindow.Form()).join(' ').toStdString();
    }
}

TEST_F(FmMainSightTest, EverythingInTheDialogsHasTheSizeThatItAsksFor) {
    for (const std::int16_t iInterface : {CInterface::SerialInterface, CInterface::LanInterface}) {
        FmInterfaceSetup objSetup(m_objBoxes);
        ASSERT_TRUE(objSetup.InitializeItem(m_objWindow.Form().Interface(), iInterface));
        objSetup.show();
        QCoreApplication::processEvents();
        EXPECT_EQ(TooSmall(objSetup), QStringList());
    }
    FmAbout objAbout;
    objAbout.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(TooSmall(objAbout), QStringList());
}

TEST_F(FmMainSightTest, TheButtonsOfEveryTabAreInSightAtOnceOnSmallScreens) {
    for (const QSize objScreen : {QSize(1024, 600), QSize(1920, 1080) / 2}) {
        FillScreen(objScreen);
        for (int i = 0; i < Tabs().count(); ++i) {
            Tabs().setCurrentIndex(i);
            QCoreApplication::processEvents();
            EXPECT_EQ(HiddenButtons(), QStringList()) << objScreen.height() << ", tab " << i;
        }
    }
}

TEST_F(FmMainSightTest, TheButtonsOfTheFirstTabStayWhereTheyAreWhileThePageScrolls) {
    auto* const objArea = qobject_cast<QScrollArea*>(Tabs().widget(0));
    for (const QSize objSize : {QSize(480, 320), QSize(640, 360), QSize(1024, 740)}) {
        m_objWindow.Form().resize(objSize);
        QCoreApplication::processEvents();
        const QPoint objPlace = m_objWindow.Button("btnRead").mapTo(objArea, QPoint());
        for (QScrollBar* const objBar :
             {objArea->verticalScrollBar(), objArea->horizontalScrollBar()}) {
            for (const int iValue : {objBar->maximum() / 3, objBar->maximum(), 0}) {
                objBar->setValue(iValue);
                QCoreApplication::processEvents();
                EXPECT_EQ(m_objWindow.Button("btnRead").mapTo(objArea, QPoint()), objPlace);
                EXPECT_EQ(HiddenButtons(), QStringList()) << objSize.height();
                for (const char* strName : {"btnRead", "btnSet", "btnLoad", "btnSave"}) {
                    EXPECT_TRUE(IsOnTop(m_objWindow.Button(strName))) << strName;
                }
            }
        }
    }
}

TEST_F(FmMainSightTest, NothingThatTabLeadsToStandsBehindTheButtons) {
    for (const QSize objSize : {QSize(480, 320), QSize(640, 360), QSize(1024, 740)}) {
        m_objWindow.Form().resize(objSize);
        QCoreApplication::processEvents();
        QWidget* objFocus = &m_objWindow.List("cmbFontCode");
        objFocus->setFocus();
        for (int i = 0; i < 100; ++i) {
            QTest::keyClick(objFocus, i < 50 ? Qt::Key_Tab : Qt::Key_Backtab);
            objFocus = QApplication::focusWidget();
            EXPECT_TRUE(IsOnTop(*objFocus))
                << objFocus->objectName().toStdString() << " at " << objSize.height();
        }
    }
}

TEST_F(FmMainSightTest, TheLastFieldsComeOutFromBehindTheButtons) {
    m_objWindow.Form().resize(480, 320);
    QCoreApplication::processEvents();
    auto* const objArea = qobject_cast<QScrollArea*>(Tabs().widget(0));
    objArea->verticalScrollBar()->setValue(objArea->verticalScrollBar()->maximum());
    QCoreApplication::processEvents();
    EXPECT_TRUE(IsOnTop(m_objWindow.List("cmbPeelOffTrq")));
    EXPECT_GT(m_objWindow.Button("btnRead").mapTo(objArea, QPoint()).y(),
              m_objWindow.List("cmbPeelOffTrq").mapTo(objArea, QPoint()).y());
}

TEST_F(FmMainSightTest, PageByPageNothingIsPassedOverBehindTheButtons) {
    auto* const objArea = qobject_cast<QScrollArea*>(Tabs().widget(0));
    QScrollBar& objBar = *objArea->verticalScrollBar();
    for (const QSize objSize : {QSize(480, 320), QSize(640, 360), QSize(1024, 600)}) {
        m_objWindow.Form().resize(objSize);
        QCoreApplication::processEvents();
        ASSERT_GT(objBar.maximum(), 0);
        const int iSeen = m_objWindow.Button("btnRead").mapTo(objArea, QPoint()).y();
        for (int iNext = 0; objBar.value() < objBar.maximum(); iNext += iSeen) {
            EXPECT_LE(objBar.value(), iNext) << "at " << objSize.height();
            objBar.triggerAction(QAbstractSlider::SliderPageStepAdd);
            QCoreApplication::processEvents();
        }
        objBar.setValue(0);
    }
}

TEST_F(FmMainSightTest, WhereThereIsRoomTheButtonsStandRightBelowTheFrames) {
    m_objWindow.Form().resize(1600, 1200);
    QCoreApplication::processEvents();
    const auto& Fr = m_objWindow.Get<QWidget>("FrParameter");
    const int iGap = m_objWindow.Button("btnRead").mapTo(&m_objWindow.Form(), QPoint()).y() -
                     Fr.mapTo(&m_objWindow.Form(), Fr.rect().bottomLeft()).y();
    EXPECT_GT(iGap, 0);
    EXPECT_LT(iGap, 20);
}

}  // namespace
