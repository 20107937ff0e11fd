#include "files/MParameterFile.h"

#include "protocol/MCommand.h"

namespace {

constexpr std::size_t KindPosition = 4;
constexpr std::size_t FieldsPosition = 6;
constexpr std::size_t EndLength = 2;

/// The item list of the group that p_cKind names; false for any other character.
bool GroupItems(char p_cKind, const CItemManager& p_objItemManager, ItemArray& p_objItemAry) {
    switch (p_cKind) {
    case '1':
        return p_objItemManager.SetItem_Parameter(p_objItemAry);
    case '2':
        return p_objItemManager.SetItem_Adjustment(p_objItemAry);
    default:
        return false;
    }
}

std::size_t LineLength(const ItemArray& p_objItemAry) {
    std::size_t iLength = FieldsPosition + EndLength;
    for (const ItemRef& objItem : p_objItemAry) {
        iLength += static_cast<std::size_t>(objItem->m_iLength);
    }
    return iLength;
}

}  // namespace

namespace MParameterFile {

std::vector<std::string> BuildLines(const CItemManager& p_objItemManager) {
    return MCommand::SetCommands(p_objItemManager);
}

bool StoreLine(std::string_view p_strLine, const CItemManager& p_objItemManager) {
    ItemArray objItemAry;
    if (!p_strLine.starts_with(MCommand::WriteGroupHead) || p_strLine.size() <= KindPosition ||
        !GroupItems(p_strLine[KindPosition], p_objItemManager, objItemAry) ||
        p_strLine.size() != LineLength(objItemAry)) {
        return false;
    }
    std::size_t iPosition = FieldsPosition;
    for (const ItemRef& objItem : objItemAry) {
        const auto iLength = static_cast<std::size_t>(objItem->m_iLength);
        objItem->SetValue(std::string(p_strLine.substr(iPosition, iLength)));
        iPosition += iLength;
    }
    return true;
}

}  // namespace MParameterFile
