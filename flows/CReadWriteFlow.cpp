#include "flows/CReadWriteFlow.h"

#include "flows/CSteps.h"
#include "flows/MHandler.h"
#include "model/CConversionError.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"

#include <array>
#include <stdexcept>
#include <vector>

namespace {

constexpr std::int16_t PauseSeconds = 1;

// The LAN group has its own page and its own flow; the sensor group is read by none.
constexpr std::array<std::int16_t, 3> ReadOrder{MAnswer::Adjustment, MAnswer::Parameter,
                                                MAnswer::ParameterExpansion};

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

CReadWriteFlow::CReadWriteFlow(const CItemManager& p_objItemManager, CPrinterSession& p_objSession,
                               IMessageBox& p_objMessageBox, ISettingsPage& p_objParameterPage,
                               ISettingsPage& p_objLanPage)
    : m_objItemManager(p_objItemManager)
    , m_objSession(p_objSession)
    , m_objExchange(p_objSession.Exchange())
    , m_objWaiter(p_objSession.Waiter())
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
    MHandler::Run(
        m_objWaiter, [this] { SetLanGroups(); }, CWaiter::Turn::Later::DelaysIt);
}

void CReadWriteFlow::ReadGroups() {
    const CBusy::Flow objFlow(m_objSession.Busy());
    if (ReadAllGroups() && !m_objWaiter.MustStop()) {
        ShowRead();
    }
}

bool CReadWriteFlow::ReadAllGroups() {
    const CReading objReading(m_objExchange);
    CSteps objSteps(m_objSession.Events(), ReadOrder.size());
    for (const std::int16_t iGroup : ReadOrder) {
        objSteps.Next();
        if (!m_objExchange.ReadGroup(iGroup)) {
            return false;
        }
        m_objExchange.Pause(PauseSeconds);
    }
    return true;
}

void CReadWriteFlow::ShowRead() {
    bool bShown = false;
    try {
        bShown = m_objParameterPage.Refresh();
    } catch (const CConversionError&) {
        // A value that the page cannot show; told below, as the page's own refusal is.
    } catch (const std::out_of_range&) {
        // The same: a position that a list does not have.
    }
    if (bShown) {
        m_objParameterPage.NoteRead();
    } else {
        m_objMessageBox.Show("Error RefreshParameterSettingItem", MessageIcon::None);
    }
}

void CReadWriteFlow::SetGroups() {
    if (!m_objParameterPage.Store() || !MCommand::IsSetExact(m_objItemManager)) {
        return;
    }
    const std::vector<std::string> strCommands = MCommand::SetCommands(m_objItemManager);
    const CBusy::Flow objFlow(m_objSession.Busy());
    CSteps objSteps(m_objSession.Events(), strCommands.size());
    for (const std::string& strCommand : strCommands) {
        objSteps.Next();
        if (!m_objExchange.Request(strCommand, MAnswer::StatusLength, AwaitedAnswer::Any)) {
            return;
        }
    }
}

void CReadWriteFlow::ReadLanGroup() {
    const CBusy::Flow objFlow(m_objSession.Busy());
    const CReading objReading(m_objExchange);
    CSteps objSteps(m_objSession.Events(), 1);
    objSteps.Next();
    if (!m_objExchange.ReadGroup(MAnswer::Lan)) {
        return;
    }
    m_objExchange.Pause(PauseSeconds);
    if (!m_objWaiter.MustStop() && m_objLanPage.Refresh()) {
        m_objLanPage.NoteRead();
    }
}

void CReadWriteFlow::SetLanGroups() {
    if (!m_objLanPage.Store() || !MCommand::IsLanSetExact(m_objItemManager)) {
        return;
    }
    const std::vector<std::string> strCommands = MCommand::LanSetCommands(m_objItemManager);
    m_objWaiter.TakeOver();  // from a LAN SET that waits further out, whose commands these are too
    const CCommandExchange::Connection objBegun = m_objExchange.ActiveConnection();
    CSteps objSteps(m_objSession.Events(), strCommands.size());
    for (const std::string& strCommand : strCommands) {
        objSteps.Next();
        if (!m_objExchange.RequestOver(objBegun, strCommand, MAnswer::StatusLength,
                                       AwaitedAnswer::Any)) {
            break;
        }
    }
    m_objExchange.EndBusy();
}
