#include "tests/ui/recorder/CStage.h"

#include "tests/ui/recorder/MCopiedProcess.h"
#include "tests/ui/recorder/MFiles.h"
#include "tests/ui/recorder/MPage.h"

#include <QApplication>
#include <QTest>

#include <stdexcept>

CStage::CStage() {
    QApplication::instance()->installEventFilter(&m_objUnpainted);
    CScene objNew(LinkKind::Com, false);
    m_strUsuallySaved = objNew.Saved();

    CScene objOther(LinkKind::Lan, true);
    MPage::ChangeEverything(objOther.m_objWindow);
    objOther.Press("btnSet");
    objOther.Press("btnLanSet");
    m_strSettings = objOther.m_objSocket.m_strSent;
    for (const MFiles::Kind& objKind : {MFiles::Parameters(), MFiles::Lan()}) {
        objOther.m_objFileDialog.Choose(objKind.m_strOtherSettings);
        objOther.Press(objKind.m_strSave);
    }
    m_strFiles = objOther.m_objFiles.m_strFiles;
}

CStage::~CStage() = default;

CScene& CStage::Scene(LinkKind p_iLink, bool p_bOpen) {
    std::unique_ptr<CScene>& objScene = m_objScenes[{p_iLink, p_bOpen}];
    if (objScene == nullptr) {
        objScene = std::make_unique<CScene>(p_iLink, p_bOpen);
        objScene->SetUsuallySaved(m_strUsuallySaved);
        objScene->m_objWire.Teach(m_strSettings);
        for (const auto& [strPath, strBytes] : m_strFiles) {
            objScene->AddFile(strPath, strBytes);
        }
        objScene->Begin();
    }
    if (!objScene->m_objWindow.Form().isActiveWindow()) {
        objScene->m_objWindow.Form().activateWindow();
        if (!QTest::qWaitForWindowActive(&objScene->m_objWindow.Form())) {
            throw std::runtime_error("the window does not get the keyboard");
        }
    }
    return *objScene;
}

std::string CStage::Play(const CCell& p_objCell) {
    return Play(p_objCell, [](CScene& p_objScene) { return p_objScene.End(); });
}

std::string CStage::Play(const CCell& p_objCell,
                         const std::function<std::string(CScene&)>& p_fnEnd) {
    CScene& objScene = Scene(p_objCell.m_iLink, p_objCell.m_bOpen);
    objScene.m_objWindow.BringToFront(QString::fromStdString(p_objCell.m_strButton));
    return MCopiedProcess::Run([&] {
        p_objCell.m_fnAct(objScene);
        return p_fnEnd(objScene);
    });
}
