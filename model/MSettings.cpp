#include "model/MSettings.h"

#include "model/MSettingText.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>

namespace {

using MSettings::Cuts;
using MSettings::Kind;
using MSettings::Range;
using MSettings::Row;
using MSettings::Slot;
using Entries = std::vector<std::string_view>;

const Entries OffOn{"OFF", "ON"};
const Entries Types{"TYPE1", "TYPE2"};

constexpr Range Octet{0, 255, 1, 3};
constexpr Range Code{0, 255, 1, 5, 0, true};
constexpr Range Reading{0, 99, 1, 2};

// The adjustments of the ribbon motors have no value above 0: their direction is always "-".
// clang-format off
const std::vector<Row> Settings{
    {"feed-adj", "FEED ADJ.", Kind::Number, {&CItemManager::m_objFeedAdjustment}, &CItemManager::m_objFeedDirection, {}, {-500, 500, 1, 5, 1}},
    {"cut-adj", "CUT ADJ.", Kind::Number, {&CItemManager::m_objCutPosAdjustment}, &CItemManager::m_objCutPosDirection, {}, {-500, 500, 1, 5, 1}},
    {"back-adj", "BACK ADJ.", Kind::Number, {&CItemManager::m_objBackFeedAdjustment}, &CItemManager::m_objBackFeedDirection, {}, {-95, 95, 1, 5, 1}},
    {"tone-adj-t", "TONE ADJ.<T>", Kind::Number, {&CItemManager::m_objToneAdjustment_T}, &CItemManager::m_objToneDirection_T, {}, {-10, 10, 1, 5}},
    {"tone-adj-d", "TONE ADJ.<D>", Kind::Number, {&CItemManager::m_objToneAdjustment_D}, &CItemManager::m_objToneDirection_D, {}, {-10, 10, 1, 5}},
    {"ribbon-adj-fw", "RBN ADJ.<FW>", Kind::Number, {&CItemManager::m_objRibbonMotorAdjustment_F}, &CItemManager::m_objRibbonMotorDirection_F, {}, {-15, 0, 1, 3}},
    {"ribbon-adj-bk", "RBN ADJ.<BK>", Kind::Number, {&CItemManager::m_objRibbonMotorAdjustment_B}, &CItemManager::m_objRibbonMotorDirection_B, {}, {-15, 0, 1, 3}},
    {"x-adj", "X ADJ.", Kind::Number, {&CItemManager::m_objXCoordinateAdjustment}, &CItemManager::m_objXCoordinateDirection, {}, {-995, 995, 5, 5, 1}},
    {"print-position", "PRINT POSITION", Kind::Number, {&CItemManager::m_objPrintPosCorrectionValue}, &CItemManager::m_objPrintPosCorrectionDirection, {}, {-999, 999, 1, 4}},
    {"font-code", "FONT CODE", Kind::List, {&CItemManager::m_objFontCode}, nullptr, {"PC-850", "PC-852", "PC-857", "PC-8", "PC-851", "PC-855", "PC-1250", "PC-1251", "PC-1252", "PC-1253", "PC-1254", "PC-1257", "LATIN9", "Arabic", "PC-866", "UTF-8"}},
    {"zero-code", "ZERO CODE", Kind::List, {&CItemManager::m_objZeroStyle}, nullptr, {"NO SLASH", "WITH SLASH"}},
    {"control", "CONTROL", Kind::List, {&CItemManager::m_objControl}, nullptr, {"XON/XOFF", "READY/BUSY(DTR)", "XON+READY AUTO", "XON/XOFF AUTO", "READY/BUSY(RTS)"}, {}, Cuts::Serial},
    {"code", "CODE", Kind::List, {&CItemManager::m_objControlCode}, nullptr, {"AUTO", "ESC,LF,NUL", "{,|,}", "MANUAL"}},
    {"peel-off-status", "PEEL OFF STATUS", Kind::List, {&CItemManager::m_objStripStatus}, nullptr, OffOn},
    {"threshold-r", "THRESHOLD<R>", Kind::Number, {&CItemManager::m_objThresholdAdjustment_R}, nullptr, {}, {0, 40, 1, 4, 1}},
    {"threshold-t", "THRESHOLD<T>", Kind::Number, {&CItemManager::m_objThresholdAdjustment_T}, nullptr, {}, {0, 40, 1, 4, 1}},
    {"kanji-code", "KANJI CODE", Kind::List, {&CItemManager::m_objKanjiCode}, nullptr, Types},
    {"country", "COUNTRY", Kind::Number, {&CItemManager::m_objCountry}, nullptr, {}, {0, 9, 1, 1}},
    {"euro-code", "EURO CODE", Kind::Number, {&CItemManager::m_objEuroCode}, nullptr, {}, {32, 255, 1, 5, 0, true}},
    {"thermal-head-sensor", "THERMAL HEAD SENSOR", Kind::Number, {&CItemManager::m_objThermalHeadSensor}, nullptr, {}, Reading},
    {"ambient-sensor", "AMBIENT SENSOR", Kind::Number, {&CItemManager::m_objAmbientSensor}, nullptr, {}, Reading},
    {"reflective-sensor", "REFLECTIVE SENSOR", Kind::Number, {&CItemManager::m_objReflectiveSensor}, nullptr, {}, Reading},
    {"transmissive-sensor", "TRANSMISSIVE SENSOR", Kind::Number, {&CItemManager::m_objTransmissiveSensor}, nullptr, {}, Reading},
    {"lan", "LAN", Kind::List, {&CItemManager::m_objLanSetting}, nullptr, OffOn},
    {"ip-address", "IP ADDRESS", Kind::Address, {&CItemManager::m_objIpAddress1, &CItemManager::m_objIpAddress2, &CItemManager::m_objIpAddress3, &CItemManager::m_objIpAddress4}, nullptr, {}, Octet, Cuts::Lan},
    {"default-gateway", "DEFAULT GATEWAY", Kind::Address, {&CItemManager::m_objGateway1, &CItemManager::m_objGateway2, &CItemManager::m_objGateway3, &CItemManager::m_objGateway4}, nullptr, {}, Octet, Cuts::Lan},
    {"subnet-mask", "SUBNET MASK", Kind::Address, {&CItemManager::m_objSubnetMask1, &CItemManager::m_objSubnetMask2, &CItemManager::m_objSubnetMask3, &CItemManager::m_objSubnetMask4}, nullptr, {}, Octet, Cuts::Lan},
    {"socket", "SOCKET", Kind::List, {&CItemManager::m_objSocketPortSetting}, nullptr, OffOn, {}, Cuts::Lan},
    {"socket-port", "SOCKET PORT", Kind::Number, {&CItemManager::m_objSocketPortNumber}, nullptr, {}, {0, 65535, 1, 5}, Cuts::Lan},
    {"dhcp", "DHCP", Kind::List, {&CItemManager::m_objDhcpSetting}, nullptr, OffOn, {}, Cuts::Lan},
    {"dhcp-client-id", "DHCP CLIENT ID", Kind::Text, {&CItemManager::m_objDhcpClientId}, nullptr, {}, {}, Cuts::Lan},
    {"dhcp-host-name", "DHCP HOST NAME", Kind::Text, {&CItemManager::m_objDhcpClientHost}, nullptr, {}, {}, Cuts::Lan},
    {"speed", "SPEED", Kind::List, {&CItemManager::m_objCommunicationSpeed}, nullptr, {"2400bps", "4800bps", "9600bps", "19200bps", "38400bps", "115200bps"}, {}, Cuts::Serial},
    {"data-length", "DATA LENG.", Kind::List, {&CItemManager::m_objDataLength}, nullptr, {"7bits", "8bits"}, {}, Cuts::Serial},
    {"stop-bit", "STOP BIT", Kind::List, {&CItemManager::m_objStopBit}, nullptr, {"1bit", "2bits"}, {}, Cuts::Serial},
    {"parity", "PARITY", Kind::List, {&CItemManager::m_objParity}, nullptr, {"NONE", "EVEN", "ODD"}, {}, Cuts::Serial},
    {"forward-wait", "FOWARD WAIT", Kind::List, {&CItemManager::m_objAutoForward}, nullptr, OffOn},
    {"forward-position", "FOWARD POSITION", Kind::Number, {&CItemManager::m_objAutoForwardAdjustment}, &CItemManager::m_objAutoForwardDirection, {}, {-50, 50, 5, 5, 1}},
    {"code-1", "CODE 1", Kind::Number, {&CItemManager::m_objControlCode1st}, nullptr, {}, Code},
    {"code-2", "CODE 2", Kind::Number, {&CItemManager::m_objControlCode2nd}, nullptr, {}, Code},
    {"code-3", "CODE 3", Kind::Number, {&CItemManager::m_objControlCode3rd}, nullptr, {}, Code},
    {"feed-key", "FEED KEY", Kind::List, {&CItemManager::m_objFeedKeyFunction}, nullptr, {"FEED", "PRINT"}},
    {"auto-head-check", "AUTO HD CHK", Kind::List, {&CItemManager::m_objHeadCheck}, nullptr, OffOn},
    {"ack-busy", "ACK/BUSY", Kind::List, {&CItemManager::m_objAckBusyTiming}, nullptr, Types},
    {"web-printer", "WEB PRINTER", Kind::List, {&CItemManager::m_objWebPrinter}, nullptr, OffOn},
    {"input-prime", "INPUT PRIME", Kind::List, {&CItemManager::m_objResetNInitSignalIsON}, nullptr, OffOn},
    {"ribbon-near-end", "RIBBON NEAR END", Kind::List, {&CItemManager::m_objRibbonNearEnd}, nullptr, {"OFF", "30m", "70m"}},
    {"ex-io-mode", "EX.I/O MODE", Kind::List, {&CItemManager::m_objExpansionIO}, nullptr, Types},
    {"plug-and-play", "PLUG & PLAY", Kind::List, {&CItemManager::m_objPlugAndPlay}, nullptr, OffOn},
    {"label-ribbon-end", "LBL/RBN END", Kind::List, {&CItemManager::m_objLabelendRibbonend}, nullptr, Types},
    {"pre-peel-off", "PRE PEEL OFF", Kind::List, {&CItemManager::m_objPreStrip}, nullptr, OffOn},
    {"back-speed", "BACK SPEED", Kind::List, {&CItemManager::m_objBackFeedSpeed}, nullptr, {"STD", "LOW"}},
    {"maxi-code-spec", "MAXI CODE SPEC.", Kind::List, {&CItemManager::m_objMaxiCodeSpecification}, nullptr, Types},
    {"peel-off-torque", "PEEL OFF TRQ", Kind::List, {&CItemManager::m_objStripMotorTorque}, nullptr, {"R0", "R1", "R2", "R3"}},
    {"kb-if", "KB I/F", Kind::List, {&CItemManager::m_objKeyboardIF}, nullptr, {"OFF", "KB60(1)", "KB60(2)", "KB80"}},
};
// clang-format on

/// The largest number that so many digits write.
std::int64_t Largest(std::int16_t p_iDigits, int p_iBase) {
    std::int64_t iLargest = 1;
    for (std::int16_t i = 0; i < p_iDigits; ++i) {
        iLargest *= p_iBase;
    }
    return iLargest - 1;
}

void Refuse(bool p_bWrong, const Row& p_objRow, const char* p_strWhat) {
    if (p_bWrong) {
        throw std::logic_error("setting \"" + std::string(p_objRow.m_strName) + "\" (" +
                               std::string(p_objRow.m_strLabel) + "): " + p_strWhat);
    }
}

void CheckRange(const Row& p_objRow, const CItem& p_objItem) {
    const Range& objRange = p_objRow.m_objRange;
    const int iBase = p_objItem.m_iDataType == ItemDataType::Hexadecimal ? 16 : 10;
    const std::int64_t iLargest = Largest(p_objItem.m_iLength, iBase);
    Refuse(objRange.m_iMin >= objRange.m_iMax, p_objRow, "its range is upside down");
    Refuse(objRange.m_iStep < 1, p_objRow, "it has no step");
    Refuse(objRange.m_iMax > iLargest || objRange.m_iMin < -iLargest, p_objRow,
           "its range does not fit into its field");
    Refuse(objRange.m_iMin < 0 && p_objRow.m_objDirection == nullptr, p_objRow,
           "it can be negative, yet nothing holds its sign");
}

void CheckRow(const Row& p_objRow, const CItemManager& p_objItems) {
    Refuse(p_objRow.m_strName.empty() || p_objRow.m_strLabel.empty(), p_objRow,
           "it has no name or no label");
    const std::size_t iExpected = p_objRow.m_iKind == Kind::Address ? 4 : 1;
    const auto iSlots = static_cast<std::size_t>(
        std::ranges::count_if(p_objRow.m_objSlots, [](Slot p_objSlot) { return p_objSlot; }));
    Refuse(iSlots != iExpected || p_objRow.m_objSlots.front() == nullptr, p_objRow,
           "it has too many items or too few");
    const CItem& objItem = *(p_objItems.*p_objRow.m_objSlots.front());
    Refuse((p_objRow.m_iKind == Kind::List) == p_objRow.m_strEntries.empty(), p_objRow,
           "a list has entries, and nothing else has");
    if (p_objRow.m_iKind == Kind::List) {
        const bool bHexa = objItem.m_iDataType == ItemDataType::Hexadecimal;
        Refuse(static_cast<std::int64_t>(p_objRow.m_strEntries.size()) >
                   Largest(objItem.m_iLength, bHexa ? 16 : 10) + 1,
               p_objRow, "its list does not fit into its field");
    }
    if (p_objRow.m_iKind == Kind::Number || p_objRow.m_iKind == Kind::Address) {
        CheckRange(p_objRow, objItem);
    }
    Refuse(!MSettingText::Show(p_objRow, p_objItems), p_objRow,
           "its default is none of its values");
}

}  // namespace

namespace MSettings {

std::vector<Slot> Row::Items() const {
    std::vector<Slot> objItems;
    if (m_objDirection != nullptr) {
        objItems.push_back(m_objDirection);
    }
    std::ranges::copy_if(m_objSlots, std::back_inserter(objItems),
                         [](Slot p_objSlot) { return p_objSlot != nullptr; });
    return objItems;
}

std::span<const Row> All() {
    return Settings;
}

const Row* Find(std::string_view p_strName) {
    const auto objFound = std::ranges::find(Settings, p_strName, &Row::m_strName);
    return objFound == Settings.end() ? nullptr : &*objFound;
}

const Row& Get(std::string_view p_strName) {
    const Row* const objRow = Find(p_strName);
    if (objRow == nullptr) {
        throw std::logic_error("there is no setting \"" + std::string(p_strName) + "\"");
    }
    return *objRow;
}

void Check(std::span<const Row> p_objRows) {
    const CItemManager objItems;
    std::set<std::string_view> strNames;
    std::set<const CItem*> objSeen;
    for (const Row& objRow : p_objRows) {
        CheckRow(objRow, objItems);
        Refuse(!strNames.insert(objRow.m_strName).second, objRow, "its name stands twice");
        for (const Slot objSlot : objRow.Items()) {
            Refuse(!objSeen.insert((objItems.*objSlot).get()).second, objRow,
                   "one of its items belongs to another setting, too");
        }
    }
    for (const CItemManager::Row& objItem : CItemManager::Rows()) {
        if (!objSeen.contains((objItems.*objItem.m_objSlot).get())) {
            throw std::logic_error("no setting has the item " + std::string(objItem.m_strName));
        }
    }
}

}  // namespace MSettings
