#include "tests/ui/CFormFixture.h"
#include "tests/ui/MTableErrors.h"
#include "ui/CActionButtons.h"
#include "ui/CFormBinding.h"
#include "ui/MBinding.h"
#include "ui/MButtonHandlers.h"
#include "ui/MControl.h"
#include "ui/MListEntries.h"
#include "ui/MSpinRanges.h"

#include <QTabWidget>

#include <string>
#include <vector>

namespace {

/// The tables of the window, each with an error in each of its rows in turn.
class FmMainTablesTest : public CFormFixture {
protected:
    QWidget& Page(int p_iTab) { return *m_objWindow.Get<QTabWidget>("SSTab1").widget(p_iTab); }
};

template <typename Row>
void ExpectBindingErrorsTold(const QWidget& p_objPage, const std::vector<Row>& p_objRows) {
    MTableErrors::ExpectAllTold(
        p_objRows, [](Row & p_objRow) -> auto& { return p_objRow.m_strControl; },
        [&](const auto& p_objTable) { const CFormBinding objBinding(p_objPage, p_objTable); });
}

TEST_F(FmMainTablesTest, EveryErrorInABindingIsTold) {
    ExpectBindingErrorsTold(Page(0), MBinding::ParameterSetting());
    ExpectBindingErrorsTold(Page(2), MBinding::Lan());
}

TEST_F(FmMainTablesTest, ABindingOfAnotherKindThanItsControlIsTold) {
    for (const MBinding::Row& objRow : MBinding::Lan()) {
        std::vector<MBinding::Row> objRows{objRow};
        objRows[0].m_iKind = objRow.m_iKind == MBinding::Kind::List ? MBinding::Kind::SpinEdit
                                                                    : MBinding::Kind::List;
        MTableErrors::ExpectTold(objRow.m_strControl,
                                 [&] { const CFormBinding objBinding(Page(2), objRows); });
    }
}

TEST_F(FmMainTablesTest, ABindingWithoutItsItemsIsTold) {
    for (const MBinding::Row& objRow : MBinding::ParameterSetting()) {
        const auto ExpectTold = [&](const MBinding::Row& p_objRow) {
            MTableErrors::ExpectTold(objRow.m_strControl,
                                     [&] { const CFormBinding objBinding(Page(0), {p_objRow}); });
        };
        MBinding::Row objNone = objRow;
        objNone.m_objItem = nullptr;
        ExpectTold(objNone);
        MBinding::Row objOther = objRow;  // a pair without a direction, or the reverse
        objOther.m_objDirection = objRow.m_iKind == MBinding::Kind::SignedPair
                                      ? nullptr
                                      : &CItemManager::m_objFeedDirection;
        ExpectTold(objOther);
    }
}

TEST_F(FmMainTablesTest, EveryErrorInARangeIsTold) {
    MTableErrors::ExpectAllTold(
        MSpinRanges::All(), [](MSpinRanges::Row & p_objRow) -> auto& { return p_objRow.m_strName; },
        [&](const auto& p_objTable) { MSpinRanges::ApplyAll(p_objTable, m_objWindow.Form()); });
}

TEST_F(FmMainTablesTest, EveryErrorInAListIsTold) {
    MTableErrors::ExpectAllTold(
        MListEntries::All(),
        [](MListEntries::List & p_objList) -> auto& { return p_objList.m_strName; },
        [&](const auto& p_objTable) {
            for (QComboBox* const cmb : m_objWindow.Form().findChildren<QComboBox*>()) {
                if (cmb->objectName() != "cmbInterface") {
                    cmb->clear();
                }
            }
            MListEntries::Fill(p_objTable, m_objWindow.Form());
        });
}

TEST_F(FmMainTablesTest, AListWithoutEntriesOrWithAStartBeyondThemIsTold) {
    QWidget objWindow;
    auto* const cmb = new QComboBox(&objWindow);
    cmb->setObjectName("cmbOne");
    const auto Fill = [&](MListEntries::List p_objList) {
        return [&objWindow, cmb, objList = std::move(p_objList)] {
            cmb->clear();
            MListEntries::Fill({objList}, objWindow);
        };
    };
    MTableErrors::ExpectTold("cmbOne", Fill({"cmbOne", {}, MListEntries::NoSelection}));
    MTableErrors::ExpectTold("cmbOne", Fill({"cmbOne", {"a", "b"}, 2}));
    MTableErrors::ExpectTold("cmbOne", Fill({"cmbOne", {"a", "b"}, -2}));
    Fill({"cmbOne", {"a", "b"}, 1})();
    EXPECT_EQ(cmb->currentText(), "b");
}

TEST_F(FmMainTablesTest, EveryErrorInAnActionButtonIsTold) {
    MTableErrors::ExpectAllTold(
        CActionButtons::Names(), [](const char*& p_strName) -> auto& { return p_strName; },
        [&](const auto& p_objTable) {
            const CActionButtons objButtons(m_objWindow.Form(), p_objTable);
        });
}

TEST_F(FmMainTablesTest, EveryErrorInAHandlerIsTold) {
    std::vector<MButtonHandlers::Row> objRows;
    for (const char* const strName : CActionButtons::Names()) {
        objRows.push_back({strName, [] {}});
    }
    MTableErrors::ExpectAllTold(
        objRows, [](MButtonHandlers::Row & p_objRow) -> auto& { return p_objRow.m_strButton; },
        [&](const auto& p_objTable) { MButtonHandlers::Connect(p_objTable, m_objWindow.Form()); });
    objRows[3].m_fnHandler = nullptr;
    MTableErrors::ExpectTold(objRows[3].m_strButton,
                             [&] { MButtonHandlers::Connect(objRows, m_objWindow.Form()); });
}

TEST_F(FmMainTablesTest, TheTablesAsTheyAreAreInOrder) {
    EXPECT_NO_THROW(const CFormBinding objBinding(Page(0), MBinding::ParameterSetting()));
    EXPECT_NO_THROW(const CFormBinding objBinding(Page(2), MBinding::Lan()));
    EXPECT_NO_THROW(MSpinRanges::ApplyAll(MSpinRanges::All(), m_objWindow.Form()));
    EXPECT_NO_THROW(const CActionButtons objButtons(m_objWindow.Form()));
}

TEST_F(FmMainTablesTest, AFieldThatAPageLacksIsToldToo) {
    // As when a page's own list leaves a field out, or misspells it.
    QList<QWidget*> objControls;
    for (QWidget* const objControl : m_objWindow.Form().findChildren<QWidget*>()) {
        const QString strName = objControl->objectName();
        if (strName.startsWith("Se") || strName.startsWith("cmb") || strName.startsWith("btn")) {
            objControls.append(objControl);
        }
    }
    ASSERT_GT(objControls.size(), 80);
    for (QWidget* const objControl : objControls) {
        const QString strName = objControl->objectName();
        const auto ExpectTold = [&](const std::string& p_strTold) {
            MTableErrors::ExpectTold(p_strTold, [&] {
                MSpinRanges::ApplyAll(MSpinRanges::All(), m_objWindow.Form());
                const CActionButtons objButtons(m_objWindow.Form());
                for (const MListEntries::List& objList : MListEntries::All()) {
                    MControl::Find<QComboBox>(m_objWindow.Form(), QLatin1String(objList.m_strName));
                }
            });
        };
        if (strName != "cmbInterface") {  // is found by no name
            objControl->setObjectName("other");
            ExpectTold(strName.toStdString());
            objControl->setObjectName(strName);
        }
    }
}

}  // namespace
