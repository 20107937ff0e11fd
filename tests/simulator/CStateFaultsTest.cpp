#include "simulator/CStateFaults.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>

namespace {

struct Row {
    std::string m_strDescription;
    std::function<void(CStateFaults&)> m_fnSet;
};

TEST(StateFaultsTest, AreDescribedInOneLine) {
    using Moves = CStateFaults::Moves;
    for (const Row& objRow : {
             Row{"none", [](CStateFaults&) {}},
             Row{"\"{WS\", \"{Z5;3\" refused",
                 [](CStateFaults& p_obj) {
                     p_obj.m_strRefused = {"{WS", "{Z5;3"};
                 }},
             Row{"\"{WS\" refused, only number 2",
                 [](CStateFaults& p_obj) {
                     p_obj.m_strRefused = {"{WS"};
                     p_obj.m_iRefusedOnly = 2;
                 }},
             Row{"FontCode, Control never changed",
                 [](CStateFaults& p_obj) {
                     p_obj.m_strStuck = {"FontCode", "Control"};
                 }},
             Row{"only 1 field stored of set commands",
                 [](CStateFaults& p_obj) { p_obj.m_iFieldsKept = 1; }},
             Row{"only 3 fields and 7 bytes stored of \"{IP;2,\"",
                 [](CStateFaults& p_obj) {
                     p_obj.m_iFieldsKept = 3;
                     p_obj.m_iBytesKept = 7;
                     p_obj.m_strHalved = "{IP;2,";
                 }},
             Row{"settings lost without power; power cut after 1 byte, back after 1000 ms",
                 [](CStateFaults& p_obj) {
                     p_obj.m_bForgets = true;
                     p_obj.m_iPowerCut = 1;
                 }},
             Row{"power cut after 40 bytes, for good",
                 [](CStateFaults& p_obj) {
                     p_obj.m_iPowerCut = 40;
                     p_obj.m_iPowerBack.reset();
                 }},
             Row{"moves at once", [](CStateFaults& p_obj) { p_obj.m_iMoves = Moves::AtOnce; }},
             Row{"moves after a restart",
                 [](CStateFaults& p_obj) { p_obj.m_iMoves = Moves::AfterRestart; }},
         }) {
        CStateFaults objFaults;
        objRow.m_fnSet(objFaults);
        EXPECT_EQ(objFaults.Describe(), objRow.m_strDescription);
    }
}

}  // namespace
