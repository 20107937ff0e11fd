#include "flows/CReadWriteFlow.h"

#include "flows/CSteps.h"
#include "flows/MHandler.h"
#include "model/CConversionError.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"

#include <array>
#include <stdexcept>

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
    const CPageNote objRead = [this] {
        const CReading objReading(m_objExchange);
        return ReadAll(ReadOrder);
    }();
    if (ShowRead(m_objParameterPage, objRead) == Shown::Refused) {
        m_objMessageBox.Show("Error RefreshParameterSettingItem", MessageIcon::None);
    }
}

CPageNote CReadWriteFlow::ReadAll(std::span<const std::int16_t> p_iGroups) {
    CPageNote objNote;
    CSteps objSteps(m_objSession.Events(), p_iGroups.size());
    for (const std::int16_t iGroup : p_iGroups) {
        objSteps.Next();
        const COutcome objOutcome = m_objExchange.ReadGroup(iGroup);
        if (!objOutcome) {
            return {CPageNote::Kind::ReadEnded, {iGroup}, {}, objOutcome.m_objFailure};
        }
        m_objExchange.Pause(PauseSeconds);
        // On a link whose answers nobody waits for it has come by now, or it does not come.
        if (m_objSession.Router().Learned().m_iGroup != iGroup) {
            objNote.m_iKind = CPageNote::Kind::Unanswered;
            objNote.m_iPlaces.push_back(iGroup);
        }
    }
    return objNote;
}

CReadWriteFlow::Shown CReadWriteFlow::ShowRead(ISettingsPage& p_objPage,
                                               const CPageNote& p_objRead) {
    if (m_objWaiter.MustStop()) {
        return Shown::NotTried;
    }
    if (p_objRead.m_iKind == CPageNote::Kind::ReadEnded) {
        p_objPage.NoteEnd(p_objRead);
        return Shown::NotTried;
    }
    std::string strRefused;
    try {
        if (p_objPage.Refresh()) {
            if (p_objRead.m_iKind == CPageNote::Kind::Read) {
                p_objPage.NoteRead();
            }
            p_objPage.NoteEnd(p_objRead);
            return Shown::Whole;
        }
    } catch (const CConversionError& objError) {
        strRefused = objError.what();  // a value that the page cannot show
    } catch (const std::out_of_range& objError) {
        strRefused = objError.what();  // the same: a position that a list does not have
    }
    p_objPage.NoteEnd({CPageNote::Kind::Unshown, {}, strRefused});
    return Shown::Refused;
}

void CReadWriteFlow::SetGroups() {
    if (!m_objParameterPage.Store()) {
        return;
    }
    if (!MCommand::IsSetExact(m_objItemManager)) {
        m_objParameterPage.NoteEnd({CPageNote::Kind::Unsendable});
        return;
    }
    const CBusy::Flow objFlow(m_objSession.Busy());
    SendAll(m_objParameterPage, MCommand::SetCommands(m_objItemManager),
            [this](const std::string& p_strCommand) {
                return m_objExchange.Request(p_strCommand, MAnswer::StatusLength,
                                             AwaitedAnswer::Any);
            });
}

void CReadWriteFlow::SendAll(
    ISettingsPage& p_objPage, const std::vector<std::string>& p_strCommands,
    const std::function<COutcome(const std::string& p_strCommand)>& p_fnSend) {
    CSteps objSteps(m_objSession.Events(), p_strCommands.size());
    for (std::size_t i = 0; i < p_strCommands.size(); ++i) {
        objSteps.Next();
        const COutcome objOutcome = p_fnSend(p_strCommands[i]);
        if (objOutcome) {
            continue;
        }
        if (!m_objWaiter.MustStop()) {
            p_objPage.NoteEnd({CPageNote::Kind::SetEnded,
                               {static_cast<std::int16_t>(i + 1),
                                static_cast<std::int16_t>(p_strCommands.size())},
                               {},
                               objOutcome.m_objFailure});
        }
        return;
    }
    p_objPage.NoteEnd({CPageNote::Kind::Sent});
}

void CReadWriteFlow::ReadLanGroup() {
    const CBusy::Flow objFlow(m_objSession.Busy());
    const CReading objReading(m_objExchange);
    ShowRead(m_objLanPage, ReadAll(std::array{std::int16_t{MAnswer::Lan}}));
}

void CReadWriteFlow::SetLanGroups() {
    if (!m_objLanPage.Store()) {
        return;
    }
    if (!MCommand::IsLanSetExact(m_objItemManager)) {
        m_objLanPage.NoteEnd({CPageNote::Kind::Unsendable});
        return;
    }
    const std::vector<std::string> strCommands = MCommand::LanSetCommands(m_objItemManager);
    m_objWaiter.TakeOver();  // from a LAN SET that waits further out, whose commands these are too
    SendAll(m_objLanPage, strCommands,
            [this, objBegun = m_objExchange.ActiveConnection()](const std::string& p_strCommand) {
                return m_objExchange.RequestOver(objBegun, p_strCommand, MAnswer::StatusLength,
                                                 AwaitedAnswer::Any);
            });
    m_objExchange.EndBusy();
}
