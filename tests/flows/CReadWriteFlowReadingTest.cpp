#include "flows/CReadWriteFlow.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/fakes/CLinkFixture.h"
#include "tests/flows/CMaintenanceFlowFixture.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

// Settings are the read's that asked for them, and nobody's once it has ended.

namespace {

struct ReadCase {
    const char* m_strName;
    void (CReadWriteFlow::*m_fnRun)();
    std::int16_t m_iFirstGroup;
    std::int16_t m_iLastGroup;
};

class CReadWriteFlowReadingTest : public CLinkFixture,
                                  public ::testing::WithParamInterface<ReadCase> {
protected:
    void SetUp() override { Connect(); }

    void Run() { (m_objFlow.*GetParam().m_fnRun)(); }

    [[nodiscard]] std::string Stored(std::int16_t p_iGroup) const {
        return MWire::StoredFields(m_objItemManager, p_iGroup);
    }

    /// Settings of the group that was asked for last arrive, other ones than the items hold.
    void ExpectLateSettingsToFillNoItem(std::int16_t p_iGroup) {
        const std::string strBefore = Stored(p_iGroup);
        ASSERT_NE(strBefore, MWire::Fields(p_iGroup, 1));
        m_objSocket.Arrive(MWire::Settings(p_iGroup, 1) + MWire::Status("02"));
        EXPECT_EQ(Stored(p_iGroup), strBefore);
        ASSERT_FALSE(m_objView.m_strStatuses.empty());
        EXPECT_EQ(m_objView.m_strStatuses.back(), "On Running") << "what is behind them is read";
    }

    CFakeSettingsPage m_objParameterPage;
    CFakeSettingsPage m_objLanPage;
    CReadWriteFlow m_objFlow{m_objItemManager, m_objSession, m_objMessageBox, m_objParameterPage,
                             m_objLanPage};
};

TEST_P(CReadWriteFlowReadingTest, EndsWithTheLastAnswer) {
    Run();
    EXPECT_EQ(m_objParameterPage.m_iRefreshes + m_objLanPage.m_iRefreshes, 1);
    ExpectLateSettingsToFillNoItem(GetParam().m_iLastGroup);
}

TEST_P(CReadWriteFlowReadingTest, LastsThroughThePause) {
    const std::int64_t iBefore = m_objClock.Elapsed();
    Run();
    m_objEventLoop.After(m_objClock.Elapsed() - iBefore - 100, [this] {
        m_objSocket.Arrive(MWire::Settings(GetParam().m_iLastGroup, 1));
    });
    Run();
    EXPECT_EQ(Stored(GetParam().m_iLastGroup), MWire::Fields(GetParam().m_iLastGroup, 1));
}

TEST_P(CReadWriteFlowReadingTest, EndsWithTheTimeOut) {
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    Run();
    ExpectLateSettingsToFillNoItem(GetParam().m_iFirstGroup);
}

TEST_P(CReadWriteFlowReadingTest, EndsWithAPageThatFails) {
    const auto fnFail = []() -> bool { throw std::runtime_error("no page"); };
    m_objParameterPage.m_fnRefresh = fnFail;
    m_objLanPage.m_fnRefresh = fnFail;
    Run();
    ExpectLateSettingsToFillNoItem(GetParam().m_iLastGroup);
}

INSTANTIATE_TEST_SUITE_P(, CReadWriteFlowReadingTest,
                         ::testing::Values(ReadCase{"Read", &CReadWriteFlow::Read, 0, 4},
                                           ReadCase{"LanRead", &CReadWriteFlow::LanRead, 3, 3}),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

class CReadWriteFlowShowingTest : public CReadWriteFlowReadingTest {};

TEST_P(CReadWriteFlowShowingTest, ReadHasEndedWhenThePageIsRefreshed) {
    const std::int16_t iGroup = GetParam().m_iLastGroup;
    m_objParameterPage.m_fnRefresh = [this, iGroup] {
        ExpectLateSettingsToFillNoItem(iGroup);
        return true;
    };
    Run();
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 1);
    EXPECT_EQ(Stored(iGroup), MWire::Fields(iGroup));
}

INSTANTIATE_TEST_SUITE_P(, CReadWriteFlowShowingTest,
                         ::testing::Values(ReadCase{"Read", &CReadWriteFlow::Read, 0, 4}),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

/// The same over the serial port, where nothing is waited for but the pauses.
using CReadWriteFlowSerialReadingTest = CMaintenanceFlowFixture;

TEST_F(CReadWriteFlowSerialReadingTest, EndsWithThePause) {
    OpenComQuietly();
    m_objReadWriteFlow.LanRead();
    const std::string strBefore = MWire::StoredFields(m_objItemManager, 3);
    m_objPort.Arrive(MWire::Settings(3) + MWire::Status("02"));
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 3), strBefore);
    EXPECT_EQ(m_objView.m_strStatuses.back(), "On Running");

    m_objEventLoop.After(900, [this] { m_objPort.Arrive(MWire::Settings(3)); });
    m_objReadWriteFlow.LanRead();
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 3), MWire::Fields(3));
}

}  // namespace
