#pragma once

#include "flows/CFileFlow.h"
#include "flows/CLineTeller.h"
#include "flows/CMaintenanceFlow.h"
#include "flows/CReadWriteFlow.h"
#include "flows/CSessionView.h"
#include "link/CInterface.h"
#include "link/CPrinterSession.h"
#include "model/CItemManager.h"
#include "platform/CPlatform.h"
#include "ui/CActionButtons.h"
#include "ui/CInterfaceHold.h"
#include "ui/CListGuard.h"
#include "ui/CPageBuilder.h"
#include "ui/CPageKeys.h"
#include "ui/CPressGuard.h"
#include "ui/MButtonHandlers.h"

#include <QMainWindow>

#include <memory>
#include <optional>
#include <vector>

class CPageTeller;
class CStatusLine;
class CToldPage;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QTabWidget;
class UCExtraSetting;
class UCMaintenanceMode;
class UCParameterSetting;

/// The program's only main window: owns the catalogue and the link settings, shows them in three
/// tabs, and starts a flow for each button.
///
/// At start nothing is opened and nothing is read: the window shows the defaults. Closing it ends
/// every wait at once, asks nothing and saves nothing.
class FmMain : public QMainWindow, private IExchangeView {
    Q_OBJECT

public:
    /// p_objPlatform's parts are not owned and outlive the window. Throws std::logic_error, naming
    /// the control, when the window's tables do not agree with each other.
    explicit FmMain(const CPlatform& p_objPlatform);
    ~FmMain() override;

    [[nodiscard]] const CItemManager& ItemManager() const { return *m_objItemManager; }
    [[nodiscard]] CInterface& Interface() { return *m_objInterface; }

signals:
    /// The window has closed for good; the program ends.
    void Closed();

protected:
    void closeEvent(QCloseEvent* p_objEvent) override;

private:
    void SetControlsEnabled(bool p_bEnabled) override;
    void HoldInterface(bool p_bHeld) override;
    void ShowStatus(const std::string& p_strText) override;
    void ShowHeadCheck(const std::string& p_strText) override;

    void MakeMenu();
    QWidget* MakeInterfaceLine();
    void MakeStatus(QWidget& p_objLine, QHBoxLayout& p_objLayout);
    QWidget* MakeTabs();
    void MakeStatusLine();
    void FillFields();
    void FormInitialize();
    void FillInterfaces();
    void MakeFlows();
    void ConnectButtons();
    std::vector<MButtonHandlers::Row> SettingsHandlers();
    std::vector<MButtonHandlers::Row> MaintenanceHandlers();
    void MakeKeys();
    void FitToScreen();

    void SelectInterface(int p_iPosition);
    void SetUpInterface();
    /// True when SET was pressed in the setup dialog.
    bool EditInterface();
    void ShowAbout();

    CPlatform m_objPlatform;
    std::unique_ptr<CItemManager> m_objItemManager;
    std::unique_ptr<CInterface> m_objInterface;
    CSessionView m_objSessionView;
    CStatusLine* m_objStatusLine;
    CLineTeller m_objLine;
    CPrinterSession m_objSession;
    CListGuard m_objListGuard;
    CInterfaceHold m_objInterfaceHold;
    CPressGuard m_objPressGuard;
    CPageBuilder m_objBuilder;

    CHoldableList* m_cmbInterface = nullptr;
    QPushButton* m_btnSetup = nullptr;
    QLabel* m_lblStatus = nullptr;
    QTabWidget* m_objTabs = nullptr;
    UCParameterSetting* m_objParameterPage = nullptr;
    UCMaintenanceMode* m_objMaintenancePage = nullptr;
    UCExtraSetting* m_objLanPage = nullptr;
    std::unique_ptr<CToldPage> m_objParameterTold;
    std::unique_ptr<CToldPage> m_objLanTold;
    std::unique_ptr<CPageTeller> m_objPages;
    std::optional<CActionButtons> m_objActionButtons;
    std::optional<CPageKeys> m_objPageKeys;
    std::unique_ptr<CReadWriteFlow> m_objReadWrite;
    std::unique_ptr<CFileFlow> m_objParameterFile;
    std::unique_ptr<CFileFlow> m_objLanFile;
    CMaintenanceFlow m_objMaintenance;
};
