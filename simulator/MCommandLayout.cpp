#include "simulator/MCommandLayout.h"

#include "protocol/MCommand.h"
#include "simulator/MItemNames.h"

#include <utility>

namespace {

using MCommandKind::Kind;
using MCommandLayout::Field;
using MCommandLayout::Layout;

constexpr std::string_view Digits = "0123456789";
constexpr std::string_view HexDigits = "0123456789ABCDEFabcdef";
constexpr std::string_view Signs = "+-";
constexpr std::string_view FreeText;

std::string_view AllowedIn(const CItem& p_objItem) {
    switch (p_objItem.m_iDataType) {
    case ItemDataType::Decimal:
        return Digits;
    case ItemDataType::Hexadecimal:
        return HexDigits;
    case ItemDataType::Text:
        break;
    }
    return p_objItem.m_iLength == 1 ? Signs : FreeText;  // a text of one character is a direction
}

Field ItemField(const CItemManager& p_objItems, const ItemRef& p_objItem, std::string p_strBefore) {
    return {std::move(p_strBefore),
            std::string(MItemNames::Of(p_objItems, p_objItem)),
            static_cast<std::size_t>(p_objItem->m_iLength),
            AllowedIn(*p_objItem),
            {},
            p_objItem};
}

using GroupOperation = bool (CItemManager::*)(ItemArray&) const;

/// A group's fields, with p_strBetween between one and the next.
Layout Group(const CItemManager& p_objItems, GroupOperation p_objGroup,
             const std::string& p_strBetween) {
    ItemArray objItemAry;
    (p_objItems.*p_objGroup)(objItemAry);
    Layout objLayout;
    for (const ItemRef& objItem : objItemAry) {
        const bool bFirst = objLayout.m_objFields.empty();
        objLayout.m_objFields.push_back(
            ItemField(p_objItems, objItem, bFirst ? std::string() : p_strBetween));
    }
    return objLayout;
}

/// A number of p_iWidth digits that is not kept.
Field Number(std::string p_strName, std::size_t p_iWidth, std::string p_strBefore = {}) {
    return {std::move(p_strBefore), std::move(p_strName), p_iWidth, Digits, {}, nullptr};
}

/// One byte of p_strAllowed, each with its meaning; not kept.
Field Choice(std::string p_strName, std::string_view p_strAllowed,
             std::vector<std::string_view> p_strMeanings, std::string p_strBefore = {}) {
    return {std::move(p_strBefore), std::move(p_strName),     1,
            p_strAllowed,           std::move(p_strMeanings), nullptr};
}

/// What is cleared, and for which country; printed how and cut how; by which sensor.
const std::vector<std::string_view> Memories{"PARAMETER", "MANTE.CNT"};
const std::vector<std::string_view> Destinations{"JA", "CN", "QP", "QQ"};
const std::vector<std::string_view> Patterns{"FEED",       "SLANT LINE(1DOT)", "SLANT LINE(3DOT)",
                                             "CHARACTERS", "BARCODE",          "FACTORY TEST"};
const std::vector<std::string_view> Speeds{"2\"/sec", "4\"/sec"};
const std::vector<std::string_view> Cuts{"NO CUT", "WITH CUT", "PEEL OFF"};
const std::vector<std::string_view> Methods{"DIRECT", "TRANSFR"};
const std::vector<std::string_view> MediaSensors{"NONE", "REFLECT.", "TRANS."};
const std::vector<std::string_view> CalibratedSensors{"REFLECT.", "TRANS."};

Layout ReadSettings() {
    return {{{"",
              "Group",
              1,
              "01234",
              {"adjustment", "parameter", "sensor", "LAN", "parameter expansion"},
              nullptr}},
            {},
            {}};
}

Layout SocketPort(const CItemManager& p_objItems) {
    return {{ItemField(p_objItems, p_objItems.m_objSocketPortSetting, ""),
             ItemField(p_objItems, p_objItems.m_objSocketPortNumber, ",")},
            {},
            {}};
}

Layout Dhcp(const CItemManager& p_objItems) {
    return {{ItemField(p_objItems, p_objItems.m_objDhcpSetting, ""),
             ItemField(p_objItems, p_objItems.m_objDhcpClientId, ","),
             ItemField(p_objItems, p_objItems.m_objDhcpClientHost, ",")},
            {},
            {}};
}

/// The destination is a matter of the parameters: only their clearing can name one.
std::vector<Layout> RamClear() {
    const Field objDestination = Choice("Destination", "0123", Destinations);
    Field objParameter = Choice("Mode", "01", Memories);
    objParameter.m_strAllowed = "0";
    return {{{Choice("Mode", "01", Memories)}, {}, {}}, {{objParameter, objDestination}, {}, {}}};
}

/// Both sensors are adjusted one by one, then each once more with the paper away.
std::vector<Layout> SensorAdjust() {
    const Field objSensor = {"", "Sensor", 1, "01", {"reflective", "transmissive"}, nullptr};
    return {{{objSensor}, {}, {}}, {{objSensor}, "1", "paper end"}};
}

/// The tool never sends the pattern code 5: its factory test is 6.
Layout TestPrint() {
    return {{Choice("Pattern", "012346", Patterns), Number("LabelLength", 4),
             Number("PrintLength", 4), Number("IssueCount", 4, MCommand::TestPrintFixedField),
             Choice("PrintSpeed", "01", Speeds), Choice("Sensor", "012", MediaSensors),
             Choice("CutType", "012", Cuts), Choice("PrintType", "01", Methods)},
            {},
            {}};
}

Layout SetCommand(Kind p_iKind, const CItemManager& p_objItems) {
    switch (p_iKind) {
    case Kind::SetParameters:
        return Group(p_objItems, &CItemManager::SetItem_Parameter, "");
    case Kind::SetAdjustments:
        return Group(p_objItems, &CItemManager::SetItem_Adjustment, "");
    case Kind::SetIpAddress:
        return Group(p_objItems, &CItemManager::SetItem_ExtraIpAddress, ",");
    case Kind::SetGateway:
        return Group(p_objItems, &CItemManager::SetItem_ExtraGateway, ",");
    case Kind::SetSubnetMask:
        return Group(p_objItems, &CItemManager::SetItem_ExtraSubnet, ",");
    case Kind::SetSocketPort:
        return SocketPort(p_objItems);
    default:
        return Dhcp(p_objItems);
    }
}

}  // namespace

namespace MCommandLayout {

std::size_t Layout::Length(MCommandKind::Kind p_iKind) const {
    std::size_t iLength = MCommandKind::Head(p_iKind).size() + m_strTail.size() +
                          std::string_view(MCommand::CommandEnd).size();
    for (const Field& objField : m_objFields) {
        iLength += objField.m_strBefore.size() + objField.m_iWidth;
    }
    return iLength;
}

std::vector<Layout> Forms(MCommandKind::Kind p_iKind, const CItemManager& p_objItems) {
    switch (p_iKind) {
    case Kind::Status:
        return {{}};
    case Kind::ReadSettings:
        return {ReadSettings()};
    case Kind::HeadCheck:
        return {{{}, "001,A", {}}};
    case Kind::RamClear:
        return RamClear();
    case Kind::ThresholdCalib:
        return {{{Choice("Sensor", "12", CalibratedSensors, "1000,")}, {}, {}}};
    case Kind::SensorAdjust:
        return SensorAdjust();
    case Kind::TestPrint:
        return {TestPrint()};
    case Kind::DiagPrint:
        return {{{Choice("PrintType", "01", Methods)}, {}, {}}};
    case Kind::Unknown:
        return {};
    default:
        return {SetCommand(p_iKind, p_objItems)};
    }
}

}  // namespace MCommandLayout
