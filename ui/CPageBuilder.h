#pragma once

#include "platform/IMessageBox.h"
#include "ui/CListGuard.h"

#include <QString>

class QComboBox;
class QGridLayout;
class QGroupBox;
class CFieldLabel;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;
class UCSpinEdit;

/// Makes the controls of a page: named, labelled, and with the manners that all of them share.
///
/// Every control belongs to the parent it is given. A field's accessible name is its label's
/// text as it shows; a control's frame is in its accessible description; a mouse wheel turns only
/// the field that has the focus; a click on a button leaves the focus where it is, so that the
/// button's handler can have the field checked first.
class CPageBuilder {
public:
    /// Neither is owned; both outlive every field made here.
    CPageBuilder(IMessageBox& p_objMessageBox, CListGuard& p_objListGuard);

    QGroupBox* MakeFrame(QWidget* p_objParent, const QString& p_strName,
                         const QString& p_strCaption) const;
    QPushButton* MakeButton(QWidget* p_objParent, const QString& p_strName,
                            const QString& p_strCaption) const;
    QComboBox* MakeList(QWidget* p_objParent, const QString& p_strName) const;
    /// Makes of a list that somebody has made what MakeList makes.
    void Furnish(QComboBox& p_cmb, const QString& p_strName) const;
    UCSpinEdit* MakeSpinEdit(QWidget* p_objParent, const QString& p_strName) const;
    QLineEdit* MakeTextBox(QWidget* p_objParent, const QString& p_strName) const;

    /// A label that shows p_strCaption as it is written. (Beside a field, "&&" shows as "&".)
    QLabel* MakeLabel(QWidget* p_objParent, const QString& p_strCaption) const;

    /// The same for the caption of a field, which can be set off.
    CFieldLabel* MakeFieldLabel(QWidget* p_objParent, const QString& p_strCaption) const;

    /// Makes the control that p_strName calls for by its prefix: "cmb" a list, "Se" a spin edit,
    /// "txt" a text box.
    QWidget* MakeField(QWidget* p_objParent, const QString& p_strName) const;

    /// Puts a label and its field side by side into row p_iRow, from column p_iColumn on.
    QWidget* AddField(QGridLayout& p_objGrid, int p_iRow, int p_iColumn,
                      const QString& p_strCaption, const QString& p_strName) const;

    /// The same for a list.
    QComboBox* AddList(QGridLayout& p_objGrid, int p_iRow, int p_iColumn,
                       const QString& p_strCaption, const QString& p_strName) const;

    /// Gives all lists and spin edits below p_objPage the height of the highest, so that the rows
    /// of its frames have one pitch. Lists keep the width that they have here: they are filled.
    static void MakeSameHeight(const QWidget& p_objPage);

    /// Names p_objField for assistive programs after its label.
    static void NameAfter(QWidget& p_objField, const QString& p_strCaption);

private:
    void Add(QGridLayout& p_objGrid, int p_iRow, int p_iColumn, const QString& p_strCaption,
             QWidget& p_objField) const;

    IMessageBox& m_objMessageBox;
    CListGuard& m_objListGuard;
};
