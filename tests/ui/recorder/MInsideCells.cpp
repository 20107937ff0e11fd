#include "tests/ui/recorder/MInsideCells.h"

#include "tests/ui/recorder/MFiles.h"
#include "tests/ui/recorder/MFlows.h"

#include <utility>

namespace {

constexpr std::int64_t InTheWait = 100;
constexpr std::int64_t AnswerInTheWait = 400;
constexpr std::int64_t InThePause = 600;
constexpr const char* FileToWrite = "/inside";

/// What is special about one press inside.
struct Variant {
    const char* m_strName;
    bool m_bSilent;  ///< the command that waits gets no answer
    bool m_bCancel;  ///< of the setup dialog
};

void Prepare(CScene& p_objScene, const Variant& p_objVariant, const std::string& p_strButton) {
    p_objScene.m_objSetup.m_bCancel = p_objVariant.m_bCancel;
    for (const MFiles::Kind& objKind : {MFiles::Parameters(), MFiles::Lan()}) {
        if (p_strButton == objKind.m_strLoad) {
            p_objScene.m_objFileDialog.Choose(objKind.m_strOtherSettings);
        } else if (p_strButton == objKind.m_strSave) {
            p_objScene.m_objFileDialog.Choose(FileToWrite);
        }
    }
}

/// Lets the button be pressed so long after the first command begins.
void PressAfter(CScene& p_objScene, std::int64_t p_iMilliseconds, const std::string& p_strButton) {
    p_objScene.m_objWire.Before(1, [&p_objScene, p_iMilliseconds, p_strButton] {
        p_objScene.PressLater(p_iMilliseconds, p_strButton);
    });
}

void AnswerFirst(CScene& p_objScene, bool p_bSilent) {
    p_objScene.m_objWire.OnAnswer(
        1, [p_bSilent](CScriptedWire::Steps& p_objSteps, const std::string&) {
            p_objSteps.front().m_iAt = AnswerInTheWait;
            if (p_bSilent) {
                p_objSteps.clear();
            }
        });
}

/// p_fnAct(scene, button, variant) for every button, on every link.
template <typename Act>
void AddEach(Cells& p_objCells, const Variant& p_objVariant, const std::string& p_strOuter,
             const Act& p_fnAct) {
    for (const LinkKind iLink : MFlows::AllLinks) {
        for (const QString& strName : CMainWindow::ActionButtons()) {
            const std::string strButton = strName.toStdString();
            p_objCells.push_back({std::string(MFlows::NameOf(iLink)) + ", " + p_strOuter + ": " +
                                      strButton + " pressed inside" + p_objVariant.m_strName,
                                  p_strOuter, iLink, true, [=](CScene& p_objScene) {
                                      Prepare(p_objScene, p_objVariant, strButton);
                                      p_fnAct(p_objScene, strButton);
                                      p_objScene.Press(p_strOuter);
                                  }});
        }
    }
}

}  // namespace

namespace MInsideCells {

Cells InsideLanSet() {
    Cells objCells;
    for (const Variant& objVariant :
         {Variant{"", false, false}, Variant{", cancelled", false, true},
          Variant{", no answer before", true, false}}) {
        AddEach(objCells, objVariant, "btnLanSet",
                [objVariant](CScene& p_objScene, const std::string& p_strButton) {
                    AnswerFirst(p_objScene, objVariant.m_bSilent);
                    PressAfter(p_objScene, InTheWait, p_strButton);
                });
    }
    // Only the setup dialog can be cancelled.
    std::erase_if(objCells, [](const CCell& p_objCell) {
        return p_objCell.m_strHeading.ends_with("cancelled") &&
               p_objCell.m_strHeading.find("btnSetup") == std::string::npos;
    });
    return objCells;
}

Cells InsideHeadCheck() {
    Cells objCells;
    AddEach(objCells, {"", false, false}, "btnHeadCheck",
            [](CScene& p_objScene, const std::string& p_strButton) {
                PressAfter(p_objScene, InThePause, p_strButton);
            });
    return objCells;
}

}  // namespace MInsideCells
