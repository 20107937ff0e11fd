#include "tests/ui/CFormFixture.h"
#include "tests/ui/MGoldenPage.h"

#include <QApplication>
#include <QGroupBox>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <vector>

namespace {

constexpr QSize LargestStart(1024, 740);
constexpr QSize Small(480, 320);

class FmMainLayoutTest : public CFormFixture {
protected:
    QTabWidget& Tabs() { return m_objWindow.Get<QTabWidget>("SSTab1"); }

    void Resize(QSize p_objSize) {
        m_objWindow.Form().resize(p_objSize);
        QCoreApplication::processEvents();
    }

    /// The fields and buttons of the tab in front that can take the focus.
    std::vector<QWidget*> Stops() {
        std::vector<QWidget*> objStops;
        for (auto* const objControl : Tabs().currentWidget()->findChildren<QWidget*>()) {
            const bool bNamed = !objControl->objectName().startsWith("qt_") &&
                                (qobject_cast<QComboBox*>(objControl) != nullptr ||
                                 qobject_cast<UCSpinEdit*>(objControl) != nullptr ||
                                 qobject_cast<QPushButton*>(objControl) != nullptr ||
                                 objControl->objectName().startsWith("txt"));
            if (bNamed && objControl->isEnabled()) {
                objStops.push_back(objControl);
            }
        }
        return objStops;
    }

    /// The names of what the tab in front shows smaller than it has to be, or of the tab itself
    /// when it shows nothing.
    QStringList CutOff() {
        QStringList strNames;
        bool bShowsAny = false;
        for (const auto* const objControl : Tabs().currentWidget()->findChildren<QWidget*>()) {
            const bool bShows = qobject_cast<const QLabel*>(objControl) != nullptr ||
                                qobject_cast<const QComboBox*>(objControl) != nullptr ||
                                qobject_cast<const UCSpinEdit*>(objControl) != nullptr ||
                                qobject_cast<const QPushButton*>(objControl) != nullptr;
            if (!bShows || !objControl->isVisible()) {
                continue;
            }
            bShowsAny = true;
            const QSize objLeast = objControl->minimumSizeHint();
            if (objControl->size().expandedTo(objLeast) != objControl->size()) {
                strNames.append(objControl->objectName());
            }
        }
        return bShowsAny ? strNames : QStringList("everything");
    }

    void ExpectNothingToBeCutOff() {
        for (int i = 0; i < Tabs().count(); ++i) {
            Tabs().setCurrentIndex(i);
            QCoreApplication::processEvents();
            // A moment after a list has been filled the toolkit gives it the size of its entries,
            // and only with the next events the page's layout gives it its own again.
            EXPECT_TRUE(QTest::qWaitFor([&] { return CutOff().isEmpty(); }))
                << CutOff().join(' ').toStdString() << " at " << m_objWindow.Form().width();
        }
    }

    /// Scrolls to each field and button of the tab in front, and expects to see all of it.
    void ExpectScrollingToShowEverything() {
        auto* const objArea = qobject_cast<QScrollArea*>(Tabs().currentWidget());
        for (const QWidget* const objControl : Stops()) {
            const QPoint objPlace =
                objControl->mapTo(objArea->widget(), objControl->rect().center());
            objArea->ensureVisible(objPlace.x(), objPlace.y(), objControl->width() / 2 + 1,
                                   objControl->height() / 2 + 1);
            EXPECT_EQ(objControl->visibleRegion().boundingRect(), objControl->rect())
                << objControl->objectName().toStdString();
        }
    }

    /// Where Tab goes, once around, from the interface list on.
    std::vector<QWidget*> Walk() {
        std::vector<QWidget*> objStops;
        m_objWindow.List("cmbInterface").setFocus();
        constexpr std::size_t iMost = 200;
        do {
            objStops.push_back(QApplication::focusWidget());
            QTest::keyClick(objStops.back(), Qt::Key_Tab);
        } while (QApplication::focusWidget() != objStops.front() && objStops.size() < iMost);
        return objStops;
    }

    /// Whether the second one is read after the first: right of it in a line, or further down.
    bool IsReadAfter(const QWidget& p_objFirst, const QWidget& p_objSecond) {
        const auto Place = [this](const QWidget& p_objControl) {
            return p_objControl.mapTo(&m_objWindow.Form(), p_objControl.rect().center());
        };
        const QPoint objFirst = Place(p_objFirst);
        const QPoint objSecond = Place(p_objSecond);
        const bool bSameLine = std::abs(objFirst.y() - objSecond.y()) < p_objFirst.height() / 2;
        return bSameLine ? objFirst.x() < objSecond.x() : objFirst.y() < objSecond.y();
    }

    static void Turn(QWidget& p_objControl) {
        const QPointF objPoint = p_objControl.rect().center();
        QWheelEvent objEvent(objPoint, p_objControl.mapToGlobal(objPoint), {}, {0, -120},
                             Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&objEvent);  // as a real one, parents hear it too
        qApp->notify(&p_objControl, &objEvent);
    }
};

QGroupBox* FrameOf(const QWidget& p_objControl) {
    QWidget* objParent = p_objControl.parentWidget();
    while (objParent != nullptr && qobject_cast<QGroupBox*>(objParent) == nullptr) {
        objParent = objParent->parentWidget();
    }
    return qobject_cast<QGroupBox*>(objParent);
}

QRect PlaceIn(const QWidget& p_objFrame, const QWidget& p_objControl) {
    return {p_objControl.mapTo(&p_objFrame, QPoint()), p_objControl.size()};
}

/// Where the first line of the label stands whose text begins so.
QRect FirstLineIn(const QWidget& p_objFrame, const QString& p_strBeginning) {
    for (const auto* const lbl : p_objFrame.findChildren<QLabel*>()) {
        if (lbl->text().startsWith(p_strBeginning)) {
            QRect objLine = lbl->contentsRect().translated(lbl->mapTo(&p_objFrame, QPoint()));
            objLine.setHeight(lbl->fontMetrics().height());
            return objLine;
        }
    }
    return {};
}

TEST_F(FmMainLayoutTest, OpensNoLargerThanItMayAndThanTheScreen) {
    const QSize objSize = m_objWindow.Form().size();
    EXPECT_LE(objSize.width(), LargestStart.width());
    EXPECT_LE(objSize.height(), LargestStart.height());
    constexpr int iTitle = 16;  // there is a title bar above it
    const QSize objScreen = m_objWindow.Form().screen()->availableSize();
    EXPECT_LE(objSize.width(), objScreen.width());
    EXPECT_LE(objSize.height(), objScreen.height() - iTitle);
}

TEST_F(FmMainLayoutTest, TheInterfaceFrameAndTheStatusLineStandAboveTheTabs) {
    const int iTop = PlaceIn(m_objWindow.Form(), Tabs()).top();
    for (const char* strName : {"FrInterface", "btnGetStatus", "lblStatus"}) {
        const auto& objControl = m_objWindow.Get<QWidget>(strName);
        EXPECT_TRUE(objControl.isVisible()) << strName;
        EXPECT_LT(PlaceIn(m_objWindow.Form(), objControl).bottom(), iTop) << strName;
    }
}

TEST_F(FmMainLayoutTest, GetStatusAndItsLabelStandOnOneLineWithSetup) {
    for (const QSize objSize : {Small, LargestStart, QSize(1600, 1200)}) {
        Resize(objSize);
        const QRect objSetup = PlaceIn(m_objWindow.Form(), m_objWindow.Button("btnSetup"));
        for (const char* strName : {"btnGetStatus", "lblStatus"}) {
            const QRect objPlace = PlaceIn(m_objWindow.Form(), m_objWindow.Get<QWidget>(strName));
            EXPECT_EQ(objPlace.top(), objSetup.top()) << strName;
            EXPECT_EQ(objPlace.bottom(), objSetup.bottom()) << strName;
        }
    }
}

TEST_F(FmMainLayoutTest, TheRowsOfParameterAndAdjustmentHaveOnePitchAndTheirFieldsOneHeight) {
    std::vector<std::vector<const char*>> strColumns(3);
    std::size_t iParameters = 0;
    for (const MGoldenPage::Control& objControl : MGoldenPage::Parameter()) {
        if (objControl.m_strFrame == std::string("FrAdjustment")) {
            strColumns[2].push_back(objControl.m_strName);
        } else if (objControl.m_strLabel != nullptr) {  // the codes stand behind a list
            strColumns[iParameters++ % 2].push_back(objControl.m_strName);
        }
    }
    for (const QSize objSize : {Small, LargestStart, QSize(1600, 1200)}) {
        Resize(objSize);
        const QRect objFirst = PlaceIn(m_objWindow.Form(), m_objWindow.List("cmbFontCode"));
        const int iPitch =
            PlaceIn(m_objWindow.Form(), m_objWindow.List("cmbSpeed")).top() - objFirst.top();
        EXPECT_GT(iPitch, objFirst.height());
        for (const auto& strColumn : strColumns) {
            int iTop = objFirst.top();
            for (const char* const strName : strColumn) {
                const QRect objPlace =
                    PlaceIn(m_objWindow.Form(), m_objWindow.Get<QWidget>(strName));
                EXPECT_EQ(objPlace.top(), iTop) << strName;
                EXPECT_EQ(objPlace.height(), objFirst.height()) << strName;
                iTop += iPitch;
            }
        }
        for (const char* const strName : {"SeCode1", "SeCode2", "SeCode3"}) {
            EXPECT_EQ(PlaceIn(m_objWindow.Form(), m_objWindow.Field(strName)).top(),
                      PlaceIn(m_objWindow.Form(), m_objWindow.List("cmbCode")).top())
                << strName;
        }
    }
}

TEST_F(FmMainLayoutTest, TheStartSizeHasRoomForEveryTab) {
    Resize(LargestStart);
    for (int i = 0; i < Tabs().count(); ++i) {
        Tabs().setCurrentIndex(i);
        QCoreApplication::processEvents();
        const auto* const objArea = qobject_cast<QScrollArea*>(Tabs().widget(i));
        ASSERT_NE(objArea, nullptr);
        EXPECT_FALSE(objArea->horizontalScrollBar()->isVisible()) << i;
        EXPECT_FALSE(objArea->verticalScrollBar()->isVisible()) << i;
    }
}

TEST_F(FmMainLayoutTest, CanBeMadeLarger) {
    const QSize objLarge(1600, 1200);
    Resize(objLarge);
    EXPECT_EQ(m_objWindow.Form().size(), objLarge);
    EXPECT_GT(Tabs().width(), LargestStart.width());
    EXPECT_GT(Tabs().height(), LargestStart.height());
}

TEST_F(FmMainLayoutTest, ScrollsWhenItIsSmall) {
    Resize(Small);
    EXPECT_EQ(m_objWindow.Form().size(), Small);
    for (int i = 0; i < Tabs().count(); ++i) {
        Tabs().setCurrentIndex(i);
        QCoreApplication::processEvents();
        auto* const objArea = qobject_cast<QScrollArea*>(Tabs().widget(i));
        EXPECT_TRUE(objArea->verticalScrollBar()->isVisible()) << i;
        ExpectScrollingToShowEverything();
    }
}

TEST_F(FmMainLayoutTest, CutsNothingOffAtAnySize) {
    for (const QSize objSize : {Small, QSize(800, 600), LargestStart, QSize(1600, 1200)}) {
        Resize(objSize);
        ExpectNothingToBeCutOff();
    }
}

TEST_F(FmMainLayoutTest, TheStepsOfTheSensorAdjustmentStandOneUnderTheOther) {
    struct Step {
        const char* m_strButton;
        QString m_strCaption;
        QString m_strText;  ///< what its text begins with
    };
    m_objWindow.BringToFront("FrSensorAdjust");
    QCoreApplication::processEvents();
    const auto& Fr = m_objWindow.Get<QGroupBox>("FrSensorAdjust");
    int iBottom = 0;
    int iLeft = -1;
    for (const Step& objStep :
         {Step{"btnReflect", "REFLECT", "Step1."}, Step{"btnTrans", "TRANS", "Step2."},
          Step{"btnPaperEnd", "PAPER END", "Step3."}}) {
        SCOPED_TRACE(objStep.m_strButton);
        const QRect objButton = PlaceIn(Fr, m_objWindow.Button(objStep.m_strButton));
        const QRect objCaption = FirstLineIn(Fr, objStep.m_strCaption);
        const QRect objText = FirstLineIn(Fr, objStep.m_strText);
        for (const QRect& objLine : {objCaption, objText}) {
            ASSERT_TRUE(objLine.isValid());
            EXPECT_GE(objLine.top(), objButton.top());
            EXPECT_LE(objLine.bottom(), objButton.bottom());
        }
        EXPECT_LT(objCaption.right(), objText.left());
        EXPECT_LT(objText.right(), objButton.left());
        EXPECT_GT(std::min(objButton.top(), objText.top()), iBottom) << "the step before is above";
        EXPECT_TRUE(iLeft == -1 || iLeft == objText.left());
        iBottom = std::max(objButton.bottom(), objText.bottom());
        iLeft = objText.left();
    }
}

TEST_F(FmMainLayoutTest, TabGoesInReadingOrderAndLeavesNothingOut) {
    Resize(LargestStart);
    m_objWindow.Choose("cmbCode", 3);  // its three fields belong to the order
    for (int i = 0; i < Tabs().count(); ++i) {
        Tabs().setCurrentIndex(i);
        QCoreApplication::processEvents();
        const std::vector<QWidget*> objWalk = Walk();
        const QWidget* objLast = nullptr;
        for (const QWidget* const objStop : objWalk) {
            EXPECT_FALSE(objStop->objectName().isEmpty())
                << "stops at a " << objStop->metaObject()->className();
            if (objLast != nullptr && FrameOf(*objLast) == FrameOf(*objStop)) {
                EXPECT_TRUE(IsReadAfter(*objLast, *objStop))
                    << objLast->objectName().toStdString() << " before "
                    << objStop->objectName().toStdString();
            }
            objLast = objStop;
        }
        for (const QWidget* const objStop : Stops()) {
            EXPECT_EQ(std::count(objWalk.begin(), objWalk.end(), objStop), 1)
                << objStop->objectName().toStdString();
        }
        for (const char* strName : {"cmbInterface", "btnSetup", "btnGetStatus"}) {
            EXPECT_EQ(
                std::count(objWalk.begin(), objWalk.end(), &m_objWindow.Get<QWidget>(strName)), 1)
                << strName;
        }
    }
}

TEST_F(FmMainLayoutTest, TabLeavesAFrameOnlyWhenItIsDone) {
    Resize(LargestStart);
    for (int i = 0; i < Tabs().count(); ++i) {
        Tabs().setCurrentIndex(i);
        QCoreApplication::processEvents();
        std::vector<const QGroupBox*> objFrames;
        for (const QWidget* const objStop : Walk()) {
            if (objFrames.empty() || objFrames.back() != FrameOf(*objStop)) {
                objFrames.push_back(FrameOf(*objStop));
            }
        }
        for (const QGroupBox* const Fr : objFrames) {
            if (Fr != nullptr) {
                EXPECT_EQ(std::count(objFrames.begin(), objFrames.end(), Fr), 1)
                    << Fr->objectName().toStdString();
            }
        }
    }
}

TEST_F(FmMainLayoutTest, TheWheelOverAFieldWithoutTheFocusChangesNothing) {
    m_objWindow.Choose("cmbCode", 3);
    const auto strBefore = m_objWindow.ShownFields();
    m_objWindow.Button("btnRead").setFocus();
    for (const auto& [strName, strValue] : strBefore) {
        Turn(m_objWindow.Get<QWidget>(strName));
    }
    Turn(m_objWindow.List("cmbInterface"));
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    EXPECT_EQ(Shown("cmbInterface"), "COM");
    EXPECT_TRUE(m_objWindow.Button("btnRead").hasFocus());
}

TEST_F(FmMainLayoutTest, TheWheelOverTheFieldWithTheFocusTurnsIt) {
    m_objWindow.List("cmbSpeed").setFocus();
    Turn(m_objWindow.List("cmbSpeed"));
    EXPECT_EQ(Shown("cmbSpeed"), "19200bps");
    m_objWindow.Field("SeFeedAdj").setFocus();
    Turn(m_objWindow.Field("SeFeedAdj"));
    EXPECT_EQ(Shown("SeFeedAdj"), "-0.1");
}

TEST_F(FmMainLayoutTest, TheWheelOverAFieldWithoutTheFocusScrollsThePage) {
    Resize(Small);
    auto* const objArea = qobject_cast<QScrollArea*>(Tabs().widget(0));
    ASSERT_EQ(objArea->verticalScrollBar()->value(), 0);
    Turn(m_objWindow.List("cmbFontCode"));
    const int iAfterList = objArea->verticalScrollBar()->value();
    EXPECT_GT(iAfterList, 0);
    Turn(m_objWindow.Field("SeFowardPosition"));
    EXPECT_GT(objArea->verticalScrollBar()->value(), iAfterList);
}

/// These run at 150 % only.
class FmMainLayoutTestScaled : public FmMainLayoutTest {
protected:
    static constexpr double Scale = 1.5;

    void SetUp() override {
        FmMainLayoutTest::SetUp();
        ASSERT_EQ(m_objWindow.Form().devicePixelRatio(), Scale);
    }
};

TEST_F(FmMainLayoutTestScaled, TheSamePixelsShowLessAndTheRestByScrolling) {
    const QSize objSize = LargestStart / Scale;
    Resize(objSize);
    EXPECT_EQ(m_objWindow.Form().size(), objSize);
    ExpectNothingToBeCutOff();
    for (int i = 0; i < Tabs().count(); ++i) {
        Tabs().setCurrentIndex(i);
        QCoreApplication::processEvents();
        ExpectScrollingToShowEverything();
    }
    Tabs().setCurrentIndex(0);
    const auto* const objArea = qobject_cast<QScrollArea*>(Tabs().currentWidget());
    EXPECT_TRUE(objArea->verticalScrollBar()->isVisible());
}

}  // namespace
