#pragma once

#include <QString>

#include <string>
#include <vector>

class QComboBox;
class QFileDialog;
class QLineEdit;

/// The toolkit's own file dialog as a person works it, with keys and clicks.
///
/// Every function throws std::logic_error when the dialog lacks what it needs.
class CFileDialogDriver {
public:
    /// Not owned, outlives this.
    explicit CFileDialogDriver(QFileDialog& p_objDialog);

    /// Where the name is typed.
    QLineEdit& Name();

    /// The list of filters.
    QComboBox& Filters();

    /// The names that the dialog lists, in order. They come some time after a folder is shown.
    std::vector<std::string> Listed();

    /// Goes down the list of filters by so many entries.
    void ChooseFilter(int p_iSteps);

    /// Types a name, or a whole path, in place of what stands there, once the dialog has the
    /// keyboard: without it the dialog selects in its list what only a part of the name leads to,
    /// such as "/", and takes that.
    void Type(const QString& p_strName);

    /// Presses Return where the name is typed. (What the accepting button is called and whether
    /// it leads into a folder depends on what is typed; the key does the same as the button.)
    void Enter();

    void TypeAndEnter(const QString& p_strName);

    /// Types a folder's path and waits until the dialog shows it. False when it never does.
    bool GoTo(const QString& p_strFolder);

    /// Clicks "Cancel".
    void Cancel();

private:
    QFileDialog& m_objDialog;
};
