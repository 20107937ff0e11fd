#include "tests/ui/CUsbWindowFixture.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <tuple>

// Every button against a printer on USB that cannot be had, or goes away; and Setup, which opens it
// again.

namespace {

using Manner = UsbAction::Manner;
using Unplug = CUsbBehaviour::Unplug;

class FmMainUsbUnplugTest : public CUsbWindowFixture {
protected:
    FmMainUsbUnplugTest()
        : CUsbWindowFixture(Pace::Hasty) {}

    /// Setup finds nothing, then a printer, which works: its status comes up in p_strStatusLabel.
    void ExpectSetupToOpenItOnceItIsThere(const char* p_strStatusLabel) {
        ExpectOpenError();
        PressSetup();
        m_objBoxes.Verify();
        UnplugAll();

        CEmulatedPrinter& objDevice = Plug();
        PressSetup();
        EXPECT_TRUE(objDevice.IsClaimed());
        EXPECT_FALSE(objDevice.HasDriver());
        Press("btnGetStatus");
        EXPECT_EQ(Taken(), "{WS|}");
        EXPECT_EQ(Shown(p_strStatusLabel), "ON LINE");
        EXPECT_FALSE(objDevice.IsClaimed());
        EXPECT_TRUE(objDevice.HasDriver());
    }

    CUsbBehaviour m_objBehaviour;
};

// A printer that cannot be had.

struct Unusable {
    const char* m_strName;
    const char* m_strText;
    void (*m_fnChange)(CUsbBehaviour& p_objBehaviour);  // null: there is none at all
};

void PrintTo(const Unusable& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class FmMainUsbUnusableTest : public FmMainUsbUnplugTest,
                              public ::testing::WithParamInterface<Unusable> {
protected:
    void SetUp() override {
        FmMainUsbUnplugTest::SetUp();
        if (GetParam().m_fnChange != nullptr) {
            GetParam().m_fnChange(m_objBehaviour);
            Plug(m_objBehaviour);
        }
    }

    void ExpectBoxes(const UsbAction& p_objAction) {
        if (p_objAction.m_iManner != Manner::Silent) {
            m_objBoxes.Expect(GetParam().m_strText, MessageIcon::Exclamation);
        }
    }
};

TEST_P(FmMainUsbUnusableTest, EachButtonTellsSoAndSendsNothing) {
    const auto strBefore = m_objWindow.ShownFields();
    for (const UsbAction& objAction : UsbAction::All()) {
        SCOPED_TRACE(objAction);
        ExpectBoxes(objAction);
        Press(objAction);
        m_objBoxes.Verify();
    }
    ExpectBeeps(0);
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    EXPECT_EQ(Shown("lblStatus"), "");
    for (const auto& objDevice : m_objDevices) {
        EXPECT_EQ(objDevice->Taken(), "");
        EXPECT_TRUE(objDevice->HasDriver());
    }
    // A head check was among the buttons; nothing of it was sent, and it waits for no result.
    ExpectSetupToOpenItOnceItIsThere("lblStatus");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(, FmMainUsbUnusableTest, ::testing::Values(
    Unusable{"Absent", "USB Device not ready !!", nullptr},
    Unusable{"OfAnotherClass", "USB Device not ready !!",
             [](CUsbBehaviour& p_objBehaviour) { p_objBehaviour.m_iClass = 8; }},
    Unusable{"HeldByAnotherProgram", "USB Device not ready !!",
             [](CUsbBehaviour& p_objBehaviour) { p_objBehaviour.m_bClaimBusy = true; }},
    Unusable{"WithoutIdentification", "USB DeviceID receive error",
             [](CUsbBehaviour& p_objBehaviour) { p_objBehaviour.m_bStallsDeviceId = true; }},
    Unusable{"OfAnotherMaker", "USB DeviceID mismatch error",
             [](CUsbBehaviour& p_objBehaviour) {
                 p_objBehaviour.m_strDeviceId = CUsbBehaviour::DeviceId("MFG:Acme;"); }}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });
// clang-format on

// A printer that goes away in the middle of something.

class FmMainUsbGoesAwayTest : public FmMainUsbUnplugTest,
                              public ::testing::WithParamInterface<std::tuple<Unplug, int>> {
protected:
    [[nodiscard]] static Unplug When() { return std::get<Unplug>(GetParam()); }

    /// The boxes for a printer that goes while the first command is dealt with.
    void ExpectBoxes(const UsbAction& p_objAction) {
        const bool bInWrite = When() == Unplug::InWrite;
        const bool bReads = p_objAction.m_iManner == Manner::Reads;
        if (bInWrite) {
            m_objBoxes.Expect("Device Time Out !!", MessageIcon::Critical);
        }
        if (When() == Unplug::AfterWrite) {
            ExpectOpenError();
        }
        if (bReads && !bInWrite) {
            ExpectNoAnswer();
        }
        // Only now does the next command find out that there is no printer.
        if (p_objAction.m_strCommands.size() > 1 && p_objAction.m_iManner == Manner::Writes &&
            !bInWrite) {
            ExpectNotReady();
        }
    }
};

TEST_P(FmMainUsbGoesAwayTest, EachButtonTellsSoAndSetupOpensItAgain) {
    m_objBehaviour.m_iUnplug = When();
    m_objBehaviour.m_iUnplugError = std::get<int>(GetParam());
    const bool bInWrite = When() == Unplug::InWrite;
    const auto strBefore = m_objWindow.ShownFields();
    for (const UsbAction& objAction : UsbAction::All()) {
        SCOPED_TRACE(objAction);
        UnplugAll();
        Plug(m_objBehaviour);
        ExpectBoxes(objAction);
        Press(objAction);
        m_objBoxes.Verify();
        EXPECT_EQ(Taken(), objAction.Wire(bInWrite ? 0 : 1));
        ExpectBeeps(bInWrite ? 0 : 1);
    }
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    // A head check was among the buttons; if it was sent, it still waits for its result.
    ExpectSetupToOpenItOnceItIsThere(bInWrite ? "lblStatus" : "lblHeadCheck");
}

std::string NameOf(const ::testing::TestParamInfo<std::tuple<Unplug, int>>& p_objInfo) {
    const auto [iWhen, iError] = p_objInfo.param;
    const char* const strWhen = iWhen == Unplug::AfterWrite ? "AfterTheWrite"
                                : iWhen == Unplug::InWrite  ? "InTheWrite"
                                                            : "InTheRead";
    return std::string(strWhen) + (iError == ESHUTDOWN ? "Shutdown" : "ProtocolError");
}

// Behind a write no transfer is under way that could end with one error or another.
INSTANTIATE_TEST_SUITE_P(, FmMainUsbGoesAwayTest,
                         ::testing::Values(std::tuple(Unplug::AfterWrite, ESHUTDOWN),
                                           std::tuple(Unplug::InRead, ESHUTDOWN),
                                           std::tuple(Unplug::InRead, EPROTO),
                                           std::tuple(Unplug::InWrite, ESHUTDOWN),
                                           std::tuple(Unplug::InWrite, EPROTO)),
                         NameOf);

TEST_F(FmMainUsbUnplugTest, ThePrinterThatSetupHoldsGoesAway) {
    CEmulatedPrinter& objDevice = Plug();
    Press("btnGetStatus");  // without a command there is no Setup on USB
    PressSetup();
    EXPECT_TRUE(objDevice.IsClaimed());
    objDevice.Unplug();
    m_objBoxes.Expect("Device Time Out !!", MessageIcon::Critical);
    Press("btnRead");
    m_objBoxes.Verify();
    ExpectNotReady();
    Press("btnRead");
    m_objBoxes.Verify();
    EXPECT_EQ(Taken(), "{WS|}");
    ExpectSetupToOpenItOnceItIsThere("lblStatus");
}

TEST_F(FmMainUsbUnplugTest, SettingUpAnotherLinkGivesThePrinterBack) {
    CEmulatedPrinter& objDevice = Plug();
    Press("btnGetStatus");
    PressSetup();
    EXPECT_TRUE(objDevice.IsClaimed());
    m_objWindow.Choose("cmbInterface", 0);
    PressSetup();
    EXPECT_FALSE(objDevice.IsClaimed());
    EXPECT_TRUE(objDevice.HasDriver());
}

TEST_F(FmMainUsbUnplugTest, APrinterThatGoesBehindItsAnswerHasAnswered) {
    CFaultSettings objFaults;
    objFaults.m_iCloseAfter = 1;
    Plug({}, objFaults);
    Press("btnGetStatus");
    EXPECT_EQ(Shown("lblStatus"), "ON LINE");
    m_objBoxes.Expect("Device Time Out !!", MessageIcon::Critical);
    Press("btnRead");
    m_objBoxes.Verify();
    EXPECT_EQ(Taken(), "{WS|}");
    ExpectSetupToOpenItOnceItIsThere("lblStatus");
}

TEST_F(FmMainUsbUnplugTest, ReadEndsWhereThePrinterGoes) {
    TeachPrinter();
    const auto strBefore = m_objWindow.ShownFields();
    CFaultSettings objFaults;
    objFaults.m_iCloseAfter = 2;
    Plug({}, objFaults);
    ExpectNotReady();
    Press("btnRead");
    EXPECT_EQ(Taken(), "{Z5;0|}{Z5;1|}");
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
}

TEST_F(FmMainUsbUnplugTest, AmongSeveralDevicesTheWindowFindsThePrinter) {
    m_objBehaviour.m_bClaimBusy = true;
    Plug(m_objBehaviour);
    CUsbBehaviour objOther;
    objOther.m_strDeviceId = CUsbBehaviour::DeviceId("MFG:Acme;");
    Plug(objOther);
    m_objBoxes.Expect("USB DeviceID mismatch error", MessageIcon::Exclamation);
    Press("btnGetStatus");
    m_objBoxes.Verify();
    Plug();
    Press("btnGetStatus");
    EXPECT_EQ(Taken(), "{WS|}");
    EXPECT_EQ(Shown("lblStatus"), "ON LINE");
}

}  // namespace
