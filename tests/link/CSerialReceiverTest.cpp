#include "link/CSerialReceiver.h"

#include "protocol/MAnswer.h"
#include "tests/fakes/MWire.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Result = CSerialReceiver::Result;

constexpr std::int16_t StatusExpected = 13;
constexpr std::size_t Ample = 1024;

class CSerialReceiverTest : public ::testing::Test {
protected:
    /// Takes p_strCharacters, none of which completes anything.
    void TakeQuietly(const std::string& p_strCharacters, std::int16_t p_iExpected) {
        for (const char cCharacter : p_strCharacters) {
            ASSERT_EQ(m_objReceiver.Take(static_cast<std::uint8_t>(cCharacter), p_iExpected),
                      Result::Nothing);
        }
    }

    /// What the last of p_strCharacters completes; those before complete nothing.
    Result TakeAll(const std::string& p_strCharacters, std::int16_t p_iExpected) {
        TakeQuietly(p_strCharacters.substr(0, p_strCharacters.size() - 1), p_iExpected);
        return m_objReceiver.Take(static_cast<std::uint8_t>(p_strCharacters.back()), p_iExpected);
    }

    /// The frame behind its position 0.
    [[nodiscard]] std::string Tail() const {
        const Bytes& objFrame = m_objReceiver.Frame();
        return objFrame.empty() ? std::string() : std::string(objFrame.begin() + 1, objFrame.end());
    }

    CLinkState m_objState;
    CSerialReceiver m_objReceiver{m_objState};
};

TEST_F(CSerialReceiverTest, AStatusIsCompleteAtPosition12) {
    for (const std::int16_t iExpected : std::vector<std::int16_t>{0, 7, 13, 54, 192}) {
        SCOPED_TRACE(iExpected);
        EXPECT_EQ(TakeAll(MWire::Status("15"), iExpected), Result::Status);
        EXPECT_EQ(m_objReceiver.Frame().size(), 13U);
        EXPECT_EQ(m_objReceiver.Frame()[0], 0);
        EXPECT_EQ(Tail(), MWire::Status("15").substr(1));
        EXPECT_EQ(Tail().substr(MAnswer::StatusCodePosition - 1, 2), "15");
    }
}

struct LengthCase {
    std::int16_t m_iExpected;
    std::size_t m_iLastPosition;
};

class CSerialReceiverLengthTest : public CSerialReceiverTest,
                                  public ::testing::WithParamInterface<LengthCase> {};

TEST_P(CSerialReceiverLengthTest, SettingsAreCompleteAtHalfTheExpectedLength) {
    std::string strFrame = "{" + std::string(GetParam().m_iLastPosition, '7');
    if (GetParam().m_iLastPosition > 2) {
        strFrame.replace(strFrame.size() - 2, 2, "|}");
    }
    EXPECT_EQ(TakeAll(strFrame, GetParam().m_iExpected), Result::Settings);
    EXPECT_EQ(m_objReceiver.Frame().size(), GetParam().m_iLastPosition + 1);
    EXPECT_EQ(m_objReceiver.Frame()[0], 0);
    EXPECT_EQ(Tail(), strFrame.substr(1));
}

// The read requests' lengths, the smallest that can complete, and an odd one.
INSTANTIATE_TEST_SUITE_P(, CSerialReceiverLengthTest,
                         ::testing::Values(LengthCase{10, 4}, LengthCase{4, 1}, LengthCase{7, 2},
                                           LengthCase{13, 5}, LengthCase{24, 11},
                                           LengthCase{50, 24}, LengthCase{54, 26},
                                           LengthCase{62, 30}, LengthCase{192, 95}),
                         [](const auto& p_objInfo) {
                             return "Expected" + std::to_string(p_objInfo.param.m_iExpected);
                         });

TEST_F(CSerialReceiverTest, SettingsOfNoLengthNeverCompleteAndNeverGrow) {
    for (const std::int16_t iExpected : std::vector<std::int16_t>{0, 1, 2, 3, -1, -32768, 32767}) {
        SCOPED_TRACE(iExpected);
        TakeQuietly("{" + std::string(10'000, '7'), iExpected);
        EXPECT_LE(m_objReceiver.Frame().size(), Ample);
    }
}

TEST_F(CSerialReceiverTest, TheEndOfAFrameClosesIt) {
    EXPECT_EQ(TakeAll("{7777", 10), Result::Settings);
    TakeQuietly("8888", 10);
    EXPECT_EQ(Tail(), "7777");
    EXPECT_EQ(TakeAll(MWire::Status("00"), 10), Result::Status);
    TakeQuietly("99999999999999", 10);
    EXPECT_EQ(Tail(), MWire::Status("00").substr(1));
}

TEST_F(CSerialReceiverTest, WhatComesOutsideAFrameIsDropped) {
    TakeQuietly(std::string("ab0|}\r\n\0\x7F\x80\xFF", 11), 10);
    EXPECT_TRUE(m_objReceiver.Frame().empty());
    EXPECT_EQ(TakeAll("{7777", 10), Result::Settings);
    EXPECT_EQ(Tail(), "7777");
}

TEST_F(CSerialReceiverTest, FlowControlNeverEntersTheFrame) {
    EXPECT_FALSE(m_objReceiver.XoffSeen());
    EXPECT_FALSE(m_objReceiver.XonSeen());
    TakeQuietly("\x13", 10);
    EXPECT_TRUE(m_objReceiver.XoffSeen());
    EXPECT_FALSE(m_objReceiver.XonSeen());
    TakeQuietly("\x11", 10);
    EXPECT_TRUE(m_objReceiver.XonSeen());
    EXPECT_EQ(TakeAll("{\x13"
                      "1\x11"
                      "2\x11\x13"
                      "3\x13"
                      "4",
                      10),
              Result::Settings);
    EXPECT_EQ(Tail(), "1234");
    EXPECT_EQ(TakeAll("\x01\x11\x02"
                      "0\x13"
                      "40000000\x03\x11\x04",
                      10),
              Result::Status);
    EXPECT_EQ(Tail(), "\x02"
                      "040000000\x03\x04");
}

TEST_F(CSerialReceiverTest, CharactersAbove128AreDroppedAnd128IsNot) {
    for (int iCharacter = 0; iCharacter <= 255; ++iCharacter) {
        SCOPED_TRACE(iCharacter);
        const bool bOpens = iCharacter == 0x01 || iCharacter == 0x7B;
        const bool bFlowControl = iCharacter == 0x11 || iCharacter == 0x13;
        if (bOpens) {
            continue;
        }
        const std::string strCharacter(1, static_cast<char>(iCharacter));
        TakeQuietly("{" + strCharacter, 10);
        const bool bKept = iCharacter <= 128 && !bFlowControl;
        EXPECT_EQ(Tail(), bKept ? strCharacter : "");
    }
}

TEST_F(CSerialReceiverTest, AHeadInsideAFrameBeginsAnother) {
    const std::string strStatus = MWire::Status("04");
    EXPECT_EQ(TakeAll("{777{1234", 10), Result::Settings);
    EXPECT_EQ(Tail(), "1234");
    EXPECT_EQ(TakeAll("{777" + strStatus, 10), Result::Status);
    EXPECT_EQ(Tail(), strStatus.substr(1));
    EXPECT_EQ(TakeAll("\x01\x02"
                      "00000{1234",
                      10),
              Result::Settings);
    EXPECT_EQ(Tail(), "1234");
    EXPECT_EQ(TakeAll("\x01\x02"
                      "00000" +
                          strStatus,
                      10),
              Result::Status);
    EXPECT_EQ(Tail(), strStatus.substr(1));
}

TEST_F(CSerialReceiverTest, AFramesHeadAloneIsOneEmptyPosition) {
    for (const char* strHead : {"\x01", "{"}) {
        TakeQuietly(strHead, 10);
        EXPECT_EQ(m_objReceiver.Frame(), Bytes{0});
    }
}

TEST_F(CSerialReceiverTest, CountsTheAnswersThatAreOutstanding) {
    EXPECT_EQ(m_objState.m_iPendingAnswers, 0);
    m_objState.m_iPendingAnswers = 1;
    TakeQuietly("x\x11\x13\xFF", 10);  // not appended
    EXPECT_EQ(m_objState.m_iPendingAnswers, 1);
    TakeQuietly("{", 10);
    EXPECT_EQ(m_objState.m_iPendingAnswers, 1);
    TakeQuietly("1", 10);
    EXPECT_EQ(m_objState.m_iPendingAnswers, 0);
    EXPECT_EQ(TakeAll("234", 10), Result::Settings);
    EXPECT_EQ(m_objState.m_iPendingAnswers, 1);
    m_objState.m_iPendingAnswers = 1;
    EXPECT_EQ(TakeAll("{1", 4), Result::Settings);
    EXPECT_EQ(m_objState.m_iPendingAnswers, 2);
    m_objState.m_iPendingAnswers = 1;
    TakeQuietly("\x01"
                "1",
                10);
    EXPECT_EQ(m_objState.m_iPendingAnswers, 0);
}

TEST_F(CSerialReceiverTest, AnExpectationThatShrinksPastAnOpenFrameLeavesItOpenForNoAnswer) {
    TakeQuietly("{" + std::string(20, '7'), 54);
    TakeQuietly(std::string(1000, '7'), StatusExpected);
    EXPECT_LE(m_objReceiver.Frame().size(), Ample);
    EXPECT_EQ(TakeAll("{12345", StatusExpected), Result::Settings);
    EXPECT_EQ(Tail(), "12345");
}

TEST_F(CSerialReceiverTest, AFrameInDoubtIsHandedOutAtTheLengthAskedFor) {
    constexpr std::int16_t iExpected = 50;
    EXPECT_FALSE(m_objReceiver.Settle());
    TakeQuietly("{" + std::string(23, '7'), iExpected);
    EXPECT_FALSE(m_objReceiver.IsDoubtful());
    TakeQuietly("7\x11xyz\xFF|", iExpected);
    EXPECT_TRUE(m_objReceiver.IsDoubtful());
    EXPECT_EQ(m_objState.m_iPendingAnswers, 0);
    EXPECT_TRUE(m_objReceiver.Settle());
    EXPECT_EQ(m_objState.m_iPendingAnswers, 1);
    EXPECT_EQ(Tail(), std::string(24, '7'));
    EXPECT_FALSE(m_objReceiver.Settle());
    TakeQuietly("777|}", iExpected);
    EXPECT_EQ(Tail(), std::string(24, '7')) << "the frame is closed";
}

TEST_F(CSerialReceiverTest, AFrameOfAnotherGroupCompletesNothing) {
    constexpr std::int16_t iExpected = 50;
    TakeQuietly("{" + std::string(24, '7') + "|}", iExpected);
    EXPECT_FALSE(m_objReceiver.IsDoubtful());
    EXPECT_EQ(m_objState.m_iPendingAnswers, 0);
    TakeQuietly("{" + std::string(9, '7') + "|}" + std::string(100, '7'), iExpected);
    EXPECT_EQ(TakeAll("{" + std::string(22, '8') + "|}", iExpected), Result::Settings);
}

TEST_F(CSerialReceiverTest, AnotherHeadEndsADoubt) {
    constexpr std::int16_t iExpected = 50;
    TakeQuietly("{" + std::string(30, '7') + "{", iExpected);
    EXPECT_FALSE(m_objReceiver.IsDoubtful());
    EXPECT_EQ(TakeAll(std::string(22, '8') + "|}", iExpected), Result::Settings);
}

TEST_F(CSerialReceiverTest, AFrameThatIsLongerThanAShrunkExpectationIsInNoDoubt) {
    TakeQuietly("{" + std::string(30, '7'), 192);
    TakeQuietly("7", 50);
    EXPECT_FALSE(m_objReceiver.IsDoubtful());
    TakeQuietly(std::string(1000, '7'), 50);
    EXPECT_FALSE(m_objReceiver.Settle());
}

TEST_F(CSerialReceiverTest, NoStreamMakesItGrow) {
    constexpr std::size_t iMegabyte = 1 << 20;
    std::mt19937 objRandom(20240229);  // the same characters each time
    std::uniform_int_distribution<int> objCharacter(0, 255);
    for (const std::int16_t iExpected : std::vector<std::int16_t>{0, 7, 13, 50, 192, 32767}) {
        SCOPED_TRACE(iExpected);
        std::size_t iLongest = 0;
        for (std::size_t i = 0; i < iMegabyte; ++i) {
            m_objReceiver.Take(static_cast<std::uint8_t>(objCharacter(objRandom)), iExpected);
            iLongest = std::max(iLongest, m_objReceiver.Frame().size());
        }
        EXPECT_LE(iLongest, Ample);
        EXPECT_EQ(TakeAll(MWire::Status("00"), iExpected), Result::Status);
    }
}

// Whatever is expected: no answer is that long.
TEST_F(CSerialReceiverTest, AFrameThatGrowsTooLongIsNone) {
    TakeQuietly("{" + std::string(300, 'x'), 2 * 257);
}

TEST_F(CSerialReceiverTest, NothingBelongsToAnAnswerThatWasAnothers) {
    TakeQuietly(MWire::Settings(MAnswer::Sensor), MAnswer::ReceiveLength(MAnswer::Parameter));
    m_objState.m_iPendingAnswers = 1;
    TakeQuietly("x", MAnswer::ReceiveLength(MAnswer::Parameter));
    EXPECT_EQ(m_objState.m_iPendingAnswers, 1);
}

}  // namespace
