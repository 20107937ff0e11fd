#pragma once

#include "platform/IEventLoop.h"
#include "platform/IMessageBox.h"

/// The toolkit's message box over the window that has the person's attention.
class CQtMessageBox : public IMessageBox {
public:
    /// Tells when the program closes. Not owned, outlives this.
    explicit CQtMessageBox(const IEventLoop& p_objEventLoop);

    using IMessageBox::Show;
    void Show(const std::string& p_strText, MessageIcon p_iIcon,
              const std::string& p_strTitle) override;
    bool AskYesNo(const std::string& p_strText) override;
    void Beep() override;

private:
    int Run(const std::string& p_strText, MessageIcon p_iIcon, const std::string& p_strTitle,
            int p_iButtons) const;

    const IEventLoop& m_objEventLoop;
};
