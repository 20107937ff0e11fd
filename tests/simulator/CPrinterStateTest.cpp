#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "simulator/CPrinter.h"
#include "simulator/MItemNames.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace {

using Moves = CStateFaults::Moves;
using Settings = std::map<std::string, std::string>;

const std::string SetAdjustments = MGolden::All(MGolden::Adjustments, &MGolden::Item::m_strOther);
const std::string Answer0 = MGolden::All(MGolden::Answer(0), &MGolden::Item::m_strOther);
const std::string Default0 = MGolden::Answer(0);

Settings SettingsOf(const CPrinter& p_objPrinter) {
    Settings strSettings;
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        strSettings[std::string(MItemNames::Of(objRow))] =
            (p_objPrinter.Items().*objRow.m_objSlot)->GetValueString();
    }
    return strSettings;
}

/// The settings that are not what they were.
Settings Changed(const CPrinter& p_objPrinter) {
    const Settings strDefaults = SettingsOf(CPrinter());
    Settings strChanged = SettingsOf(p_objPrinter);
    std::erase_if(strChanged,
                  [&](const auto& p_obj) { return strDefaults.at(p_obj.first) == p_obj.second; });
    return strChanged;
}

std::string StatusOf(const CPrinter::Reply& p_objReply) {
    return p_objReply.m_strAnswer.substr(MAnswer::StatusCodePosition, 2);
}

template <typename Change>
CStateFaults Faults(const Change& p_fnChange) {
    CStateFaults objFaults;
    p_fnChange(objFaults);
    return objFaults;
}

// ---- Refusing

TEST(PrinterRefusingTest, RefusesCommandsByTheirBeginningAndChangesNothing) {
    CPrinter objPrinter;
    objPrinter.SetFaults(Faults([](auto& p_obj) { p_obj.m_strRefused = {"{Z2;2,", "{Z5;3"}; }));
    const CPrinter::Reply objReply = objPrinter.Handle(SetAdjustments);
    EXPECT_EQ(objReply.m_strAnswer, CPrinter::StatusAnswer("06"));
    EXPECT_FALSE(objReply.m_bAccepted);
    ASSERT_EQ(objReply.m_objMishaps.size(), 1U);
    EXPECT_EQ(objReply.m_objMishaps.front().m_strWhat, "refused");
    EXPECT_EQ(Changed(objPrinter), Settings());
    EXPECT_EQ(StatusOf(objPrinter.Handle("{Z5;3|}")), "06");
    EXPECT_EQ(StatusOf(objPrinter.Handle("{WS|}")), "00");
    EXPECT_EQ(objPrinter.Handle("{Z5;0|}").m_strAnswer, Default0);
    EXPECT_EQ(objPrinter.Counts().Of(MCommandKind::Kind::SetAdjustments),
              (CCommandCounts::Count{0, 1}));
}

TEST(PrinterRefusingTest, RefusesOnlyTheNumberAskedFor) {
    CPrinter objPrinter;
    objPrinter.SetFaults(Faults([](auto& p_obj) {
        p_obj.m_strRefused = {"{WS"};
        p_obj.m_iRefusedOnly = 2;
    }));
    std::string strCodes;
    for (const char* strCommand : {"{WS|}", "{Z4;1|}", "{WS|}", "{WS|}"}) {
        strCodes += StatusOf(objPrinter.Handle(strCommand)) + ' ';
    }
    EXPECT_EQ(strCodes, "00 00 06 00 ");
}

// ---- Storing

struct Storing {
    const char* m_strName;
    CStateFaults m_objFaults;
    std::vector<std::string> m_strCommands;
    Settings m_strChanged;
    std::vector<std::string> m_strMishaps;
};

const std::string ClientId(32, 'A');
const std::string Dhcp = "{IH;1," + ClientId + ",office" + std::string(10, '\xFF') + "|}";

// clang-format off
const std::vector<Storing> Storings{
    {"nothing_wrong", {}, {"{IP;3,001,002,003,004|}"},
     {{"Gateway1", "001"}, {"Gateway2", "002"}, {"Gateway3", "003"}, {"Gateway4", "004"}}, {}},
    {"stuck", Faults([](auto& p_obj) { p_obj.m_strStuck = {"Gateway2", "Gateway4"}; }), {"{IP;3,001,002,003,004|}"},
     {{"Gateway1", "001"}, {"Gateway3", "003"}}, {"Gateway2 does not change", "Gateway4 does not change"}},
    {"stuck_at_what_is_sent", Faults([](auto& p_obj) { p_obj.m_strStuck = {"SocketPortSetting"}; }), {"{IS;1,08001|}"},
     {{"SocketPortNumber", "08001"}}, {}},
    {"half_no_field", Faults([](auto& p_obj) { p_obj.m_iFieldsKept = 0; }), {"{IP;3,001,002,003,004|}"},
     {}, {"only 0 fields stored, 0 bytes"}},
    {"half_fields", Faults([](auto& p_obj) { p_obj.m_iFieldsKept = 2; }), {"{IP;3,001,002,003,004|}"},
     {{"Gateway1", "001"}, {"Gateway2", "002"}}, {"only 2 fields stored, 6 bytes"}},
    {"half_all_fields", Faults([](auto& p_obj) { p_obj.m_iFieldsKept = 2; }), {"{IS;0,08001|}"},
     {{"SocketPortSetting", "0"}, {"SocketPortNumber", "08001"}}, {}},
    {"half_bytes", Faults([](auto& p_obj) { p_obj.m_iBytesKept = 5; }), {"{IP;3,111,222,003,004|}"},
     {{"Gateway1", "111"}, {"Gateway2", "220"}}, {"only 1 field stored, 5 bytes"}},
    {"half_bytes_at_a_fields_end", Faults([](auto& p_obj) { p_obj.m_iBytesKept = 3; }), {"{IP;3,111,222,003,004|}"},
     {{"Gateway1", "111"}}, {"only 1 field stored, 3 bytes"}},
    {"half_all_bytes", Faults([](auto& p_obj) { p_obj.m_iBytesKept = 6; }), {"{IS;0,08001|}"},
     {{"SocketPortSetting", "0"}, {"SocketPortNumber", "08001"}}, {}},
    {"half_hexadecimal", Faults([](auto& p_obj) { p_obj.m_iBytesKept = 13; }),
     {MGolden::With(MGolden::Parameters, {{"ControlCode1st", "FF"}})}, {{"ControlCode1st", "FB"}}, {"only 11 fields stored, 13 bytes"}},
    {"half_text", Faults([](auto& p_obj) { p_obj.m_iBytesKept = 36; }), {Dhcp},
     {{"DhcpSetting", "1"}, {"DhcpClientId", ClientId}, {"DhcpClientHost", "off"}}, {"only 2 fields stored, 36 bytes"}},
    {"half_of_another", Faults([](auto& p_obj) { p_obj.m_iFieldsKept = 0; p_obj.m_strHalved = "{IP;2,"; }),
     {"{IS;1,08001|}", "{IP;2,001,002,003,004|}"}, {{"SocketPortNumber", "08001"}}, {"only 0 fields stored, 0 bytes"}},
};
// clang-format on

class PrinterStoringTest : public ::testing::TestWithParam<Storing> {};

TEST_P(PrinterStoringTest, StoresWhatTheFaultsLetThroughYetAnswersAsIfItWereAll) {
    CPrinter objPrinter;
    objPrinter.SetFaults(GetParam().m_objFaults);
    std::vector<std::string> strMishaps;
    for (const std::string& strCommand : GetParam().m_strCommands) {
        const CPrinter::Reply objReply = objPrinter.Handle(strCommand);
        EXPECT_EQ(objReply.m_strAnswer, CPrinter::StatusAnswer("00"));
        EXPECT_TRUE(objReply.m_bAccepted);
        for (const MStoring::Mishap& objMishap : objReply.m_objMishaps) {
            strMishaps.push_back(objMishap.m_strText);
        }
    }
    EXPECT_EQ(Changed(objPrinter), GetParam().m_strChanged);
    EXPECT_EQ(strMishaps, GetParam().m_strMishaps);
}

INSTANTIATE_TEST_SUITE_P(Faults, PrinterStoringTest, ::testing::ValuesIn(Storings),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(PrinterStoringTest, WhatIsStuckIsNotClearedEither) {
    CPrinter objPrinter;
    objPrinter.Handle(SetAdjustments);
    objPrinter.SetFaults(Faults([](auto& p_obj) { p_obj.m_strStuck = {"FeedAdjustment"}; }));
    objPrinter.Handle("{Z4;0|}");
    EXPECT_EQ(Changed(objPrinter), (Settings{{"FeedAdjustment", "123"}}));
}

// ---- Power

TEST(PrinterPowerTest, WithoutItNothingIsTakenAndTheSettingsAreKeptUnlessSaidOtherwise) {
    for (const bool bForgets : {false, true}) {
        CPrinter objPrinter;
        objPrinter.SetFaults(Faults([&](auto& p_obj) { p_obj.m_bForgets = bForgets; }));
        objPrinter.Handle(SetAdjustments);
        EXPECT_TRUE(objPrinter.IsOn());
        EXPECT_EQ(objPrinter.MostTaken(), std::numeric_limits<std::size_t>::max());
        objPrinter.PowerOff();
        EXPECT_FALSE(objPrinter.IsOn());
        EXPECT_EQ(objPrinter.MostTaken(), 0U);
        objPrinter.PowerOn();
        EXPECT_TRUE(objPrinter.IsOn());
        EXPECT_EQ(objPrinter.Handle("{Z5;0|}").m_strAnswer, bForgets ? Default0 : Answer0);
    }
}

TEST(PrinterPowerTest, IsCutOnceWhenSoManyBytesHaveCome) {
    CPrinter objPrinter;
    objPrinter.SetFaults(Faults([](auto& p_obj) { p_obj.m_iPowerCut = 10; }));
    EXPECT_EQ(objPrinter.MostTaken(), 10U);
    EXPECT_FALSE(objPrinter.Took(4));
    EXPECT_FALSE(objPrinter.Took(0));
    EXPECT_EQ(objPrinter.MostTaken(), 6U);
    EXPECT_TRUE(objPrinter.Took(6));
    EXPECT_FALSE(objPrinter.IsOn());
    objPrinter.PowerOn();
    EXPECT_EQ(objPrinter.MostTaken(), std::numeric_limits<std::size_t>::max());
    EXPECT_FALSE(objPrinter.Took(1000));
    EXPECT_TRUE(objPrinter.IsOn());
}

// ---- The place on the network

struct Moving {
    const char* m_strName;
    Moves m_iMoves;
    bool m_bForgets;
    std::string m_strCommand;
    CPlace m_objAtOnce;      ///< the place behind the command
    CPlace m_objAfterwards;  ///< and behind a restart
};

const CPlace Home{"192.168.10.20", 8000, true};
const CPlace Away{"127.0.0.77", 8000, true};
const std::string ToAway = "{IP;2,127,000,000,077|}";

// clang-format off
const std::vector<Moving> Movings{
    {"never", Moves::Never, false, ToAway, Home, Home},
    {"at_once", Moves::AtOnce, false, ToAway, Away, Away},
    {"at_once_forgotten", Moves::AtOnce, true, ToAway, Away, Home},
    {"after_restart", Moves::AfterRestart, false, ToAway, Home, Away},
    {"after_restart_forgotten", Moves::AfterRestart, true, ToAway, Home, Home},
    {"to_where_it_is", Moves::AtOnce, false, "{IP;2,192,168,010,020|}", Home, Home},
    {"gateway", Moves::AtOnce, false, "{IP;3,127,000,000,077|}", Home, Home},
    {"port", Moves::AtOnce, false, "{IS;1,08001|}", {"192.168.10.20", 8001, true}, {"192.168.10.20", 8001, true}},
    {"no_such_port", Moves::AfterRestart, false, "{IS;1,99999|}", Home, {"192.168.10.20", 99999, true}},
    {"socket_off", Moves::AtOnce, false, "{IS;0,08000|}", {"192.168.10.20", 8000, false}, {"192.168.10.20", 8000, false}},
    {"no_such_address", Moves::AtOnce, false, "{IP;2,999,001,010,000|}", {"999.1.10.0", 8000, true}, {"999.1.10.0", 8000, true}},
};
// clang-format on

class PrinterMovingTest : public ::testing::TestWithParam<Moving> {};

TEST_P(PrinterMovingTest, GoesWhereItsSettingsSayWhenItIsThatKind) {
    CPrinter objPrinter;
    objPrinter.SetFaults(Faults([](auto& p_obj) {
        p_obj.m_iMoves = GetParam().m_iMoves;
        p_obj.m_bForgets = GetParam().m_bForgets;
    }));
    EXPECT_EQ(objPrinter.Place(), Home);
    const CPrinter::Reply objReply = objPrinter.Handle(GetParam().m_strCommand);
    EXPECT_EQ(objReply.m_bMoved, GetParam().m_objAtOnce != Home);
    EXPECT_EQ(objPrinter.Place(), GetParam().m_objAtOnce);
    EXPECT_FALSE(objPrinter.Handle("{WS|}").m_bMoved);
    objPrinter.PowerOff();
    objPrinter.PowerOn();
    EXPECT_EQ(objPrinter.Place(), GetParam().m_objAfterwards);
    EXPECT_EQ(objPrinter.FirstPlace(), Home);
}

INSTANTIATE_TEST_SUITE_P(Places, PrinterMovingTest, ::testing::ValuesIn(Movings),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(PrinterPlaceTest, CanBeInItsSettingsFromTheStart) {
    CPrinter objPrinter;
    objPrinter.SetFaults(Faults([](auto& p_obj) { p_obj.m_bForgets = true; }));
    objPrinter.SetPlace({127, 0, 3, 232}, 8123);
    EXPECT_EQ(objPrinter.FirstPlace(), (CPlace{"127.0.3.232", 8123, true}));
    EXPECT_EQ(objPrinter.Place(), objPrinter.FirstPlace());
    objPrinter.Handle(ToAway);
    objPrinter.PowerOff();
    EXPECT_TRUE(objPrinter.SettingsAnswer(MAnswer::Lan).starts_with("{30127000003232"));
    EXPECT_NE(objPrinter.SettingsAnswer(MAnswer::Lan).find("108123"), std::string::npos);
}

// ---- What answers look like

TEST(PrinterFontCodeTest, EveryCodeThatTheNumberingsDifferInIsAnotherOneOnTheWire) {
    // A reader that forgets to translate shows another font than was set.
    constexpr std::size_t iPosition = 10;
    const std::map<char, char> cOnTheWire{{'0', '0'}, {'1', '2'}, {'2', '3'},
                                          {'3', '1'}, {'4', '4'}, {'F', 'F'}};
    for (const auto& [cSet, cAnswered] : cOnTheWire) {
        CPrinter objPrinter;
        objPrinter.Handle(MGolden::With(MGolden::Parameters, {{"FontCode", {&cSet, 1}}}));
        EXPECT_EQ(objPrinter.SettingsAnswer(MAnswer::Parameter).at(iPosition), cAnswered) << cSet;
        EXPECT_EQ(cSet != cAnswered, cSet >= '1' && cSet <= '3');
        EXPECT_EQ(SettingsOf(objPrinter).at("FontCode"), std::string(1, cSet));
    }
}

TEST(PrinterFillTest, TextsAreFilledUpWithBlanksOrWithTheByteOfTheCommand) {
    const std::string strHost = "office";
    for (const char cFill : {CPrinter::Blank, CPrinter::Fill}) {
        CPrinter objPrinter;
        objPrinter.SetFill(cFill);
        objPrinter.Handle(Dhcp);
        EXPECT_TRUE(objPrinter.SettingsAnswer(MAnswer::Lan)
                        .ends_with(ClientId + strHost + std::string(10, cFill) + "|}"));
        EXPECT_EQ(objPrinter.SettingsAnswer(MAnswer::Adjustment), Default0);
    }
}

}  // namespace
