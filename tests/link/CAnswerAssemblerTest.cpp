#include "link/CAnswerAssembler.h"

#include "tests/fakes/MWire.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

using Result = CAnswerAssembler::Result;

constexpr std::size_t SettingsLength = 6;

/// One answer, or the beginning of something unknown, found in a stream.
struct Found {
    Result m_iResult;
    std::string m_strAnswer;  // empty for an unknown one

    bool operator==(const Found&) const = default;
};

void PrintTo(const Found& p_objFound, std::ostream* p_objStream) {
    *p_objStream << static_cast<int>(p_objFound.m_iResult) << " "
                 << ::testing::PrintToString(p_objFound.m_strAnswer);
}

std::vector<Found> Feed(CAnswerAssembler& p_objAssembler, const std::string& p_strStream,
                        std::size_t p_iSettingsLength = SettingsLength) {
    std::vector<Found> objFound;
    for (const std::uint8_t iByte : MWire::ToBytes(p_strStream)) {
        const Result iResult = p_objAssembler.Append(iByte, p_iSettingsLength);
        if (iResult == Result::Unknown) {
            objFound.push_back({iResult, {}});
        } else if (iResult != Result::Nothing) {
            const Bytes& objAnswer = p_objAssembler.Answer();
            objFound.push_back({iResult, {objAnswer.begin(), objAnswer.end()}});
        }
    }
    return objFound;
}

const std::string Status = MWire::Status("00");
const std::string OtherStatus = MWire::Status("15");
const std::string Settings = "{12|}x";

struct Case {
    const char* m_strName;
    std::string m_strStream;
    std::vector<Found> m_objFound;
};

void PrintTo(const Case& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

// clang-format off
const Case Cases[] = {
    {"Nothing", "", {}},
    {"AStatus", Status, {{Result::Status, Status}}},
    {"AStatusLessItsLastByte", Status.substr(0, 12), {}},
    {"Settings", Settings, {{Result::Settings, Settings}}},
    {"SettingsLessTheirLastByte", Settings.substr(0, 5), {}},
    {"TwoStatuses", Status + OtherStatus, {{Result::Status, Status}, {Result::Status, OtherStatus}}},
    {"StatusThenSettings", Status + Settings, {{Result::Status, Status}, {Result::Settings, Settings}}},
    {"SettingsThenStatus", Settings + Status, {{Result::Settings, Settings}, {Result::Status, Status}}},
    {"JunkOnce", "junk", {{Result::Unknown, {}}}},
    {"JunkBefore", "junk" + Status, {{Result::Unknown, {}}, {Result::Status, Status}}},
    {"JunkBetween", Status + "\r\n" + Settings,
     {{Result::Status, Status}, {Result::Unknown, {}}, {Result::Settings, Settings}}},
    {"JunkAfter", Settings + "~", {{Result::Settings, Settings}, {Result::Unknown, {}}}},
    {"JunkTwice", "a" + Status + "b",
     {{Result::Unknown, {}}, {Result::Status, Status}, {Result::Unknown, {}}}},
    {"HeadsInsideAnAnswerBelongToIt", std::string("{{\x01{\x01\x01") + Status,
     {{Result::Settings, "{{\x01{\x01\x01"}, {Result::Status, Status}}},
    {"ZeroBytesAreJunk", std::string(3, '\0'), {{Result::Unknown, {}}}},
};
// clang-format on

class CAnswerAssemblerStreamTest : public ::testing::TestWithParam<Case> {};

TEST_P(CAnswerAssemblerStreamTest, FindsTheAnswers) {
    CAnswerAssembler objAssembler;
    EXPECT_EQ(Feed(objAssembler, GetParam().m_strStream), GetParam().m_objFound);
}

INSTANTIATE_TEST_SUITE_P(, CAnswerAssemblerStreamTest, ::testing::ValuesIn(Cases),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(CAnswerAssemblerTest, ClearThrowsAwayWhatIsThere) {
    CAnswerAssembler objAssembler;
    EXPECT_TRUE(Feed(objAssembler, Status.substr(0, 12)).empty());
    objAssembler.Clear();
    EXPECT_TRUE(objAssembler.Answer().empty());
    EXPECT_EQ(Feed(objAssembler, Settings), (std::vector<Found>{{Result::Settings, Settings}}));
}

TEST(CAnswerAssemblerTest, ClearMakesTheNextJunkAnAnswerAgain) {
    CAnswerAssembler objAssembler;
    EXPECT_EQ(Feed(objAssembler, "junk").size(), 1U);
    EXPECT_TRUE(Feed(objAssembler, "more").empty());
    objAssembler.Clear();
    EXPECT_EQ(Feed(objAssembler, "junk").size(), 1U);
}

TEST(CAnswerAssemblerTest, TakesTheLengthThatHoldsWhenAByteComes) {
    CAnswerAssembler objAssembler;
    EXPECT_TRUE(Feed(objAssembler, "{1234567", 100).empty());
    EXPECT_EQ(Feed(objAssembler, "8", 6), (std::vector<Found>{{Result::Settings, "{12345678"}}));
}

TEST(CAnswerAssemblerTest, SettingsOfNoLengthAreCompleteWithTheirHead) {
    CAnswerAssembler objAssembler;
    EXPECT_EQ(Feed(objAssembler, "{", 0), (std::vector<Found>{{Result::Settings, "{"}}));
}

TEST(CAnswerAssemblerTest, AnAnswerInDoubtIsHandedOutAtTheLengthAskedFor) {
    constexpr std::size_t iAsked = 25;
    const std::string strEndless = "{" + std::string(iAsked - 1, '7');
    CAnswerAssembler objAssembler;
    EXPECT_FALSE(objAssembler.Settle());
    EXPECT_TRUE(Feed(objAssembler, strEndless, iAsked).empty());
    EXPECT_TRUE(objAssembler.IsDoubtful());
    EXPECT_TRUE(Feed(objAssembler, "xyz|", iAsked).empty());
    EXPECT_TRUE(objAssembler.Settle());
    EXPECT_EQ(objAssembler.Answer(), MWire::ToBytes(strEndless));
    EXPECT_FALSE(objAssembler.IsDoubtful());
    EXPECT_FALSE(objAssembler.Settle());

    EXPECT_TRUE(Feed(objAssembler, strEndless, iAsked).empty());
    EXPECT_EQ(Feed(objAssembler, "x|}", iAsked),
              (std::vector<Found>{{Result::Settings, strEndless}}))
        << "28 bytes are no group's";
}

TEST(CAnswerAssemblerTest, ClearEndsADoubt) {
    CAnswerAssembler objAssembler;
    EXPECT_TRUE(Feed(objAssembler, "{" + std::string(24, '7'), 25).empty());
    objAssembler.Clear();
    EXPECT_FALSE(objAssembler.Settle());
}

TEST(CAnswerAssemblerTest, AnAnswerThatWasDroppedLeavesNothing) {
    CAnswerAssembler objAssembler;
    EXPECT_TRUE(Feed(objAssembler, "{" + std::string(24, '7') + "|}", 25).empty());
    EXPECT_FALSE(objAssembler.IsDoubtful());
    EXPECT_TRUE(objAssembler.Answer().empty());
    EXPECT_EQ(Feed(objAssembler, Status, 25), (std::vector<Found>{{Result::Status, Status}}));
}

TEST(CAnswerAssemblerTest, HoldsOneAnswerAtMost) {
    CAnswerAssembler objAssembler;
    constexpr std::size_t iLongest = 96;
    for (const std::size_t iAsked : {iLongest, std::size_t{25}}) {
        for (const char cByte : {'{', '\x01', 'x', '|'}) {
            for (int i = 0; i < 100'000; ++i) {
                objAssembler.Append(static_cast<std::uint8_t>(cByte), iAsked);
                ASSERT_LE(objAssembler.Answer().size(), iLongest);
            }
        }
    }
}

}  // namespace
