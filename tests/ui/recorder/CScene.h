#pragma once

#include "tests/fakes/CFakeFileStore.h"
#include "tests/ui/CMainWindow.h"
#include "tests/ui/recorder/CRecordedFileDialog.h"
#include "tests/ui/recorder/CRecordedMessageBox.h"
#include "tests/ui/recorder/CScriptedWire.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// The real window, a person at it, and around it the doubles of everything outside, the printer at
/// the other end of one link; all that happens stands in a transcript.
class CScene : private QObject {
public:
    /// A new window with that interface chosen. p_bOpen: its link is opened, by the setup dialog;
    /// on USB there is nothing to open.
    CScene(LinkKind p_iLink, bool p_bOpen);
    ~CScene() override;

    /// What the person does in the setup dialog before the button is pressed there.
    struct Setup {
        bool m_bCancel = false;
        std::map<std::string, int> m_iPositions;        ///< of lists
        std::map<std::string, std::string> m_strTexts;  ///< of fields
    };
    Setup m_objSetup;

    bool m_bFlood = false;     ///< bytes that nobody asked for keep coming
    std::string m_strPressed;  ///< the button that was pressed last
    int m_iHandlers = 0;       ///< presses whose handlers are not back

    [[nodiscard]] LinkKind Link() const { return m_iLink; }

    /// A person presses the button, waits until nothing stands in the way, and is back when its
    /// handler is.
    void Press(const std::string& p_strButton);
    /// The same after a while, in the middle of whatever goes on then.
    void PressLater(std::int64_t p_iMilliseconds, const std::string& p_strButton);

    /// Something else happens after a while.
    void Later(std::int64_t p_iMilliseconds, std::function<void()> p_fnAction);

    // What may happen any time.
    void Choose(LinkKind p_iLink);
    void Close();
    void PrinterCloses();
    void ConnectionBreaks();
    void PortEvent(std::int16_t p_iEvent);
    void ClearToSend(bool p_bOn);
    /// The device is taken away: from now on nothing goes out, and nothing is found.
    void Unplug();

    /// Whatever was wrong is right from now on: the link, the printer and its answers.
    void MakeSound();

    /// A file that is there from the beginning.
    void AddFile(const std::string& p_strPath, const std::string& p_strBytes);

    /// What SAVE and LAN SAVE write now, printable; what was shown instead where one does not end
    /// well.
    std::vector<std::string> Saved();
    /// What Saved gives for a new window, which is not worth telling.
    void SetUsuallySaved(std::vector<std::string> p_strSaved) {
        m_strUsuallySaved = std::move(p_strSaved);
    }

    /// All is told from here on: forgets the transcript so far.
    void Begin();
    /// Lets the events that are under way come, tells what the window shows otherwise than when the
    /// first button was pressed, and what a SAVE writes and a GET STATUS does afterwards. The whole
    /// transcript.
    std::string End();

    CFakeClock m_objClock;
    CTranscript m_objTranscript;
    CRecordedEventLoop m_objEventLoop{m_objClock, m_objTranscript};
    CRecordedMessageBox m_objBoxes{m_objEventLoop, m_objTranscript};
    CRecordedTcpClient m_objSocket{m_objEventLoop, m_objTranscript};
    CRecordedSerialPort m_objPort{m_objEventLoop, m_objTranscript};
    CRecordedUsbLibrary m_objLibrary{m_objEventLoop, m_objTranscript};
    CRecordedFileDialog m_objFileDialog{m_objEventLoop, m_objTranscript};
    CFakeFileStore m_objFiles;
    CScriptedWire m_objWire{m_objEventLoop, m_objTranscript, m_objSocket, m_objPort, m_objLibrary};
    CMainWindow m_objWindow;

private:
    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;
    /// A page that is seen for the first time takes longer than a cell.
    void LookAtEachPage();
    void LookAtLabels();
    void KeepFields();
    void TellFields();
    void TellFiles();
    void TellSaved();
    void TellStatus();
    void DealWithSetup(QWidget& p_objDialog);

    LinkKind m_iLink;
    bool m_bPressed = false;                               // a button has been, since the beginning
    bool m_bDialog = false;                                // the setup dialog stands
    std::vector<std::pair<QLabel*, QString>> m_objLabels;  // and what they showed last
    std::vector<std::pair<QWidget*, QString>> m_objFields;  // and what they showed at first
    std::map<std::string, std::string> m_strFilesBefore;
    std::vector<std::string> m_strUsuallySaved;
};
