#include "tests/platform_usb/CMachinePace.h"
#include "tests/platform_usb/CUsbFixture.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>

namespace {

using namespace std::string_literals;

class CUsbLibraryTest : public CUsbFixture {
protected:
    static CUsbBehaviour OfMaker(const std::string& p_strMaker) {
        return WithId(CUsbBehaviour::DeviceId("MFG:" + p_strMaker + ";MDL:Any;"));
    }

    static CUsbBehaviour WithId(const std::string& p_strBytes) {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_strDeviceId = p_strBytes;
        return objBehaviour;
    }

    static CUsbBehaviour Stalling() {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_bStallsDeviceId = true;
        return objBehaviour;
    }

    static CUsbBehaviour Busy() {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_bClaimBusy = true;
        return objBehaviour;
    }

    static CUsbBehaviour OtherClass() {
        CUsbBehaviour objBehaviour;
        objBehaviour.m_iClass = 8;
        return objBehaviour;
    }
};

// Opening.

TEST_F(CUsbLibraryTest, NothingOnTheBusIsNotReady) {
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -1);
    EXPECT_EQ(Send(Status), -1);
    EXPECT_EQ(Receive(), -1);
}

TEST_F(CUsbLibraryTest, ADeviceOfAnotherClassIsNotReady) {
    CEmulatedPrinter& objDevice = Plug(OtherClass());
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -1);
    EXPECT_EQ(objDevice.Claims(), 0);
}

TEST_F(CUsbLibraryTest, APrinterThatAnotherProgramHoldsIsNotReady) {
    CEmulatedPrinter& objDevice = Plug(Busy());
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -1);
    EXPECT_EQ(objDevice.Taken(), "");
}

TEST_F(CUsbLibraryTest, AnIdentificationThatCannotBeReadIsItsOwnFailure) {
    CEmulatedPrinter& objDevice = Plug(Stalling());
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -2);
    EXPECT_EQ(objDevice.Claims(), 1);
    EXPECT_FALSE(objDevice.IsClaimed());
    EXPECT_TRUE(objDevice.HasDriver());
}

TEST_F(CUsbLibraryTest, AnEmptyIdentificationCannotBeRead) {
    Plug(WithId(CUsbBehaviour::DeviceId("")));
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -2);
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -2);
}

TEST_F(CUsbLibraryTest, AnotherMakerIsAMismatch) {
    CEmulatedPrinter& objDevice = Plug(OfMaker("Acme"));
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -3);
    EXPECT_FALSE(objDevice.IsClaimed());
    EXPECT_TRUE(objDevice.HasDriver());
}

TEST_F(CUsbLibraryTest, OpensAPrinterOfTheRightMaker) {
    CEmulatedPrinter& objDevice = Plug();
    EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_TRUE(objDevice.IsClaimed());
}

TEST_F(CUsbLibraryTest, TheMakersKeyAndNameMayBeInAnyCase) {
    for (const char* const strId : {"manufacturer:VARDEN;", "MDL:X;mfg:varden;", "MFG:Varden"}) {
        SCOPED_TRACE(strId);
        Plug(WithId(CUsbBehaviour::DeviceId(strId)));
        EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
        m_objLibrary.Dll_closeUSB();
        m_objDevices.clear();
    }
}

TEST_F(CUsbLibraryTest, AWrongLengthOfTheIdentificationDoesNotMatter) {
    const std::string strText = "MFG:Varden;MDL:X1;";
    for (const std::string& strLength : {"\0\x12"s, "\0\0"s, "\xFF\xFF"s, "\0\x05"s, ""s}) {
        SCOPED_TRACE(strLength.size());
        Plug(WithId(strLength + strText));
        EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
        m_objLibrary.Dll_closeUSB();
        m_objDevices.clear();
    }
}

TEST_F(CUsbLibraryTest, ADriverOfTheSystemIsPutAsideUntilItIsClosed) {
    CEmulatedPrinter& objDevice = Plug();
    EXPECT_TRUE(objDevice.HasDriver());
    m_objLibrary.Dll_openUSB();
    EXPECT_FALSE(objDevice.HasDriver());
    m_objLibrary.Dll_closeUSB();
    EXPECT_TRUE(objDevice.HasDriver());
    EXPECT_FALSE(objDevice.IsClaimed());
}

TEST_F(CUsbLibraryTest, WithoutADriverThereIsNoneAfterwards) {
    CUsbBehaviour objBehaviour;
    objBehaviour.m_strDriver.clear();
    CEmulatedPrinter& objDevice = Plug(objBehaviour);
    EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
    m_objLibrary.Dll_closeUSB();
    EXPECT_FALSE(objDevice.HasDriver());
}

TEST_F(CUsbLibraryTest, OpeningAnOpenOneAndClosingAClosedOneChangesNothing) {
    CEmulatedPrinter& objDevice = Plug();
    m_objLibrary.Dll_closeUSB();
    EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_EQ(objDevice.Claims(), 1);
    m_objLibrary.Dll_closeUSB();
    m_objLibrary.Dll_closeUSB();
    EXPECT_FALSE(objDevice.IsClaimed());
    EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_EQ(objDevice.Claims(), 2);
}

TEST_F(CUsbLibraryTest, ItsEndClosesThePrinter) {
    CEmulatedPrinter& objDevice = Plug();
    {
        CUsbLibrary objLibrary(m_objEventLoop);
        EXPECT_GE(objLibrary.Dll_openUSB(), 0);
        EXPECT_EQ(m_objLibrary.Dll_openUSB(), -1) << "it is in use";
    }
    EXPECT_TRUE(objDevice.HasDriver());
    EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
}

// Several devices.

TEST_F(CUsbLibraryTest, AmongSeveralTheMatchingOneWins) {
    Plug(OtherClass());
    Plug(OfMaker("Acme"));
    Plug(Stalling());
    CEmulatedPrinter& objRight = Plug();
    Plug(Busy());
    EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_TRUE(objRight.IsClaimed());
    EXPECT_TRUE(m_objDevices[1]->HasDriver());
}

TEST_F(CUsbLibraryTest, OfTwoThatMatchOneIsTaken) {
    Plug();
    Plug();
    EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
    EXPECT_NE(m_objDevices[0]->IsClaimed(), m_objDevices[1]->IsClaimed());
}

TEST_F(CUsbLibraryTest, OtherwiseTheOneThatCameFurthestTells) {
    Plug(Busy());
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -1);
    Plug(Stalling());
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -2);
    Plug(OfMaker("Acme"));
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -3);
    Plug(Stalling());
    Plug(Busy());
    EXPECT_EQ(m_objLibrary.Dll_openUSB(), -3);
}

// Writing and reading.

TEST_F(CUsbLibraryTest, WritesAndReads) {
    CEmulatedPrinter& objDevice = Plug();
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(objDevice.Taken(), Status);
    EXPECT_EQ(Receive(), 13);
    EXPECT_EQ(m_strReceived, StatusAnswer());
}

TEST_F(CUsbLibraryTest, TheAnswerWaitsWhileTheLibraryIsClosed) {
    Plug();
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send("{Z5;1|}"), 7);
    m_objLibrary.Dll_closeUSB();
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Receive(50), 27);
    EXPECT_EQ(m_strReceived, "\x02"
                             "0" +
                                 m_objPrinter.SettingsAnswer(1));
}

TEST_F(CUsbLibraryTest, AnAnswerOfSeveralPacketsComesWhole) {
    Plug();
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send("{Z5;3|}"), 7);
    EXPECT_EQ(Receive(192), 98);
    EXPECT_EQ(m_strReceived.substr(2), m_objPrinter.SettingsAnswer(3));
}

TEST_F(CUsbLibraryTest, AnAnswerInPiecesComesWhole) {
    CFaultSettings objFaults;
    objFaults.m_iPieces = 5;
    objFaults.m_iGap = Milliseconds(1);
    Plug({}, objFaults);
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send("{Z5;0|}"), 7);
    EXPECT_EQ(Receive(54), 29);
    EXPECT_EQ(m_strReceived.substr(2), m_objPrinter.SettingsAnswer(0));
}

TEST_F(CUsbLibraryTest, AnAnswerLongerThanTheBufferIsTakenInParts) {
    Plug();
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(Receive(4), 4);
    EXPECT_EQ(m_strReceived, StatusAnswer().substr(0, 4));
    EXPECT_EQ(Receive(100), 9);
    EXPECT_EQ(m_strReceived, StatusAnswer().substr(4));
}

TEST_F(CUsbLibraryTest, AnEmptyPacketIsNoAnswer) {
    CUsbBehaviour objBehaviour;
    objBehaviour.m_bEmptyBeforeAnswer = true;
    Plug(objBehaviour);
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(Receive(), 13);
    EXPECT_EQ(m_strReceived, StatusAnswer());
}

TEST_F(CUsbLibraryTest, NothingToSendAndNoRoomToReceiveIsDoneAtOnce) {
    Plug();
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(""), 0);
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(Receive(0), 0);
    EXPECT_EQ(Receive(), 13);
}

TEST_F(CUsbLibraryTest, AReceiveWaitsASecondAndKeepsTheWindowPainted) {
    Plug();
    m_objLibrary.Dll_openUSB();
    const std::int64_t iYields = m_objEventLoop.Yields();
    const Milliseconds iTime = Time([this] { EXPECT_EQ(Receive(), 0); });
    EXPECT_GE(iTime, Milliseconds(900));
    EXPECT_LE(iTime, Milliseconds(3000));
    EXPECT_GE(m_objEventLoop.Yields() - iYields, 50);
}

TEST_F(CUsbLibraryTest, ALateAnswerIsThereForTheNextReceive) {
    CFaultSettings objFaults;
    objFaults.m_iDelay = Milliseconds(1300);
    Plug({}, objFaults);
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(Receive(), 0);
    EXPECT_EQ(Receive(), 13);
    EXPECT_EQ(m_strReceived, StatusAnswer());
}

TEST_F(CUsbLibraryTest, WhatComesAsTheWaitEndsIsNotLost) {
    CUsbBehaviour objBehaviour;
    objBehaviour.m_bGivesAtTheLastMoment = true;
    Plug(objBehaviour);
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(Receive(), 13);
    EXPECT_EQ(m_strReceived, StatusAnswer());
}

TEST_F(CUsbLibraryTest, ALateAnswerDoesNotPassForTheNextCommands) {
    CFaultSettings objFaults;
    objFaults.m_iDelay = Milliseconds(200);
    Plug({}, objFaults);
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send("{Z5;0|}"), 7);
    m_objLibrary.Dll_closeUSB();
    std::this_thread::sleep_for(Milliseconds(400));
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(Receive(54), 13);
    EXPECT_EQ(m_strReceived, StatusAnswer());
}

TEST_F(CUsbLibraryTest, ASlowDeviceIsWaitedFor) {
    CUsbBehaviour objBehaviour;
    objBehaviour.m_iSlow = Milliseconds(300);
    Plug(objBehaviour);
    m_objLibrary.Dll_openUSB();
    EXPECT_GE(Time([this] { EXPECT_EQ(Send(Status), 5); }), Milliseconds(300));
    EXPECT_EQ(Receive(), 13);
}

TEST_F(CUsbLibraryTest, ASendThatIsNotTakenEndsAfterFiveSeconds) {
    CUsbBehaviour objBehaviour;
    objBehaviour.m_bTakesNothing = true;
    Plug(objBehaviour);
    m_objLibrary.Dll_openUSB();
    CMachinePace objPace{Milliseconds(2)};
    const Milliseconds iTime = Time([this] { EXPECT_EQ(Send(Status), -1); });
    EXPECT_GE(iTime, Milliseconds(4900));
    EXPECT_LE(iTime, Milliseconds(8000));
    EXPECT_GE(m_objEventLoop.Yields(), objPace.Stop() / 8) << "about fifty a second";
}

TEST_F(CUsbLibraryTest, ALargeWriteGoesOutWhole) {
    std::string strLarge;
    for (int i = 0; i < 100'000; ++i) {
        strLarge.push_back(static_cast<char>(i * 7 / 5));
    }
    CEmulatedPrinter& objDevice = Plug();
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send(strLarge), 100'000);
    EXPECT_EQ(objDevice.Taken(), strLarge);
}

TEST_F(CUsbLibraryTest, ShortWritesAreContinued) {
    CUsbBehaviour objBehaviour;
    objBehaviour.m_iMostTaken = 3;
    CEmulatedPrinter& objDevice = Plug(objBehaviour);
    m_objLibrary.Dll_openUSB();
    EXPECT_EQ(Send("{Z5;1|}"), 7);
    EXPECT_EQ(objDevice.Taken(), "{Z5;1|}");
    EXPECT_EQ(Receive(50), 27);
}

// Closing the program.

TEST_F(CUsbLibraryTest, ClosingTheProgramEndsAReceiveAtOnce) {
    Plug();
    m_objLibrary.Dll_openUSB();
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 5, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_LE(Time([this] { EXPECT_EQ(Receive(), 0); }), Milliseconds(900));
}

TEST_F(CUsbLibraryTest, ClosingTheProgramEndsASendAtOnce) {
    CUsbBehaviour objBehaviour;
    objBehaviour.m_bTakesNothing = true;
    Plug(objBehaviour);
    m_objLibrary.Dll_openUSB();
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 60, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_LE(Time([this] { EXPECT_EQ(Send(Status), -1); }), Milliseconds(2000));
}

// What runs while a transfer waits.

TEST_F(CUsbLibraryTest, ClosingTheLibraryEndsTheReceiveThatWaits) {
    CEmulatedPrinter& objDevice = Plug();
    m_objLibrary.Dll_openUSB();
    m_objEventLoop.AtNextYield([this] { m_objLibrary.Dll_closeUSB(); });
    EXPECT_LE(Time([this] { EXPECT_LE(Receive(), 0); }), Milliseconds(900));
    EXPECT_FALSE(objDevice.IsClaimed());
    EXPECT_GE(m_objLibrary.Dll_openUSB(), 0);
}

TEST_F(CUsbLibraryTest, ACommandOfWhichSomeHasLeftGoesOutWholeBeforeALaterOneOrNotAtAll) {
    const std::string strOuter = "{IP;2,192,168,010,020|}";
    CUsbBehaviour objBehaviour;
    objBehaviour.m_iMostTaken = 10;
    objBehaviour.m_iSlow = Milliseconds(5);
    CEmulatedPrinter& objDevice = Plug(objBehaviour);
    std::size_t iTaken = 0;
    int iWhole = 0;
    int iNotAtAll = 0;
    for (int iYield = 1; iYield <= 25; ++iYield) {
        SCOPED_TRACE(iYield);
        ASSERT_GE(m_objLibrary.Dll_openUSB(), 0);
        bool bInside = false;
        std::int32_t iInner = 0;
        m_objEventLoop.AtYield(m_objEventLoop.Yields() + iYield, [&] {
            bInside = true;
            Send(Status);
            iInner = Receive();
            m_objLibrary.Dll_closeUSB();
        });
        const std::int32_t iOuter = Send(strOuter);
        ASSERT_TRUE(iOuter == 23 || iOuter == -1);
        const std::string strTaken = objDevice.Taken().substr(iTaken);
        iTaken += strTaken.size();
        const bool bWasInside = bInside;
        ASSERT_EQ(strTaken, (iOuter == 23 ? strOuter : "") + (bWasInside ? Status : ""));
        iWhole += bWasInside && iOuter == 23 ? 1 : 0;
        iNotAtAll += iOuter == -1 ? 1 : 0;
        while (!bInside) {
            m_objEventLoop.Yield();
        }
        EXPECT_EQ(iInner, 13);
        iTaken = objDevice.Taken().size();
    }
    EXPECT_GE(iWhole, 1);
    EXPECT_GE(iNotAtAll, 1);
}

TEST_F(CUsbLibraryTest, ClosingInsideLetsACommandOfWhichSomeHasLeftGoOutWhole) {
    const std::string strOuter = "{IP;2,192,168,010,020|}";
    CUsbBehaviour objBehaviour;
    objBehaviour.m_iMostTaken = 10;
    objBehaviour.m_iSlow = Milliseconds(5);
    CEmulatedPrinter& objDevice = Plug(objBehaviour);
    std::string strExpected;
    for (int iYield = 1; iYield <= 25; ++iYield) {
        ASSERT_GE(m_objLibrary.Dll_openUSB(), 0);
        m_objEventLoop.AtYield(m_objEventLoop.Yields() + iYield,
                               [this] { m_objLibrary.Dll_closeUSB(); });
        strExpected += Send(strOuter) == 23 ? strOuter : "";
        ASSERT_EQ(objDevice.Taken(), strExpected) << iYield;
    }
}

TEST_F(CUsbLibraryTest, ALaterCommandGetsItsAnswerAlthoughAnEarlierOneWaits) {
    Plug();
    m_objLibrary.Dll_openUSB();
    std::int32_t iInner = 0;
    std::string strInner;
    m_objEventLoop.AtNextYield([&] {
        m_objLibrary.Dll_openUSB();
        Send(Status);
        m_objLibrary.Dll_closeUSB();
        m_objLibrary.Dll_openUSB();
        iInner = Receive();
        strInner = m_strReceived;
        m_objLibrary.Dll_closeUSB();
    });
    EXPECT_LE(Receive(54), 0);
    EXPECT_EQ(iInner, 13);
    EXPECT_EQ(strInner, StatusAnswer());
}

TEST_F(CUsbLibraryTest, AnExceptionFromTheEventLoopLeavesThePrinterUsable) {
    Plug();
    m_objLibrary.Dll_openUSB();
    m_objEventLoop.AtNextYield([] { throw std::runtime_error("any"); });
    EXPECT_THROW(Receive(), std::runtime_error);
    EXPECT_EQ(Send(Status), 5);
    EXPECT_EQ(Receive(), 13);
}

}  // namespace
