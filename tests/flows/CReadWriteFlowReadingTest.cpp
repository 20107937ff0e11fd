#include "flows/CReadWriteFlow.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/fakes/CLinkFixture.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

// Settings are the read's that asked for them, and nobody's once it has ended.

namespace {

struct ReadCase {
    const char* m_strName;
    void (CReadWriteFlow::*m_fnRun)();
    std::int16_t m_iLastGroup;
};

class CReadWriteFlowReadingTest : public CLinkFixture,
                                  public ::testing::WithParamInterface<ReadCase> {
protected:
    void SetUp() override { Connect(); }

    void Run() { (m_objFlow.*GetParam().m_fnRun)(); }

    [[nodiscard]] std::string Stored() const {
        return MWire::StoredFields(m_objItemManager, GetParam().m_iLastGroup);
    }

    /// Settings of the last group arrive, other ones than the items hold.
    void ExpectLateSettingsToFillNoItem() {
        const std::string strBefore = Stored();
        ASSERT_NE(strBefore, MWire::Fields(GetParam().m_iLastGroup, 1));
        m_objSocket.Arrive(MWire::Settings(GetParam().m_iLastGroup, 1) + MWire::Status("02"));
        EXPECT_EQ(Stored(), strBefore);
        ASSERT_FALSE(m_objView.m_strStatuses.empty());
        EXPECT_EQ(m_objView.m_strStatuses.back(), "On Running") << "what is behind them is read";
    }

    CFakeSettingsPage m_objParameterPage;
    CFakeSettingsPage m_objLanPage;
    CReadWriteFlow m_objFlow{m_objItemManager, m_objExchange,      m_objBusy,   m_objWaiter,
                             m_objMessageBox,  m_objParameterPage, m_objLanPage};
};

TEST_P(CReadWriteFlowReadingTest, EndsWithTheLastAnswer) {
    Run();
    EXPECT_EQ(m_objParameterPage.m_iRefreshes + m_objLanPage.m_iRefreshes, 1);
    ExpectLateSettingsToFillNoItem();
}

TEST_P(CReadWriteFlowReadingTest, LastsThroughThePause) {
    const std::int64_t iBefore = m_objClock.Elapsed();
    Run();
    m_objEventLoop.After(m_objClock.Elapsed() - iBefore - 100, [this] {
        m_objSocket.Arrive(MWire::Settings(GetParam().m_iLastGroup, 1));
    });
    Run();
    EXPECT_EQ(Stored(), MWire::Fields(GetParam().m_iLastGroup, 1));
}

TEST_P(CReadWriteFlowReadingTest, EndsWithTheTimeOut) {
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    Run();
    ExpectLateSettingsToFillNoItem();
}

TEST_P(CReadWriteFlowReadingTest, EndsWithAPageThatFails) {
    const auto fnFail = []() -> bool { throw std::runtime_error("no page"); };
    m_objParameterPage.m_fnRefresh = fnFail;
    m_objLanPage.m_fnRefresh = fnFail;
    Run();
    ExpectLateSettingsToFillNoItem();
}

INSTANTIATE_TEST_SUITE_P(, CReadWriteFlowReadingTest,
                         ::testing::Values(ReadCase{"Read", &CReadWriteFlow::Read, 4},
                                           ReadCase{"LanRead", &CReadWriteFlow::LanRead, 3}),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

}  // namespace
