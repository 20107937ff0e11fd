#include "simulator/MFaultPlan.h"

#include "simulator/CPrinter.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

void PrintTo(const CWireStep& p_objStep, std::ostream* p_objStream) {
    *p_objStream << p_objStep.m_iDelay.count() << " ms \"" << p_objStep.m_strBytes << "\" ("
                 << p_objStep.m_strNote << ")" << (p_objStep.m_bClose ? " close" : "");
}

namespace {

using std::chrono::milliseconds;

const std::string Junk(MFaultPlan::Junk);

/// A delay set apart from the default gap.
constexpr milliseconds Delay(250);
constexpr milliseconds Gap(10);

struct Case {
    const char* m_strName;
    CFaultSettings m_objFaults;
    std::size_t m_iCommand;
    std::vector<CWireStep> m_objSteps;  ///< for the answer "answer" with the note "note"
    const char* m_strDescription;
};

CFaultSettings Faults(void (*p_objChange)(CFaultSettings&)) {
    CFaultSettings objFaults;
    p_objChange(objFaults);
    return objFaults;
}

// clang-format off
const std::vector<Case> Cases{
    {"none", {}, 1, {{{}, "answer", false, "note"}}, "none"},
    {"silent", Faults([](auto& p_obj) { p_obj.m_bSilent = true; }), 1, {}, "no answers"},
    {"late", Faults([](auto& p_obj) { p_obj.m_iDelay = Delay; }), 1,
     {{Delay, "answer", false, "note"}}, "answers late by 250 ms"},
    {"pieces", Faults([](auto& p_obj) { p_obj.m_iPieces = 4; }), 1,
     {{{}, "answ", false, "note, piece 1 of 2"}, {Gap, "er", false, "note, piece 2 of 2"}},
     "answers in pieces of 4 bytes, 10 ms apart"},
    {"pieces_even", Faults([](auto& p_obj) { p_obj.m_iPieces = 3; p_obj.m_iGap = milliseconds(7); }), 1,
     {{{}, "ans", false, "note, piece 1 of 2"}, {milliseconds(7), "wer", false, "note, piece 2 of 2"}},
     "answers in pieces of 3 bytes, 7 ms apart"},
    {"pieces_as_long_as_the_answer", Faults([](auto& p_obj) { p_obj.m_iPieces = 6; }), 1,
     {{{}, "answer", false, "note"}}, "answers in pieces of 6 bytes, 10 ms apart"},
    {"cut", Faults([](auto& p_obj) { p_obj.m_iCut = 2; }), 1,
     {{{}, "an", false, "note, cut short after 2 bytes"}}, "answers cut short after 2 bytes"},
    {"cut_to_nothing", Faults([](auto& p_obj) { p_obj.m_iCut = 0; }), 1, {}, "answers cut short after 0 bytes"},
    {"cut_behind_the_end", Faults([](auto& p_obj) { p_obj.m_iCut = 6; }), 1,
     {{{}, "answer", false, "note"}}, "answers cut short after 6 bytes"},
    {"junk", Faults([](auto& p_obj) { p_obj.m_bJunk = true; }), 1,
     {{{}, Junk, false, "junk in place of: note"}}, "junk in place of answers"},
    {"junk_before", Faults([](auto& p_obj) { p_obj.m_bJunkBefore = true; }), 1,
     {{{}, Junk + "answer", false, "junk, then: note"}}, "junk in front of answers"},
    {"close_not_yet", Faults([](auto& p_obj) { p_obj.m_iCloseAfter = 2; }), 1,
     {{{}, "answer", false, "note"}}, "connection closed after 2 commands"},
    {"close_now", Faults([](auto& p_obj) { p_obj.m_iCloseAfter = 1; }), 1,
     {{{}, "answer", true, "note"}}, "connection closed after 1 command"},
    {"silent_and_close", Faults([](auto& p_obj) { p_obj.m_bSilent = true; p_obj.m_iCloseAfter = 1; }), 1,
     {{{}, "", true, ""}}, "no answers; connection closed after 1 command"},
    {"late_close_without_a_byte", Faults([](auto& p_obj) { p_obj.m_iCut = 0; p_obj.m_iDelay = Delay; p_obj.m_iCloseAfter = 1; }), 1,
     {{Delay, "", true, ""}}, "answers late by 250 ms; answers cut short after 0 bytes; connection closed after 1 command"},
    {"late_pieces_and_close", Faults([](auto& p_obj) { p_obj.m_iDelay = Delay; p_obj.m_iPieces = 4; p_obj.m_iCloseAfter = 3; }), 3,
     {{Delay, "answ", false, "note, piece 1 of 2"}, {Gap, "er", true, "note, piece 2 of 2"}},
     "answers late by 250 ms; answers in pieces of 4 bytes, 10 ms apart; connection closed after 3 commands"},
    {"cut_pieces", Faults([](auto& p_obj) { p_obj.m_iCut = 3; p_obj.m_iPieces = 2; }), 1,
     {{{}, "an", false, "note, cut short after 3 bytes, piece 1 of 2"},
      {Gap, "s", false, "note, cut short after 3 bytes, piece 2 of 2"}},
     "answers in pieces of 2 bytes, 10 ms apart; answers cut short after 3 bytes"},
    {"junk_before_a_cut_answer", Faults([](auto& p_obj) { p_obj.m_bJunkBefore = true; p_obj.m_iCut = 1; }), 1,
     {{{}, Junk + "a", false, "junk, then: note, cut short after 1 byte"}},
     "answers cut short after 1 byte; junk in front of answers"},
    {"both_junks", Faults([](auto& p_obj) { p_obj.m_bJunkBefore = true; p_obj.m_bJunk = true; }), 1,
     {{{}, Junk + Junk, false, "junk, then: junk in place of: note"}},
     "junk in place of answers; junk in front of answers"},
    {"silence_beats_junk", Faults([](auto& p_obj) { p_obj.m_bJunkBefore = true; p_obj.m_bSilent = true; }), 1, {},
     "no answers; junk in front of answers"},
};
// clang-format on

class FaultPlanTest : public ::testing::TestWithParam<Case> {};

}  // namespace

TEST_P(FaultPlanTest, TurnsAnAnswerIntoTheseSteps) {
    const Case& objCase = GetParam();
    EXPECT_EQ(MFaultPlan::AtAnswer(objCase.m_objFaults, objCase.m_iCommand, "answer", "note"),
              objCase.m_objSteps);
}

TEST_P(FaultPlanTest, SaysWhatItDoes) {
    EXPECT_EQ(GetParam().m_objFaults.Describe(), GetParam().m_strDescription);
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultPlanTest, ::testing::ValuesIn(Cases),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(FaultPlanConnectTest, ClosesAtOnceOnlyWhenNoCommandIsToBeAnswered) {
    CFaultSettings objFaults;
    EXPECT_TRUE(MFaultPlan::AtConnect(objFaults).empty());
    objFaults.m_iCloseAfter = 1;
    EXPECT_TRUE(MFaultPlan::AtConnect(objFaults).empty());
    objFaults.m_iCloseAfter = 0;
    const std::vector<CWireStep> objClose{{{}, "", true, ""}};
    EXPECT_EQ(MFaultPlan::AtConnect(objFaults), objClose);
}

TEST(FaultPlanJunkTest, HoldsNoByteThatBeginsAnAnswerOnAnyLink) {
    EXPECT_FALSE(Junk.empty());
    EXPECT_EQ(Junk.find_first_of("\x01\x02{\x11\x13"), std::string::npos);
}
