#pragma once

#include "platform/IEventLoop.h"
#include "platform/IFileDialog.h"

class CFileChooser;

/// The toolkit's own file dialogs.
class CQtFileDialog : public IFileDialog {
public:
    /// Tells when the program closes. Not owned, outlives this.
    explicit CQtFileDialog(const IEventLoop& p_objEventLoop);

    bool GetSaveFileName(CFileDialogRecord& p_objRecord) override;
    bool GetOpenFileName(CFileDialogRecord& p_objRecord) override;

private:
    bool Run(CFileChooser& p_objDialog, CFileDialogRecord& p_objRecord) const;

    const IEventLoop& m_objEventLoop;
};
