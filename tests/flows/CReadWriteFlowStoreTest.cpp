#include "tests/flows/CReadWriteFlowFixture.h"
#include "tests/golden/MGolden.h"

#include "model/CConversionError.h"

#include <gtest/gtest.h>

#include <ostream>

// SET and LAN SET with a page that cannot be stored, or with values that no field has room for.

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

/// A value that makes its field wider or narrower than it is, and perhaps another that makes up
/// for it in the length of the whole command.
struct WidthCase {
    const char* m_strName;
    void (CReadWriteFlow::*m_fnRun)();
    void (*m_fnFill)(const CItemManager& p_objItems);
};

void PrintTo(const WidthCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

// clang-format off
const WidthCase Widths[] = {
    {"EuroTooWide", &CReadWriteFlow::Set, [](const auto& p_objItems) { p_objItems.m_objEuroCode->SetValue("7fff"); }},
    {"ToneTooWide", &CReadWriteFlow::Set, [](const auto& p_objItems) { p_objItems.m_objToneAdjustment_T->SetValue(12345); }},
    {"DirectionTooWide", &CReadWriteFlow::Set, [](const auto& p_objItems) { p_objItems.m_objFeedDirection->SetValue("+-"); }},
    {"DirectionEmpty", &CReadWriteFlow::Set, [](const auto& p_objItems) { p_objItems.m_objFeedDirection->SetValue(""); }},
    {"TwoThatMakeUpForEachOther", &CReadWriteFlow::Set, [](const auto& p_objItems) {
        p_objItems.m_objFeedDirection->SetValue("");
        p_objItems.m_objFeedAdjustment->SetValue(1234); }},
    {"OctetTooWide", &CReadWriteFlow::LanSet, [](const auto& p_objItems) { p_objItems.m_objIpAddress3->SetValue(1000); }},
    {"GatewayTooWide", &CReadWriteFlow::LanSet, [](const auto& p_objItems) { p_objItems.m_objGateway1->SetValue("1234"); }},
    {"SubnetTooWide", &CReadWriteFlow::LanSet, [](const auto& p_objItems) { p_objItems.m_objSubnetMask4->SetValue(2550); }},
    {"PortTooWide", &CReadWriteFlow::LanSet, [](const auto& p_objItems) { p_objItems.m_objSocketPortNumber->SetValue(123456); }},
    {"PortSettingTooWide", &CReadWriteFlow::LanSet, [](const auto& p_objItems) { p_objItems.m_objSocketPortSetting->SetValue(10); }},
    {"DhcpTooWide", &CReadWriteFlow::LanSet, [](const auto& p_objItems) { p_objItems.m_objDhcpSetting->SetValue(10); }},
    {"ClientIdTooNarrow", &CReadWriteFlow::LanSet, [](const auto& p_objItems) { p_objItems.m_objDhcpClientId->SetValue("FF"); }},
    {"HostNameOf17", &CReadWriteFlow::LanSet, [](const auto& p_objItems) { p_objItems.m_objDhcpClientHost->SetValue("a-name-of-17-char"); }},
    {"HostNameAndIdThatMakeUpForEachOther", &CReadWriteFlow::LanSet, [](const auto& p_objItems) {
        p_objItems.m_objDhcpClientId->SetValue(std::string(31, 'F'));
        p_objItems.m_objDhcpClientHost->SetValue("a-name-of-17-char"); }},
};
// clang-format on

class CReadWriteFlowWidthTest : public CReadWriteFlowFixture,
                                public ::testing::WithParamInterface<WidthCase> {};

TEST_P(CReadWriteFlowWidthTest, SendsNothingAndLeavesTheButtonsAsTheyWere) {
    ConnectQuietly();
    GetParam().m_fnFill(m_objItemManager);
    (m_objFlow.*GetParam().m_fnRun)();
    EXPECT_EQ(m_objParameterPage.m_iStores + m_objLanPage.m_iStores, 1);
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
    EXPECT_TRUE(m_objView.m_bEnabled.empty());
}

INSTANTIATE_TEST_SUITE_P(, CReadWriteFlowWidthTest, ::testing::ValuesIn(Widths),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST_F(CReadWriteFlowFixture, AHostNameOf16IsSentWhole) {
    ConnectQuietly();
    m_objItemManager.m_objDhcpClientHost->SetValue("label printer 01");
    m_objFlow.LanSet();
    ASSERT_EQ(m_objSocket.m_strSent.size(), 5U);
    EXPECT_EQ(m_objSocket.m_strSent.back(),
              MGolden::With(MGolden::Dhcp, {{"DhcpClientHost", "label printer 01"}}));
}

}  // namespace
