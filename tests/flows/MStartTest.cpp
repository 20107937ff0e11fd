#include "flows/MStart.h"

#include "model/CConversionError.h"
#include "tests/fakes/CFakeSettingsPage.h"

#include <gtest/gtest.h>

namespace {

class MStartTest : public ::testing::Test {
protected:
    void ExpectShown(int p_iParameter, int p_iLan) {
        EXPECT_NO_THROW(MStart::ShowSettings(m_objParameterPage, m_objLanPage));
        EXPECT_EQ(m_objParameterPage.m_iRefreshes, p_iParameter);
        EXPECT_EQ(m_objLanPage.m_iRefreshes, p_iLan);
    }

    CFakeSettingsPage m_objParameterPage;
    CFakeSettingsPage m_objLanPage;
};

TEST_F(MStartTest, ShowsTheParametersThenTheLanSettings) {
    m_objParameterPage.m_fnRefresh = [this] { return m_objLanPage.m_iRefreshes == 0; };
    ExpectShown(1, 1);
}

TEST_F(MStartTest, AParameterPageThatFailsLeavesTheLanPageAsItIs) {
    m_objParameterPage.m_fnRefresh = [] { return false; };
    ExpectShown(1, 0);
}

TEST_F(MStartTest, AParameterPageThatThrowsLeavesTheLanPageAsItIs) {
    m_objParameterPage.m_fnRefresh = []() -> bool { throw CConversionError("no number"); };
    ExpectShown(1, 0);
}

TEST_F(MStartTest, ALanPageThatFailsIsQuiet) {
    m_objLanPage.m_fnRefresh = [] { return false; };
    ExpectShown(1, 1);
    m_objLanPage.m_fnRefresh = []() -> bool { throw CConversionError("no number"); };
    ExpectShown(2, 2);
}

}  // namespace
