#include "model/CSnapshot.h"

#include "model/MSettingText.h"

#include <gtest/gtest.h>

TEST(CSnapshot, KnowsNothingAtFirst) {
    const CSnapshot objSnapshot;
    for (const MSettings::Row& objRow : MSettings::All()) {
        EXPECT_FALSE(objSnapshot.IsKnown(objRow));
        EXPECT_TRUE(MSettingText::Same(objRow, objSnapshot.Items(), CItemManager()));
    }
}

TEST(CSnapshot, KnowsWhatItWasTold) {
    CSnapshot objSnapshot;
    objSnapshot.SetKnown(MSettings::Get("dhcp"));
    EXPECT_TRUE(objSnapshot.IsKnown(MSettings::Get("dhcp")));
    EXPECT_FALSE(objSnapshot.IsKnown(MSettings::Get("lan")));
}

TEST(CSnapshot, OfACatalogueKeepsItsValuesWhateverBecomesOfIt) {
    const CItemManager objItems;
    objItems.m_objParity->SetValue(2);
    const CSnapshot objSnapshot(objItems);
    objItems.m_objParity->SetValue(0);

    EXPECT_EQ(MSettingText::Show(MSettings::Get("parity"), objSnapshot.Items()), "ODD");
    for (const MSettings::Row& objRow : MSettings::All()) {
        EXPECT_TRUE(objSnapshot.IsKnown(objRow));
    }
}

TEST(CSnapshot, ACopySharesNothing) {
    CSnapshot objOne;
    const CSnapshot objCopy = objOne;
    objOne.Items().m_objParity->SetValue(2);
    objOne.SetKnown(MSettings::Get("parity"));

    EXPECT_EQ(MSettingText::Show(MSettings::Get("parity"), objCopy.Items()), "EVEN");
    EXPECT_FALSE(objCopy.IsKnown(MSettings::Get("parity")));
}
