#include "ui/FmMain.h"

#include "flows/MHandler.h"
#include "flows/MStart.h"
#include "model/MChoiceLists.h"
#include "platform/qt/MText.h"
#include "ui/FmAbout.h"
#include "ui/FmInterfaceSetup.h"
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
#include <QScrollArea>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

namespace {

constexpr QSize LargestStartSize(1024, 740);

/// A page that scrolls where the window is too small for it.
QScrollArea* Scrolling(QWidget* p_objPage) {
    auto* const objArea = new QScrollArea;
    objArea->setWidgetResizable(true);
    objArea->setFrameShape(QFrame::NoFrame);
    objArea->setFocusPolicy(Qt::NoFocus);  // Tab goes from field to field
    objArea->setWidget(p_objPage);
    return objArea;
}

}  // namespace

FmMain::FmMain(const CPlatform& p_objPlatform)
    : m_objPlatform(p_objPlatform)
    , m_objItemManager(std::make_unique<CItemManager>())
    , m_objInterface(std::make_unique<CInterface>())
    , m_objSession(*m_objItemManager, *m_objInterface, *this, p_objPlatform)
    , m_objBuilder(p_objPlatform.m_objMessageBox, m_objWheelGuard)
    , m_objMaintenance(*m_objInterface, m_objSession.Exchange(), m_objSession.Router(),
                       m_objSession.Busy(), m_objSession.Waiter(), *this) {
    setObjectName("FmMain");
    setWindowTitle(IMessageBox::ProgramTitle);
    QFont objFont = font();
    objFont.setFamily("Arial");
    setFont(objFont);
    MakeMenu();
    auto* const objCentre = new QWidget(this);
    auto* const objLines = new QVBoxLayout(objCentre);
    objLines->addWidget(MakeInterfaceLine());
    objLines->addWidget(MakeTabs(), 1);
    setCentralWidget(objCentre);
    MakeFlows();
    ConnectButtons();
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
    m_cmbInterface = m_objBuilder.MakeList(FrInterface, "cmbInterface");
    CPageBuilder::NameAfter(*m_cmbInterface, "Interface");
    objFrameLayout->addWidget(m_cmbInterface);
    objFrameLayout->addWidget(m_objBuilder.MakeButton(FrInterface, "btnSetup", "Setup"));
    m_lblStatus = m_objBuilder.MakeLabel(objLine, {});
    m_lblStatus->setObjectName("lblStatus");
    m_lblStatus->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    m_lblStatus->setAccessibleName("GET STATUS");
    objLayout->addWidget(FrInterface);
    QPushButton* const btnGetStatus =
        m_objBuilder.MakeButton(objLine, "btnGetStatus", "GET STATUS");
    const QSize objButton = btnGetStatus->sizeHint();
    btnGetStatus->setMinimumWidth(objButton.width() + objButton.height() / 2);
    m_lblStatus->setFixedHeight(objButton.height());
    // On one line with what stands in the frame, whose caption is above.
    auto* const objStatusLayout = new QHBoxLayout;
    objStatusLayout->setContentsMargins(0, 0, 0, objFrameLayout->contentsMargins().bottom());
    objStatusLayout->addWidget(btnGetStatus, 0, Qt::AlignBottom);
    objStatusLayout->addWidget(m_lblStatus, 1, Qt::AlignBottom);
    objLayout->addLayout(objStatusLayout, 1);
    return objLine;
}

QWidget* FmMain::MakeTabs() {
    m_objTabs = new QTabWidget(this);
    m_objTabs->setObjectName("SSTab1");
    m_objParameterPage = new UCParameterSetting(m_objBuilder, *m_objItemManager, this);
    m_objMaintenancePage = new UCMaintenanceMode(m_objBuilder, this);
    m_objLanPage = new UCExtraSetting(m_objBuilder, *m_objItemManager, this);
    connect(m_objTabs, &QTabWidget::currentChanged, m_objTabs, [objTabs = m_objTabs] {
        UCSpinEdit::CommitEditedField(*objTabs->window());  // where the menu bar had the focus
        // The focus comes along to another page; on a button there a slip of the space bar would
        // send something.
        const QWidget* const objFocus = objTabs->window()->focusWidget();
        if (qobject_cast<const QPushButton*>(objFocus) != nullptr &&
            objTabs->isAncestorOf(objFocus)) {
            objTabs->tabBar()->setFocus(Qt::OtherFocusReason);
        }
    });
    m_objTabs->addTab(Scrolling(m_objParameterPage), "Parameter Setting");
    m_objTabs->addTab(Scrolling(m_objMaintenancePage), "Maintenance Mode");
    m_objTabs->addTab(Scrolling(m_objLanPage), "Extra Setting");
    return m_objTabs;
}

void FmMain::FormInitialize() {
    FillInterfaces();
    InitializeSpinEdits();
    if (!FillChoiceLists()) {
        return;
    }
    m_objTabs->setCurrentIndex(0);
    MStart::ShowSettings(*m_objParameterPage, *m_objLanPage);
}

void FmMain::FillInterfaces() {
    connect(m_cmbInterface, &QComboBox::currentIndexChanged, this, &FmMain::SelectInterface);
    // Choosing what is chosen already counts too: a flow may have enabled Setup meanwhile.
    connect(m_cmbInterface, &QComboBox::activated, this, &FmMain::SelectInterface);
    m_cmbInterface->addItems({"COM", "LAN", "USB"});
    m_cmbInterface->setCurrentIndex(CInterface::SerialInterface);
}

void FmMain::InitializeSpinEdits() {
    for (const MSpinRanges::Row& objRow : MSpinRanges::All()) {
        const QString strName = MText::ToQt(std::string(objRow.m_strName));
        MSpinRanges::Apply(objRow, *findChild<UCSpinEdit*>(strName));
    }
}

bool FmMain::FillChoiceLists() {
    for (const MChoiceLists::List& objList : MChoiceLists::All()) {
        auto* const cmb = findChild<QComboBox*>(MText::ToQt(std::string(objList.m_strName)));
        if (cmb == nullptr) {
            return false;
        }
        for (const std::string_view strEntry : objList.m_strEntries) {
            cmb->addItem(MText::ToQt(std::string(strEntry)));
        }
        cmb->setCurrentIndex(objList.m_iStartPosition);
    }
    return true;
}

void FmMain::MakeFlows() {
    m_objReadWrite = std::make_unique<CReadWriteFlow>(
        *m_objItemManager, m_objSession.Exchange(), m_objSession.Busy(), m_objSession.Waiter(),
        m_objPlatform.m_objMessageBox, *m_objParameterPage, *m_objLanPage);
    const auto Files = [this](CFileFlow::Kind p_objKind, ISettingsPage& p_objPage) {
        return std::make_unique<CFileFlow>(
            std::move(p_objKind), *m_objItemManager, p_objPage, m_objSession.Waiter(),
            m_objPlatform.m_objFileDialog, m_objPlatform.m_objFileStore,
            m_objPlatform.m_objMessageBox, m_objPlatform.m_strProgramFolder);
    };
    m_objParameterFile = Files(CFileFlow::ParameterKind(), *m_objParameterPage);
    m_objLanFile = Files(CFileFlow::LanKind(), *m_objLanPage);
}

void FmMain::ConnectButtons() {
    m_objActionButtons.emplace(*this);
    ConnectButton("btnSetup", [this] { SetUpInterface(); });
    ConnectButton("btnRead", [this] { m_objReadWrite->Read(); });
    ConnectButton("btnSet", [this] { m_objReadWrite->Set(); });
    ConnectButton("btnLanRead", [this] { m_objReadWrite->LanRead(); });
    ConnectButton("btnLanSet", [this] { m_objReadWrite->LanSet(); });
    ConnectButton("btnLoad", [this] { m_objParameterFile->Load(); });
    ConnectButton("btnSave", [this] { m_objParameterFile->Save(); });
    ConnectButton("btnLanLoad", [this] { m_objLanFile->Load(); });
    ConnectButton("btnLanSave", [this] { m_objLanFile->Save(); });
    ConnectMaintenance();
}

void FmMain::ConnectMaintenance() {
    const auto Position = [this](const char* p_strList) {
        return m_objMaintenancePage->Position(p_strList);
    };
    ConnectButton("btnGetStatus", [this] { m_objMaintenance.GetStatus(); });
    ConnectButton("btnHeadCheck", [this] { m_objMaintenance.HeadCheck(); });
    ConnectButton("btnRamClear", [this, Position] {
        m_objMaintenance.RamClear(Position("cmbRamClear"), Position("cmbDestination"));
    });
    ConnectButton("btnThresholdCalib", [this, Position] {
        m_objMaintenance.ThresholdCalib(Position("cmbThresholdCalib"));
    });
    ConnectButton("btnReflect", [this] { m_objMaintenance.SensorAdjustReflect(); });
    ConnectButton("btnTrans", [this] { m_objMaintenance.SensorAdjustTrans(); });
    ConnectButton("btnPaperEnd", [this] { m_objMaintenance.SensorAdjustPaperEnd(); });
    ConnectButton("btnTestPrint", [this] {
        m_objMaintenance.TestPrint([this] { return m_objMaintenancePage->TestPrint(); });
    });
    ConnectButton("btnDiagPrint",
                  [this, Position] { m_objMaintenance.DiagPrint(Position("cmbDiagPrint")); });
}

void FmMain::ConnectButton(const char* p_strName, const std::function<void()>& p_objHandler) {
    auto* const btn = findChild<QPushButton*>(p_strName);
    connect(btn, &QPushButton::clicked, this, [this, btn, p_objHandler] {
        // A click leaves the focus in the field that is being edited. What was typed there is
        // checked now; refused, it was told so, and nothing is started with the old value.
        if (!UCSpinEdit::CommitEditedField(*this)) {
            return;
        }
        btn->setFocus(Qt::OtherFocusReason);
        p_objHandler();
    });
}

void FmMain::FitToScreen() {
    QSize objSize = sizeHint();
    for (int i = 0; i < m_objTabs->count(); ++i) {
        const auto* const objArea = qobject_cast<QScrollArea*>(m_objTabs->widget(i));
        const QSize objMissing = objArea->widget()->sizeHint() - objArea->sizeHint();
        objSize = objSize.expandedTo(sizeHint() + objMissing);
    }
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
    if (!m_objSession.Busy().IsBusy()) {  // else the flow that runs enables it at its end
        findChild<QPushButton*>("btnSetup")->setEnabled(p_iPosition != CInterface::UsbInterface);
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
    objSetup.exec();
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

void FmMain::ShowStatus(const std::string& p_strText) {
    m_lblStatus->setText(MText::ToQt(p_strText));
}

void FmMain::ShowHeadCheck(const std::string& p_strText) {
    m_objMaintenancePage->ShowHeadCheck(MText::ToQt(p_strText));
}
