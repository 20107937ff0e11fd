#include "files/CSettingsFile.h"

#include "files/MLanFile.h"
#include "files/MParameterFile.h"
#include "tests/fakes/CFakeFileStore.h"
#include "tests/files/MSettingsFields.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace {

using MSettingsFields::Field;
using MSettingsFields::Item;

constexpr const char* Path = "/settings";
constexpr int Rounds = 1000;

/// Settings at random, the same ones in every run.
class CRandomSettings {
public:
    /// A value that fills the item's field at most.
    CItemValue Value(const CItem& p_objItem) {
        const auto iLength = static_cast<std::size_t>(p_objItem.m_iLength);
        switch (p_objItem.m_iDataType) {
        case ItemDataType::Decimal:
            return Digits(iLength, "0123456789");
        case ItemDataType::Hexadecimal:
            return Digits(iLength, "0123456789ABCDEF");
        case ItemDataType::Text:
            break;
        }
        return iLength == 1 ? Digits(1, "+-") : Characters(iLength);
    }

    std::size_t UpTo(std::size_t p_iHighest) {
        return std::uniform_int_distribution<std::size_t>(0, p_iHighest)(m_objRandom);
    }

    /// Any characters but the ends of a line and the fill.
    std::string Characters(std::size_t p_iCount) {
        std::string strText;
        while (strText.size() < p_iCount) {
            const auto c = static_cast<char>(UpTo(0xFE));
            if (c != '\r' && c != '\n') {
                strText += c;
            }
        }
        return strText;
    }

private:
    std::string Digits(std::size_t p_iCount, std::string_view p_strDigits) {
        std::string strText;
        for (std::size_t i = 0; i < p_iCount; ++i) {
            strText += p_strDigits[UpTo(p_strDigits.size() - 1)];
        }
        return strText;
    }

    std::mt19937 m_objRandom{20'240'229};
};

/// Loads what p_objItems are saved as.
void SaveAndLoad(const CSettingsFile::Format& p_objFormat, const CItemManager& p_objItems,
                 const CItemManager& p_objLoaded) {
    CFakeFileStore objFileStore;
    ASSERT_TRUE(CSettingsFile(p_objFormat, p_objItems, objFileStore).Save(Path));
    ASSERT_TRUE(CSettingsFile(p_objFormat, p_objLoaded, objFileStore).Load(Path))
        << objFileStore.m_strFiles[Path];
}

void ExpectSame(std::span<const Field> p_objFields, const CItemManager& p_objItems,
                const CItemManager& p_objLoaded) {
    for (const Field& objField : p_objFields) {
        ASSERT_EQ(Item(p_objLoaded, objField.m_strItem).GetValueString(),
                  Item(p_objItems, objField.m_strItem).GetValueString())
            << objField.m_strItem;
    }
}

TEST(CSettingsFileRoundTripTest, ParametersComeBackAsTheyWere) {
    CRandomSettings objRandom;
    for (int i = 0; i < Rounds && !::testing::Test::HasFailure(); ++i) {
        const CItemManager objItems;
        for (const Field& objField : MSettingsFields::Parameter()) {
            CItem& objItem = Item(objItems, objField.m_strItem);
            objItem.SetValue(objRandom.Value(objItem));
        }
        const CItemManager objLoaded;
        SaveAndLoad({&MParameterFile::BuildLines, &MParameterFile::StoreLine}, objItems, objLoaded);
        ExpectSame(MSettingsFields::Parameter(), objItems, objLoaded);
        ASSERT_EQ(objLoaded.m_objRibbonMotorDirection_F->GetValueString(), "-");
        ASSERT_EQ(objLoaded.m_objRibbonMotorDirection_B->GetValueString(), "-");
    }
}

TEST(CSettingsFileRoundTripTest, LanSettingsComeBackAsTheyWere) {
    CRandomSettings objRandom;
    for (int i = 0; i < Rounds && !::testing::Test::HasFailure(); ++i) {
        const CItemManager objItems;
        for (const Field& objField : MSettingsFields::Lan()) {
            CItem& objItem = Item(objItems, objField.m_strItem);
            objItem.SetValue(objRandom.Value(objItem));
        }
        objItems.m_objDhcpClientHost->SetValue(objRandom.Characters(objRandom.UpTo(16)));
        const CItemManager objLoaded;
        SaveAndLoad({&MLanFile::BuildLines, &MLanFile::StoreLine}, objItems, objLoaded);
        ExpectSame(MSettingsFields::Lan(), objItems, objLoaded);
        ASSERT_EQ(objLoaded.m_objDhcpClientHost->GetValue(),
                  objItems.m_objDhcpClientHost->GetValue());
    }
}

TEST(CSettingsFileRoundTripTest, SignedValuesOfThePageComeBackWithoutTheirSign) {
    const CItemManager objItems;
    objItems.m_objFeedDirection->SetValue("-");
    objItems.m_objFeedAdjustment->SetValue("-5");  // as the page stores it
    const CItemManager objLoaded;
    SaveAndLoad({&MParameterFile::BuildLines, &MParameterFile::StoreLine}, objItems, objLoaded);
    EXPECT_EQ(objLoaded.m_objFeedDirection->GetValue(), CItemValue("-"));
    EXPECT_EQ(objLoaded.m_objFeedAdjustment->GetValue(), CItemValue("005"));
}

}  // namespace
