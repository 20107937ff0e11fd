#include "model/MChoiceLists.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

TEST(MChoiceLists, StartEveryListAtItsFirstEntryButTheDestination) {
    for (const MChoiceLists::List& objList : MChoiceLists::All()) {
        SCOPED_TRACE(objList.m_strName);
        EXPECT_EQ(objList.m_iStartPosition,
                  objList.m_strName == "ram-clear-destination" ? MChoiceLists::NoSelection : 0);
    }
}

TEST(MChoiceLists, AreFoundByNamesThatStandOnce) {
    std::set<std::string_view> strNames;
    for (const MChoiceLists::List& objList : MChoiceLists::All()) {
        EXPECT_TRUE(strNames.insert(objList.m_strName).second) << objList.m_strName;
        EXPECT_EQ(&MChoiceLists::Get(objList.m_strName), &objList);
    }
    EXPECT_THROW(MChoiceLists::Get("cmbDestination"), std::logic_error);
    EXPECT_EQ(MChoiceLists::Find("cmbDestination"), nullptr);
}

TEST(MChoiceLists, ATestPrintsNumbersStartInsideOfTheirRanges) {
    for (const char* const strName : {"test-print-issue-count", "test-print-label-length"}) {
        const MChoiceLists::Number& objNumber = MChoiceLists::GetNumber(strName);
        EXPECT_GE(objNumber.m_iStart, objNumber.m_objRange.m_iMin) << strName;
        EXPECT_LE(objNumber.m_iStart, objNumber.m_objRange.m_iMax) << strName;
        EXPECT_EQ(MChoiceLists::Find(strName), nullptr) << "it is no list";
    }
    EXPECT_THROW(MChoiceLists::GetNumber("SeIssueCount"), std::logic_error);
}

TEST(MChoiceLists, WhatIsMissingIsNamed) {
    try {
        MChoiceLists::Get("cmbDestination");
        FAIL() << "there is one";
    } catch (const std::logic_error& objError) {
        EXPECT_STREQ(objError.what(), "there is no choice \"cmbDestination\"");
    }
}
