#include "ui/CActionButtons.h"

#include "ui/MControl.h"

namespace {

// clang-format off
const std::vector<const char*> ButtonNames{
    "btnGetStatus",
    "btnSetup",
    "btnLoad",
    "btnSave",
    "btnRead",
    "btnSet",
    "btnDiagPrint",
    "btnTestPrint",
    "btnReflect",
    "btnTrans",
    "btnPaperEnd",
    "btnThresholdCalib",
    "btnRamClear",
    "btnHeadCheck",
    "btnLanLoad",
    "btnLanSave",
    "btnLanRead",
    "btnLanSet",
};
// clang-format on

}  // namespace

const std::vector<const char*>& CActionButtons::Names() {
    return ButtonNames;
}

CActionButtons::CActionButtons(QWidget& p_objWindow, const std::vector<const char*>& p_strNames)
    : m_objWindow(p_objWindow) {
    for (const char* strName : p_strNames) {
        m_objButtons.push_back(&MControl::Find<QPushButton>(p_objWindow, strName));
    }
    MControl::ExpectOneRowEach<QPushButton>(
        p_objWindow, p_strNames, [](const char* p_strName) { return p_strName; }, "action buttons");
}

void CActionButtons::SetEnabled(bool p_bEnabled) {
    if (!p_bEnabled) {
        KeepFocus();
    }
    for (QPushButton* const btn : m_objButtons) {
        btn->setEnabled(p_bEnabled);
    }
    if (p_bEnabled) {
        GiveFocusBack();
    }
}

void CActionButtons::KeepFocus() {
    auto* const btn = qobject_cast<QPushButton*>(m_objWindow.focusWidget());
    if (btn != nullptr && btn->isEnabled()) {
        // A disabled button would pass the focus on to some field of the page; and to a window that
        // has it nowhere the toolkit gives it anew when a dialog or box over it closes.
        m_btnFocus = btn;
        m_objWindow.setFocus(Qt::OtherFocusReason);
    }
}

void CActionButtons::GiveFocusBack() {
    const QWidget* const objFocus = m_objWindow.focusWidget();
    // A button that is out of sight by now would be pressed unseen.
    if (m_btnFocus != nullptr && m_btnFocus->isVisible() &&
        (objFocus == nullptr || objFocus == &m_objWindow)) {
        m_btnFocus->setFocus(Qt::OtherFocusReason);
    }
    m_btnFocus = nullptr;
}
