#include "files/MFileDialog.h"

#include <algorithm>

namespace {

constexpr std::uint32_t RecordSize = 76;
constexpr std::uint32_t FirstFilterPair = 1;
constexpr char Nul = '\0';

/// The chosen path: the buffer up to its first NUL, without blanks around it.
std::string ChosenName(const CFileDialogRecord& p_objRecord) {
    const auto& arrName = p_objRecord.m_arrFileName;
    std::string strName(arrName.begin(), std::find(arrName.begin(), arrName.end(), Nul));
    strName.erase(strName.find_last_not_of(' ') + 1);
    strName.erase(0, strName.find_first_not_of(' '));
    return strName;
}

}  // namespace

namespace MFileDialog {

void InitFileDialogRecord(CFileDialogRecord& p_objRecord, const std::string& p_strFilter,
                          const std::string& p_strDialogTitle,
                          const std::string& p_strInitialFolder) {
    p_objRecord = {};
    p_objRecord.m_iStructSize = RecordSize;
    p_objRecord.m_strFilter = p_strFilter;
    p_objRecord.m_iFileNameSize = CFileDialogRecord::LongestName;
    p_objRecord.m_iFileTitleSize = CFileDialogRecord::LongestName;
    p_objRecord.m_strInitialFolder = p_strInitialFolder;
    p_objRecord.m_strDialogTitle = p_strDialogTitle;
}

std::string BuildFileFilter(const std::vector<std::string>& p_strTexts) {
    if (p_strTexts.empty()) {
        return {};
    }
    std::string strFilter;
    for (const std::string& strText : p_strTexts) {
        strFilter += strText + Nul;
    }
    if (p_strTexts.size() % 2 != 0) {
        strFilter += std::string("*.*") + Nul;
    }
    return strFilter + Nul;
}

bool FileExists(const IFileStore& p_objFileStore, const std::string& p_strPath) {
    return p_objFileStore.Exists(p_strPath);
}

std::string ShowSaveFileDialog(IFileDialog& p_objFileDialog, CFileDialogRecord& p_objRecord,
                               const std::string& p_strExtension) {
    const std::string strDotted = "." + p_strExtension;
    if (!p_objFileDialog.GetSaveFileName(p_objRecord)) {
        return {};
    }
    std::string strName = ChosenName(p_objRecord);
    if (p_objRecord.m_iFilterIndex == FirstFilterPair && !strName.ends_with(strDotted)) {
        strName += strDotted;
    }
    return strName;
}

std::string ShowOpenFileDialog(IFileDialog& p_objFileDialog, CFileDialogRecord& p_objRecord) {
    return p_objFileDialog.GetOpenFileName(p_objRecord) ? ChosenName(p_objRecord) : std::string();
}

}  // namespace MFileDialog
