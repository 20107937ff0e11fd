#pragma once

#include "flows/ISettingsPage.h"
#include "link/CCommandExchange.h"
#include "model/CItemManager.h"

/// READ, SET, LAN READ and LAN SET: the settings' way between the printer and the window.
///
/// Each is one handler: it runs to its end, shows its own failures, lets no exception out and
/// leaves the buttons enabled. Nothing is retried, a success shows no message.
class CReadWriteFlow {
public:
    /// None is owned; all outlive this.
    CReadWriteFlow(const CItemManager& p_objItemManager, CCommandExchange& p_objExchange,
                   CBusy& p_objBusy, CWaiter& p_objWaiter, IMessageBox& p_objMessageBox,
                   ISettingsPage& p_objParameterPage, ISettingsPage& p_objLanPage);

    /// Reads the groups 0, 1 and 4, a second after each, then refreshes the parameter page. A
    /// group that fails ends it there, the page as it was.
    void Read();

    /// Stores the parameter page and sends the parameters, then the adjustments.
    void Set();

    /// Reads group 3, and after a second refreshes the LAN page.
    void LanRead();

    /// Stores the LAN page and sends the three addresses, the socket port and the DHCP settings.
    /// The buttons stay enabled meanwhile. Whatever is started with one of them runs to its end
    /// first, and this one stops at the command it had reached, quietly: the later press wins.
    void LanSet();

private:
    bool SendSettings(const std::string& p_strCommand);
    void ReadGroups();
    void SetGroups();
    void ReadLanGroup();
    void SetLanGroups();

    const CItemManager& m_objItemManager;
    CCommandExchange& m_objExchange;
    CBusy& m_objBusy;
    CWaiter& m_objWaiter;
    IMessageBox& m_objMessageBox;
    ISettingsPage& m_objParameterPage;
    ISettingsPage& m_objLanPage;
};
