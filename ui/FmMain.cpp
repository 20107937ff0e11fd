#include "ui/FmMain.h"

#include "flows/MHandler.h"
#include "flows/MStart.h"
#include "model/MSettings.h"
#include "platform/qt/MText.h"
#include "ui/CFootedArea.h"
#include "ui/CHoldableList.h"
#include "ui/CPageTeller.h"
#include "ui/CStatusLine.h"
#include "ui/CToldPage.h"
#include "ui/FmAbout.h"
#include "ui/FmInterfaceSetup.h"
#include "ui/MControl.h"
#include "ui/MDoing.h"
#include "ui/MListEntries.h"
#include "ui/MSpinRanges.h"
#include "ui/UCExtraSetting.h"
#include "ui/UCMaintenanceMode.h"
#include "ui/UCParameterSetting.h"
#include "ui/UCSpinEdit.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>
#include <iterator>

namespace {

constexpr QSize LargestStartSize(1024, 740);

/// p_objWindow, given the program's font before anything in it measures a text in another one.
QWidget* WithFont(QWidget* p_objWindow) {
    QFont objFont = p_objWindow->font();
    objFont.setFamily("Arial");
    p_objWindow->setFont(objFont);
    return p_objWindow;
}

}  // namespace

FmMain::FmMain(const CPlatform& p_objPlatform)
    : m_objPlatform(p_objPlatform)
    , m_objItemManager(std::make_unique<CItemManager>())
    , m_objInterface(std::make_unique<CInterface>())
    , m_objSessionView(*this, p_objPlatform.m_objMessageBox)
    , m_objStatusLine(new CStatusLine(WithFont(this)))
    , m_objLine(m_objSessionView, *m_objInterface, *m_objStatusLine)
    , m_objSession(*m_objItemManager, *m_objInterface, m_objLine, p_objPlatform)
    , m_objBuilder(p_objPlatform.m_objMessageBox, m_objListGuard)
    , m_objMaintenance(m_objSession) {
    setObjectName("FmMain");
    setWindowTitle(IMessageBox::ProgramTitle);
    MakeMenu();
    auto* const objCentre = new QWidget(this);
    auto* const objLines = new QVBoxLayout(objCentre);
    objLines->addWidget(MakeInterfaceLine());
    objLines->addWidget(MakeTabs(), 1);
    setCentralWidget(objCentre);
    MakeStatusLine();
    MakeFlows();
    ConnectButtons();
    MakeKeys();
    FormInitialize();
    FitToScreen();
}

FmMain::~FmMain() = default;

void FmMain::closeEvent(QCloseEvent* p_objEvent) {
    m_objPlatform.m_objEventLoop.RequestClose();
    QMainWindow::closeEvent(p_objEvent);
    emit Closed();
}

void FmMain::MakeMenu() {
    QMenu* const mmFile = menuBar()->addMenu("File(&F)");
    mmFile->setObjectName("mmFile");
    mmFile->setFont(font());  // a menu is a window of its own and inherits none
    QAction* const smExit = mmFile->addAction("Exit(&E)", this, [this] { close(); });
    smExit->setObjectName("smExit");
    QMenu* const mmAbout = menuBar()->addMenu("About(&A)");
    mmAbout->setObjectName("mmAbout");
    mmAbout->setFont(font());
    QAction* const smAbout = mmAbout->addAction("About(&A)", this, [this] { ShowAbout(); });
    smAbout->setObjectName("smAbout");
}

QWidget* FmMain::MakeInterfaceLine() {
    auto* const objLine = new QWidget(this);
    auto* const objLayout = new QHBoxLayout(objLine);
    objLayout->setContentsMargins(0, 0, 0, 0);
    QGroupBox* const FrInterface = m_objBuilder.MakeFrame(objLine, "FrInterface", "Interface");
    auto* const objFrameLayout = new QHBoxLayout(FrInterface);
    m_cmbInterface = new CHoldableList(FrInterface);
    m_objBuilder.Furnish(*m_cmbInterface, "cmbInterface");
    CPageBuilder::NameAfter(*m_cmbInterface, "Interface");
    m_objInterfaceHold.Watch(*m_cmbInterface);
    objFrameLayout->addWidget(m_cmbInterface);
    m_btnSetup = m_objBuilder.MakeButton(FrInterface, "btnSetup", "Setup");
    objFrameLayout->addWidget(m_btnSetup);
    objLayout->addWidget(FrInterface);
    // On one line with what stands in the frame: between the same margins, of the same height.
    auto* const objStatusLayout = new QHBoxLayout;
    QMargins objMargins = FrInterface->contentsMargins() + objFrameLayout->contentsMargins();
    objMargins.setLeft(0);
    objMargins.setRight(0);
    objStatusLayout->setContentsMargins(objMargins);
    MakeStatus(*objLine, *objStatusLayout);
    objLayout->addLayout(objStatusLayout, 1);
    return objLine;
}

void FmMain::MakeStatus(QWidget& p_objLine, QHBoxLayout& p_objLayout) {
    QPushButton* const btnGetStatus =
        m_objBuilder.MakeButton(&p_objLine, "btnGetStatus", "GET STATUS");
    const QSize objButton = btnGetStatus->sizeHint();
    btnGetStatus->setMinimumWidth(objButton.width() + objButton.height() / 2);
    m_lblStatus = m_objBuilder.MakeLabel(&p_objLine, {});
    m_lblStatus->setObjectName("lblStatus");
    m_lblStatus->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    m_lblStatus->setAccessibleDescription("GET STATUS");  // its name is what it shows
    m_lblStatus->setFixedHeight(objButton.height());
    p_objLayout.addWidget(btnGetStatus);
    p_objLayout.addWidget(m_lblStatus, 1);
}

QWidget* FmMain::MakeTabs() {
    m_objTabs = new QTabWidget(this);
    m_objTabs->setObjectName("SSTab1");
    m_objTabs->tabBar()->setAccessibleName("Pages");
    m_objParameterPage = new UCParameterSetting(m_objBuilder, *m_objItemManager, this);
    m_objMaintenancePage = new UCMaintenanceMode(m_objBuilder, this);
    m_objLanPage = new UCExtraSetting(m_objBuilder, *m_objItemManager, this);
    connect(m_objTabs, &QTabWidget::currentChanged, m_objTabs, [objTabs = m_objTabs] {
        UCSpinEdit::CommitFields(*objTabs->window());  // those that were left without a check
        // The focus comes along to another page; on a button there a slip of the space bar would
        // send something.
        const QWidget* const objFocus = objTabs->window()->focusWidget();
        if (qobject_cast<const QPushButton*>(objFocus) != nullptr &&
            objTabs->isAncestorOf(objFocus)) {
            objTabs->tabBar()->setFocus(Qt::OtherFocusReason);
        }
    });
    FillFields();  // who asks for a size before gets one that holds no entry, and keeps it
    m_objTabs->addTab(new CFootedArea(m_objParameterPage, m_objParameterPage->Foot(), m_objTabs),
                      "Parameter Setting");
    m_objTabs->addTab(new CFootedArea(m_objMaintenancePage, nullptr, m_objTabs),
                      "Maintenance Mode");
    m_objTabs->addTab(new CFootedArea(m_objLanPage, nullptr, m_objTabs), "Extra Setting");
    return m_objTabs;
}

void FmMain::MakeStatusLine() {
    setStatusBar(m_objStatusLine);
    connect(m_objStatusLine, &CStatusLine::StopPressed, this,
            [this] { m_objSession.Links().StopOpening(); });
    m_objParameterTold =
        std::make_unique<CToldPage>(*m_objParameterPage, m_objParameterPage->Baseline());
    m_objLanTold = std::make_unique<CToldPage>(*m_objLanPage, m_objLanPage->Baseline());
    m_objPages =
        std::make_unique<CPageTeller>(*m_objTabs, *m_objParameterTold, *m_objLanTold,
                                      m_objLanPage->Baseline(), m_objLine, *m_objStatusLine);
}

void FmMain::FillFields() {
    MSettings::Check(MSettings::All());
    FillInterfaces();
    MSpinRanges::ApplyAll(MSpinRanges::All(), *this);
    MListEntries::Fill(MListEntries::All(), *this);
    CPageBuilder::MakeSameHeight(*m_objParameterPage);
}

void FmMain::FormInitialize() {
    m_objTabs->setCurrentIndex(0);
    MStart::ShowSettings(*m_objParameterPage, *m_objLanPage);
    m_objParameterPage->Baseline().Begin();
    m_objLanPage->Baseline().Begin();
}

void FmMain::FillInterfaces() {
    connect(m_cmbInterface, &QComboBox::currentIndexChanged, this, &FmMain::SelectInterface);
    // Choosing what is chosen already counts too: a flow may have enabled Setup meanwhile.
    connect(m_cmbInterface, &QComboBox::activated, this, &FmMain::SelectInterface);
    m_cmbInterface->addItems({"COM", "LAN", "USB"});
    m_cmbInterface->setCurrentIndex(CInterface::SerialInterface);
}

void FmMain::MakeFlows() {
    m_objReadWrite = std::make_unique<CReadWriteFlow>(*m_objItemManager, m_objSession,
                                                      m_objPlatform.m_objMessageBox,
                                                      *m_objParameterTold, *m_objLanTold);
    const auto Files = [this](CFileFlow::Kind p_objKind, ISettingsPage& p_objPage) {
        return std::make_unique<CFileFlow>(std::move(p_objKind), *m_objItemManager, p_objPage,
                                           m_objSession.Waiter(), m_objPlatform);
    };
    m_objParameterFile = Files(CFileFlow::ParameterKind(), *m_objParameterTold);
    m_objLanFile = Files(CFileFlow::LanKind(), *m_objLanTold);
}

void FmMain::ConnectButtons() {
    std::vector<MButtonHandlers::Row> objRows = SettingsHandlers();
    std::ranges::move(MaintenanceHandlers(), std::back_inserter(objRows));
    MButtonHandlers::Connect(MDoing::Told(std::move(objRows), m_objLine, *m_objPages), *this);
    m_objActionButtons.emplace(*this);
    for (const char* const strName : CActionButtons::Names()) {
        m_objPressGuard.Guard(MControl::Find<QPushButton>(*this, strName));
    }
}

std::vector<MButtonHandlers::Row> FmMain::SettingsHandlers() {
    return {
        {"btnSetup", [this] { SetUpInterface(); }},
        {"btnRead", [this] { m_objReadWrite->Read(); }},
        {"btnSet", [this] { m_objReadWrite->Set(); }},
        {"btnLanRead", [this] { m_objReadWrite->LanRead(); }},
        {"btnLanSet", [this] { m_objReadWrite->LanSet(); }},
        {"btnLoad", [this] { m_objParameterFile->Load(); }},
        {"btnSave", [this] { m_objParameterFile->Save(); }},
        {"btnLanLoad", [this] { m_objLanFile->Load(); }},
        {"btnLanSave", [this] { m_objLanFile->Save(); }},
    };
}

std::vector<MButtonHandlers::Row> FmMain::MaintenanceHandlers() {
    UCMaintenanceMode& objPage = *m_objMaintenancePage;
    CMaintenanceFlow& objFlow = m_objMaintenance;
    return {
        {"btnGetStatus", [&] { objFlow.GetStatus(); }},
        {"btnHeadCheck", [&] { objFlow.HeadCheck(); }},
        {"btnRamClear", [&] { objFlow.RamClear(objPage.RamClearMode(), objPage.Destination()); }},
        {"btnThresholdCalib", [&] { objFlow.ThresholdCalib(objPage.ThresholdSensor()); }},
        {"btnReflect", [&] { objFlow.SensorAdjustReflect(); }},
        {"btnTrans", [&] { objFlow.SensorAdjustTrans(); }},
        {"btnPaperEnd", [&] { objFlow.SensorAdjustPaperEnd(); }},
        {"btnTestPrint", [&] { objFlow.TestPrint([&] { return objPage.TestPrint(); }); }},
        {"btnDiagPrint", [&] { objFlow.DiagPrint(objPage.DiagPrintType()); }},
    };
}

void FmMain::MakeKeys() {
    m_objPageKeys.emplace(*m_objTabs);
    const auto Button = [this](const char* p_strName) {
        return &MControl::Find<QPushButton>(*this, p_strName);
    };
    m_objPageKeys->AddKey("F5", {Button("btnRead"), Button("btnLanRead")});
    m_objPageKeys->AddKey("Ctrl+O", {Button("btnLoad"), Button("btnLanLoad")});
    m_objPageKeys->AddKey("Ctrl+S", {Button("btnSave"), Button("btnLanSave")});
    for (QPushButton* const btn : MControl::All<QPushButton>(*this)) {
        m_objPageKeys->PressByReturn(*btn);
    }
}

void FmMain::FitToScreen() {
    QSize objSize = sizeHint();
    for (int i = 0; i < m_objTabs->count(); ++i) {
        const auto* const objArea = qobject_cast<QScrollArea*>(m_objTabs->widget(i));
        const QSize objMissing = objArea->widget()->sizeHint() - objArea->sizeHint();
        objSize = objSize.expandedTo(sizeHint() + objMissing);
    }
    // On a screen that is too low for it a page scrolls up and down, but not sideways, too.
    objSize.rwidth() += style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    objSize = objSize.boundedTo(LargestStartSize);
    if (const QScreen* const objScreen = screen()) {
        // What the system puts around the window is not known before it is shown.
        const int iFrame = style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
        const int iTitle = style()->pixelMetric(QStyle::PM_TitleBarHeight);
        objSize =
            objSize.boundedTo(objScreen->availableSize() - QSize(2 * iFrame, 2 * iFrame + iTitle));
    }
    resize(objSize);
}

void FmMain::SelectInterface(int p_iPosition) {
    m_objInterface->SetActiveInterface(static_cast<std::int16_t>(p_iPosition));
    m_objLine.ShowLink();
    if (!m_objSession.Busy().IsBusy()) {  // else the flow that runs enables it at its end
        m_btnSetup->setEnabled(p_iPosition != CInterface::UsbInterface);
    }
}

void FmMain::SetUpInterface() {
    MHandler::Run(m_objSession.Waiter(), [this] {
        if (!EditInterface()) {
            return;
        }
        CPrinterLinks& objLinks = m_objSession.Links();
        for (const std::int16_t iInterface :
             {CInterface::SerialInterface, CInterface::LanInterface, CInterface::UsbInterface}) {
            objLinks.CloseLink(iInterface);
        }
        objLinks.OpenLink(static_cast<std::int16_t>(m_cmbInterface->currentIndex()));
    });
}

bool FmMain::EditInterface() {
    // The dialog lives no longer than this: opening a link may take long, and shows boxes.
    FmInterfaceSetup objSetup(m_objPlatform.m_objMessageBox, this);
    if (!objSetup.InitializeItem(*m_objInterface,
                                 static_cast<std::int16_t>(m_cmbInterface->currentIndex()))) {
        return false;
    }
    if (m_objPlatform.m_objSerialPorts != nullptr) {
        objSetup.TellPorts(m_objPlatform.m_objSerialPorts->SerialPorts());
    }
    objSetup.exec();
    m_objLine.ShowLink();
    return !objSetup.CancelFlag();
}

void FmMain::ShowAbout() {
    FmAbout objAbout(this);
    objAbout.exec();
    m_objSession.Waiter().NoteAside();
}

void FmMain::SetControlsEnabled(bool p_bEnabled) {
    m_objActionButtons->SetEnabled(p_bEnabled);
}

void FmMain::HoldInterface(bool p_bHeld) {
    m_objInterfaceHold.SetHeld(p_bHeld);
}

void FmMain::ShowStatus(const std::string& p_strText) {
    m_lblStatus->setText(MText::ToQt(p_strText));
}

void FmMain::ShowHeadCheck(const std::string& p_strText) {
    m_objMaintenancePage->ShowHeadCheck(MText::ToQt(p_strText));
}
