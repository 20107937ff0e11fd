#include "platform/widgets/CFileChooser.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr QChar Quote(u'"');

}  // namespace

CFileChooser::CFileChooser(QWidget* p_objOwner)
    : CFileChooser(p_objOwner, Parts()) {}

CFileChooser::CFileChooser(QWidget* p_objOwner, const Parts& p_objParts)
    : QFileDialog(p_objOwner) {
    setOptions(DontUseNativeDialog | DontConfirmOverwrite | HideNameFilterDetails);
    setFileMode(AnyFile);
    m_txtName = findChild<QLineEdit*>(p_objParts.m_strName);
    m_objButtons = findChild<QDialogButtonBox*>(p_objParts.m_strButtons);
    if (m_txtName != nullptr) {
        connect(m_txtName, &QLineEdit::textChanged, this, &CFileChooser::EnableAccepting);
    }
}

void CFileChooser::EnableAccepting() {
    // The toolkit finds no file in a name with a single mark, and has disabled the button.
    if (m_objButtons == nullptr || !m_txtName->text().contains(Quote)) {
        return;
    }
    const auto iButton =
        acceptMode() == AcceptSave ? QDialogButtonBox::Save : QDialogButtonBox::Open;
    if (QPushButton* const btn = m_objButtons->button(iButton)) {
        btn->setEnabled(true);
    }
}

void CFileChooser::accept() {
    QString strName = m_txtName != nullptr ? m_txtName->text() : QString();
    if (!strName.contains(Quote)) {
        QFileDialog::accept();
        return;
    }
    if (strName.startsWith("~/")) {
        strName.replace(0, 1, QDir::homePath());  // as the toolkit does
    }
    const QString strPath = directory().absoluteFilePath(strName);
    if (QFileInfo(strPath).isDir()) {
        setDirectory(strPath);
        m_txtName->clear();
        return;
    }
    m_strPath = strPath;
    done(Accepted);
}

QString CFileChooser::Path() const {
    if (result() != Accepted) {
        return {};
    }
    return m_strPath.isEmpty() ? selectedFiles().value(0) : m_strPath;
}
