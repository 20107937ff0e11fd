#include "tests/flows/CLinks.h"
#include "tests/flows/CReadWriteFlowFixture.h"

#include "model/CConversionError.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using Kind = CPageNote::Kind;
using Places = std::vector<std::int16_t>;

/// How a flow tells its page that it has ended.
class CReadWriteFlowNoteEndTest : public CReadWriteFlowFixture {
protected:
    void SetUp() override { ConnectQuietly(); }

    void ExpectTimeOut() {
        m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    }

    /// The printer keeps silent from command number p_iCommand on, counted from 1.
    void SilentFrom(int p_iCommand) {
        m_objPrinter.m_fnAnswer = [this, p_iCommand](const std::string& p_strCommand) {
            return ++m_iCommands < p_iCommand ? CScriptedPrinter::Behave(p_strCommand)
                                              : std::nullopt;
        };
    }

    static const CPageNote& Last(const CFakeSettingsPage& p_objPage) {
        return p_objPage.m_objNotes.at(p_objPage.m_objNotes.size() - 1);
    }

    int m_iCommands = 0;
};

TEST_F(CReadWriteFlowNoteEndTest, WhatGoesWellIsToldOnce) {
    m_objFlow.Set();
    m_objFlow.LanSet();
    ASSERT_EQ(m_objParameterPage.m_objNotes.size(), 1U);
    ASSERT_EQ(m_objLanPage.m_objNotes.size(), 1U);
    EXPECT_EQ(Last(m_objParameterPage).m_iKind, Kind::Sent);
    EXPECT_EQ(Last(m_objLanPage).m_iKind, Kind::Sent);
    m_objFlow.Read();
    m_objFlow.LanRead();
    ASSERT_EQ(m_objParameterPage.m_objNotes.size(), 2U);
    ASSERT_EQ(m_objLanPage.m_objNotes.size(), 2U);
    EXPECT_EQ(Last(m_objParameterPage).m_iKind, Kind::Read);
    EXPECT_EQ(Last(m_objLanPage).m_iKind, Kind::Read);
}

TEST_F(CReadWriteFlowNoteEndTest, AReadingTellsTheGroupThatHasEndedIt) {
    SilentFrom(2);
    ExpectTimeOut();
    m_objFlow.Read();
    EXPECT_EQ(Last(m_objParameterPage).m_iKind, Kind::ReadEnded);
    EXPECT_EQ(Last(m_objParameterPage).m_iPlaces, Places{1});
    EXPECT_EQ(Last(m_objParameterPage).m_objFailure.m_iKind, CFailure::Kind::NoReply);
    ExpectTimeOut();
    m_objFlow.LanRead();
    EXPECT_EQ(Last(m_objLanPage).m_iPlaces, Places{3});
}

// Nobody waits for the answers on the serial port.
TEST(CReadWriteFlowUnansweredTest, AReadingTellsTheGroupsThatWereNotAnswered) {
    CLinks objLinks;
    objLinks.Use(CInterface::SerialInterface);
    objLinks.m_objPort.m_fnAnswer = CScriptedPrinter::KeepSilent;
    objLinks.m_objFlow.Read();
    ASSERT_EQ(objLinks.m_objParameterPage.m_objNotes.size(), 1U);
    EXPECT_EQ(objLinks.m_objParameterPage.m_objNotes[0].m_iKind, Kind::Unanswered);
    EXPECT_EQ(objLinks.m_objParameterPage.m_objNotes[0].m_iPlaces, (Places{0, 1, 4}));
    EXPECT_EQ(objLinks.m_objParameterPage.m_iNotedReads, 0);
    objLinks.m_objFlow.LanSet();
    objLinks.ExpectButtonsEnabled();
}

TEST_F(CReadWriteFlowNoteEndTest, ASendingTellsTheCommandThatHasEndedIt) {
    SilentFrom(2);
    ExpectTimeOut();
    m_objFlow.Set();
    EXPECT_EQ(Last(m_objParameterPage).m_iKind, Kind::SetEnded);
    EXPECT_EQ(Last(m_objParameterPage).m_iPlaces, (Places{2, 2}));
    m_iCommands = 0;
    SilentFrom(4);
    ExpectTimeOut();
    m_objFlow.LanSet();
    EXPECT_EQ(Last(m_objLanPage).m_iKind, Kind::SetEnded);
    EXPECT_EQ(Last(m_objLanPage).m_iPlaces, (Places{4, 5}));
    EXPECT_EQ(Last(m_objLanPage).m_objFailure.m_iKind, CFailure::Kind::NoReply);
}

TEST_F(CReadWriteFlowNoteEndTest, WhatThePageCannotShowIsToldInItsWords) {
    const auto fnFail = []() -> bool { throw std::out_of_range("SPEED has no entry for 9"); };
    m_objParameterPage.m_fnRefresh = fnFail;
    m_objLanPage.m_fnRefresh = fnFail;
    m_objMessageBox.Expect("Error RefreshParameterSettingItem");
    m_objFlow.Read();
    m_objFlow.LanRead();  // has no box
    for (const CFakeSettingsPage* const objPage : {&m_objParameterPage, &m_objLanPage}) {
        EXPECT_EQ(Last(*objPage).m_iKind, Kind::Unshown);
        EXPECT_EQ(Last(*objPage).m_strText, "SPEED has no entry for 9");
    }
}

TEST_F(CReadWriteFlowNoteEndTest, AValueThatThePageCannotReadIsToldInItsWords) {
    m_objParameterPage.m_fnRefresh = []() -> bool {
        throw CConversionError("SPEED", CConversionError("x"));
    };
    m_objMessageBox.Expect("Error RefreshParameterSettingItem");
    m_objFlow.Read();
    EXPECT_EQ(Last(m_objParameterPage).m_iKind, Kind::Unshown);
    EXPECT_EQ(Last(m_objParameterPage).m_strText, "SPEED: not a number in range: \"x\"");
}

TEST_F(CReadWriteFlowNoteEndTest, ATextThatIsTooLongIsToldToHaveSentNothing) {
    m_objItemManager.m_objDhcpClientHost->SetValue("longer than sixteen characters");
    m_objFlow.LanSet();
    EXPECT_EQ(Last(m_objLanPage).m_iKind, Kind::Unsendable);
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
}

TEST_F(CReadWriteFlowNoteEndTest, AProgramThatClosesTellsNobody) {
    for (const auto fnFlow : {&CReadWriteFlow::Read, &CReadWriteFlow::Set, &CReadWriteFlow::LanRead,
                              &CReadWriteFlow::LanSet}) {
        m_objEventLoop.AtNextYield([this] { m_objEventLoop.RequestClose(); });
        (m_objFlow.*fnFlow)();
    }
    EXPECT_TRUE(m_objParameterPage.m_objNotes.empty());
    EXPECT_TRUE(m_objLanPage.m_objNotes.empty());
}

TEST_F(CReadWriteFlowNoteEndTest, ALanSetThatAnotherTakesOverTellsNothing) {
    m_objPrinter.m_iDelay = 1000;
    m_objEventLoop.After(1500, [this] { m_objFlow.LanSet(); });
    m_objFlow.LanSet();
    ASSERT_EQ(m_objLanPage.m_objNotes.size(), 1U);
    EXPECT_EQ(Last(m_objLanPage).m_iKind, Kind::Sent);
}

TEST_F(CReadWriteFlowNoteEndTest, AFieldThatIsTooWideIsToldToHaveSentNothing) {
    m_objItemManager.m_objFeedAdjustment->SetValue(1234);
    m_objFlow.Set();
    ASSERT_EQ(m_objParameterPage.m_objNotes.size(), 1U);
    EXPECT_EQ(Last(m_objParameterPage).m_iKind, Kind::Unsendable);
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
}

/// A page that does not want to know.
struct CDeafPage : ISettingsPage {
    bool Refresh() override { return true; }
    bool Store() override { return true; }
};

TEST_F(CReadWriteFlowNoteEndTest, APageNeedNotHearOfIt) {
    CDeafPage objPage;
    CReadWriteFlow objFlow(m_objItemManager, m_objSession, m_objMessageBox, objPage, objPage);
    objFlow.Read();
    objFlow.LanSet();
    EXPECT_EQ(m_objSocket.m_strSent.size(), 8U);
}

}  // namespace
