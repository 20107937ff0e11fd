#include <QApplication>

#include <gtest/gtest.h>

int main(int p_iCount, char** p_strArguments) {
    // Nobody watches; also not while CTest asks for the names of the tests.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    ::testing::InitGoogleTest(&p_iCount, p_strArguments);
    QApplication objApplication(p_iCount, p_strArguments);
    return RUN_ALL_TESTS();
}
