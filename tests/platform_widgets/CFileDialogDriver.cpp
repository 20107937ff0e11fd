#include "tests/platform_widgets/CFileDialogDriver.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <stdexcept>

namespace {

constexpr char16_t FirstBeyondAscii = 0x80;

template <typename Control>
Control& Find(const QFileDialog& p_objDialog, const char* p_strName) {
    auto* const objControl = p_objDialog.findChild<Control*>(QString::fromLatin1(p_strName));
    if (objControl == nullptr) {
        throw std::logic_error(std::string("the dialog has no ") + p_strName);
    }
    return *objControl;
}

}  // namespace

CFileDialogDriver::CFileDialogDriver(QFileDialog& p_objDialog)
    : m_objDialog(p_objDialog) {}

QLineEdit& CFileDialogDriver::Name() {
    return Find<QLineEdit>(m_objDialog, "fileNameEdit");
}

QComboBox& CFileDialogDriver::Filters() {
    return Find<QComboBox>(m_objDialog, "fileTypeCombo");
}

std::vector<std::string> CFileDialogDriver::Listed() {
    const auto& objList = Find<QListView>(m_objDialog, "listView");
    std::vector<std::string> strNames;
    for (int i = 0; i < objList.model()->rowCount(objList.rootIndex()); ++i) {
        strNames.push_back(
            objList.model()->index(i, 0, objList.rootIndex()).data().toString().toStdString());
    }
    std::sort(strNames.begin(), strNames.end());
    return strNames;
}

void CFileDialogDriver::ChooseFilter(int p_iSteps) {
    for (int i = 0; i < p_iSteps; ++i) {
        QTest::keyClick(&Filters(), Qt::Key_Down);
    }
}

void CFileDialogDriver::Type(const QString& p_strName) {
    Name().setFocus();
    if (!QTest::qWaitFor([this] { return Name().hasFocus(); })) {
        throw std::logic_error("the dialog does not get the keyboard");
    }
    Name().selectAll();
    for (const QChar c : p_strName) {
        if (c.unicode() < FirstBeyondAscii) {
            QTest::keyClick(&Name(), c.toLatin1());
        } else {
            Name().insert(c);  // as an input method does
        }
    }
}

void CFileDialogDriver::Enter() {
    QTest::keyClick(&Name(), Qt::Key_Return);
}

void CFileDialogDriver::TypeAndEnter(const QString& p_strName) {
    Type(p_strName);
    Enter();
}

bool CFileDialogDriver::GoTo(const QString& p_strFolder) {
    TypeAndEnter(p_strFolder);
    return QTest::qWaitFor([&] { return m_objDialog.directory() == QDir(p_strFolder); });
}

void CFileDialogDriver::Cancel() {
    auto* const btn =
        Find<QDialogButtonBox>(m_objDialog, "buttonBox").button(QDialogButtonBox::Cancel);
    QTest::mouseClick(btn, Qt::LeftButton);
}
