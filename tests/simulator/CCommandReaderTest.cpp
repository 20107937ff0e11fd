#include "simulator/CCommandReader.h"

#include "tests/simulator/MBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

struct Result {
    std::vector<std::string> m_strCommands;
    std::size_t m_iLeftOut = 0;
};

/// Feeds p_strStream in blocks of p_iBlock bytes.
Result Read(std::string_view p_strStream, std::size_t p_iBlock) {
    CCommandReader objReader;
    Result objResult;
    while (!p_strStream.empty()) {
        const std::string_view strBlock = p_strStream.substr(0, p_iBlock);
        objReader.Feed(MBytes::Of(strBlock), [&](const CCommandReader::Found& p_objFound) {
            if (p_objFound.m_bCommand) {
                objResult.m_strCommands.push_back(p_objFound.m_strBytes);
            } else {
                objResult.m_iLeftOut += p_objFound.m_iCount;
            }
        });
        p_strStream.remove_prefix(strBlock.size());
    }
    return objResult;
}

struct Stream {
    const char* m_strName;
    std::string m_strBytes;
    std::vector<std::string> m_strCommands;
    std::size_t m_iLeftOut;
};

std::string DhcpCommand(const std::string& p_strHost) {
    return "{IH;1,0123456789ABCDEF0123456789ABCDEF," + p_strHost +
           std::string(16 - p_strHost.size(), '\xFF') + "|}";
}

// clang-format off
const std::vector<Stream> Streams{
    {"nothing", "", {}, 0},
    {"one", "{WS|}", {"{WS|}"}, 0},
    {"several", "{WS|}{Z5;0|}{Z5;1|}", {"{WS|}", "{Z5;0|}", "{Z5;1|}"}, 0},
    {"junk_around", "ab{WS|}c}|{Z5;0|}\r\n", {"{WS|}", "{Z5;0|}"}, 7},
    {"begun_anew", "{Z5;{WS|}", {"{WS|}"}, 4},
    {"bars_and_braces_apart", "{a|b}c|}", {"{a|b}c|}"}, 0},
    {"empty_command", "{|}", {"{|}"}, 0},
    {"unfinished", "{Z5;0|", {}, 0},
    {"brace_in_a_host_name", DhcpCommand("a{b"), {DhcpCommand("a{b")}, 0},
    {"brace_behind_the_free_text", "{IH;" + std::string(51, 'x') + "{WS|}", {"{WS|}"}, 55},
    {"too_long", "{" + std::string(255, 'x') + "|}{WS|}", {"{WS|}"}, 258},
    {"longest", "{" + std::string(253, 'x') + "|}", {"{" + std::string(253, 'x') + "|}"}, 0},
    {"zeros_and_high_bytes", std::string("\0\xFF\x01", 3) + "{WS|}", {"{WS|}"}, 3},
};
// clang-format on

class CommandReaderTest : public ::testing::TestWithParam<Stream> {};

}  // namespace

TEST_P(CommandReaderTest, FindsTheSameCommandsWhereverTheStreamIsCut) {
    const Stream& objStream = GetParam();
    for (std::size_t iBlock = 1; iBlock <= objStream.m_strBytes.size() + 1; ++iBlock) {
        const Result objResult = Read(objStream.m_strBytes, iBlock);
        EXPECT_EQ(objResult.m_strCommands, objStream.m_strCommands) << "blocks of " << iBlock;
        EXPECT_EQ(objResult.m_iLeftOut, objStream.m_iLeftOut) << "blocks of " << iBlock;
    }
}

INSTANTIATE_TEST_SUITE_P(Streams, CommandReaderTest, ::testing::ValuesIn(Streams),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(CommandReaderFloodTest, HoldsABoundedAmountAndStillHearsACommandAfterwards) {
    constexpr std::size_t iFlood = 100'000;  // hundreds of times what it may hold
    const std::string strAlmost = "{IH;";
    for (const std::string& strPattern :
         {std::string("x"), std::string("{"), std::string("{x"), std::string("\0", 1), strAlmost}) {
        CCommandReader objReader;
        std::size_t iTold = 0;
        std::size_t iMostHeld = 0;
        const auto objSink = [&](const CCommandReader::Found& p_objFound) {
            iTold += p_objFound.m_iCount;
        };
        std::string strFlood;
        while (strFlood.size() < iFlood) {
            strFlood += strPattern;
        }
        for (std::size_t i = 0; i < strFlood.size(); i += 1000) {
            objReader.Feed(MBytes::Of(std::string_view(strFlood).substr(i, 1000)), objSink);
            iMostHeld = std::max(iMostHeld, objReader.Held());
        }
        EXPECT_LE(iMostHeld, CCommandReader::LongestCommand + CCommandReader::LongestShown);
        EXPECT_EQ(iTold + objReader.Held(), strFlood.size()) << strPattern;

        // An almost complete DHCP command takes the next "{" for text; the one behind it is heard.
        std::string strLast;
        objReader.Feed(MBytes::Of("{WS|}{Z5;0|}"), [&](const CCommandReader::Found& p_objFound) {
            strLast = p_objFound.m_strBytes;
        });
        EXPECT_EQ(strLast, "{Z5;0|}") << strPattern;
    }
}

TEST(CommandReaderLeftOutTest, ShowsTheFirstBytesAndCountsAll) {
    CCommandReader objReader;
    std::vector<CCommandReader::Found> objFound;
    objReader.Feed(MBytes::Of(std::string(100, 'a') + "{WS|}bc"),
                   [&](const auto& p_objFound) { objFound.push_back(p_objFound); });
    ASSERT_EQ(objFound.size(), 3U);
    EXPECT_EQ(objFound[0].m_strBytes, std::string(CCommandReader::LongestShown, 'a'));
    EXPECT_EQ(objFound[0].m_iCount, 100U);
    EXPECT_TRUE(objFound[1].m_bCommand);
    EXPECT_EQ(objFound[2].m_strBytes, "bc");
}
