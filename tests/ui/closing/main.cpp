// The setting tool, put together as its own program does it, and someone who drives it into a
// wait and closes the window there:
//
//   varden_closing_driver SCENE PORT
//
// Prints "closing" when the window is closed, then "appeared <what>" for each window that still
// opens, "files changed" when the closing has changed any, and at the end "ended after <n> ms",
// counted from the closing. Its exit code is the tool's.

#include "platform/widgets/CQtPlatform.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/platform_widgets/CFileDialogDriver.h"
#include "tests/ui/CMainWindow.h"
#include "tests/ui/CModalAnswer.h"
#include "tests/ui/closing/CLateSender.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace {

constexpr int Lan = 1;
constexpr const char* OldFile = "old.dt1";
constexpr const char* NewFile = "new.dt1";
constexpr int LookEveryMs = 10;
constexpr int MomentMs = 250;  // so that the wait is well under way

/// Notes every window that opens.
class CWindowWatch : public QObject {
public:
    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override {
        if (p_objEvent->type() == QEvent::Show && p_objWatched->isWidgetType() &&
            qobject_cast<QWidget*>(p_objWatched)->isWindow()) {
            std::printf("appeared %s\n", p_objWatched->metaObject()->className());
        }
        return false;
    }
};

bool IsInFront(const char* p_strClass) {
    const QWidget* const objModal = QApplication::activeModalWidget();
    return objModal != nullptr && objModal->isVisible() && objModal->inherits(p_strClass);
}

bool IsBoxInFront(const char* p_strText) {
    const auto* const objBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    return objBox != nullptr && objBox->isVisible() && objBox->text() == p_strText;
}

/// What is done, and how it shows that the window has got there.
struct Scene {
    std::function<void()> m_fnDrive;
    std::function<bool()> m_fnReached;
    std::function<void()> m_fnClose;
};

class CDriver {
public:
    /// p_objFolder is where the file dialogs open.
    CDriver(CMainWindow& p_objWindow, const CFolder& p_objFolder, const QString& p_strScene)
        : m_objWindow(p_objWindow)
        , m_objFolder(p_objFolder) {
        const auto fnClose = [this] { m_objWindow.Form().close(); };
        const auto fnBusy = [this] {
            return m_bPressed && !m_objWindow.Button("btnSetup").isEnabled() &&
                   QApplication::activeModalWidget() == nullptr;
        };
        const auto fnBox = [] { return IsInFront("QMessageBox"); };
        const auto fnPressed = [this] { return m_bPressed; };
        const auto fnSetup = [this] { return m_bPressed && IsInFront("FmInterfaceSetup"); };
        const auto fnAbout = [] { return IsInFront("FmAbout"); };
        const auto fnFileDialog = [this] { return m_bTyped && IsInFront("QFileDialog"); };
        const auto fnQuestion = [] {
            return IsBoxInFront("The file already exists. Do you overwrite?");
        };
        const auto fnSaved = [] { return IsBoxInFront("Normal termination"); };
        const auto fnRead = [this] { Connect(), Press("btnRead"); };
        const std::map<QString, Scene> objScenes{
            {"idle", {[this] { m_bPressed = true; }, fnPressed, fnClose}},
            {"typed", {[this] { Type(), m_bPressed = true; }, fnPressed, fnClose}},
            {"read", {fnRead, fnBusy, fnClose}},
            {"read-exit", {fnRead, fnBusy, [this] { Exit(); }}},
            {"set", {[this] { Connect(), Press("btnSet"); }, fnBusy, fnClose}},
            {"lan-set", {[this] { Connect(), Press("btnLanSet"); }, fnPressed, fnClose}},
            {"connect", {[this] { m_bPressed = true, Connect(); }, fnBusy, fnClose}},
            {"connect-error", {[this] { Connect(); }, fnBox, fnClose}},
            {"send-error", {[this] { Choose(), Press("btnRead"); }, fnBox, fnClose}},
            {"range-box", {[this] { Type(), Leave(); }, fnBox, fnClose}},
            {"setup", {[this] { Choose(), Press("btnSetup"); }, fnSetup, fnClose}},
            {"about", {[this] { About(); }, fnAbout, fnClose}},
            {"setup-in-lan-set",
             {[this] { InLanSet([this] { m_objWindow.Click("btnSetup"); }); }, fnSetup, fnClose}},
            {"about-in-lan-set", {[this] { InLanSet([this] { About(); }); }, fnAbout, fnClose}},
            {"save-dialog", {[this] { TypeName("btnSave", NewFile); }, fnFileDialog, fnClose}},
            {"load-dialog", {[this] { TypeName("btnLoad", OldFile); }, fnFileDialog, fnClose}},
            {"overwrite", {[this] { SaveAs(OldFile); }, fnQuestion, fnClose}},
            {"saved", {[this] { SaveAs(NewFile); }, fnSaved, fnClose}},
        };
        m_objScene = objScenes.at(p_strScene);
        QObject::connect(&m_objLook, &QTimer::timeout, &m_objLook, [this] { Look(); });
    }

    void Start() {
        m_objWindow.Open();
        m_objLook.start(LookEveryMs);
        m_objScene.m_fnDrive();
    }

    /// Whether any file is another one now than when the window was closed.
    [[nodiscard]] bool FilesHaveChanged() const { return Files() != m_strFiles; }

    [[nodiscard]] qint64 SinceClosing() const { return m_objTime.elapsed(); }

private:
    void Choose() { m_objWindow.Choose("cmbInterface", Lan); }
    void Connect() {
        Choose();
        m_objWindow.SetUp("127.0.0.1");
    }
    void Press(const char* p_strButton) {
        m_bPressed = true;
        m_objWindow.Click(p_strButton);
    }
    void Type() { m_objWindow.Type("SeFeedAdj", "999"); }
    void Leave() { QTest::keyClick(&m_objWindow.Field("SeFeedAdj"), Qt::Key_Tab); }
    void About() { m_objWindow.Get<QAction>("smAbout").trigger(); }

    /// Presses LAN SET and, a moment later, does p_fnAction inside of its wait.
    void InLanSet(std::function<void()> p_fnAction) {
        Connect();
        QTimer::singleShot(MomentMs, &m_objLook, std::move(p_fnAction));
        Press("btnLanSet");
    }

    /// Presses the button and acts in its file dialog.
    void InFileDialog(const char* p_strButton,
                      const std::function<void(CFileDialogDriver&)>& p_fnAction) {
        const CModalAnswer objPerson("QFileDialog", [&](QWidget& p_objDialog) {
            CFileDialogDriver objDriver(dynamic_cast<QFileDialog&>(p_objDialog));
            p_fnAction(objDriver);
            m_bTyped = true;
        });
        Press(p_strButton);
    }
    void TypeName(const char* p_strButton, const char* p_strName) {
        InFileDialog(p_strButton,
                     [=](CFileDialogDriver& p_objDialog) { p_objDialog.Type(p_strName); });
    }
    void SaveAs(const char* p_strName) {
        InFileDialog("btnSave",
                     [=](CFileDialogDriver& p_objDialog) { p_objDialog.TypeAndEnter(p_strName); });
    }

    /// What the folder holds, by name.
    [[nodiscard]] std::map<std::string, std::string> Files() const {
        std::map<std::string, std::string> strFiles;
        for (const std::string& strName : m_objFolder.Names()) {
            strFiles[strName] = m_objFolder.Content(strName);
        }
        return strFiles;
    }

    void Exit() { m_objWindow.Get<QAction>("smExit").trigger(); }

    void Look() {
        if (!m_objScene.m_fnReached()) {
            return;
        }
        m_objLook.stop();
        QTimer::singleShot(MomentMs, &m_objLook, [this] {
            m_strFiles = Files();
            std::printf("closing\n");
            std::fflush(stdout);
            QApplication::instance()->installEventFilter(&m_objWatch);
            m_objTime.start();
            m_objScene.m_fnClose();
        });
    }

    CMainWindow& m_objWindow;
    const CFolder& m_objFolder;
    std::map<std::string, std::string> m_strFiles;
    Scene m_objScene;
    QTimer m_objLook;
    QElapsedTimer m_objTime;
    CWindowWatch m_objWatch;
    bool m_bPressed = false;
    bool m_bTyped = false;
};

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    QApplication objApplication(p_iCount, p_strArguments);
    const QStringList strArguments = QApplication::arguments();
    if (strArguments.size() != 3) {
        std::fprintf(stderr, "usage: %s SCENE PORT\n", p_strArguments[0]);
        return 2;
    }
    const CFolder objFolder;
    objFolder.Make(OldFile, "old");
    CQtPlatform objPlatform;
    CPlatform objInterfaces = objPlatform.Interfaces();
    const bool bStuck = strArguments[1] == "send";
    std::optional<CLateSender> objStuck;
    if (bStuck) {
        objStuck.emplace(objInterfaces.m_objTcpClient);
    }
    CMainWindow objWindow(CPlatform{{objInterfaces.m_objEventLoop, objInterfaces.m_objClock,
                                     bStuck ? *objStuck : objInterfaces.m_objTcpClient,
                                     objInterfaces.m_objSerialPort, objInterfaces.m_objUsbLibrary},
                                    {objInterfaces.m_objMessageBox, objInterfaces.m_objFileDialog,
                                     objInterfaces.m_objFileStore, objFolder.Path()}});
    objWindow.Form().Interface().m_objSocketPort->SetValue(strArguments[2].toInt());
    QObject::connect(&objWindow.Form(), &FmMain::Closed, &objApplication,
                     [] { QCoreApplication::exit(0); });
    objWindow.Form().show();
    CDriver objDriver(objWindow, objFolder, bStuck ? QStringLiteral("set") : strArguments[1]);
    QTimer::singleShot(0, &objApplication, [&] { objDriver.Start(); });
    const int iExitCode = QApplication::exec();
    if (objDriver.FilesHaveChanged()) {
        std::printf("files changed\n");
    }
    std::printf("ended after %lld ms\n", static_cast<long long>(objDriver.SinceClosing()));
    return iExitCode;
}
