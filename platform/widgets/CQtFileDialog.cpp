#include "platform/widgets/CQtFileDialog.h"

#include "platform/widgets/CFileChooser.h"
#include "platform/widgets/MDialogOwner.h"

#include <QFile>
#include <QStringList>

#include <algorithm>

namespace {

constexpr QChar Nul(u'\0');

/// The filter's pairs in the toolkit's form: the display name, then in brackets, which stay
/// hidden, the patterns. To the toolkit "*.*" asks for a dot; here it means every file.
QStringList NameFilters(const std::string& p_strFilter) {
    const QStringList strTexts =
        QString::fromLocal8Bit(p_strFilter.data(), static_cast<qsizetype>(p_strFilter.size()))
            .split(Nul);
    QStringList strFilters;
    for (qsizetype i = 0; i + 1 < strTexts.size() && !strTexts[i].isEmpty(); i += 2) {
        const QString strPattern = strTexts[i + 1] == "*.*" ? QStringLiteral("*") : strTexts[i + 1];
        strFilters += strTexts[i] + " (" + strPattern + ")";
    }
    return strFilters;
}

/// Fills the record's buffer; false when the path does not fit.
bool TakePath(const QString& p_strPath, CFileDialogRecord& p_objRecord) {
    const QByteArray objPath = QFile::encodeName(p_strPath);
    if (objPath.isEmpty() || objPath.size() > CFileDialogRecord::LongestName) {
        return false;
    }
    p_objRecord.m_arrFileName.fill('\0');
    std::copy(objPath.begin(), objPath.end(), p_objRecord.m_arrFileName.begin());
    return true;
}

}  // namespace

CQtFileDialog::CQtFileDialog(const IEventLoop& p_objEventLoop)
    : m_objEventLoop(p_objEventLoop) {}

bool CQtFileDialog::GetSaveFileName(CFileDialogRecord& p_objRecord) {
    CFileChooser objDialog(MDialogOwner::Find());
    objDialog.setAcceptMode(QFileDialog::AcceptSave);
    return Run(objDialog, p_objRecord);
}

bool CQtFileDialog::GetOpenFileName(CFileDialogRecord& p_objRecord) {
    CFileChooser objDialog(MDialogOwner::Find());
    objDialog.setAcceptMode(QFileDialog::AcceptOpen);
    return Run(objDialog, p_objRecord);
}

bool CQtFileDialog::Run(CFileChooser& p_objDialog, CFileDialogRecord& p_objRecord) const {
    if (m_objEventLoop.IsClosing()) {
        return false;
    }
    p_objDialog.setWindowTitle(QString::fromStdString(p_objRecord.m_strDialogTitle));
    p_objDialog.setDirectory(QFile::decodeName(p_objRecord.m_strInitialFolder.c_str()));
    const QStringList strFilters = NameFilters(p_objRecord.m_strFilter);
    p_objDialog.setNameFilters(strFilters);
    if (p_objDialog.exec() != QDialog::Accepted || p_objDialog.Path().isEmpty()) {
        return false;
    }
    // With hidden details the dialog gives the filter back as it shows it.
    const QString strChosen = p_objDialog.selectedNameFilter();
    const auto objFound =
        std::find_if(strFilters.begin(), strFilters.end(), [&](const QString& p_strFilter) {
            return p_strFilter == strChosen || p_strFilter.startsWith(strChosen + " (");
        });
    p_objRecord.m_iFilterIndex = static_cast<std::uint32_t>(objFound - strFilters.begin()) + 1;
    return TakePath(p_objDialog.Path(), p_objRecord);
}
