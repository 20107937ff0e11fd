#include "flows/CFileFlow.h"

#include "files/MFileDialog.h"
#include "files/MLanFile.h"
#include "files/MParameterFile.h"
#include "flows/MHandler.h"

#include <utility>

namespace {

std::string Filter(const std::string& p_strDisplayName, const std::string& p_strExtension) {
    return MFileDialog::BuildFileFilter(
        {p_strDisplayName, "*." + p_strExtension, "All files(*.*)", "*.*"});
}

}  // namespace

CFileFlow::Kind CFileFlow::ParameterKind() {
    return {"dt1",
            "dt1 files(*.dt1)",
            "dat files(*.dt1)",
            {&MParameterFile::BuildLines, &MParameterFile::StoreLine}};
}

CFileFlow::Kind CFileFlow::LanKind() {
    return {"dt2",
            "dt2 files(*.dt2)",
            "dat files(*.dt2)",
            {&MLanFile::BuildLines, &MLanFile::StoreLine}};
}

CFileFlow::CFileFlow(Kind p_objKind, const CItemManager& p_objItemManager, ISettingsPage& p_objPage,
                     CWaiter& p_objWaiter, CFilePlatform p_objPlatform)
    : m_objKind(std::move(p_objKind))
    , m_objFile(m_objKind.m_objFormat, p_objItemManager, p_objPlatform.m_objFileStore)
    , m_objPage(p_objPage)
    , m_objWaiter(p_objWaiter)
    , m_objPlatform(std::move(p_objPlatform)) {}

void CFileFlow::Save() {
    MHandler::Run(m_objWaiter, [this] { Run(&CFileFlow::SaveAs); });
}

void CFileFlow::Load() {
    MHandler::Run(m_objWaiter, [this] { Run(&CFileFlow::LoadFrom); });
}

void CFileFlow::Run(Ending (CFileFlow::*p_fnSteps)()) {
    Ending iEnding = Ending::Abnormal;
    try {
        iEnding = (this->*p_fnSteps)();
    } catch (...) {
        // Every error ends like a file that cannot be written or read.
    }
    if (iEnding != Ending::Silent) {
        m_objPlatform.m_objMessageBox.Show(iEnding == Ending::Normal ? "Normal termination"
                                                                     : "Abnormal termination",
                                           MessageIcon::None);
    }
}

std::string CFileFlow::ChooseToSave() {
    CFileDialogRecord objRecord;
    MFileDialog::InitFileDialogRecord(
        objRecord, Filter(m_objKind.m_strSaveDisplayName, m_objKind.m_strExtension), "Save File",
        m_objPlatform.m_strProgramFolder);
    return MFileDialog::ShowSaveFileDialog(m_objPlatform.m_objFileDialog, objRecord,
                                           m_objKind.m_strExtension);
}

std::string CFileFlow::ChooseToLoad() {
    CFileDialogRecord objRecord;
    MFileDialog::InitFileDialogRecord(
        objRecord, Filter(m_objKind.m_strLoadDisplayName, m_objKind.m_strExtension), "Load File",
        m_objPlatform.m_strProgramFolder);
    return MFileDialog::ShowOpenFileDialog(m_objPlatform.m_objFileDialog, objRecord);
}

CFileFlow::Ending CFileFlow::SaveAs() {
    const std::string strPath = ChooseToSave();
    if (strPath.empty()) {
        return Ending::Silent;
    }
    if (MFileDialog::FileExists(m_objPlatform.m_objFileStore, strPath) &&
        !m_objPlatform.m_objMessageBox.AskYesNo("The file already exists. Do you overwrite?")) {
        return Ending::Silent;
    }
    return m_objPage.Store() && m_objFile.Save(strPath) ? Ending::Normal : Ending::Abnormal;
}

CFileFlow::Ending CFileFlow::LoadFrom() {
    const std::string strPath = ChooseToLoad();
    if (strPath.empty()) {
        return Ending::Silent;
    }
    // What goes wrong ends as an exception, too.
    CPageNote objNote{CPageNote::Kind::LoadEnded, {}, strPath};
    struct Told {
        ISettingsPage& m_objPage;
        const CPageNote& m_objNote;
        ~Told() { m_objPage.NoteEnd(m_objNote); }
    };
    const Told objTold{m_objPage, objNote};
    if (!m_objFile.Load(strPath) || !ShowLoaded()) {
        return Ending::Abnormal;
    }
    objNote.m_iKind = CPageNote::Kind::Loaded;
    return Ending::Normal;
}

bool CFileFlow::ShowLoaded() {
    if (m_objPage.Refresh()) {
        return true;
    }
    m_objPlatform.m_objMessageBox.Show("Error RefreshParameterSettingItem", MessageIcon::None);
    return false;
}
