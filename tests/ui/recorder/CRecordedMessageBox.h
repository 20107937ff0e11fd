#pragma once

#include "platform/IMessageBox.h"
#include "tests/fakes/CFakeEventLoop.h"
#include "tests/ui/recorder/CTranscript.h"

#include <string>

/// Message boxes that stand in the transcript, and on the screen for a moment: events go on
/// meanwhile. A closing program shows none.
class CRecordedMessageBox : public IMessageBox {
public:
    static constexpr std::int64_t MomentMilliseconds = 200;

    CRecordedMessageBox(CFakeEventLoop& p_objEventLoop, CTranscript& p_objTranscript)
        : m_objEventLoop(p_objEventLoop)
        , m_objTranscript(p_objTranscript) {}

    bool m_bYes = false;  ///< the answer to every question

    /// True while a box keeps the person from the window.
    [[nodiscard]] bool Stands() const { return m_iStanding > 0; }

    using IMessageBox::Show;

    void Show(const std::string& p_strText, MessageIcon p_iIcon,
              const std::string& p_strTitle) override {
        Stand(std::string("box, ") + Name(p_iIcon) + ", \"" + p_strTitle + "\": ", p_strText, "OK");
    }

    bool AskYesNo(const std::string& p_strText) override {
        Stand("question: ", p_strText, m_bYes ? "Yes" : "No");
        return m_bYes && !m_objEventLoop.IsClosing();
    }

    void Beep() override { m_objTranscript.Add("beep"); }

private:
    static const char* Name(MessageIcon p_iIcon) {
        switch (p_iIcon) {
        case MessageIcon::Exclamation:
            return "exclamation";
        case MessageIcon::Critical:
            return "critical";
        case MessageIcon::None:
            break;
        }
        return "no icon";
    }

    void Stand(const std::string& p_strHead, const std::string& p_strText,
               const std::string& p_strAnswer) {
        if (m_objEventLoop.IsClosing()) {
            return;
        }
        m_objTranscript.Add(p_strHead + CTranscript::Printable(p_strText));
        ++m_iStanding;
        const std::int64_t iEnd = m_objEventLoop.Elapsed() + MomentMilliseconds;
        while (m_objEventLoop.Elapsed() < iEnd && !m_objEventLoop.IsClosing()) {
            m_objEventLoop.Yield();
        }
        --m_iStanding;
        m_objTranscript.Add("answered " + p_strAnswer);
    }

    CFakeEventLoop& m_objEventLoop;
    CTranscript& m_objTranscript;
    int m_iStanding = 0;
};
