#include "tests/fakes/CSimulatedPrinter.h"
#include "tests/flows/CReadWriteFlowFixture.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <ostream>
#include <string>

namespace {

using std::chrono::milliseconds;

class CReadWriteFlowSimulatorTest : public CReadWriteFlowFixture {
protected:
    /// Every group's fields, as they stand in p_objItemManager.
    static std::string AllFields(const CItemManager& p_objItemManager) {
        std::string strFields;
        for (std::int16_t iGroup = 0; iGroup <= 4; ++iGroup) {
            strFields += MWire::StoredFields(p_objItemManager, iGroup) + "/";
        }
        return strFields;
    }

    /// Values that differ from the defaults, in every kind of field.
    void EditParameters() {
        m_objItemManager.m_objFeedDirection->SetValue("-");
        m_objItemManager.m_objFeedAdjustment->SetValue(123);
        m_objItemManager.m_objXCoordinateDirection->SetValue("-");
        m_objItemManager.m_objXCoordinateAdjustment->SetValue(45);
        m_objItemManager.m_objThresholdAdjustment_R->SetValue(27);
        m_objItemManager.m_objZeroStyle->SetValue(1);
        m_objItemManager.m_objControlCode1st->SetValue("7C");
        m_objItemManager.m_objAutoForwardAdjustment->SetValue(48);
    }

    void EditLan() {
        m_objItemManager.m_objIpAddress1->SetValue(10);
        m_objItemManager.m_objIpAddress4->SetValue(7);
        m_objItemManager.m_objGateway1->SetValue(10);
        m_objItemManager.m_objSubnetMask4->SetValue(128);
        m_objItemManager.m_objSocketPortNumber->SetValue(9100);
        m_objItemManager.m_objDhcpSetting->SetValue(1);
        m_objItemManager.m_objDhcpClientHost->SetValue("desk");
    }

    /// Puts every value back to its default.
    void Forget() {
        for (const CItemManager::Row& objRow : CItemManager::Rows()) {
            CItem& objItem = *(m_objItemManager.*objRow.m_objSlot);
            objItem.m_vValue = objItem.m_vDefaultValue;
        }
    }

    void SetAndRead() {
        m_objFlow.Set();
        Forget();
        m_objFlow.Read();
    }
};

TEST_F(CReadWriteFlowSimulatorTest, ReadAfterSetGivesWhatWasSet) {
    const CSimulatedPrinter objPrinter(m_objEventLoop, m_objSocket);
    Connect();
    EditParameters();
    const std::string strEdited = MWire::StoredFields(m_objItemManager, 0) +
                                  MWire::StoredFields(m_objItemManager, 1) +
                                  MWire::StoredFields(m_objItemManager, 4);
    SetAndRead();
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 0) + MWire::StoredFields(m_objItemManager, 1) +
                  MWire::StoredFields(m_objItemManager, 4),
              strEdited);
    EXPECT_NE(AllFields(objPrinter.Items()), AllFields(CItemManager()));
    EXPECT_EQ(objPrinter.Refused(), 0U);
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 1);
    EXPECT_EQ(m_objSocket.m_strSent.size(), 5U);
}

class CReadWriteFlowFontTest : public CReadWriteFlowSimulatorTest,
                               public ::testing::WithParamInterface<int> {};

TEST_P(CReadWriteFlowFontTest, SurvivesSetAndRead) {
    const CSimulatedPrinter objPrinter(m_objEventLoop, m_objSocket);
    Connect();
    m_objItemManager.m_objFontCode->m_vValue = GetParam();
    const std::string strCode = m_objItemManager.m_objFontCode->GetValueString();
    SetAndRead();
    EXPECT_EQ(m_objItemManager.m_objFontCode->GetValueString(), strCode);
    EXPECT_EQ(objPrinter.Refused(), 0U);
}

INSTANTIATE_TEST_SUITE_P(, CReadWriteFlowFontTest, ::testing::Range(0, 5));

TEST_F(CReadWriteFlowSimulatorTest, LanReadAfterLanSetGivesWhatWasSet) {
    const CSimulatedPrinter objPrinter(m_objEventLoop, m_objSocket);
    Connect();
    EditLan();
    m_objFlow.LanSet();
    EXPECT_EQ(m_objSocket.m_strSent.size(), 5U);
    Forget();
    m_objFlow.LanRead();
    const std::string strFields = MWire::StoredFields(m_objItemManager, 3);
    const std::string strExpected = "0010168010007010000000000255255255128109100"
                                    "1FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFdesk";
    EXPECT_EQ(strFields.substr(0, strExpected.size()), strExpected);
    EXPECT_EQ(strFields.size(), 92U) << "the host name has its whole width";
    EXPECT_EQ(objPrinter.Refused(), 0U);
    EXPECT_EQ(m_objLanPage.m_iRefreshes, 1);
}

TEST_F(CReadWriteFlowSimulatorTest, TheDefaultsAreWhatAFreshPrinterHolds) {
    const CSimulatedPrinter objPrinter(m_objEventLoop, m_objSocket);
    Connect();
    m_objFlow.Set();
    m_objFlow.LanSet();
    EXPECT_EQ(objPrinter.Refused(), 0U);
    m_objFlow.Read();
    for (const std::int16_t iGroup : std::vector<std::int16_t>{0, 1, 4}) {
        EXPECT_EQ(MWire::StoredFields(m_objItemManager, iGroup),
                  MWire::StoredFields(CItemManager(), iGroup));
    }
}

/// What a flow comes to.
struct Outcome {
    std::size_t m_iCommands;  // that it sends
    std::string m_strBox;     // that it shows; empty for none
};

struct FaultCase {
    const char* m_strName;
    std::function<void(CFaultSettings&)> m_fnSet;
    Outcome m_objRead;
    Outcome m_objSet;
    Outcome m_objLanRead;
    Outcome m_objLanSet;
};

void PrintTo(const FaultCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class CReadWriteFlowFaultTest : public CReadWriteFlowSimulatorTest,
                                public ::testing::WithParamInterface<FaultCase> {
protected:
    void Expect(const std::string& p_strBox) {
        if (p_strBox == "Device Time Out !!") {
            m_objMessageBox.Expect(p_strBox, MessageIcon::Critical, "Failure");
        } else if (!p_strBox.empty()) {
            m_objMessageBox.Expect(p_strBox, MessageIcon::Exclamation);
        }
    }

    /// Runs the flow in front of the printer with the fault.
    void ExpectOutcome(const Outcome& p_objOutcome, void (CReadWriteFlow::*p_fnRun)()) {
        CFaultSettings objFaults;
        GetParam().m_fnSet(objFaults);
        const CSimulatedPrinter objPrinter(m_objEventLoop, m_objSocket, objFaults);
        Connect();
        Expect(p_objOutcome.m_strBox);
        (m_objFlow.*p_fnRun)();
        m_objMessageBox.Verify();
        EXPECT_EQ(m_objSocket.m_strSent.size(), p_objOutcome.m_iCommands);
        EXPECT_TRUE(m_objView.AreControlsEnabled());
        EXPECT_FALSE(m_objSession.Busy().IsBusy());
    }

    [[nodiscard]] static int RefreshesAfter(const Outcome& p_objOutcome) {
        return p_objOutcome.m_strBox.empty() ? 1 : 0;
    }
};

TEST_P(CReadWriteFlowFaultTest, ReadShowsItAndEndsWithTheButtonsEnabled) {
    ExpectOutcome(GetParam().m_objRead, &CReadWriteFlow::Read);
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, RefreshesAfter(GetParam().m_objRead));
    EXPECT_EQ(m_objLanPage.m_iRefreshes, 0);
}

TEST_P(CReadWriteFlowFaultTest, SetShowsItAndEndsWithTheButtonsEnabled) {
    ExpectOutcome(GetParam().m_objSet, &CReadWriteFlow::Set);
}

TEST_P(CReadWriteFlowFaultTest, LanReadShowsItAndEndsWithTheButtonsEnabled) {
    ExpectOutcome(GetParam().m_objLanRead, &CReadWriteFlow::LanRead);
    EXPECT_EQ(m_objLanPage.m_iRefreshes, RefreshesAfter(GetParam().m_objLanRead));
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 0);
}

TEST_P(CReadWriteFlowFaultTest, LanSetShowsItAndEndsWithTheButtonsEnabled) {
    ExpectOutcome(GetParam().m_objLanSet, &CReadWriteFlow::LanSet);
}

const std::string TimeOut = "Device Time Out !!";
const std::string SendError = "'LAN' Send Error !!";

// clang-format off
INSTANTIATE_TEST_SUITE_P(, CReadWriteFlowFaultTest, ::testing::Values(
    //                                                         READ            SET             LAN READ      LAN SET
    FaultCase{"None", [](CFaultSettings&) {}, {3, ""}, {2, ""}, {1, ""}, {5, ""}},
    FaultCase{"Silent", [](CFaultSettings& p_obj) { p_obj.m_bSilent = true; }, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}},
    FaultCase{"Late", [](CFaultSettings& p_obj) { p_obj.m_iDelay = milliseconds(4900); }, {3, ""}, {2, ""}, {1, ""}, {5, ""}},
    FaultCase{"TooLate", [](CFaultSettings& p_obj) { p_obj.m_iDelay = milliseconds(5100); }, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}},
    FaultCase{"SingleBytes", [](CFaultSettings& p_obj) { p_obj.m_iPieces = 1; }, {3, ""}, {2, ""}, {1, ""}, {5, ""}},
    FaultCase{"Pieces", [](CFaultSettings& p_obj) { p_obj.m_iPieces = 5; p_obj.m_iGap = milliseconds(200); }, {3, ""}, {2, ""}, {1, ""}, {5, ""}},
    FaultCase{"PiecesTooSlow", [](CFaultSettings& p_obj) { p_obj.m_iPieces = 1; p_obj.m_iGap = milliseconds(500); }, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}},
    FaultCase{"CutShort", [](CFaultSettings& p_obj) { p_obj.m_iCut = 10; }, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}},
    FaultCase{"CutToNothing", [](CFaultSettings& p_obj) { p_obj.m_iCut = 0; }, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}},
    FaultCase{"Junk", [](CFaultSettings& p_obj) { p_obj.m_bJunk = true; }, {1, TimeOut}, {2, ""}, {1, TimeOut}, {5, ""}},
    FaultCase{"JunkBefore", [](CFaultSettings& p_obj) { p_obj.m_bJunkBefore = true; }, {3, ""}, {2, ""}, {1, ""}, {5, ""}},
    FaultCase{"JunkBeforeInPieces", [](CFaultSettings& p_obj) { p_obj.m_bJunkBefore = true; p_obj.m_iPieces = 4; }, {3, ""}, {2, ""}, {1, ""}, {5, ""}},
    FaultCase{"ClosedAfterOne", [](CFaultSettings& p_obj) { p_obj.m_iCloseAfter = 1; }, {1, SendError}, {1, SendError}, {1, ""}, {1, SendError}},
    FaultCase{"ClosedSilently", [](CFaultSettings& p_obj) { p_obj.m_bSilent = true; p_obj.m_iCloseAfter = 1; }, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}, {1, TimeOut}}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });
// clang-format on

}  // namespace
