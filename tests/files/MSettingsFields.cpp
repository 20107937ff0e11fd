#include "tests/files/MSettingsFields.h"

#include "model/CConversionError.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

using MSettingsFields::Field;

// clang-format off
constexpr Field ParameterFields[] = {
    {"m_objFontCode", 1, 7, "0", "F"},
    {"m_objZeroStyle", 1, 8, "0", "1"},
    {"m_objCommunicationSpeed", 1, 9, "0", "5"},
    {"m_objDataLength", 1, 10, "0", "1"},
    {"m_objStopBit", 1, 11, "0", "1"},
    {"m_objParity", 1, 12, "0", "2"},
    {"m_objControl", 1, 13, "0", "4"},
    {"m_objAutoForward", 1, 14, "0", "1"},
    {"m_objAutoForwardDirection", 1, 15, "-", "+"},
    {"m_objAutoForwardAdjustment", 1, 16, "50", "50"},
    {"m_objControlCode", 1, 18, "0", "3"},
    {"m_objControlCode1st", 1, 19, "00", "FF"},
    {"m_objControlCode2nd", 1, 21, "00", "FF"},
    {"m_objControlCode3rd", 1, 23, "00", "FF"},
    {"m_objStripStatus", 1, 25, "0", "1"},
    {"m_objFeedKeyFunction", 1, 26, "0", "1"},
    {"m_objKanjiCode", 1, 27, "0", "1"},
    {"m_objEuroCode", 1, 28, "20", "FF"},
    {"m_objHeadCheck", 1, 30, "0", "1"},
    {"m_objAckBusyTiming", 1, 31, "0", "1"},
    {"m_objWebPrinter", 1, 32, "0", "1"},
    {"m_objResetNInitSignalIsON", 1, 33, "0", "1"},
    {"m_objRibbonNearEnd", 1, 34, "0", "2"},
    {"m_objExpansionIO", 1, 35, "0", "1"},
    {"m_objPlugAndPlay", 1, 36, "0", "1"},
    {"m_objLabelendRibbonend", 1, 37, "0", "1"},
    {"m_objPreStrip", 1, 38, "0", "1"},
    {"m_objBackFeedSpeed", 1, 39, "0", "1"},
    {"m_objMaxiCodeSpecification", 1, 40, "0", "1"},
    {"m_objStripMotorTorque", 1, 41, "0", "3"},
    {"m_objFeedDirection", 2, 7, "-", "+"},
    {"m_objFeedAdjustment", 2, 8, "500", "500"},
    {"m_objCutPosDirection", 2, 11, "-", "+"},
    {"m_objCutPosAdjustment", 2, 12, "500", "500"},
    {"m_objBackFeedDirection", 2, 15, "-", "+"},
    {"m_objBackFeedAdjustment", 2, 16, "95", "95"},
    {"m_objXCoordinateDirection", 2, 18, "-", "+"},
    {"m_objXCoordinateAdjustment", 2, 19, "995", "995"},
    {"m_objToneDirection_T", 2, 22, "-", "+"},
    {"m_objToneAdjustment_T", 2, 23, "10", "10"},
    {"m_objToneDirection_D", 2, 25, "-", "+"},
    {"m_objToneAdjustment_D", 2, 26, "10", "10"},
    {"m_objRibbonMotorDirection_F", 2, 28, "-", "-"},
    {"m_objRibbonMotorAdjustment_F", 2, 29, "15", "00"},
    {"m_objRibbonMotorDirection_B", 2, 31, "-", "-"},
    {"m_objRibbonMotorAdjustment_B", 2, 32, "15", "00"},
    {"m_objThresholdAdjustment_R", 2, 34, "00", "40"},
    {"m_objThresholdAdjustment_T", 2, 36, "00", "40"},
};

constexpr Field LanFields[] = {
    {"m_objIpAddress1", 1, 7, "000", "255"},
    {"m_objIpAddress2", 1, 11, "000", "255"},
    {"m_objIpAddress3", 1, 15, "000", "255"},
    {"m_objIpAddress4", 1, 19, "000", "255"},
    {"m_objGateway1", 2, 7, "000", "255"},
    {"m_objGateway2", 2, 11, "000", "255"},
    {"m_objGateway3", 2, 15, "000", "255"},
    {"m_objGateway4", 2, 19, "000", "255"},
    {"m_objSubnetMask1", 3, 7, "000", "255"},
    {"m_objSubnetMask2", 3, 11, "000", "255"},
    {"m_objSubnetMask3", 3, 15, "000", "255"},
    {"m_objSubnetMask4", 3, 19, "000", "255"},
    {"m_objSocketPortSetting", 4, 5, "0", "1"},
    {"m_objSocketPortNumber", 4, 7, "00000", "65535"},
    {"m_objDhcpSetting", 5, 5, "0", "1"},
    {"m_objDhcpClientId", 5, 7, "00000000000000000000000000000000", "~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~"},
};
// clang-format on

const std::filesystem::path Folder = VARDEN_TEST_FILES;

}  // namespace

namespace MSettingsFields {

std::span<const Field> Parameter() {
    return ParameterFields;
}

std::span<const Field> Lan() {
    return LanFields;
}

CItem& Item(const CItemManager& p_objItemManager, std::string_view p_strName) {
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        if (objRow.m_strName == p_strName) {
            return *(p_objItemManager.*objRow.m_objSlot);
        }
    }
    throw std::logic_error("no such item: " + std::string(p_strName));
}

void SetAll(const CItemManager& p_objItemManager, std::span<const Field> p_objFields,
            const char* Field::*p_strValue) {
    for (const Field& objField : p_objFields) {
        Item(p_objItemManager, objField.m_strItem).SetValue(objField.*p_strValue);
    }
}

std::vector<std::string> Texts(const CItemManager& p_objItemManager) {
    std::vector<std::string> strTexts;
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        try {
            strTexts.push_back((p_objItemManager.*objRow.m_objSlot)->GetValueString());
        } catch (const CConversionError&) {
            strTexts.emplace_back("?");
        }
    }
    return strTexts;
}

std::string With(std::string p_strLine, std::size_t p_iPosition, std::string_view p_strText) {
    return p_strLine.replace(p_iPosition - 1, p_strText.size(), p_strText);
}

std::string Content(const std::string& p_strName) {
    std::ifstream objFile(Folder / p_strName, std::ios::binary);
    if (!objFile) {
        throw std::runtime_error("cannot read " + p_strName);
    }
    return {std::istreambuf_iterator<char>(objFile), {}};
}

std::vector<std::string> BrokenFiles(std::string_view p_strExtension) {
    std::vector<std::string> strNames;
    for (const auto& objEntry : std::filesystem::directory_iterator(Folder / "broken")) {
        if (objEntry.path().extension() == p_strExtension) {
            strNames.push_back("broken/" + objEntry.path().filename().string());
        }
    }
    std::sort(strNames.begin(), strNames.end());
    return strNames;
}

}  // namespace MSettingsFields
