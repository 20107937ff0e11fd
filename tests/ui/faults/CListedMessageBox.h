#pragma once

#include "platform/IMessageBox.h"

#include <string>
#include <vector>

/// Keeps what it is to show, in the words of the transcripts, and is answered at once.
class CListedMessageBox : public IMessageBox {
public:
    using IMessageBox::Show;

    std::vector<std::string> m_strShown;

    void Show(const std::string& p_strText, MessageIcon p_iIcon,
              const std::string& p_strTitle) override {
        m_strShown.push_back(std::string("box, ") + Name(p_iIcon) + ", \"" + p_strTitle +
                             "\": " + p_strText);
    }

    bool AskYesNo(const std::string& p_strText) override {
        m_strShown.push_back("question: " + p_strText);
        return false;
    }

    void Beep() override { m_strShown.emplace_back("beep"); }

private:
    static const char* Name(MessageIcon p_iIcon) {
        if (p_iIcon == MessageIcon::Exclamation) {
            return "exclamation";
        }
        return p_iIcon == MessageIcon::Critical ? "critical" : "no icon";
    }
};
