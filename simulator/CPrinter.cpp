#include "simulator/CPrinter.h"

#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "protocol/MStatus.h"
#include "simulator/MItemNames.h"

#include <algorithm>
#include <limits>
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

CPrinter::CPrinter() {
    KeepFirst();
}

void CPrinter::SetPlace(const std::array<std::uint8_t, 4>& p_iAddress, std::uint16_t p_iPort) {
    m_objItems.m_objIpAddress1->SetValue(std::to_string(p_iAddress[0]));
    m_objItems.m_objIpAddress2->SetValue(std::to_string(p_iAddress[1]));
    m_objItems.m_objIpAddress3->SetValue(std::to_string(p_iAddress[2]));
    m_objItems.m_objIpAddress4->SetValue(std::to_string(p_iAddress[3]));
    m_objItems.m_objSocketPortNumber->SetValue(std::to_string(p_iPort));
    KeepFirst();
}

void CPrinter::KeepFirst() {
    m_vFirst = Values();
    m_objFirstPlace = CPlace::Of(m_objItems);
    m_objPlace = m_objFirstPlace;
}

std::vector<CItemValue> CPrinter::Values() const {
    std::vector<CItemValue> vValues;
    vValues.reserve(CItemManager::Rows().size());
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        vValues.push_back((m_objItems.*objRow.m_objSlot)->m_vValue);
    }
    return vValues;
}

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
    Reply objReply{CDecodedCommand(p_strCommand, m_objItems), {}, {}, false, false, {}};
    const CDecodedCommand& objCommand = objReply.m_objCommand;
    const bool bOnPurpose = RefusesOnPurpose(p_strCommand);
    objReply.m_bAccepted = objCommand.IsValid() && !bOnPurpose;
    m_objCounts.Add(objCommand.Kind(), objReply.m_bAccepted);
    if (!objReply.m_bAccepted) {
        objReply.m_strAnswer = StatusAnswer(CommandError);
        objReply.m_strNote = StatusNote(CommandError);
        if (bOnPurpose) {
            objReply.m_objMishaps.push_back({"refused", "refused on purpose"});
        }
        return objReply;
    }
    if (objCommand.Kind() == Kind::ReadSettings) {
        const std::string strGroup = objCommand.Value("Group");
        objReply.m_strAnswer = SettingsAnswer(static_cast<std::int16_t>(strGroup.front() - '0'));
        objReply.m_strNote = "settings of group " + strGroup;
        return objReply;
    }
    objReply.m_objMishaps = CarryOut(objCommand, p_strCommand);
    if (m_objFaults.m_iMoves == CStateFaults::Moves::AtOnce) {
        const CPlace objBefore = std::exchange(m_objPlace, CPlace::Of(m_objItems));
        objReply.m_bMoved = m_objPlace != objBefore;
    }
    objReply.m_strAnswer = StatusAnswer(m_strStatus);
    objReply.m_strNote = StatusNote(m_strStatus);
    return objReply;
}

bool CPrinter::RefusesOnPurpose(std::string_view p_strCommand) {
    const auto& strRefused = m_objFaults.m_strRefused;
    if (std::none_of(strRefused.begin(), strRefused.end(), [&](const std::string& p_strHead) {
            return p_strCommand.starts_with(p_strHead);
        })) {
        return false;
    }
    ++m_iToRefuse;
    return m_objFaults.m_iRefusedOnly == 0 || m_objFaults.m_iRefusedOnly == m_iToRefuse;
}

std::vector<MStoring::Mishap> CPrinter::CarryOut(const CDecodedCommand& p_objCommand,
                                                 std::string_view p_strCommand) {
    if (p_objCommand.Kind() == Kind::RamClear && p_objCommand.Value("Mode") == "0") {
        RestoreDefaults();
    }
    return MStoring::Store(p_objCommand, p_strCommand, m_objFaults);
}

void CPrinter::RestoreDefaults() {
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        // Not by SetValue, which would read the default number as hexadecimal text.
        CItem& objItem = *(m_objItems.*objRow.m_objSlot);
        if (!MStoring::IsStuck(m_objFaults, MItemNames::Of(objRow))) {
            objItem.m_vValue = objItem.m_vDefaultValue;
        }
    }
}

std::size_t CPrinter::MostTaken() const {
    constexpr std::size_t iEndless = std::numeric_limits<std::size_t>::max();
    if (!m_bOn) {
        return 0;
    }
    const bool bToGo = m_objFaults.m_iPowerCut && m_iTaken < *m_objFaults.m_iPowerCut;
    return bToGo ? *m_objFaults.m_iPowerCut - m_iTaken : iEndless;
}

bool CPrinter::Took(std::size_t p_iBytes) {
    const bool bGoes = p_iBytes > 0 && p_iBytes == MostTaken();
    m_iTaken += p_iBytes;
    if (bGoes) {
        PowerOff();
    }
    return bGoes;
}

void CPrinter::PowerOff() {
    m_bOn = false;
    if (!m_objFaults.m_bForgets) {
        return;
    }
    for (std::size_t i = 0; i < m_vFirst.size(); ++i) {
        (m_objItems.*CItemManager::Rows()[i].m_objSlot)->m_vValue = m_vFirst[i];
    }
}

void CPrinter::PowerOn() {
    m_bOn = true;
    if (m_objFaults.m_iMoves != CStateFaults::Moves::Never) {
        m_objPlace = CPlace::Of(m_objItems);
    }
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
        strField.resize(static_cast<std::size_t>(objItem->m_iLength), m_cFill);
        strAnswer += strField;
    }
    return strAnswer + MCommand::CommandEnd;
}
