#include "ui/CStatusLine.h"

#include <QMainWindow>
#include <QProgressBar>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class CPaintCounter : public QObject {
public:
    int m_iPaints = 0;

protected:
    bool eventFilter(QObject* /*p_objWatched*/, QEvent* p_objEvent) override {
        m_iPaints += p_objEvent->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

TEST(CStatusLineTest, AStepIsPaintedWhenNothingWaitsForTheCall) {
    QMainWindow objWindow;
    auto* const objLine = new CStatusLine(&objWindow);
    objWindow.setStatusBar(objLine);
    objWindow.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&objWindow));
    IStatusLineView& objView = *objLine;
    objView.ShowDoing("SET", 1, 3);
    auto* const barDoing = objLine->findChild<QProgressBar*>();
    ASSERT_NE(barDoing, nullptr);
    ASSERT_TRUE(barDoing->isVisible());
    QTest::qWait(50);
    CPaintCounter objCounter;
    barDoing->installEventFilter(&objCounter);

    objView.ShowDoing("SET", 2, 3);
    EXPECT_EQ(objCounter.m_iPaints, 0);
    EXPECT_EQ(barDoing->value(), 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return objCounter.m_iPaints > 0; }, 10'000));
}

}  // namespace
