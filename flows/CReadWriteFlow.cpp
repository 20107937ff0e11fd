#include "flows/CReadWriteFlow.h"

#include "flows/MHandler.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"

#include <array>
#include <vector>

namespace {

constexpr std::int16_t PauseSeconds = 1;

// The LAN group has its own page and its own flow; the sensor group is read by none.
constexpr std::array<std::int16_t, 3> ReadOrder{MAnswer::Adjustment, MAnswer::Parameter,
                                                MAnswer::ParameterExpansion};

constexpr std::array<std::int16_t, 2> SetOrder{MCommand::SetParameter, MCommand::SetAdjustment};

/// The time in which settings that come are those that were asked for.
class CReading {
public:
    explicit CReading(CCommandExchange& p_objExchange)
        : m_objExchange(p_objExchange) {}
    ~CReading() { m_objExchange.EndReading(); }
    CReading(const CReading&) = delete;
    CReading& operator=(const CReading&) = delete;

private:
    CCommandExchange& m_objExchange;
};

}  // namespace

CReadWriteFlow::CReadWriteFlow(const CItemManager& p_objItemManager,
                               CCommandExchange& p_objExchange, CBusy& p_objBusy,
                               CWaiter& p_objWaiter, IMessageBox& p_objMessageBox,
                               ISettingsPage& p_objParameterPage, ISettingsPage& p_objLanPage)
    : m_objItemManager(p_objItemManager)
    , m_objExchange(p_objExchange)
    , m_objBusy(p_objBusy)
    , m_objWaiter(p_objWaiter)
    , m_objMessageBox(p_objMessageBox)
    , m_objParameterPage(p_objParameterPage)
    , m_objLanPage(p_objLanPage) {}

void CReadWriteFlow::Read() {
    MHandler::Run(m_objWaiter, [this] { ReadGroups(); });
}

void CReadWriteFlow::Set() {
    MHandler::Run(m_objWaiter, [this] { SetGroups(); });
}

void CReadWriteFlow::LanRead() {
    MHandler::Run(m_objWaiter, [this] { ReadLanGroup(); });
}

void CReadWriteFlow::LanSet() {
    MHandler::Run(m_objWaiter, [this] { SetLanGroups(); });
}

void CReadWriteFlow::ReadGroups() {
    const CBusy::Flow objFlow(m_objBusy);
    const CReading objReading(m_objExchange);
    for (const std::int16_t iGroup : ReadOrder) {
        if (!m_objExchange.ReadGroup(iGroup)) {
            return;
        }
        m_objExchange.Pause(PauseSeconds);
    }
    if (!m_objWaiter.MustStop() && !m_objParameterPage.Refresh()) {
        m_objMessageBox.Show("Error RefreshParameterSettingItem", MessageIcon::None);
    }
}

void CReadWriteFlow::SetGroups() {
    if (!m_objParameterPage.Store()) {
        return;
    }
    const CBusy::Flow objFlow(m_objBusy);
    for (const std::int16_t iKind : SetOrder) {
        if (!SendSettings(MCommand::MakeParameterSetCommand(m_objItemManager, iKind))) {
            return;
        }
    }
}

void CReadWriteFlow::ReadLanGroup() {
    const CBusy::Flow objFlow(m_objBusy);
    const CReading objReading(m_objExchange);
    if (!m_objExchange.ReadGroup(MAnswer::Lan)) {
        return;
    }
    m_objExchange.Pause(PauseSeconds);
    if (!m_objWaiter.MustStop()) {
        m_objLanPage.Refresh();
    }
}

void CReadWriteFlow::SetLanGroups() {
    if (!m_objLanPage.Store()) {
        return;
    }
    const std::vector<std::string> strCommands{
        MCommand::MakeAddressCommand(m_objItemManager, MCommand::IpAddress),
        MCommand::MakeAddressCommand(m_objItemManager, MCommand::Gateway),
        MCommand::MakeAddressCommand(m_objItemManager, MCommand::SubnetMask),
        MCommand::MakeSocketPortCommand(m_objItemManager),
        MCommand::MakeDhcpCommand(m_objItemManager),
    };
    for (const std::string& strCommand : strCommands) {
        if (!SendSettings(strCommand)) {
            break;
        }
    }
    m_objExchange.EndBusy();
}

bool CReadWriteFlow::SendSettings(const std::string& p_strCommand) {
    return m_objExchange.Request(p_strCommand, MAnswer::StatusLength, AwaitedAnswer::Any);
}
