#include "simulator/CPrinter.h"

#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "protocol/MStatus.h"
#include "simulator/MPrintable.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

using MCommandKind::Kind;

ItemArray GroupItems(const CItemManager& p_objItems, std::int16_t p_iGroup) {
    ItemArray objItemAry;
    switch (p_iGroup) {
    case MAnswer::Adjustment:
        p_objItems.GetItem_Adjustment(objItemAry);
        break;
    case MAnswer::Parameter:
        p_objItems.GetItem_Parameter(objItemAry);
        break;
    case MAnswer::Sensor:
        p_objItems.GetItem_Sensor(objItemAry);
        break;
    case MAnswer::Lan:
        p_objItems.GetItem_Lan(objItemAry);
        break;
    default:
        p_objItems.GetItem_ParameterExpansion1(objItemAry);
        break;
    }
    return objItemAry;
}

std::string StatusNote(std::string_view p_strStatus) {
    std::string strText;
    bool bReceived = false;
    MStatus::StatusText(p_strStatus, strText, bReceived);
    if (!bReceived) {
        strText = "a code the tool does not know";
    }
    return "status " + std::string(p_strStatus) + (strText.empty() ? "" : " (" + strText + ")");
}

}  // namespace

void CPrinter::SetStatus(std::string p_strStatus) {
    if (!IsStatus(p_strStatus)) {
        throw std::invalid_argument("a status code has two printable characters");
    }
    m_strStatus = std::move(p_strStatus);
}

bool CPrinter::IsStatus(std::string_view p_strStatus) {
    return p_strStatus.size() == 2 &&
           std::all_of(p_strStatus.begin(), p_strStatus.end(),
                       [](char p_c) { return p_c >= ' ' && p_c <= '~'; });
}

CPrinter::Reply CPrinter::Handle(std::string_view p_strCommand) {
    Reply objReply{CDecodedCommand(p_strCommand, m_objItems), {}, {}};
    const CDecodedCommand& objCommand = objReply.m_objCommand;
    Count& objCount = m_objCounts.at(static_cast<std::size_t>(objCommand.Kind()));
    if (!objCommand.IsValid()) {
        ++objCount.m_iRefused;
        objReply.m_strAnswer = StatusAnswer(CommandError);
        objReply.m_strNote = StatusNote(CommandError);
        return objReply;
    }
    ++objCount.m_iAccepted;
    if (objCommand.Kind() == Kind::ReadSettings) {
        const std::string strGroup = objCommand.Value("Group");
        objReply.m_strAnswer = SettingsAnswer(static_cast<std::int16_t>(strGroup.front() - '0'));
        objReply.m_strNote = "settings of group " + strGroup;
        return objReply;
    }
    CarryOut(objCommand);
    objReply.m_strAnswer = StatusAnswer(m_strStatus);
    objReply.m_strNote = StatusNote(m_strStatus);
    return objReply;
}

void CPrinter::CarryOut(const CDecodedCommand& p_objCommand) {
    if (p_objCommand.Kind() == Kind::RamClear && p_objCommand.Value("Mode") == "0") {
        RestoreDefaults();
    }
    for (const CDecodedCommand::Field& objField : p_objCommand.Fields()) {
        if (objField.m_objItem) {
            objField.m_objItem->SetValue(objField.m_strValue);
        }
    }
}

void CPrinter::RestoreDefaults() {
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        // Not by SetValue, which would read the default number as hexadecimal text.
        CItem& objItem = *(m_objItems.*objRow.m_objSlot);
        objItem.m_vValue = objItem.m_vDefaultValue;
    }
}

CPrinter::Count CPrinter::Commands(Kind p_iKind) const {
    return m_objCounts.at(static_cast<std::size_t>(p_iKind));
}

std::string CPrinter::DescribeCounts() const {
    std::string strText;
    for (std::size_t i = 0; i < m_objCounts.size(); ++i) {
        const Count& objCount = m_objCounts.at(i);
        const std::size_t iAll = objCount.m_iAccepted + objCount.m_iRefused;
        if (iAll == 0) {
            continue;
        }
        strText +=
            std::string(MCommandKind::Name(static_cast<Kind>(i))) + ": " + std::to_string(iAll);
        if (objCount.m_iRefused != 0) {
            strText += ", refused " + std::to_string(objCount.m_iRefused);
        }
        strText += '\n';
    }
    return strText;
}

std::string CPrinter::StatusAnswer(std::string_view p_strStatus) {
    return "\x01\x02" + std::string(p_strStatus) + "0000000" + "\x03\x04";
}

std::string CPrinter::SettingsAnswer(std::int16_t p_iGroup) const {
    std::string strAnswer = "{" + std::to_string(p_iGroup);
    for (const ItemRef& objItem : GroupItems(m_objItems, p_iGroup)) {
        std::string strField = objItem == m_objItems.m_objFontCode
                                   ? MAnswer::MapFontCode(objItem->GetValueString(), false)
                                   : objItem->GetValueString();
        strField.resize(static_cast<std::size_t>(objItem->m_iLength), ' ');
        strAnswer += strField;
    }
    return strAnswer + MCommand::CommandEnd;
}
