#include "tests/ui/recorder/CScene.h"

#include "tests/ui/CModalAnswer.h"

#include <QEvent>
#include <QTabWidget>
#include <QTest>

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <utility>

namespace {

constexpr const char* ProgramFolder = "/program";
constexpr const char* AfterwardsFile = "/afterwards";
constexpr const char* SetupButton = "btnSetup";
constexpr std::array<const char*, 2> WatchedLabels{"lblStatus", "lblHeadCheck"};
constexpr std::array<const char*, 2> SaveButtons{"btnSave", "btnLanSave"};

/// How long somebody looks on when it is over: longer than any wait.
constexpr std::int64_t AfterMilliseconds = 5000;
constexpr std::int64_t StatusMilliseconds = 2000;
constexpr std::int64_t DialogMilliseconds = 200;

/// The filter pair that adds no ending.
constexpr std::uint32_t AllFiles = 2;

constexpr std::int32_t ConnectionReset = 10054;

std::vector<std::string> Names(const QStringList& p_strNames) {
    std::vector<std::string> strNames;
    for (const QString& strName : p_strNames) {
        strNames.push_back(strName.toStdString());
    }
    return strNames;
}

std::string Joined(const std::vector<std::string>& p_strLines, const char* p_strBetween) {
    std::string strJoined;
    for (const std::string& strLine : p_strLines) {
        strJoined += (strJoined.empty() ? "" : p_strBetween) + strLine;
    }
    return strJoined;
}

/// What a list, spin edit or text box shows; the same for two that look the same to a person.
QString Shown(QWidget& p_objField) {
    QString strShown;
    if (const auto* const cmb = qobject_cast<QComboBox*>(&p_objField)) {
        strShown = QString("%1 (%2)").arg(cmb->currentIndex()).arg(cmb->currentText());
    } else if (const auto* const txt = qobject_cast<QLineEdit*>(&p_objField)) {
        strShown = txt->text();
    } else if (const auto* const txtInside = p_objField.findChild<QLineEdit*>()) {
        strShown = txtInside->text();
    }
    return '"' + strShown + (p_objField.isEnabled() ? "\"" : "\", disabled");
}

bool IsField(const QString& p_strName) {
    return p_strName.startsWith("cmb") || p_strName.startsWith("Se") || p_strName.startsWith("txt");
}

/// By their names.
std::vector<QWidget*> Fields(const QWidget& p_objParent) {
    std::vector<QWidget*> objFields;
    for (auto* const objField : p_objParent.findChildren<QWidget*>()) {
        if (IsField(objField->objectName())) {
            objFields.push_back(objField);
        }
    }
    std::ranges::sort(objFields, {}, &QWidget::objectName);
    return objFields;
}

}  // namespace

CScene::CScene(LinkKind p_iLink, bool p_bOpen)
    : m_objTranscript(m_objClock, Names(CMainWindow::ActionButtons()))
    , m_objWindow({{m_objEventLoop, m_objClock, m_objSocket, m_objPort, m_objLibrary},
                   {m_objBoxes, m_objFileDialog, m_objFiles, ProgramFolder}})
    , m_iLink(p_iLink) {
    if (!m_objWindow.Open()) {
        throw std::runtime_error("the window does not get the keyboard");
    }
    LookAtEachPage();
    m_objWire.SetLink(m_iLink);
    Choose(m_iLink);
    if (p_bOpen && m_iLink != LinkKind::Usb) {
        Press(SetupButton);
    }
    for (const QString& strName : CMainWindow::ActionButtons()) {
        m_objWindow.Button(strName).installEventFilter(this);
    }
    connect(&m_objWindow.Form(), &FmMain::Closed, this,
            [this] { m_objTranscript.Add("the window has closed"); });
    for (const char* const strName : WatchedLabels) {
        m_objLabels.emplace_back(&m_objWindow.Get<QLabel>(strName), QString());
    }
    m_objTranscript.SetWatch([this] { LookAtLabels(); });
}

void CScene::LookAtEachPage() {
    auto& objTabs = m_objWindow.Get<QTabWidget>("SSTab1");
    for (int i = objTabs.count() - 1; i >= 0; --i) {
        objTabs.setCurrentIndex(i);
        QCoreApplication::processEvents();
    }
}

CScene::~CScene() {
    for (const char* const strName : WatchedLabels) {
        m_objLabels.emplace_back(&m_objWindow.Get<QLabel>(strName), QString());
    }
    m_objTranscript.SetWatch(nullptr);
}

bool CScene::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    if (p_objEvent->type() == QEvent::EnabledChange) {
        m_objTranscript.Switched(p_objWatched->objectName().toStdString(),
                                 static_cast<QWidget*>(p_objWatched)->isEnabled());
    }
    return false;
}

void CScene::LookAtLabels() {
    for (auto& [objLabel, strShown] : m_objLabels) {
        if (const QString strText = objLabel->text(); strText != strShown) {
            strShown = strText;
            m_objTranscript.Add(objLabel->objectName().toStdString() + " \"" +
                                strText.toStdString() + '"');
        }
    }
}

void CScene::Press(const std::string& p_strButton) {
    const QString strButton = QString::fromStdString(p_strButton);
    m_strPressed = p_strButton;
    if (!std::exchange(m_bPressed, true)) {
        KeepFields();
    }
    const bool bEnabled = m_objWindow.Button(strButton).isEnabled();
    m_objTranscript.Add("press " + p_strButton + (bEnabled ? "" : ", which is disabled"));
    std::optional<CModalAnswer> objPerson;
    if (p_strButton == SetupButton) {
        objPerson.emplace("FmInterfaceSetup",
                          [this](QWidget& p_objDialog) { DealWithSetup(p_objDialog); });
    }
    ++m_iHandlers;
    m_objWindow.Click(strButton);
    --m_iHandlers;
    if (bEnabled) {
        m_objTranscript.Add("done " + p_strButton);
    }
}

void CScene::PressLater(std::int64_t p_iMilliseconds, const std::string& p_strButton) {
    Later(p_iMilliseconds, [this, p_strButton] {
        if (m_objBoxes.Stands() || m_objFileDialog.Stands() || m_bDialog) {
            PressLater(CFakeEventLoop::StepMilliseconds, p_strButton);
        } else {
            Press(p_strButton);
        }
    });
}

void CScene::Later(std::int64_t p_iMilliseconds, std::function<void()> p_fnAction) {
    m_objEventLoop.After(p_iMilliseconds, std::move(p_fnAction));
}

void CScene::DealWithSetup(QWidget& p_objDialog) {
    std::string strShown;
    for (QWidget* const objField : Fields(p_objDialog)) {
        strShown +=
            " " + objField->objectName().toStdString() + " " + Shown(*objField).toStdString();
    }
    m_objTranscript.Add("dialog \"" + p_objDialog.windowTitle().toStdString() + "\":" + strShown);
    m_bDialog = true;
    m_objEventLoop.Idle(DialogMilliseconds);
    m_bDialog = false;
    for (const auto& [strName, iPosition] : m_objSetup.m_iPositions) {
        p_objDialog.findChild<QComboBox*>(QString::fromStdString(strName))
            ->setCurrentIndex(iPosition);
    }
    for (const auto& [strName, strText] : m_objSetup.m_strTexts) {
        auto* const objField = p_objDialog.findChild<QWidget*>(QString::fromStdString(strName));
        objField->setFocus(Qt::TabFocusReason);
        QTest::keySequence(objField, QKeySequence::SelectAll);
        QTest::keyClicks(objField, QString::fromStdString(strText));
    }
    const char* const strButton = m_objSetup.m_bCancel ? "btnCancel" : "btnSet";
    m_objTranscript.Add(m_objSetup.m_bCancel ? "answered CANCEL" : "answered SET");
    QTest::mouseClick(p_objDialog.findChild<QPushButton*>(strButton), Qt::LeftButton);
    if (p_objDialog.isVisible()) {
        m_objTranscript.Add("the dialog stays; closed");
        p_objDialog.close();
    }
}

void CScene::Choose(LinkKind p_iLink) {
    QComboBox& cmb = m_objWindow.List("cmbInterface");
    cmb.setCurrentIndex(static_cast<int>(p_iLink));
    m_objTranscript.Add("interface " + cmb.currentText().toStdString());
}

void CScene::Close() {
    m_objTranscript.Add("closing the window");
    m_objWindow.Form().close();
}

void CScene::PrinterCloses() {
    if (m_objSocket.IsConnected()) {
        m_objTranscript.Add("LAN event: closed by the printer");
        m_objSocket.PeerCloses();
    }
}

void CScene::ConnectionBreaks() {
    m_objTranscript.Add("LAN event: error " + std::to_string(ConnectionReset));
    m_objSocket.Break({ConnectionReset, "Connection reset", 1, "Socket", "help.txt", 2, true});
}

void CScene::PortEvent(std::int16_t p_iEvent) {
    if (!m_objPort.IsOpen()) {
        return;
    }
    m_objTranscript.Add("COM event: " + std::to_string(p_iEvent));
    m_objPort.Raise(p_iEvent);
}

void CScene::ClearToSend(bool p_bOn) {
    if (!m_objPort.IsOpen()) {
        return;
    }
    m_objTranscript.Add(p_bOn ? "COM event: CTS on" : "COM event: CTS off");
    m_objPort.SetClearToSend(p_bOn);
}

void CScene::Unplug() {
    constexpr std::size_t iMoreThanAnybodyOpens = 1000;
    m_objTranscript.Add("the printer is unplugged");
    m_objPort.m_bRefusesOutput = true;
    m_objLibrary.m_iOpenResults.assign(iMoreThanAnybodyOpens, IUsbLibrary::NotReady);
}

void CScene::Begin() {
    LookAtLabels();
    m_objFields.clear();
    for (QWidget* const objField : Fields(m_objWindow.Form())) {
        m_objFields.emplace_back(objField, QString());
    }
    m_bPressed = false;
    m_objTranscript.Take();
}

std::string CScene::End() {
    m_objEventLoop.Idle(m_objEventLoop.IsClosing() ? DialogMilliseconds : AfterMilliseconds);
    m_objTranscript.Restore(m_objTranscript.Take());  // the time until here does not matter
    const QStringList strDisabled = m_objWindow.DisabledButtons();
    if (!strDisabled.isEmpty()) {
        m_objTranscript.Add("end: disabled " + strDisabled.join(' ').toStdString());
    }
    TellFields();
    TellFiles();
    if (!m_objEventLoop.IsClosing()) {
        TellSaved();
        TellStatus();
    }
    return Joined(m_objTranscript.Take(), "\n") + "\n";
}

void CScene::KeepFields() {
    for (auto& [objField, strShown] : m_objFields) {
        strShown = Shown(*objField);
    }
}

void CScene::TellFields() {
    for (const auto& [objField, strBefore] : m_objFields) {
        if (const QString strNow = Shown(*objField); strNow != strBefore) {
            m_objTranscript.Add("end: " + objField->objectName().toStdString() + " " +
                                strBefore.toStdString() + " -> " + strNow.toStdString());
        }
    }
}

void CScene::AddFile(const std::string& p_strPath, const std::string& p_strBytes) {
    m_objFiles.m_strFiles[p_strPath] = p_strBytes;
    m_strFilesBefore[p_strPath] = p_strBytes;
}

void CScene::TellSaved() {
    if (!m_objWire.HasDeliveredSettings() && m_objFileDialog.Calls().empty()) {
        return;  // what SAVE writes stands in the fields
    }
    const std::vector<std::string> strSaved = Saved();
    for (std::size_t i = 0; i < SaveButtons.size(); ++i) {
        if (strSaved[i] != m_strUsuallySaved[i]) {
            m_objTranscript.Add(std::string("afterwards: press ") + SaveButtons[i] + "; " +
                                strSaved[i]);
        }
    }
}

void CScene::TellFiles() {
    for (const auto& [strPath, strBytes] : m_objFiles.m_strFiles) {
        const auto objBefore = m_strFilesBefore.find(strPath);
        if (objBefore == m_strFilesBefore.end() || objBefore->second != strBytes) {
            m_objTranscript.Add("end: file " + CTranscript::Printable(strPath) + ": " +
                                CTranscript::Printable(strBytes));
        }
    }
}

std::vector<std::string> CScene::Saved() {
    const std::vector<std::string> strSoFar = m_objTranscript.Take();
    std::vector<std::string> strSaved;
    m_objFiles.FailAt(0);
    m_objFileDialog.WhileShown(nullptr);
    m_objFileDialog.Choose(AfterwardsFile, AllFiles);
    for (const char* const strButton : SaveButtons) {
        m_objFiles.m_strFiles.erase(AfterwardsFile);
        Press(strButton);
        const std::vector<std::string> strLines = m_objTranscript.Take();
        const auto objWritten = m_objFiles.m_strFiles.find(AfterwardsFile);
        strSaved.push_back(objWritten != m_objFiles.m_strFiles.end()
                               ? CTranscript::Printable(objWritten->second)
                               : Joined(strLines, "; "));
    }
    m_objFiles.m_strFiles.erase(AfterwardsFile);
    m_objTranscript.Restore(strSoFar);
    return strSaved;
}

void CScene::TellStatus() {
    const std::vector<std::string> strSoFar = m_objTranscript.Take();
    MakeSound();
    Press("btnGetStatus");
    m_objEventLoop.Idle(StatusMilliseconds);
    std::vector<std::string> strLines = m_objTranscript.Take();
    std::erase_if(strLines, [](const std::string& p_strLine) {
        return p_strLine.starts_with("buttons") || p_strLine.starts_with("done");
    });
    m_objTranscript.Restore(strSoFar);
    m_objTranscript.Add("afterwards: " + Joined(strLines, "; "));
}

void CScene::MakeSound() {
    m_objWire.Forget();
    m_bFlood = false;
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Connects;
    m_objPort.m_iOpenResult = ISerialPort::Opened;
    m_objPort.m_bGoesAtOnce = false;
    m_objSocket.m_bCompletesSends = true;
    m_objSocket.m_bRefusesSends = false;
    m_objPort.m_bRefusesOutput = false;
    m_objPort.m_fnByte = nullptr;
    m_objLibrary.m_iOpenResults.clear();
    m_objLibrary.m_iSendResult = 0;
    m_objLibrary.m_iNoAnswer = 0;
    m_objLibrary.m_bWaits = true;
}
