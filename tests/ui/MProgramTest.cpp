#include "ui/MProgram.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

namespace {

TEST(MProgramTest, AFailedStartIsToldAndEndsTheProgramWithOne) {
    std::ostringstream objErrors;
    bool bLooped = false;
    const int iCode =
        MProgram::Run([] { throw std::logic_error("there is no QComboBox \"cmbX\""); },
                      [&] {
                          bLooped = true;
                          return 0;
                      },
                      objErrors);
    EXPECT_EQ(iCode, 1);
    EXPECT_FALSE(bLooped);
    EXPECT_EQ(objErrors.str(),
              "varden-setting-tool: cannot start: there is no QComboBox \"cmbX\"\n");
}

TEST(MProgramTest, AfterTheStartTheLoopRunsAndItsCodeIsThePrograms) {
    std::ostringstream objErrors;
    bool bStarted = false;
    const int iCode = MProgram::Run([&] { bStarted = true; },
                                    [&] {
                                        EXPECT_TRUE(bStarted);
                                        return 7;
                                    },
                                    objErrors);
    EXPECT_EQ(iCode, 7);
    EXPECT_EQ(objErrors.str(), "");
}

}  // namespace
