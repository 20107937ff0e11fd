#pragma once

#include "flows/ISettingsPage.h"
#include "link/CPrinterSession.h"
#include "model/CItemManager.h"
#include "platform/IMessageBox.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

/// READ, SET, LAN READ and LAN SET: the settings' way between the printer and the window.
///
/// Each is one handler: it runs to its end, shows its own failures, lets no exception out and
/// leaves the buttons enabled. Nothing is retried, a success shows no message; the page is told how
/// it ended.
class CReadWriteFlow {
public:
    /// None is owned; all outlive this.
    CReadWriteFlow(const CItemManager& p_objItemManager, CPrinterSession& p_objSession,
                   IMessageBox& p_objMessageBox, ISettingsPage& p_objParameterPage,
                   ISettingsPage& p_objLanPage);

    /// Reads the groups 0, 1 and 4, a second after each, then refreshes the parameter page, which
    /// settings that still come do not change any more. A group that fails ends it there, the page
    /// as it was. A page that cannot show what came is told with a box.
    void Read();

    /// Stores the parameter page and sends the parameters, then the adjustments. Sends neither when
    /// a field of either is not exactly as wide as its item says.
    void Set();

    /// Reads group 3, and after a second refreshes the LAN page.
    void LanRead();

    /// Stores the LAN page and sends the three addresses, the socket port and the DHCP settings, or
    /// none of them when a field is not exactly as wide as its item says. The buttons stay enabled
    /// meanwhile. Whatever is started with one of them runs to its end first, then this one goes on
    /// with what is left, as the page held it when it began. It sends nothing more behind another
    /// LAN SET, which sends all five itself, or when the connection that it began on has been
    /// closed or made anew meanwhile; the link's words for that are shown.
    void LanSet();

private:
    enum class Shown : std::uint8_t { Whole, Refused, NotTried };

    /// @return how it ended, with all of them asked for or at the first that fails.
    CPageNote ReadAll(std::span<const std::int16_t> p_iGroups);
    /// Shows what was read, if it was, and tells the page how it ended.
    Shown ShowRead(ISettingsPage& p_objPage, const CPageNote& p_objRead);
    /// Sends until one fails, and tells the page how it ended.
    void SendAll(ISettingsPage& p_objPage, const std::vector<std::string>& p_strCommands,
                 const std::function<COutcome(const std::string& p_strCommand)>& p_fnSend);
    void ReadGroups();
    void SetGroups();
    void ReadLanGroup();
    void SetLanGroups();

    const CItemManager& m_objItemManager;
    CPrinterSession& m_objSession;
    CCommandExchange& m_objExchange;  // the session's
    CWaiter& m_objWaiter;             // likewise
    IMessageBox& m_objMessageBox;
    ISettingsPage& m_objParameterPage;
    ISettingsPage& m_objLanPage;
};
