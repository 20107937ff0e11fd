#include "tests/platform_usb/CUsbFixture.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <thread>
#include <vector>

namespace {

/// Whether nobody has the device open any more. The emulated system hears of a closing a moment
/// later, in a thread of its own.
bool IsLeftSoon(CEmulatedPrinter& p_objDevice) {
    const auto objEnd = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (p_objDevice.Clients() > 0 && std::chrono::steady_clock::now() < objEnd) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return p_objDevice.Clients() == 0;
}

using Endpoints = CUsbBehaviour::Endpoints;
using Cleared = std::vector<unsigned>;

constexpr unsigned OutEndpoint = CUsbTransfers::OutEndpoint;
constexpr unsigned InEndpoint = CUsbTransfers::InEndpoint;

/// What a device refuses, and what it cannot do.
class CUsbPrinterTest : public CUsbFixture {
protected:
    CEmulatedPrinter& PlugWith(Endpoints p_iEndpoints) {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_iEndpoints = p_iEndpoints;
        return Plug(objBehaviour);
    }

    CEmulatedPrinter& PlugWithAlternates(bool p_bRefuses) {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_bAlternates = true;
        objBehaviour.m_bRefusesAlternate = p_bRefuses;
        return Plug(objBehaviour);
    }

    CEmulatedPrinter& PlugOneThatReadsWith(int p_iError) {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_iReadError = p_iError;
        return Plug(objBehaviour);
    }

    CEmulatedPrinter& PlugHalted(bool p_bStaysHalted) {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_bHalted = true;
        objBehaviour.m_bStaysHalted = p_bStaysHalted;
        return Plug(objBehaviour);
    }

    void ExpectAnExchange() {
        EXPECT_EQ(Send(Status), 5);
        EXPECT_EQ(Receive(), 13);
        EXPECT_EQ(m_strReceived, StatusAnswer());
    }
};

// Endpoints.

TEST_F(CUsbPrinterTest, EndpointsThatAreNotBulkOnesAreNotUsed) {
    const CEmulatedPrinter& objDevice = PlugWith(Endpoints::InterruptAndBulk);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), 0);
    ExpectAnExchange();
    EXPECT_EQ(objDevice.Taken(), Status);
    EXPECT_EQ(objDevice.Cleared(), Cleared{}) << "nothing was refused";
}

TEST_F(CUsbPrinterTest, WithoutBulkEndpointsItIsNotReadyAndLeftAlone) {
    CEmulatedPrinter& objDevice = PlugWith(Endpoints::Interrupt);
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -1);
    EXPECT_EQ(objDevice.Claims(), 0);
    EXPECT_TRUE(objDevice.HasDriver());
}

// Alternate settings.

TEST_F(CUsbPrinterTest, TheSettingThatListensAndAnswersIsChosen) {
    const CEmulatedPrinter& objDevice = PlugWithAlternates(false);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_EQ(objDevice.Alternate(), 1U);
    ExpectAnExchange();
}

TEST_F(CUsbPrinterTest, WhereThatIsRefusedItIsNotReadyAndGivenBack) {
    CEmulatedPrinter& objDevice = PlugWithAlternates(true);
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -1);
    EXPECT_EQ(objDevice.Claims(), 1);
    EXPECT_FALSE(objDevice.IsClaimed());
    EXPECT_TRUE(objDevice.HasDriver());
    EXPECT_TRUE(IsLeftSoon(objDevice));
    CEmulatedPrinter& objOther = Plug();
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_TRUE(objOther.IsClaimed());
}

// Opening.

TEST_F(CUsbPrinterTest, OneThatCannotBeOpenedIsNotReadyAndHidesNoOther) {
    CUsbBehaviour objBehaviour;
    objBehaviour.m_bCannotBeOpened = true;
    CEmulatedPrinter& objDevice = Plug(objBehaviour);
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -1);
    EXPECT_EQ(objDevice.Claims(), 0);
    EXPECT_TRUE(objDevice.HasDriver());
    CEmulatedPrinter& objOther = Plug();
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_TRUE(objOther.IsClaimed());
}

// Endpoints that refuse.

TEST_F(CUsbPrinterTest, ARefusedWriteFailsAndTheEndpointIsCleared) {
    CEmulatedPrinter& objDevice = PlugHalted(false);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_EQ(Send(Status), -1);
    EXPECT_EQ(objDevice.Taken(), "");
    EXPECT_EQ(objDevice.Cleared(), Cleared{OutEndpoint});
    EXPECT_TRUE(objDevice.IsClaimed()) << "it is not gone";
    ExpectAnExchange();
}

TEST_F(CUsbPrinterTest, WhereClearingIsRefusedTheNextWriteFailsToo) {
    CEmulatedPrinter& objDevice = PlugHalted(true);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_EQ(Send(Status), -1);
    EXPECT_EQ(Send(Status), -1);
    EXPECT_EQ(objDevice.Cleared(), (Cleared{OutEndpoint, OutEndpoint}));
    EXPECT_TRUE(objDevice.IsClaimed());
}

TEST_F(CUsbPrinterTest, AnOverflowIsNoAnswerAndTheNextReadGetsIt) {
    CEmulatedPrinter& objDevice = PlugOneThatReadsWith(EOVERFLOW);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(Receive(), 0);
    EXPECT_EQ(objDevice.Cleared(), Cleared{InEndpoint});
    EXPECT_TRUE(objDevice.IsClaimed()) << "it is not gone";
    EXPECT_EQ(Receive(), 13);
    EXPECT_EQ(m_strReceived, StatusAnswer());
}

TEST_F(CUsbPrinterTest, SoItIsWithARefusedRead) {
    const CEmulatedPrinter& objDevice = PlugOneThatReadsWith(EPIPE);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(Receive(), 0);
    EXPECT_EQ(objDevice.Cleared(), Cleared{InEndpoint});
    EXPECT_EQ(Receive(), 13);
}

TEST_F(CUsbPrinterTest, AnyOtherErrorGivesThePrinterUp) {
    CEmulatedPrinter& objDevice = PlugOneThatReadsWith(EPROTO);
    ASSERT_EQ(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(Receive(), -1);
    EXPECT_EQ(objDevice.Cleared(), Cleared{});
    EXPECT_FALSE(objDevice.IsClaimed());
}

}  // namespace
