#pragma once

#include "model/CItemManager.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// The texts of the printer's commands: "{", a name, the fields, "|}".
///
/// Every text is one byte a character. A builder that formats items throws CConversionError when
/// an item holds a text that cannot be written as the number it should be.
namespace MCommand {

/// The bytes that close every command.
inline constexpr const char* CommandEnd = "|}";

// What the commands that carry settings begin with.
inline constexpr const char* WriteGroupHead = "{Z2;";
inline constexpr const char* ReadGroupHead = "{Z5;";
inline constexpr const char* AddressHead = "{IP;";
inline constexpr const char* PairHead = "{IS;";
inline constexpr const char* TextHead = "{IH;";

/// The width of a host name in its command, and the byte that fills it up.
inline constexpr std::size_t HostNameLength = 16;
inline constexpr char HostNameFill = '\xFF';

/// Asks for the status: the answer is a status answer.
inline constexpr const char* StatusRequest = "{WS|}";

// What the maintenance functions send, or begin with and complete.
inline constexpr const char* HeadCheck = "{HD001,A|}";
inline constexpr const char* DiagPrintHead = "{Z1";
inline constexpr const char* TestPrintHead = "{Z3;";
inline constexpr const char* TestPrintFixedField = "1057";
inline constexpr const char* TestPrintNumberPattern = "0000";
inline constexpr const char* RamClearHead = "{Z4;";
inline constexpr const char* SensorAdjustReflect = "{Z6;0|}";
inline constexpr const char* SensorAdjustTrans = "{Z6;1|}";
inline constexpr const char* SensorAdjustPaperEndHead = "{Z6;";
inline constexpr const char* SensorAdjustPaperEndTail = "1|}";
inline constexpr const char* ThresholdCalibHead = "{WT;1000,";

/// The RAM clear's mode that has a destination.
inline constexpr std::int16_t ClearParameters = 0;

/// Which group a set command carries.
enum SetKind : std::int16_t { SetParameter = 1, SetAdjustment = 2 };

/// Which address an address command carries.
enum AddressKind : std::int16_t { IpAddress = 2, Gateway = 3, SubnetMask = 4 };

/// "{Z5;" n "|}": asks for the settings of answer group p_iGroup.
std::string ReadRequest(std::int16_t p_iGroup);

/// "{Z2;" n "," and the items' fields back to back.
std::string WriteGroup(std::int16_t p_iKind, const ItemArray& p_objItemAry);

/// The set command of SetParameter or SetAdjustment with the catalogue's current values; an empty
/// text for any other kind.
std::string MakeParameterSetCommand(const CItemManager& p_objItemManager, std::int16_t p_iKind);

/// "{IP;" n and each item's field with "," before it.
std::string NetworkAddress(std::int16_t p_iKind, const ItemArray& p_objItemAry);

/// "{IS;" a "," b "|}".
std::string NetworkPair(const CItem& p_objSetting, const CItem& p_objNumber);

/// "{IH;" a "," b "," c "|}", c filled up to 16 characters with the byte 0xFF; a longer c is
/// written whole.
std::string NetworkText(const CItem& p_objSetting, const CItem& p_objId, const CItem& p_objHost);

/// The address command of IpAddress, Gateway or SubnetMask with the catalogue's current values;
/// an empty text for any other kind.
std::string MakeAddressCommand(const CItemManager& p_objItemManager, std::int16_t p_iKind);

/// The socket port command with the catalogue's current values.
std::string MakeSocketPortCommand(const CItemManager& p_objItemManager);

/// The DHCP command with the catalogue's current values.
std::string MakeDhcpCommand(const CItemManager& p_objItemManager);

/// What SET sends, and the parameter settings file holds, in this order: parameters, adjustments.
std::vector<std::string> SetCommands(const CItemManager& p_objItemManager);

/// What LAN SET sends, and the LAN settings file holds, in this order: IP address, gateway, subnet
/// mask, socket port, DHCP.
std::vector<std::string> LanSetCommands(const CItemManager& p_objItemManager);

/// Whether each field of SetCommands is exactly as wide as its item says. A command of which that
/// is not true is none to send: the printer would take every field behind for another one.
bool IsSetExact(const CItemManager& p_objItemManager);

/// The same of LanSetCommands; the host name is exact when it needs no more room than it has.
bool IsLanSetExact(const CItemManager& p_objItemManager);

/// Whether a list position has the one digit that a field for it has room for.
bool IsPosition(std::int16_t p_iPosition);

/// What a test print takes: list positions, counted from 0, and the numbers as they are shown.
struct TestPrintFields {
    std::int16_t m_iPattern = 0;
    std::int16_t m_iLabelLength = 0;  ///< 100 to 9999; the print is 30 shorter
    std::int16_t m_iIssueCount = 0;   ///< 1 to 5000
    std::int16_t m_iPrintSpeed = 0;
    std::int16_t m_iSensor = 0;
    std::int16_t m_iCutType = 0;
    std::int16_t m_iPrintType = 0;
};

/// "{Z3;" and the fields back to back, the lengths and the count four digits wide.
std::string TestPrint(const TestPrintFields& p_objFields);

/// Whether each field of TestPrint is exactly as wide as that: the lengths and the count four
/// digits, every position one.
bool IsTestPrintExact(const TestPrintFields& p_objFields);

/// "{Z1" and the print type's position: the one command without ";" before its field.
std::string DiagPrint(std::int16_t p_iPrintType);

/// "{Z4;" and the mode's position; in mode 0 a destination from position 1 on is appended,
/// counted from 0 there.
std::string RamClear(std::int16_t p_iMode, std::int16_t p_iDestination);

/// "{WT;1000," and the sensor's position counted from 1.
std::string ThresholdCalib(std::int16_t p_iSensor);

/// The third step of the sensor adjustment, without paper: one command for each pass, 0 and 1.
std::string SensorAdjustPaperEnd(std::int16_t p_iPass);

}  // namespace MCommand
