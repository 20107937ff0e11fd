#include "files/CLineReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace {

using Result = CLineReader::Result;

/// Gives its bytes in pieces of a size, and fails at the end if it is told so.
class CPieces : public IFileReader {
public:
    CPieces(std::string p_strBytes, std::size_t p_iPiece, bool p_bFails = false)
        : m_strBytes(std::move(p_strBytes))
        , m_iPiece(p_iPiece)
        , m_bFails(p_bFails) {}

    [[nodiscard]] std::uint64_t Size() const override { return m_strBytes.size(); }

    std::optional<std::size_t> Read(std::span<char> p_arrBuffer) override {
        const std::size_t iCount =
            m_strBytes.copy(p_arrBuffer.data(), std::min(m_iPiece, p_arrBuffer.size()), m_iGiven);
        m_iGiven += iCount;
        if (iCount == 0 && m_bFails) {
            return std::nullopt;
        }
        return iCount;
    }

    [[nodiscard]] std::size_t Given() const { return m_iGiven; }

private:
    std::string m_strBytes;
    std::size_t m_iPiece;
    bool m_bFails;
    std::size_t m_iGiven = 0;
};

constexpr std::size_t AnySize = 1'000'000;

/// The lines until none comes any more, and why none does.
std::pair<std::vector<std::string>, Result> AllLines(IFileReader& p_objReader) {
    CLineReader objLines(p_objReader);
    std::vector<std::string> strLines;
    std::string strLine = "what was there before";
    for (;;) {
        const Result iResult = objLines.Next(strLine);
        if (iResult != Result::Line) {
            return {strLines, iResult};
        }
        strLines.push_back(strLine);
    }
}

struct Case {
    const char* m_strName;
    std::string m_strBytes;
    std::vector<std::string> m_strLines;
};

void PrintTo(const Case& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

using namespace std::string_literals;

const Case Cases[] = {
    {"Nothing", "", {}},
    {"CrLf", "one\r\ntwo\r\n", {"one", "two"}},
    {"Lf", "one\ntwo\n", {"one", "two"}},
    {"Cr", "one\rtwo\r", {"one", "two"}},
    {"Mixed", "one\rtwo\nthree\r\nfour", {"one", "two", "three", "four"}},
    {"LastWithoutEnd", "one\r\ntwo", {"one", "two"}},
    {"OneWithoutEnd", "one", {"one"}},
    {"AnEndAlone", "\r\n", {""}},
    {"EmptyAtTheEnd", "one\r\n\r\n", {"one", ""}},
    {"EmptyBetweenLfs", "one\n\ntwo", {"one", "", "two"}},
    {"EmptyBetweenCrs", "one\r\rtwo", {"one", "", "two"}},
    {"LfCrAreTwoEnds", "one\n\rtwo", {"one", "", "two"}},
    {"CrCrLf", "one\r\r\ntwo", {"one", "", "two"}},
    {"BlanksStay", " one \t\r\n two", {" one \t", " two"}},
    {"EveryOtherByteIsPartOfALine",
     "\0\x1A\xFF\x0B\x0C\x85\r\n\0"s,
     {"\0\x1A\xFF\x0B\x0C\x85"s, "\0"s}},
};

class CLineReaderTest : public ::testing::TestWithParam<Case> {};

TEST_P(CLineReaderTest, CutsAFileInItsLinesInWhateverPiecesItComes) {
    for (const std::size_t iPiece : {std::size_t{1}, std::size_t{2}, std::size_t{3}, AnySize}) {
        CPieces objReader(GetParam().m_strBytes, iPiece);
        const auto [strLines, iResult] = AllLines(objReader);
        EXPECT_EQ(strLines, GetParam().m_strLines) << "in pieces of " << iPiece;
        EXPECT_EQ(iResult, Result::End);
    }
}

INSTANTIATE_TEST_SUITE_P(, CLineReaderTest, ::testing::ValuesIn(Cases),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(CLineReaderEndTest, SaysTheEndAgainWhenAskedAgain) {
    CPieces objReader("one", AnySize);
    CLineReader objLines(objReader);
    std::string strLine;
    EXPECT_EQ(objLines.Next(strLine), Result::Line);
    EXPECT_EQ(objLines.Next(strLine), Result::End);
    EXPECT_EQ(objLines.Next(strLine), Result::End);
}

TEST(CLineReaderEndTest, ALineEndMayLieAnywhereInTheBlocksOfTheFile) {
    for (std::size_t iLength = 4090; iLength < 4100; ++iLength) {
        std::string strBytes;
        while (strBytes.size() + 10 < iLength) {
            strBytes += "1234567\r\n";
        }
        const std::string strLast(iLength - strBytes.size(), 'x');
        CPieces objReader(strBytes + strLast + "\r\nend\r\n", AnySize);
        const auto [strLines, iResult] = AllLines(objReader);
        ASSERT_GT(strLines.size(), 2U);
        EXPECT_EQ(strLines[strLines.size() - 2], strLast) << iLength;
        EXPECT_EQ(strLines.back(), "end") << iLength;
    }
}

TEST(CLineReaderFailureTest, TellsAFileThatCannotBeReadOnFromOneThatEnds) {
    for (const char* strBytes : {"", "one\r\n", "one\r\ntw"}) {
        CPieces objReader(strBytes, AnySize, true);
        const auto [strLines, iResult] = AllLines(objReader);
        EXPECT_EQ(iResult, Result::Failure) << strBytes;
        EXPECT_EQ(strLines.size(), strBytes[0] == '\0' ? 0U : 1U) << strBytes;
    }
}

TEST(CLineReaderFailureTest, AFailureBehindACrIsOneAndNotTheEndOfALine) {
    for (const std::size_t iPiece : {std::size_t{1}, AnySize}) {
        CPieces objReader("one\r\ntwo\r", iPiece, true);
        const auto [strLines, iResult] = AllLines(objReader);
        EXPECT_EQ(iResult, Result::Failure);
        EXPECT_EQ(strLines, std::vector<std::string>{"one"});
    }
}

TEST(CLineReaderFileLengthTest, AFileOfJustThatLengthIsRead) {
    for (const std::size_t iPiece : {std::size_t{1}, std::size_t{3}, AnySize}) {
        CPieces objReader("one\r\ntwo\r", iPiece);
        CLineReader objLines(objReader, 9);
        std::string strLine;
        EXPECT_EQ(objLines.Next(strLine), Result::Line);
        EXPECT_EQ(objLines.Next(strLine), Result::Line);
        EXPECT_EQ(strLine, "two");
        EXPECT_EQ(objLines.Next(strLine), Result::End);
    }
}

TEST(CLineReaderFileLengthTest, ALongerOneFails) {
    for (const std::size_t iPiece : {std::size_t{1}, std::size_t{3}}) {
        CPieces objReader("one\r\ntwo\r", iPiece);
        CLineReader objLines(objReader, 8);
        std::string strLine;
        EXPECT_EQ(objLines.Next(strLine), Result::Line);
        EXPECT_EQ(strLine, "one");
        EXPECT_EQ(objLines.Next(strLine), Result::Failure);
    }
}

TEST(CLineReaderLengthTest, GivesALineOfTheLongestLengthWhole) {
    const std::string strLongest(CLineReader::LongestLine, 'x');
    CPieces objReader(strLongest + "\r\nnext", AnySize);
    const auto [strLines, iResult] = AllLines(objReader);
    EXPECT_EQ(strLines, (std::vector<std::string>{strLongest, "next"}));
}

TEST(CLineReaderLengthTest, GivesOnlyTheBeginningOfALongerLine) {
    CPieces objReader(std::string(AnySize, 'x'), AnySize);
    CLineReader objLines(objReader);
    std::string strLine;
    EXPECT_EQ(objLines.Next(strLine), Result::Line);
    EXPECT_EQ(strLine, std::string(CLineReader::LongestLine + 1, 'x'));
    EXPECT_LE(objReader.Given(), 4096U);
}

}  // namespace
