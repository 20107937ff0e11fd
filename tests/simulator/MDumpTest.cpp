#include "simulator/MDump.h"

#include "simulator/MItemNames.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(DumpTest, HoldsEverySettingByItsNameInTheCataloguesOrder) {
    const std::string strDump = MDump::Of(CPrinter()).Written();
    std::size_t iPosition = 0;
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        const std::string strMember = ", \"" + std::string(MItemNames::Of(objRow)) + "\": \"";
        const std::size_t iFound = strDump.find(strMember.substr(iPosition == 0 ? 2 : 0));
        ASSERT_NE(iFound, std::string::npos) << strMember;
        EXPECT_GE(iFound, iPosition) << strMember;
        iPosition = iFound;
    }
    EXPECT_TRUE(strDump.starts_with("{\"power\": true, \"settings\": {\"FeedDirection\": \"+\", "
                                    "\"FeedAdjustment\": \"000\", "))
        << strDump;
}

TEST(DumpTest, HoldsWhatWasSetAndWhatAnAnswerWouldSay) {
    CPrinter objPrinter;
    objPrinter.Handle(MGolden::With(MGolden::Parameters, {{"FontCode", "3"}}));
    objPrinter.Handle("{IH;1," + std::string(32, 'A') + ",h\xE4" + std::string(14, '\xFF') + "|}");
    objPrinter.PowerOff();
    const std::string strDump = MDump::Of(objPrinter).Written();
    EXPECT_NE(strDump.find("\"power\": false"), std::string::npos);
    EXPECT_NE(strDump.find("\"FontCode\": \"3\""), std::string::npos);
    EXPECT_NE(strDump.find("\"DhcpClientHost\": \"h\\u00e4\""), std::string::npos);
    const std::string strFont = MGolden::With(MGolden::Answer(1), {{"FontCode", "1"}});
    EXPECT_NE(strDump.find(std::string("\"answers\": [\"") + MGolden::Answer(0) + "\", \"" +
                           strFont + "\", \"" + MGolden::Answer(2) + "\", \"{30"),
              std::string::npos)
        << strDump;
}

TEST(ItemNamesTest, AreThoseOfTheCatalogueWithoutTheirPrefix) {
    EXPECT_TRUE(MItemNames::IsName("FeedAdjustment"));
    EXPECT_TRUE(MItemNames::IsName("ToneDirection_T"));
    EXPECT_FALSE(MItemNames::IsName("m_objFeedAdjustment"));
    EXPECT_FALSE(MItemNames::IsName(""));
    const CItemManager objItems;
    EXPECT_EQ(MItemNames::Of(objItems, objItems.m_objStopBit), "StopBit");
}

}  // namespace
