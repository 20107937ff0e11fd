#include "model/MChoiceLists.h"
#include "model/MSettings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The tables of what people can set and choose, each row in full, written once more by hand: what a
// front shows and takes comes from them.

namespace {

using MSettings::Cuts;
using MSettings::Kind;
using MSettings::Range;
using MSettings::Row;

std::string Told(const Range& p_objRange) {
    return std::to_string(p_objRange.m_iMin) + ".." + std::to_string(p_objRange.m_iMax) + " by " +
           std::to_string(p_objRange.m_iStep) + ", " + std::to_string(p_objRange.m_iLength) +
           " wide" +
           (p_objRange.m_iDecimals != 0 ? ", " + std::to_string(p_objRange.m_iDecimals) + " decimal"
                                        : "") +
           (p_objRange.m_bHexa ? ", hex" : "");
}

std::string Told(const std::vector<std::string_view>& p_strEntries) {
    std::string strText;
    for (const std::string_view strEntry : p_strEntries) {
        strText += (strText.empty() ? "" : " ~ ") + std::string(strEntry);
    }
    return strText;
}

std::string ItemName(MSettings::Slot p_objSlot) {
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        if (objRow.m_objSlot == p_objSlot) {
            return std::string(objRow.m_strName).substr(std::string("m_obj").size());
        }
    }
    return "?";
}

std::string Told(const Row& p_objRow) {
    std::string strText = std::string(p_objRow.m_strName) + "|" + std::string(p_objRow.m_strLabel);
    for (const MSettings::Slot objSlot : p_objRow.Items()) {
        strText += (objSlot == p_objRow.Items().front() ? "|" : " ") + ItemName(objSlot);
    }
    switch (p_objRow.m_iKind) {
    case Kind::List:
        strText += "|" + Told(p_objRow.m_strEntries);
        break;
    case Kind::Number:
        strText += "|" + Told(p_objRow.m_objRange);
        break;
    case Kind::Address:
        strText += "|address " + Told(p_objRow.m_objRange);
        break;
    case Kind::Text:
        strText += "|text";
        break;
    }
    return strText + (p_objRow.m_iCuts == Cuts::Lan      ? "|lan"
                      : p_objRow.m_iCuts == Cuts::Serial ? "|serial"
                                                         : "");
}

// clang-format off
const std::vector<std::string> SettingRows{
    "feed-adj|FEED ADJ.|FeedDirection FeedAdjustment|-500..500 by 1, 5 wide, 1 decimal",
    "cut-adj|CUT ADJ.|CutPosDirection CutPosAdjustment|-500..500 by 1, 5 wide, 1 decimal",
    "back-adj|BACK ADJ.|BackFeedDirection BackFeedAdjustment|-95..95 by 1, 5 wide, 1 decimal",
    "tone-adj-t|TONE ADJ.<T>|ToneDirection_T ToneAdjustment_T|-10..10 by 1, 5 wide",
    "tone-adj-d|TONE ADJ.<D>|ToneDirection_D ToneAdjustment_D|-10..10 by 1, 5 wide",
    "ribbon-adj-fw|RBN ADJ.<FW>|RibbonMotorDirection_F RibbonMotorAdjustment_F|-15..0 by 1, 3 wide",
    "ribbon-adj-bk|RBN ADJ.<BK>|RibbonMotorDirection_B RibbonMotorAdjustment_B|-15..0 by 1, 3 wide",
    "x-adj|X ADJ.|XCoordinateDirection XCoordinateAdjustment|-995..995 by 5, 5 wide, 1 decimal",
    "print-position|PRINT POSITION|PrintPosCorrectionDirection PrintPosCorrectionValue|-999..999 by 1, 4 wide",
    "font-code|FONT CODE|FontCode|PC-850 ~ PC-852 ~ PC-857 ~ PC-8 ~ PC-851 ~ PC-855 ~ PC-1250 ~ PC-1251 ~ PC-1252 ~ PC-1253 ~ PC-1254 ~ PC-1257 ~ LATIN9 ~ Arabic ~ PC-866 ~ UTF-8",
    "zero-code|ZERO CODE|ZeroStyle|NO SLASH ~ WITH SLASH",
    "control|CONTROL|Control|XON/XOFF ~ READY/BUSY(DTR) ~ XON+READY AUTO ~ XON/XOFF AUTO ~ READY/BUSY(RTS)|serial",
    "code|CODE|ControlCode|AUTO ~ ESC,LF,NUL ~ {,|,} ~ MANUAL",
    "peel-off-status|PEEL OFF STATUS|StripStatus|OFF ~ ON",
    "threshold-r|THRESHOLD<R>|ThresholdAdjustment_R|0..40 by 1, 4 wide, 1 decimal",
    "threshold-t|THRESHOLD<T>|ThresholdAdjustment_T|0..40 by 1, 4 wide, 1 decimal",
    "kanji-code|KANJI CODE|KanjiCode|TYPE1 ~ TYPE2",
    "country|COUNTRY|Country|0..9 by 1, 1 wide",
    "euro-code|EURO CODE|EuroCode|32..255 by 1, 5 wide, hex",
    "thermal-head-sensor|THERMAL HEAD SENSOR|ThermalHeadSensor|0..99 by 1, 2 wide",
    "ambient-sensor|AMBIENT SENSOR|AmbientSensor|0..99 by 1, 2 wide",
    "reflective-sensor|REFLECTIVE SENSOR|ReflectiveSensor|0..99 by 1, 2 wide",
    "transmissive-sensor|TRANSMISSIVE SENSOR|TransmissiveSensor|0..99 by 1, 2 wide",
    "lan|LAN|LanSetting|OFF ~ ON",
    "ip-address|IP ADDRESS|IpAddress1 IpAddress2 IpAddress3 IpAddress4|address 0..255 by 1, 3 wide|lan",
    "default-gateway|DEFAULT GATEWAY|Gateway1 Gateway2 Gateway3 Gateway4|address 0..255 by 1, 3 wide|lan",
    "subnet-mask|SUBNET MASK|SubnetMask1 SubnetMask2 SubnetMask3 SubnetMask4|address 0..255 by 1, 3 wide|lan",
    "socket|SOCKET|SocketPortSetting|OFF ~ ON|lan",
    "socket-port|SOCKET PORT|SocketPortNumber|0..65535 by 1, 5 wide|lan",
    "dhcp|DHCP|DhcpSetting|OFF ~ ON|lan",
    "dhcp-client-id|DHCP CLIENT ID|DhcpClientId|text|lan",
    "dhcp-host-name|DHCP HOST NAME|DhcpClientHost|text|lan",
    "speed|SPEED|CommunicationSpeed|2400bps ~ 4800bps ~ 9600bps ~ 19200bps ~ 38400bps ~ 115200bps|serial",
    "data-length|DATA LENG.|DataLength|7bits ~ 8bits|serial",
    "stop-bit|STOP BIT|StopBit|1bit ~ 2bits|serial",
    "parity|PARITY|Parity|NONE ~ EVEN ~ ODD|serial",
    "forward-wait|FOWARD WAIT|AutoForward|OFF ~ ON",
    "forward-position|FOWARD POSITION|AutoForwardDirection AutoForwardAdjustment|-50..50 by 5, 5 wide, 1 decimal",
    "code-1|CODE 1|ControlCode1st|0..255 by 1, 5 wide, hex",
    "code-2|CODE 2|ControlCode2nd|0..255 by 1, 5 wide, hex",
    "code-3|CODE 3|ControlCode3rd|0..255 by 1, 5 wide, hex",
    "feed-key|FEED KEY|FeedKeyFunction|FEED ~ PRINT",
    "auto-head-check|AUTO HD CHK|HeadCheck|OFF ~ ON",
    "ack-busy|ACK/BUSY|AckBusyTiming|TYPE1 ~ TYPE2",
    "web-printer|WEB PRINTER|WebPrinter|OFF ~ ON",
    "input-prime|INPUT PRIME|ResetNInitSignalIsON|OFF ~ ON",
    "ribbon-near-end|RIBBON NEAR END|RibbonNearEnd|OFF ~ 30m ~ 70m",
    "ex-io-mode|EX.I/O MODE|ExpansionIO|TYPE1 ~ TYPE2",
    "plug-and-play|PLUG & PLAY|PlugAndPlay|OFF ~ ON",
    "label-ribbon-end|LBL/RBN END|LabelendRibbonend|TYPE1 ~ TYPE2",
    "pre-peel-off|PRE PEEL OFF|PreStrip|OFF ~ ON",
    "back-speed|BACK SPEED|BackFeedSpeed|STD ~ LOW",
    "maxi-code-spec|MAXI CODE SPEC.|MaxiCodeSpecification|TYPE1 ~ TYPE2",
    "peel-off-torque|PEEL OFF TRQ|StripMotorTorque|R0 ~ R1 ~ R2 ~ R3",
    "kb-if|KB I/F|KeyboardIF|OFF ~ KB60(1) ~ KB60(2) ~ KB80",
};

const std::vector<std::string> ChoiceRows{
    "diag-print-type|DIRECT ~ TRANSFR",
    "test-print-pattern|FEED ~ SLANT LINE(1DOT) ~ SLANT LINE(3DOT) ~ CHARACTERS ~ BARCODE ~ FACTORY TEST",
    "test-print-speed|2\"/sec ~ 4\"/sec",
    "test-print-sensor|NONE ~ REFLECT. ~ TRANS.",
    "test-print-cut|NO CUT ~ WITH CUT ~ PEEL OFF",
    "test-print-type|DIRECT ~ TRANSFR",
    "sensor-adjust-step|REFLECT ~ TRANS ~ PAPER END",
    "threshold-sensor|REFLECT. ~ TRANS.",
    "ram-clear-mode|PARAMETER ~ MANTE.CNT",
    "ram-clear-destination|none ~ JA ~ CN ~ QP ~ QQ",
};
// clang-format on

TEST(MTablesTest, EverySettingIsAsItIsWritten) {
    std::vector<std::string> strTold;
    for (const Row& objRow : MSettings::All()) {
        strTold.push_back(Told(objRow));
    }
    EXPECT_EQ(strTold, SettingRows);
}

TEST(MTablesTest, EveryChoiceIsAsItIsWritten) {
    std::vector<std::string> strTold;
    for (const MChoiceLists::List& objList : MChoiceLists::All()) {
        const bool bEmptyFirst = objList.m_strEntries.front().empty();
        strTold.push_back(std::string(objList.m_strName) + "|" + (bEmptyFirst ? "none ~ " : "") +
                          Told(objList.m_strEntries));
    }
    EXPECT_EQ(strTold, ChoiceRows);
}

TEST(MTablesTest, EveryNumberToChooseIsAsItIsWritten) {
    const auto Number = [](const char* p_strName) {
        const MChoiceLists::Number& objNumber = MChoiceLists::GetNumber(p_strName);
        return std::to_string(objNumber.m_iStart) + " of " + Told(objNumber.m_objRange);
    };
    EXPECT_EQ(Number("test-print-issue-count"), "1 of 1..5000 by 1, 0 wide");
    EXPECT_EQ(Number("test-print-label-length"), "760 of 100..9999 by 1, 4 wide");
}

}  // namespace
