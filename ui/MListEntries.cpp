#include "ui/MListEntries.h"

#include "platform/qt/MText.h"
#include "ui/MControl.h"

namespace {

void FillOne(const MChoiceLists::List& p_objList, QComboBox& p_cmb) {
    if (p_cmb.count() > 0) {
        throw std::logic_error(MControl::Text(p_cmb) + " is filled twice");
    }
    for (const std::string_view strEntry : p_objList.m_strEntries) {
        p_cmb.addItem(MText::ToQt(std::string(strEntry)));
    }
    if (p_objList.m_iStartPosition < MChoiceLists::NoSelection ||
        p_objList.m_iStartPosition >= p_cmb.count()) {
        throw std::logic_error(MControl::Text(p_cmb) + " has no position " +
                               std::to_string(p_objList.m_iStartPosition));
    }
    p_cmb.setCurrentIndex(p_objList.m_iStartPosition);
}

}  // namespace

void MListEntries::Fill(const std::vector<MChoiceLists::List>& p_objLists,
                        const QWidget& p_objWindow) {
    for (const MChoiceLists::List& objList : p_objLists) {
        FillOne(objList, MControl::Find<QComboBox>(p_objWindow, QLatin1String(objList.m_strName)));
    }
    for (const QComboBox* const cmb : MControl::All<QComboBox>(p_objWindow)) {
        if (cmb->count() == 0) {
            throw std::logic_error(MControl::Text(*cmb) + " has no entries");
        }
    }
}
