#include "cli/CCommandError.h"
#include "cli/CPrinterConnector.h"
#include "jobs/MCompare.h"
#include "platform/usb/CUsbPrinterLister.h"
#include "simulator/usb/CEmulatedPrinter.h"
#include "tests/cli/CFakeInterrupt.h"
#include "tests/fakes/CFakeSessionEvents.h"
#include "tests/jobs/MOtherSettings.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <deque>
#include <memory>
#include <string>
#include <vector>

// What a target's name leads to on USB, in an emulated system.

namespace {

using Kind = CFailure::Kind;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

class CNoLog : public ISimulatorLog {
    void Line(std::size_t /*p_iConnection*/, std::string_view /*p_strLine*/) override {}
};

class UsbConnectorTest : public ::testing::Test {
protected:
    static constexpr CPrinterLimits ShortLimits{1, 0.5, 1, 0};

    void SetUp() override { ASSERT_TRUE(m_objWorld.IsInside()); }

    /// Plugs a printer in, at the next port of bus 1.
    CPrinter& Plug(const CUsbBehaviour& p_objBehaviour = {},
                   const CFaultSettings& p_objFaults = {}) {
        CPrinter& objPrinter = m_objPrinters.emplace_back();
        m_objDevices.push_back(std::make_unique<CEmulatedPrinter>(
            m_objWorld, objPrinter, m_objLog, p_objBehaviour, p_objFaults,
            static_cast<int>(m_objPrinters.size())));
        return objPrinter;
    }

    std::unique_ptr<IPrinter> Connect(const std::string& p_strTarget) {
        return m_objConnector.Connect(CTarget::Parse(p_strTarget), milliseconds(0), m_objEvents);
    }

    CFailure Failure(const std::string& p_strTarget) {
        const auto iStart = steady_clock::now();
        const CStatusReport objReport = Connect(p_strTarget)->Status();
        m_iTook = std::chrono::duration_cast<milliseconds>(steady_clock::now() - iStart);
        EXPECT_EQ(objReport.m_strCode, "");
        m_bSent = objReport.m_bSent;
        return objReport.m_objFailure;
    }

    static CUsbBehaviour Numbered(const std::string& p_strSerialNumber) {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_strSerialNumber = p_strSerialNumber;
        return objBehaviour;
    }

    CUsbWorld m_objWorld;
    CNoLog m_objLog;
    std::deque<CPrinter> m_objPrinters;
    std::vector<std::unique_ptr<CEmulatedPrinter>> m_objDevices;
    CUsbPrinterLister m_objUsbPrinters;
    CFakeInterrupt m_objInterrupt;
    CPrinterConnector m_objConnector{m_objUsbPrinters, m_objInterrupt, ShortLimits};
    CFakeSessionEvents m_objEvents;
    milliseconds m_iTook{0};
    bool m_bSent = false;
};

TEST_F(UsbConnectorTest, ReadsEverything) {
    CPrinter& objSimulated = Plug();
    for (const std::string& strCommand : MOtherSettings::Commands()) {
        ASSERT_TRUE(objSimulated.Handle(strCommand).m_bAccepted) << strCommand;
    }
    std::vector<const MSettings::Row*> objRows;
    for (const MSettings::Row& objRow : MSettings::All()) {
        objRows.push_back(&objRow);
    }
    const CReadReport objReport = Connect("usb")->Read(objRows);
    EXPECT_TRUE(objReport.m_objFailure.IsNone());
    const auto objCompared =
        MCompare::Compare(objReport.m_objSnapshot, CSnapshot(objSimulated.Items()));
    for (const MSettings::Row* const objRow : objCompared.m_objDifferent) {
        ADD_FAILURE() << objRow->m_strName;
    }
    std::size_t iItems = 0;
    for (const MSettings::Row* const objRow : objCompared.m_objSame) {
        iItems += objRow->Items().size();
    }
    EXPECT_EQ(iItems, 73U);
}

TEST_F(UsbConnectorTest, APortAndASerialNumberLeadToTheirPrinter) {
    Plug(Numbered("A17")).SetStatus("02");
    Plug(Numbered("B4")).SetStatus("04");
    EXPECT_EQ(Connect("usb:1-1")->Status().m_strCode, "02");
    EXPECT_EQ(Connect("usb:1-2")->Status().m_strCode, "04");
    EXPECT_EQ(Connect("usb:A17")->Status().m_strCode, "02");
    EXPECT_EQ(Connect("usb:B4")->Status().m_strCode, "04");
}

TEST_F(UsbConnectorTest, SeveralPrintersAreAnErrorThatListsThem) {
    Plug(Numbered("A17"));
    Plug(Numbered("B4"));
    try {
        Connect("usb");
        ADD_FAILURE();
    } catch (const CCommandError& objError) {
        EXPECT_EQ(objError.Code(), MExitCode::NotReachable);
        EXPECT_EQ(objError.Words().m_strCause,
                  "usb:1-1 (Varden Label Printer, serial number A17), usb:1-2 (Varden Label "
                  "Printer, serial number B4)");
    }
    EXPECT_EQ(m_objDevices[0]->Taken() + m_objDevices[1]->Taken(), "");
    EXPECT_FALSE(m_objDevices[0]->IsClaimed() || m_objDevices[1]->IsClaimed());
}

TEST_F(UsbConnectorTest, APrinterOfAnotherMakerBesideItIsNotMeant) {
    CUsbBehaviour objForeign;
    objForeign.m_strDeviceId = CUsbBehaviour::DeviceId("MFG:Acme;");
    Plug(objForeign);
    Plug().SetStatus("02");
    EXPECT_EQ(Connect("usb")->Status().m_strCode, "02");
    EXPECT_EQ(Failure("usb:1-1").m_iKind, Kind::UsbMismatch);
    EXPECT_FALSE(m_bSent);
}

TEST_F(UsbConnectorTest, WithoutAPrinterThereIsNoneToAsk) {
    EXPECT_THROW(Connect("usb"), CCommandError);
}

TEST_F(UsbConnectorTest, APrinterThatIsHeldIsToldWithTheSystemsNumberAndItsFile) {
    CUsbBehaviour objBusy;
    objBusy.m_bClaimBusy = true;
    Plug(objBusy);
    const CFailure objFailure = Failure("usb");
    EXPECT_EQ(objFailure.m_iKind, Kind::UsbNotReady);
    EXPECT_EQ(objFailure.m_iNumber, EBUSY);
    EXPECT_EQ(objFailure.m_strDevice, "/dev/bus/usb/001/002");
}

TEST_F(UsbConnectorTest, APrinterThatIsPulledOutBeforeItIsAskedIsToldToBeGone) {
    Plug();
    const auto objPrinter = Connect("usb");
    m_objDevices.front()->Unplug();
    const CStatusReport objReport = objPrinter->Status();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::UsbNotReady);
    EXPECT_EQ(objReport.m_objFailure.m_iNumber, ENODEV);
    EXPECT_FALSE(objReport.m_bSent);
}

TEST_F(UsbConnectorTest, APrinterThatTakesNothingIsGivenUpInTime) {
    CUsbBehaviour objDeaf;
    objDeaf.m_bTakesNothing = true;
    Plug(objDeaf);
    EXPECT_EQ(Failure("usb").m_iKind, Kind::UsbNotSent);
    EXPECT_GE(m_iTook, milliseconds(500));
    EXPECT_LT(m_iTook, milliseconds(1100));
}

TEST_F(UsbConnectorTest, SoIsOneThatIsSilentAndOneThatDoesNotSayWhatItIs) {
    CFaultSettings objSilent;
    objSilent.m_bSilent = true;
    Plug({}, objSilent);
    EXPECT_EQ(Failure("usb:1-1").m_iKind, Kind::UsbNoAnswer);
    EXPECT_TRUE(m_bSent);
    EXPECT_GE(m_iTook, milliseconds(1000));
    EXPECT_LT(m_iTook, milliseconds(1900));
    CUsbBehaviour objMute;
    objMute.m_bHangsOnDeviceId = true;
    Plug(objMute);
    EXPECT_EQ(Failure("usb:1-2").m_iKind, Kind::UsbNoDeviceId);
    EXPECT_LT(m_iTook, milliseconds(1600));
}

}  // namespace
