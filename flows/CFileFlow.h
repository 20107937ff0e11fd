#pragma once

#include "files/CSettingsFile.h"
#include "flows/ISettingsPage.h"
#include "link/CWaiter.h"
#include "platform/CFilePlatform.h"

#include <cstdint>
#include <string>

/// SAVE and LOAD of one page's settings file.
///
/// Each is one handler: it runs to its end, lets no exception out, and ends with "Normal
/// termination", with "Abnormal termination" (also for any exception on the way), or silently when
/// no file was chosen or the old one is to stay. Nothing is remembered from one to the next.
class CFileFlow {
public:
    /// What tells the two kinds of settings file apart.
    struct Kind {
        std::string m_strExtension;        ///< without the dot
        std::string m_strSaveDisplayName;  ///< of the kind's own files in the save dialog
        std::string m_strLoadDisplayName;  ///< the same in the load dialog
        CSettingsFile::Format m_objFormat;
    };

    static Kind ParameterKind();
    static Kind LanKind();

    /// None of the references is owned; all outlive this.
    CFileFlow(Kind p_objKind, const CItemManager& p_objItemManager, ISettingsPage& p_objPage,
              CWaiter& p_objWaiter, CFilePlatform p_objPlatform);

    /// Asks for a name, and before it overwrites; stores the page and writes the file, all or
    /// nothing.
    void Save();

    /// Asks for a file, stores its lines in the items and refreshes the page. What a file that
    /// goes wrong has stored until then stays; the page is not refreshed.
    void Load();

private:
    /// With which box a handler ends.
    enum class Ending : std::uint8_t { Silent, Normal, Abnormal };

    std::string ChooseToSave();
    std::string ChooseToLoad();
    Ending SaveAs();
    Ending LoadFrom();
    bool ShowLoaded();
    void Run(Ending (CFileFlow::*p_fnSteps)());

    Kind m_objKind;
    CSettingsFile m_objFile;
    ISettingsPage& m_objPage;
    CWaiter& m_objWaiter;
    CFilePlatform m_objPlatform;
};
