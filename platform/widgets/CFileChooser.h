#pragma once

#include <QFileDialog>

class QLineEdit;

/// The toolkit's own file dialog, for one file.
///
/// To the toolkit a name in quotation marks is one of several; here a mark is a character of the
/// name like any other. An accepted folder is gone into.
class CFileChooser : public QFileDialog {
public:
    /// @param p_objOwner the window that it stands in front of; may be null.
    explicit CFileChooser(QWidget* p_objOwner);

    /// The file that was accepted, with its whole path; empty when none was.
    [[nodiscard]] QString Path() const;

    void accept() override;

private:
    void EnableAccepting();

    QLineEdit* m_txtName;
    QString m_strPath;  ///< one with a quotation mark
};
