#include "platform/qt/MText.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

constexpr int ByteCount = 256;

TEST(MTextTest, EveryByteIsTheCharacterOfItsCode) {
    for (int iCode = 0; iCode < ByteCount; ++iCode) {
        const QString strText = MText::ToQt(std::string(1, static_cast<char>(iCode)));
        ASSERT_EQ(strText.size(), 1) << iCode;
        EXPECT_EQ(strText.at(0).unicode(), iCode);
    }
}

TEST(MTextTest, EveryByteComesBack) {
    std::string strBytes;
    for (int iCode = 0; iCode < ByteCount; ++iCode) {
        strBytes += static_cast<char>(iCode);
    }
    EXPECT_EQ(MText::FromQt(MText::ToQt(strBytes)), strBytes);
}

struct Case {
    const char* m_strName;
    QString m_strText;
    const char* m_strBytes;
};

void PrintTo(const Case& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class MTextFromQtTest : public ::testing::TestWithParam<Case> {};

TEST_P(MTextFromQtTest, GivesOneByteACharacter) {
    EXPECT_EQ(MText::FromQt(GetParam().m_strText), GetParam().m_strBytes);
}

INSTANTIATE_TEST_SUITE_P(
    , MTextFromQtTest,
    ::testing::Values(Case{"Empty", QString(), ""}, Case{"Highest", QString(QChar(0xFF)), "\xFF"},
                      Case{"JustAboveHighest", QString(QChar(0x100)), "?"},
                      Case{"SeveralOutside", QStringLiteral("a\u20ACb\u3042c"), "a?b?c"},
                      Case{"SurrogatePair", QStringLiteral("a\U0001F600b"), "a?b"},
                      Case{"TwoSurrogatePairs", QStringLiteral("\U0001F600\U0001F601"), "??"},
                      Case{"LoneSurrogate", QString(QChar(0xD83D)) + QLatin1Char('x'), "?x"}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

}  // namespace
