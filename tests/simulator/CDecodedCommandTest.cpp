#include "simulator/CDecodedCommand.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using MCommandKind::Kind;

const std::string ClientId = "0123456789ABCDEF0123456789ABCDEF";

std::string Dhcp(const std::string& p_strId, const std::string& p_strHost) {
    return "{IH;1," + p_strId + "," + p_strHost + "|}";
}

/// The command with other fields than the defaults.
std::string Set(const char* p_strCommand) {
    return MGolden::All(p_strCommand, &MGolden::Item::m_strOther);
}

/// Those fields as they are told.
std::string Fields(const char* p_strCommand) {
    std::string strFields;
    for (const MGolden::Slot objSlot : MGolden::Carried(p_strCommand)) {
        const MGolden::Item& objItem = MGolden::Of(objSlot);
        strFields += strFields.empty() ? "" : ", ";
        strFields += objItem.m_strName + std::string("m_obj").size();
        strFields += std::string("=") + objItem.m_strOther;
    }
    return strFields;
}

std::string Length(std::string_view p_strText) {
    return std::to_string(p_strText.size());
}

/// The command with a character more before its end.
std::string Longer(const std::string& p_strCommand) {
    return p_strCommand.substr(0, p_strCommand.size() - 2) + "0|}";
}

struct Good {
    const char* m_strName;
    std::string m_strCommand;
    Kind m_iKind;
    std::string m_strLine;
};

// clang-format off
const std::vector<Good> GoodCommands{
    {"status", "{WS|}", Kind::Status, "status request"},
    {"read0", "{Z5;0|}", Kind::ReadSettings, "read settings: Group=0 (adjustment)"},
    {"read1", "{Z5;1|}", Kind::ReadSettings, "read settings: Group=1 (parameter)"},
    {"read2", "{Z5;2|}", Kind::ReadSettings, "read settings: Group=2 (sensor)"},
    {"read3", "{Z5;3|}", Kind::ReadSettings, "read settings: Group=3 (LAN)"},
    {"read4", "{Z5;4|}", Kind::ReadSettings, "read settings: Group=4 (parameter expansion)"},
    {"parameters", Set(MGolden::Parameters), Kind::SetParameters, "set parameters: " + Fields(MGolden::Parameters)},
    {"adjustments", Set(MGolden::Adjustments), Kind::SetAdjustments, "set adjustments: " + Fields(MGolden::Adjustments)},
    {"adjustments_plus", MGolden::With(MGolden::Adjustments, {{"RibbonMotorDirection_B", "+"}}), Kind::SetAdjustments,
     "set adjustments: FeedDirection=+, FeedAdjustment=000, CutPosDirection=+, "
     "CutPosAdjustment=000, BackFeedDirection=+, BackFeedAdjustment=00, XCoordinateDirection=+, "
     "XCoordinateAdjustment=000, ToneDirection_T=+, ToneAdjustment_T=00, ToneDirection_D=+, "
     "ToneAdjustment_D=00, RibbonMotorDirection_F=-, RibbonMotorAdjustment_F=00, "
     "RibbonMotorDirection_B=+, RibbonMotorAdjustment_B=00, ThresholdAdjustment_R=10, "
     "ThresholdAdjustment_T=14"},
    {"ip_address", MGolden::IpAddress, Kind::SetIpAddress,
     "set IP address: IpAddress1=192, IpAddress2=168, IpAddress3=010, IpAddress4=020"},
    {"gateway", "{IP;3,010,000,000,001|}", Kind::SetGateway,
     "set gateway: Gateway1=010, Gateway2=000, Gateway3=000, Gateway4=001"},
    {"subnet_mask", "{IP;4,255,255,000,000|}", Kind::SetSubnetMask,
     "set subnet mask: SubnetMask1=255, SubnetMask2=255, SubnetMask3=000, SubnetMask4=000"},
    {"socket_port", "{IS;1,08001|}", Kind::SetSocketPort,
     "set socket port: SocketPortSetting=1, SocketPortNumber=08001"},
    {"dhcp", Dhcp(ClientId, "office" + std::string(10, '\xFF')), Kind::SetDhcp,
     "set DHCP: DhcpSetting=1, DhcpClientId=\"" + ClientId + "\", DhcpClientHost=\"office\""},
    {"dhcp_fill_inside", Dhcp(ClientId, "a\xFF" "b" + std::string(13, '\xFF')), Kind::SetDhcp,
     "set DHCP: DhcpSetting=1, DhcpClientId=\"" + ClientId + "\", DhcpClientHost=\"ab\""},
    {"dhcp_odd_host", Dhcp(ClientId, "<{\xE4 " + std::string(12, '\xFF')), Kind::SetDhcp,
     "set DHCP: DhcpSetting=1, DhcpClientId=\"" + ClientId + "\", DhcpClientHost=\"<3C>{<E4> \""},
    {"head_check", "{HD001,A|}", Kind::HeadCheck, "head check"},
    {"ram_clear", "{Z4;0|}", Kind::RamClear, "RAM clear: Mode=0 (PARAMETER)"},
    {"ram_clear_counter", "{Z4;1|}", Kind::RamClear, "RAM clear: Mode=1 (MANTE.CNT)"},
    {"ram_clear_ja", "{Z4;00|}", Kind::RamClear, "RAM clear: Mode=0 (PARAMETER), Destination=0 (JA)"},
    {"ram_clear_qq", "{Z4;03|}", Kind::RamClear, "RAM clear: Mode=0 (PARAMETER), Destination=3 (QQ)"},
    {"calibrate_reflect", "{WT;1000,1|}", Kind::ThresholdCalib, "threshold calibration: Sensor=1 (REFLECT.)"},
    {"calibrate_trans", "{WT;1000,2|}", Kind::ThresholdCalib, "threshold calibration: Sensor=2 (TRANS.)"},
    {"adjust_reflect", "{Z6;0|}", Kind::SensorAdjust, "sensor adjustment: Sensor=0 (reflective)"},
    {"adjust_trans", "{Z6;1|}", Kind::SensorAdjust, "sensor adjustment: Sensor=1 (transmissive)"},
    {"paper_end_reflect", "{Z6;01|}", Kind::SensorAdjust, "sensor adjustment: Sensor=0 (reflective), paper end"},
    {"paper_end_trans", "{Z6;11|}", Kind::SensorAdjust, "sensor adjustment: Sensor=1 (transmissive), paper end"},
    {"test_print", "{Z3;007600730105700010000|}", Kind::TestPrint,
     "test print: Pattern=0 (FEED), LabelLength=0760, PrintLength=0730, IssueCount=0001, "
     "PrintSpeed=0 (2\"/sec), Sensor=0 (NONE), CutType=0 (NO CUT), PrintType=0 (DIRECT)"},
    {"factory_test", "{Z3;699999969105750001221|}", Kind::TestPrint,
     "test print: Pattern=6 (FACTORY TEST), LabelLength=9999, PrintLength=9969, IssueCount=5000, "
     "PrintSpeed=1 (4\"/sec), Sensor=2 (TRANS.), CutType=2 (PEEL OFF), PrintType=1 (TRANSFR)"},
    {"diag_direct", "{Z10|}", Kind::DiagPrint, "diagnostic print: PrintType=0 (DIRECT)"},
    {"diag_transfer", "{Z11|}", Kind::DiagPrint, "diagnostic print: PrintType=1 (TRANSFR)"},
};

struct Wrong {
    const char* m_strName;
    std::string m_strCommand;
    std::string m_strLine;
};

const std::vector<Wrong> WrongCommands{
    {"unknown", "{QX;1|}", "unknown command, refused: begins like no command of this printer"},
    {"empty", "{|}", "unknown command, refused: begins like no command of this printer"},
    {"lower_case", "{ws|}", "unknown command, refused: begins like no command of this printer"},
    {"other_set_kind", "{Z2;3,000|}", "unknown command, refused: begins like no command of this printer"},
    {"other_address_kind", "{IP;5,192,168,010,020|}", "unknown command, refused: begins like no command of this printer"},
    {"status_longer", "{WS;|}", "status request, refused: 6 bytes long, 5 expected"},
    {"group_5", "{Z5;5|}", "read settings, refused: Group is \"5\", expected only 01234"},
    {"group_negative", "{Z5;-1|}", "read settings, refused: 8 bytes long, 7 expected"},
    {"parameters_short", "{Z2;1,0|}", "set parameters, refused: 9 bytes long, " + Length(MGolden::Parameters) + " expected"},
    {"parameters_hex", MGolden::With(MGolden::Parameters, {{"FontCode", "G"}}),
     "set parameters, refused: FontCode is \"G\", expected only 0123456789ABCDEFabcdef"},
    {"parameters_direction", MGolden::With(MGolden::Parameters, {{"AutoForwardDirection", "*"}}),
     "set parameters, refused: AutoForwardDirection is \"*\", expected only +-"},
    {"adjustments_long", Longer(MGolden::Adjustments), "set adjustments, refused: " + Length(Longer(MGolden::Adjustments)) + " bytes long, " + Length(MGolden::Adjustments) + " expected"},
    {"adjustments_digit", MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", "0a1"}}),
     "set adjustments, refused: FeedAdjustment is \"0a1\", expected only 0123456789"},
    {"adjustments_blank", MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", " 01"}}),
     "set adjustments, refused: FeedAdjustment is \" 01\", expected only 0123456789"},
    {"address_separator", "{IP;2,192.168,010,020|}", "set IP address, refused: \".\" where \",\" is expected"},
    {"address_digits", "{IP;3,192,168,0-0,020|}", "set gateway, refused: Gateway3 is \"0-0\", expected only 0123456789"},
    {"address_short", "{IP;4,255,255,255|}", "set subnet mask, refused: 19 bytes long, 23 expected"},
    {"port_separator", "{IS;1;08000|}", "set socket port, refused: \";\" where \",\" is expected"},
    {"port_digits", "{IS;1,0800x|}", "set socket port, refused: SocketPortNumber is \"0800x\", expected only 0123456789"},
    {"dhcp_setting", "{IH;x," + ClientId + "," + std::string(16, 'h') + "|}", "set DHCP, refused: DhcpSetting is \"x\", expected only 0123456789"},
    {"dhcp_short_host", Dhcp(ClientId, "office"), "set DHCP, refused: 47 bytes long, 57 expected"},
    {"dhcp_long_host", Dhcp(ClientId, std::string(17, 'h')), "set DHCP, refused: 58 bytes long, 57 expected"},
    {"dhcp_control", Dhcp(ClientId, "office\n890123456"), "set DHCP, refused: DhcpClientHost is \"office<0A>890123456\", expected no control characters"},
    {"head_check", "{HD002,A|}", "head check, refused: \"002,A|}\" where \"001,A|}\" is expected"},
    {"ram_clear_none", "{Z4;|}", "RAM clear, refused: 6 bytes long, 7 or 8 expected"},
    {"ram_clear_mode", "{Z4;2|}", "RAM clear, refused: Mode is \"2\", expected only 01"},
    {"ram_clear_destination", "{Z4;04|}", "RAM clear, refused: Destination is \"4\", expected only 0123"},
    {"ram_clear_counter_destination", "{Z4;11|}", "RAM clear, refused: Mode is \"1\", expected only 0"},
    {"calibrate_0", "{WT;1000,0|}", "threshold calibration, refused: Sensor is \"0\", expected only 12"},
    {"calibrate_level", "{WT;1001,1|}", "threshold calibration, refused: \"1001,\" where \"1000,\" is expected"},
    {"adjust_2", "{Z6;2|}", "sensor adjustment, refused: Sensor is \"2\", expected only 01"},
    {"paper_end_0", "{Z6;10|}", "sensor adjustment, refused: \"0|}\" where \"1|}\" is expected"},
    {"test_print_5", "{Z3;507600730105700010000|}", "test print, refused: Pattern is \"5\", expected only 012346"},
    {"test_print_fixed", "{Z3;007600730105800010000|}", "test print, refused: \"1058\" where \"1057\" is expected"},
    {"test_print_speed", "{Z3;007600730105700012000|}", "test print, refused: PrintSpeed is \"2\", expected only 01"},
    {"test_print_short", "{Z3;|}", "test print, refused: 6 bytes long, 27 expected"},
    {"diag_2", "{Z12|}", "diagnostic print, refused: PrintType is \"2\", expected only 01"},
    {"diag_semicolon", "{Z1;0|}", "diagnostic print, refused: 7 bytes long, 6 expected"},
};
// clang-format on

class GoodCommandTest : public ::testing::TestWithParam<Good> {};
class WrongCommandTest : public ::testing::TestWithParam<Wrong> {};

}  // namespace

TEST_P(GoodCommandTest, IsTakenApartIntoNamedFields) {
    const CItemManager objItems;
    const CDecodedCommand objCommand(GetParam().m_strCommand, objItems);
    EXPECT_EQ(objCommand.Error(), "");
    EXPECT_EQ(objCommand.Kind(), GetParam().m_iKind);
    EXPECT_EQ(objCommand.Describe(), GetParam().m_strLine);
}

TEST_P(WrongCommandTest, IsRefusedWithItsReason) {
    const CItemManager objItems;
    const CDecodedCommand objCommand(GetParam().m_strCommand, objItems);
    EXPECT_FALSE(objCommand.IsValid());
    EXPECT_EQ(objCommand.Describe(), GetParam().m_strLine);
}

INSTANTIATE_TEST_SUITE_P(Commands, GoodCommandTest, ::testing::ValuesIn(GoodCommands),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });
INSTANTIATE_TEST_SUITE_P(Commands, WrongCommandTest, ::testing::ValuesIn(WrongCommands),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(DecodedCommandTest, GivesAFieldsValueByItsNameAndRefersToItsItem) {
    const CItemManager objItems;
    const CDecodedCommand objCommand("{IS;0,00515|}", objItems);
    EXPECT_EQ(objCommand.Value("SocketPortNumber"), "00515");
    EXPECT_EQ(objCommand.Value("NoSuchField"), "");
    ASSERT_EQ(objCommand.Fields().size(), 2U);
    EXPECT_EQ(objCommand.Fields()[1].m_objItem, objItems.m_objSocketPortNumber);
    EXPECT_EQ(objItems.m_objSocketPortNumber->GetValueString(), "08000") << "nothing is stored yet";
}

TEST(DecodedCommandTest, IsRefusedWithAControlByteAtAnyPosition) {
    // No position may go unchecked: neither the fixed bytes nor any field takes a control byte.
    const CItemManager objItems;
    for (const Good& objGood : GoodCommands) {
        for (std::size_t i = 0; i < objGood.m_strCommand.size(); ++i) {
            std::string strCommand = objGood.m_strCommand;
            strCommand[i] = '\x01';
            const CDecodedCommand objCommand(strCommand, objItems);
            EXPECT_FALSE(objCommand.IsValid()) << objGood.m_strName << " at " << i;
        }
    }
}
