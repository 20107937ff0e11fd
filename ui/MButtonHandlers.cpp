#include "ui/MButtonHandlers.h"

#include "ui/MControl.h"
#include "ui/UCSpinEdit.h"

#include <QPushButton>

namespace {

void ConnectOne(const MButtonHandlers::Row& p_objRow, QWidget& p_objWindow) {
    auto& btn = MControl::Find<QPushButton>(p_objWindow, p_objRow.m_strButton);
    if (!p_objRow.m_fnHandler) {
        throw std::logic_error(MControl::Text(btn) + " has no handler");
    }
    QObject::connect(&btn, &QPushButton::clicked, &p_objWindow,
                     [&btn, &p_objWindow, fnHandler = p_objRow.m_fnHandler] {
                         // A click leaves the focus in the field that is being edited. What was
                         // typed there, or in a field that was left without a check, is checked
                         // now; refused, it was told so, and nothing is started with the old value.
                         if (!UCSpinEdit::CommitFields(p_objWindow)) {
                             return;
                         }
                         btn.setFocus(Qt::OtherFocusReason);
                         fnHandler();
                     });
}

}  // namespace

void MButtonHandlers::Connect(const std::vector<Row>& p_objRows, QWidget& p_objWindow) {
    for (const Row& objRow : p_objRows) {
        ConnectOne(objRow, p_objWindow);
    }
    MControl::ExpectOneRowEach<QPushButton>(
        p_objWindow, p_objRows, [](const Row& p_objRow) { return p_objRow.m_strButton; },
        "handlers");
}
