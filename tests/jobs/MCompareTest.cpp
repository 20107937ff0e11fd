#include "jobs/MCompare.h"

#include "model/MSettingText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

Names NamesOf(const std::vector<const MSettings::Row*>& p_objRows) {
    Names strNames;
    for (const MSettings::Row* const objRow : p_objRows) {
        strNames.emplace_back(objRow->m_strName);
    }
    return strNames;
}

/// Settings of which all are known.
CSnapshot Whole() {
    return CSnapshot(CItemManager());
}

CSnapshot With(const std::string& p_strName, const std::string& p_strValue) {
    CSnapshot objSnapshot = Whole();
    MSettingText::Set(MSettings::Get(p_strName), objSnapshot.Items(), p_strValue);
    return objSnapshot;
}

TEST(MCompareTest, WhatIsTheSameIsListedWhole) {
    const MCompare::Result objResult = MCompare::Compare(Whole(), Whole());
    EXPECT_TRUE(objResult.m_objDifferent.empty());
    EXPECT_TRUE(objResult.m_objUnknown.empty());
    EXPECT_EQ(objResult.m_objSame.size(), MSettings::All().size());
}

TEST(MCompareTest, WhatDiffersIsTold) {
    const MCompare::Result objResult =
        MCompare::Compare(With("socket-port", "9100"), With("font-code", "PC-8"));
    EXPECT_EQ(NamesOf(objResult.m_objDifferent), (Names{"font-code", "socket-port"}));
    EXPECT_EQ(objResult.m_objSame.size(), MSettings::All().size() - 2);
}

TEST(MCompareTest, WhatOneSideDoesNotKnowIsNeverTheSame) {
    CSnapshot objHalf;
    objHalf.SetKnown(MSettings::Get("ip-address"));
    for (const bool bFirst : {true, false}) {
        const MCompare::Result objResult =
            bFirst ? MCompare::Compare(objHalf, Whole()) : MCompare::Compare(Whole(), objHalf);
        EXPECT_EQ(NamesOf(objResult.m_objSame), Names{"ip-address"});
        EXPECT_EQ(objResult.m_objUnknown.size(), MSettings::All().size() - 1);
        EXPECT_TRUE(objResult.m_objDifferent.empty());
    }
    EXPECT_EQ(MCompare::Compare({}, {}).m_objUnknown.size(), MSettings::All().size());
}

TEST(MCompareTest, AHostNameIsTheSameWhateverFillsItsField) {
    CSnapshot objFilled = With("dhcp-host-name", "shop");
    CItem& objItem = *objFilled.Items().m_objDhcpClientHost;
    objItem.SetValue("shop" + std::string(12, '\xFF'));
    const MCompare::Result objResult = MCompare::Compare(objFilled, With("dhcp-host-name", "shop"));
    EXPECT_TRUE(objResult.m_objDifferent.empty());
}

}  // namespace
