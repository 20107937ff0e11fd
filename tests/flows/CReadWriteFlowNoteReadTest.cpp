#include "tests/flows/CReadWriteFlowFixture.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

/// Which flows tell a page that what it shows has been read.
class CReadWriteFlowNoteReadTest : public CReadWriteFlowFixture {
protected:
    void SetUp() override { ConnectQuietly(); }
};

TEST_F(CReadWriteFlowNoteReadTest, ReadTellsItsPageOnceItShowsAll) {
    m_objParameterPage.m_fnRefresh = [this] {
        EXPECT_EQ(m_objParameterPage.m_iNotedReads, 0);
        return true;
    };
    m_objFlow.Read();
    EXPECT_EQ(m_objParameterPage.m_iNotedReads, 1);
    EXPECT_EQ(m_objLanPage.m_iNotedReads, 0);
}

TEST_F(CReadWriteFlowNoteReadTest, LanReadTellsItsPageOnceItShowsAll) {
    m_objFlow.LanRead();
    EXPECT_EQ(m_objLanPage.m_iNotedReads, 1);
    EXPECT_EQ(m_objParameterPage.m_iNotedReads, 0);
}

TEST_F(CReadWriteFlowNoteReadTest, APageThatDoesNotShowItIsNotTold) {
    m_objParameterPage.m_fnRefresh = [] { return false; };
    m_objLanPage.m_fnRefresh = [] { return false; };
    m_objMessageBox.Expect("Error RefreshParameterSettingItem");
    m_objFlow.Read();
    m_objFlow.LanRead();
    const auto fnFail = []() -> bool { throw std::out_of_range("a list has no position 9"); };
    m_objParameterPage.m_fnRefresh = fnFail;
    m_objLanPage.m_fnRefresh = fnFail;
    m_objMessageBox.Expect("Error RefreshParameterSettingItem");
    m_objFlow.Read();
    m_objFlow.LanRead();
    EXPECT_EQ(m_objParameterPage.m_iNotedReads + m_objLanPage.m_iNotedReads, 0);
}

TEST_F(CReadWriteFlowNoteReadTest, AReadingThatFailsAndASetTellNobody) {
    m_objFlow.Set();
    m_objFlow.LanSet();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    m_objFlow.Read();
    m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    m_objFlow.LanRead();
    EXPECT_EQ(m_objParameterPage.m_iNotedReads + m_objLanPage.m_iNotedReads, 0);
}

}  // namespace
