#include "tests/fakes/CLinkFixture.h"

#include "protocol/MCommand.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// What a read has asked for comes when nobody waits for it any more.

namespace {

struct LaterCase {
    const char* m_strName;
    bool (*m_fnRun)(CCommandExchange& p_objExchange);
};

class CExchangeLateAnswerTest : public CLinkFixture,
                                public ::testing::WithParamInterface<LaterCase> {};

TEST_P(CExchangeLateAnswerTest, FillsNoItemOnceAnotherCommandIsOut) {
    constexpr std::int16_t iGroup = 0;
    Connect();
    const CWaiter::Turn objTurn(m_objWaiter);
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    EXPECT_FALSE(m_objExchange.ReadGroup(iGroup));

    m_objPrinter.m_fnAnswer = [&](const std::string&) {
        return MWire::Settings(iGroup) + MWire::Status("00");
    };
    EXPECT_TRUE(GetParam().m_fnRun(m_objExchange));
    m_objEventLoop.Idle(1000);
    EXPECT_EQ(m_objView.m_strStatuses.back(), "ON LINE") << "the status behind it is still read";
    const CItemManager objUntouched;
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, iGroup),
              MWire::StoredFields(objUntouched, iGroup));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(, CExchangeLateAnswerTest, ::testing::Values(
    LaterCase{"Send", [](CCommandExchange& p_objExchange) { return p_objExchange.Send(MCommand::SensorAdjustReflect); }},
    LaterCase{"Request", [](CCommandExchange& p_objExchange) { return p_objExchange.Request("{Z2;1,0|}", 13, AwaitedAnswer::Any); }},
    LaterCase{"Maintenance", [](CCommandExchange& p_objExchange) { return p_objExchange.SendMaintenance("{Z11|}"); }},
    LaterCase{"Status", [](CCommandExchange& p_objExchange) { return p_objExchange.RequestStatus(); }}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });
// clang-format on

}  // namespace
