#pragma once

#include "model/CConversionError.h"
#include "platform/qt/MText.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/ui/CMainWindow.h"
#include "ui/CPageBuilder.h"
#include "ui/MListEntries.h"
#include "ui/MSpinRanges.h"

#include <QLineEdit>

#include <gtest/gtest.h>

using Slot = ItemRef CItemManager::*;

/// A page of settings, set up as the window does it, and the items that it shows.
template <typename Page>
class CBindingFixture : public ::testing::Test {
protected:
    CBindingFixture() {
        for (const MListEntries::List& objList : MListEntries::All()) {
            const QString strName = MText::ToQt(objList.m_strName);
            if (auto* const cmb = m_objPage.template findChild<QComboBox*>(strName)) {
                for (const std::string_view strEntry : objList.m_strEntries) {
                    cmb->addItem(MText::ToQt(std::string(strEntry)));
                }
            }
        }
        for (const MSpinRanges::Row& objRow : MSpinRanges::All()) {
            const QString strName = MText::ToQt(objRow.m_strName);
            if (auto* const Se = m_objPage.template findChild<UCSpinEdit*>(strName)) {
                MSpinRanges::Apply(objRow, *Se);
            }
        }
    }

    QComboBox& List(const char* p_strName) { return Get<QComboBox>(p_strName); }
    UCSpinEdit& Field(const char* p_strName) { return Get<UCSpinEdit>(p_strName); }
    QLineEdit& Text(const char* p_strName) { return Get<QLineEdit>(p_strName); }

    CItem& Item(Slot p_objSlot) { return *(m_objItems.*p_objSlot); }

    /// What a list, spin edit or text box of the page shows.
    QString Shown(const char* p_strName) {
        auto& objControl = Get<QWidget>(p_strName);
        if (const auto* const cmb = qobject_cast<QComboBox*>(&objControl)) {
            return cmb->currentText();
        }
        const auto* const txt = qobject_cast<QLineEdit*>(&objControl);
        return txt != nullptr ? txt->text()
                              : objControl.template findChild<QLineEdit*>("CText")->text();
    }

    CFakeMessageBox m_objBoxes;
    CListGuard m_objListGuard;
    CItemManager m_objItems;
    CPageBuilder m_objBuilder{m_objBoxes, m_objListGuard};
    Page m_objPage{m_objBuilder, m_objItems, nullptr};

private:
    template <typename Control>
    Control& Get(const char* p_strName) {
        auto* const objControl = m_objPage.template findChild<Control*>(p_strName);
        if (objControl == nullptr) {
            throw std::runtime_error(std::string("no such control: ") + p_strName);
        }
        return *objControl;
    }
};
