#include <QApplication>
#include <QDateTime>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <ctime>

namespace {

/// Makes it noon, here and in the programs that are started from here. The setting tool measures
/// by the time of day, and its pauses over midnight have no end: tests that wait in real time would
/// hang every night.
void BeAtNoon() {
    constexpr int iNoon = 12 * 3600;
    const int iAhead = iNoon - QTime(0, 0).secsTo(QDateTime::currentDateTimeUtc().time());
    const QString strAhead = QTime(0, 0).addSecs(qAbs(iAhead)).toString("hh:mm:ss");
    // The sign tells how far the meridian of Greenwich is ahead.
    qputenv("TZ", ("NOON" + QString(iAhead < 0 ? "+" : "-") + strAhead).toLatin1());
    ::tzset();
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    // Nobody watches; also not while CTest asks for the names of the tests.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    BeAtNoon();
    ::testing::InitGoogleTest(&p_iCount, p_strArguments);
    QApplication objApplication(p_iCount, p_strArguments);
    // Programs started from here keep what they keep in a place of their own: tests run side by
    // side, and each has another printer at the same port of an emulated bus.
    const QTemporaryDir objState;
    qputenv("XDG_STATE_HOME", objState.path().toUtf8());
    return RUN_ALL_TESTS();
}
