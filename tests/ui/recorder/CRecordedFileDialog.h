#pragma once

#include "tests/fakes/CFakeEventLoop.h"
#include "tests/fakes/CFakeFileDialog.h"
#include "tests/ui/recorder/CTranscript.h"

#include <string>

/// File dialogs that stand in the transcript, with all that they show, and on the screen for a
/// moment: events go on meanwhile. A closing program shows none.
class CRecordedFileDialog : public CFakeFileDialog {
public:
    static constexpr std::int64_t MomentMilliseconds = 200;

    CRecordedFileDialog(CFakeEventLoop& p_objEventLoop, CTranscript& p_objTranscript)
        : m_objEventLoop(p_objEventLoop)
        , m_objTranscript(p_objTranscript) {}

    /// True while a dialog keeps the person from the window.
    [[nodiscard]] bool Stands() const { return m_bStands; }

    bool GetSaveFileName(CFileDialogRecord& p_objRecord) override {
        return Begin(p_objRecord) && End(CFakeFileDialog::GetSaveFileName(p_objRecord));
    }

    bool GetOpenFileName(CFileDialogRecord& p_objRecord) override {
        return Begin(p_objRecord) && End(CFakeFileDialog::GetOpenFileName(p_objRecord));
    }

private:
    bool Begin(const CFileDialogRecord& p_objRecord) {
        if (m_objEventLoop.IsClosing()) {
            return false;
        }
        m_objTranscript.Add("dialog \"" + p_objRecord.m_strDialogTitle + "\" in " +
                            p_objRecord.m_strInitialFolder + ", " +
                            CTranscript::Printable(p_objRecord.m_strFilter));
        m_bStands = true;
        const std::int64_t iEnd = m_objEventLoop.Elapsed() + MomentMilliseconds;
        while (m_objEventLoop.Elapsed() < iEnd && !m_objEventLoop.IsClosing()) {
            m_objEventLoop.Yield();
        }
        m_bStands = false;
        return !m_objEventLoop.IsClosing();
    }

    bool End(bool p_bChosen) {
        const bool bChosen = p_bChosen && !m_objEventLoop.IsClosing();
        m_objTranscript.Add(bChosen ? "answered with a file" : "answered without a file");
        return bChosen;
    }

    CFakeEventLoop& m_objEventLoop;
    CTranscript& m_objTranscript;
    bool m_bStands = false;
};
