#pragma once

#include <QFileDialog>

class QDialogButtonBox;
class QLineEdit;

/// The toolkit's own file dialog, for one file.
///
/// To the toolkit a name in quotation marks is one of several; here a mark is a character of the
/// name like any other. An accepted folder is gone into. Where the toolkit's dialog lacks the parts
/// that this takes, it is the toolkit's dialog and no more.
class CFileChooser : public QFileDialog {
public:
    /// What the toolkit calls the parts inside its dialog; it promises nothing about them.
    struct Parts {
        QString m_strName = QStringLiteral("fileNameEdit");  ///< where the name is typed
        QString m_strButtons = QStringLiteral("buttonBox");  ///< holds the accepting button
    };

    /// @param p_objOwner the window that it stands in front of; may be null.
    explicit CFileChooser(QWidget* p_objOwner);
    CFileChooser(QWidget* p_objOwner, const Parts& p_objParts);

    /// The file that was accepted, with its whole path; empty when none was.
    [[nodiscard]] QString Path() const;

    void accept() override;

private:
    void EnableAccepting();

    QLineEdit* m_txtName = nullptr;            ///< null when there is none of that name
    QDialogButtonBox* m_objButtons = nullptr;  ///< the same
    QString m_strPath;                         ///< one with a quotation mark
};
