#pragma once

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QWidget>

#include <algorithm>
#include <stdexcept>
#include <string>

/// Controls by name, for the tables that speak of them. A table that a window does not agree with
/// is an error of the program, told by a std::logic_error that names the control.
namespace MControl {

/// A control's kind and name, as an error tells them.
inline std::string Text(const QWidget& p_objControl) {
    return std::string(p_objControl.metaObject()->className()) + " \"" +
           p_objControl.objectName().toStdString() + "\"";
}

/// The control of that kind and name below p_objRoot. Throws when there is none.
template <typename Control>
Control& Find(const QWidget& p_objRoot, const QString& p_strName) {
    // Asked for no name the toolkit gives any.
    auto* const objControl =
        p_strName.isEmpty() ? nullptr : p_objRoot.findChild<Control*>(p_strName);
    if (objControl == nullptr) {
        throw std::logic_error("there is no " + std::string(Control::staticMetaObject.className()) +
                               " \"" + p_strName.toStdString() + "\"");
    }
    return *objControl;
}

/// Every control of that kind below p_objRoot, but none that is a part of another field.
template <typename Control>
QList<Control*> All(const QWidget& p_objRoot) {
    QList<Control*> objControls = p_objRoot.findChildren<Control*>();
    objControls.removeIf([](const Control* p_objControl) {
        return qobject_cast<const QAbstractSpinBox*>(p_objControl->parent()) != nullptr ||
               qobject_cast<const QComboBox*>(p_objControl->parent()) != nullptr;
    });
    return objControls;
}

/// Throws unless each control of that kind below p_objRoot stands in exactly one row of a table.
/// @param p_objRows  the rows.
/// @param p_fnName   the name of a row's control.
/// @param p_strTable what the table is of, as in "handlers".
template <typename Control, typename Rows, typename Name>
void ExpectOneRowEach(const QWidget& p_objRoot, const Rows& p_objRows, const Name& p_fnName,
                      const std::string& p_strTable) {
    for (const Control* const objControl : All<Control>(p_objRoot)) {
        const auto iRows = std::ranges::count_if(p_objRows, [&](const auto& p_objRow) {
            return objControl->objectName() == QLatin1String(p_fnName(p_objRow));
        });
        if (iRows != 1) {
            throw std::logic_error(Text(*objControl) + " has " + std::to_string(iRows) +
                                   " rows in the table of " + p_strTable);
        }
    }
}

}  // namespace MControl
