#include "tests/flows/CReadWriteFlowFixture.h"

#include "model/CConversionError.h"

#include <gtest/gtest.h>

#include <ostream>

// SET and LAN SET with a page that cannot be stored.

namespace {

struct StoreCase {
    const char* m_strName;
    void (CReadWriteFlow::*m_fnRun)();
    bool m_bThrows;
};

void PrintTo(const StoreCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class CReadWriteFlowStoreTest : public CReadWriteFlowFixture,
                                public ::testing::WithParamInterface<StoreCase> {};

TEST_P(CReadWriteFlowStoreTest, SendsNothingAndLeavesTheButtonsAsTheyWere) {
    ConnectQuietly();
    const auto fnStore = [] {
        return GetParam().m_bThrows ? throw CConversionError("abc") : false;
    };
    m_objParameterPage.m_fnStore = fnStore;
    m_objLanPage.m_fnStore = fnStore;
    (m_objFlow.*GetParam().m_fnRun)();
    EXPECT_EQ(m_objParameterPage.m_iStores + m_objLanPage.m_iStores, 1);
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
    EXPECT_TRUE(m_objView.m_bEnabled.empty());
}

INSTANTIATE_TEST_SUITE_P(
    , CReadWriteFlowStoreTest,
    ::testing::Values(StoreCase{"SetPageRefuses", &CReadWriteFlow::Set, false},
                      StoreCase{"SetPageThrows", &CReadWriteFlow::Set, true},
                      StoreCase{"LanSetPageRefuses", &CReadWriteFlow::LanSet, false},
                      StoreCase{"LanSetPageThrows", &CReadWriteFlow::LanSet, true}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

}  // namespace
