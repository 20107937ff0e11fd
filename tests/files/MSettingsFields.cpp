#include "tests/files/MSettingsFields.h"

#include "model/CConversionError.h"
#include "tests/golden/MGolden.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

using MSettingsFields::Field;

/// The fields of these lines, but those without a lowest value.
std::vector<Field> FieldsOf(const MGolden::Texts& p_strLines) {
    std::vector<Field> objFields;
    for (std::size_t i = 0; i < p_strLines.size(); ++i) {
        for (const MGolden::Slot objSlot : MGolden::Carried(p_strLines[i])) {
            const MGolden::Item& objItem = MGolden::Of(objSlot);
            if (*objItem.m_strLowest != '\0') {
                objFields.push_back({objItem.m_strName, i + 1,
                                     MGolden::Place(p_strLines[i], objSlot) + 1,
                                     objItem.m_strLowest, objItem.m_strHighest});
            }
        }
    }
    return objFields;
}

const std::filesystem::path Folder = VARDEN_TEST_FILES;

}  // namespace

namespace MSettingsFields {

std::span<const Field> Parameter() {
    static const std::vector<Field> objFields = FieldsOf(MGolden::SetCommands());
    return objFields;
}

std::span<const Field> Lan() {
    static const std::vector<Field> objFields = FieldsOf(MGolden::LanSetCommands());
    return objFields;
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
