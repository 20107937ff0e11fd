#include "tests/ui/CFormFixture.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

#include <qpa/qwindowsysteminterface.h>

namespace {

/// A screen of the size that a test needs, for as long as this lives. That of the platform without
/// one is smaller than the window would like to be, which hides what size it asks for.
class COtherScreen {
public:
    explicit COtherScreen(QSize p_objSize)
        : m_objFormer(Screen().geometry().size()) {
        Resize(p_objSize);
    }
    ~COtherScreen() { Resize(m_objFormer); }
    COtherScreen(const COtherScreen&) = delete;
    COtherScreen& operator=(const COtherScreen&) = delete;

private:
    static QScreen& Screen() { return *QGuiApplication::primaryScreen(); }

    static void Resize(QSize p_objSize) {
        const QRect objNative(QPoint(), p_objSize * Screen().devicePixelRatio());
        QWindowSystemInterface::handleScreenGeometryChange(&Screen(), objNative, objNative);
        QWindowSystemInterface::sendWindowSystemEvents(QEventLoop::AllEvents);
    }

    QSize m_objFormer;
};

/// What the window, opened on such a screen, shows of its tabs in its first size.
class CFirstSize : public CFormFixture {
protected:
    explicit CFirstSize(QSize p_objScreen)
        : m_objScreen(p_objScreen)
        , m_objOnScreen(
              {{m_objEventLoop, m_objClock, m_objNetwork, m_objSerialPort, m_objUsbLibrary},
               {m_objBoxes, m_objFileDialog, m_objFileStore, QDir::tempPath().toStdString()}}) {}

    void SetUp() override { ASSERT_TRUE(m_objOnScreen.Open()); }

    /// The scroll bars of that direction that are to be seen, by the numbers of their tabs.
    std::vector<int> Bars(Qt::Orientation p_iDirection) {
        auto& objTabs = m_objOnScreen.Get<QTabWidget>("SSTab1");
        std::vector<int> iTabs;
        for (int i = 0; i < objTabs.count(); ++i) {
            objTabs.setCurrentIndex(i);
            QCoreApplication::processEvents();
            const auto& objArea = *qobject_cast<QScrollArea*>(objTabs.widget(i));
            const QScrollBar& objBar = p_iDirection == Qt::Horizontal
                                           ? *objArea.horizontalScrollBar()
                                           : *objArea.verticalScrollBar();
            if (objBar.isVisible()) {
                iTabs.push_back(i);
            }
        }
        return iTabs;
    }

    COtherScreen m_objScreen;
    CMainWindow m_objOnScreen;
};

class FmMainFirstSizeTest : public CFirstSize {
protected:
    FmMainFirstSizeTest()
        : CFirstSize({1920, 1080}) {}
};

TEST_F(FmMainFirstSizeTest, ShowsTheWholeOfEveryTabWhereTheScreenHasRoom) {
    EXPECT_EQ(Bars(Qt::Horizontal), std::vector<int>());
    EXPECT_EQ(Bars(Qt::Vertical), std::vector<int>());
}

TEST_F(FmMainFirstSizeTest, NoListHasMadeItsEntriesPopUpBeforeItIsOpenedFirst) {
    EXPECT_EQ(m_objOnScreen.Form().findChildren<QAbstractItemView*>().size(), 0);
    m_objOnScreen.List("cmbSpeed").showPopup();
    EXPECT_EQ(m_objOnScreen.Form().findChildren<QAbstractItemView*>().size(), 1);
}

class FmMainFirstSizeLowTest : public CFirstSize {
protected:
    FmMainFirstSizeLowTest()
        : CFirstSize({1024, 600}) {}
};

TEST_F(FmMainFirstSizeLowTest, ScrollsNoTabSidewaysWhereTheScreenIsTooLowForIt) {
    EXPECT_EQ(Bars(Qt::Horizontal), std::vector<int>());
    EXPECT_EQ(Bars(Qt::Vertical), std::vector<int>{0});
}

}  // namespace
