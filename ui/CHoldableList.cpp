#include "ui/CHoldableList.h"

void CHoldableList::SetHeld(bool p_bHeld) {
    m_bHeld = p_bHeld;
    if (p_bHeld) {
        hidePopup();
    }
}

void CHoldableList::showPopup() {
    if (!m_bHeld) {
        QComboBox::showPopup();
    }
}
