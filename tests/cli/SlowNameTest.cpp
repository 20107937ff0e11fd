#include "tests/simulator/CSimulatorProcess.h"

#include <QElapsedTimer>
#include <QProcess>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr int PatienceMs = 60'000;

// The real program, which must not wait for what the toolkit still does when it ends.
TEST(SlowNameTest, ANameThatIsLookedUpForEverHoldsTheProgramUpNoLongerThanOpeningMay) {
    QProcessEnvironment objEnvironment = QProcessEnvironment::systemEnvironment();
    objEnvironment.insert("LD_PRELOAD", VARDEN_SLOW_RESOLVER);
    QProcess objVarden;
    objVarden.setProcessEnvironment(objEnvironment);
    QElapsedTimer objTime;
    objTime.start();
    objVarden.start(VARDEN_PROGRAM, {"status", "lan:slow.test"});
    ASSERT_TRUE(CSimulatorProcess::WaitUntil(
        [&] { return objVarden.state() == QProcess::NotRunning; }, PatienceMs));
    EXPECT_EQ(objVarden.exitCode(), 3);
    EXPECT_GE(objTime.elapsed(), 10'000);
    EXPECT_LT(objTime.elapsed(), 20'000);
    const std::string strError = objVarden.readAllStandardError().toStdString();
    EXPECT_NE(strError.find("lan:slow.test takes too long"), std::string::npos) << strError;
}

}  // namespace
