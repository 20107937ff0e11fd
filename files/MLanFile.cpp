#include "files/MLanFile.h"

#include "protocol/MCommand.h"

namespace {

constexpr std::size_t HeadLength = 4;

constexpr std::size_t AddressLength = 23;
constexpr std::size_t PortLength = 13;
constexpr std::size_t DhcpLength = 57;
constexpr std::size_t DhcpLengthWithoutHost = 40;

// Where the fields stand, counted from 0. The first one is a single character behind the head.
constexpr std::size_t FirstField = 4;
constexpr std::size_t SecondField = 6;
constexpr std::size_t OctetLength = 3;
constexpr std::size_t PortNumberLength = 5;
constexpr std::size_t ClientIdLength = 32;
constexpr std::size_t HostField = 39;

std::string Field(std::string_view p_strLine, std::size_t p_iPosition, std::size_t p_iLength) {
    return std::string(p_strLine.substr(p_iPosition, p_iLength));
}

bool AddressItems(char p_cKind, const CItemManager& p_objItemManager, ItemArray& p_objItemAry) {
    switch (p_cKind) {
    case '2':
        return p_objItemManager.SetItem_ExtraIpAddress(p_objItemAry);
    case '3':
        return p_objItemManager.SetItem_ExtraGateway(p_objItemAry);
    case '4':
        return p_objItemManager.SetItem_ExtraSubnet(p_objItemAry);
    default:
        return false;
    }
}

bool StoreAddress(std::string_view p_strLine, const CItemManager& p_objItemManager) {
    ItemArray objItemAry;
    if (p_strLine.size() != AddressLength ||
        !AddressItems(p_strLine[FirstField], p_objItemManager, objItemAry)) {
        return false;
    }
    std::size_t iPosition = SecondField;
    for (const ItemRef& objItem : objItemAry) {
        objItem->SetValue(Field(p_strLine, iPosition, OctetLength));
        iPosition += OctetLength + 1;  // a separator stands between
    }
    return true;
}

bool StorePort(std::string_view p_strLine, const CItemManager& p_objItemManager) {
    if (p_strLine.size() != PortLength) {
        return false;
    }
    p_objItemManager.m_objSocketPortSetting->SetValue(Field(p_strLine, FirstField, 1));
    p_objItemManager.m_objSocketPortNumber->SetValue(
        Field(p_strLine, SecondField, PortNumberLength));
    return true;
}

bool StoreDhcp(std::string_view p_strLine, const CItemManager& p_objItemManager) {
    if (p_strLine.size() != DhcpLength && p_strLine.size() != DhcpLengthWithoutHost) {
        return false;
    }
    p_objItemManager.m_objDhcpSetting->SetValue(Field(p_strLine, FirstField, 1));
    p_objItemManager.m_objDhcpClientId->SetValue(Field(p_strLine, SecondField, ClientIdLength));
    if (p_strLine.size() == DhcpLength) {
        std::string strHost = Field(p_strLine, HostField, MCommand::HostNameLength);
        std::erase(strHost, MCommand::HostNameFill);
        p_objItemManager.m_objDhcpClientHost->SetValue(strHost);
    }
    return true;
}

}  // namespace

namespace MLanFile {

std::vector<std::string> BuildLines(const CItemManager& p_objItemManager) {
    return MCommand::LanSetCommands(p_objItemManager);
}

bool StoreLine(std::string_view p_strLine, const CItemManager& p_objItemManager) {
    const std::string_view strHead = p_strLine.substr(0, HeadLength);
    if (strHead == MCommand::AddressHead) {
        return StoreAddress(p_strLine, p_objItemManager);
    }
    if (strHead == MCommand::PairHead) {
        return StorePort(p_strLine, p_objItemManager);
    }
    return strHead == MCommand::TextHead && StoreDhcp(p_strLine, p_objItemManager);
}

}  // namespace MLanFile
