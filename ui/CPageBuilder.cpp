#include "ui/CPageBuilder.h"

#include "ui/CFieldLabel.h"
#include "ui/CFieldTexts.h"
#include "ui/MControl.h"
#include "ui/UCSpinEdit.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <iterator>

namespace {

/// Tells the frame that p_objControl stands in: beside its name, which others have too.
void TellFrame(QWidget& p_objControl) {
    if (const auto* const Fr = qobject_cast<const QGroupBox*>(p_objControl.parentWidget())) {
        CFieldTexts::Of(p_objControl).Set(CFieldTexts::Part::Where, Fr->title());
    }
}

}  // namespace

CPageBuilder::CPageBuilder(IMessageBox& p_objMessageBox, CListGuard& p_objListGuard)
    : m_objMessageBox(p_objMessageBox)
    , m_objListGuard(p_objListGuard) {}

QGroupBox* CPageBuilder::MakeFrame(QWidget* p_objParent, const QString& p_strName,
                                   const QString& p_strCaption) const {
    auto* const objFrame = new QGroupBox(p_strCaption, p_objParent);
    objFrame->setObjectName(p_strName);
    return objFrame;
}

QPushButton* CPageBuilder::MakeButton(QWidget* p_objParent, const QString& p_strName,
                                      const QString& p_strCaption) const {
    auto* const btn = new QPushButton(p_strCaption, p_objParent);
    btn->setObjectName(p_strName);
    btn->setFocusPolicy(Qt::TabFocus);
    btn->setAutoDefault(false);
    TellFrame(*btn);
    return btn;
}

QComboBox* CPageBuilder::MakeList(QWidget* p_objParent, const QString& p_strName) const {
    auto* const cmb = new QComboBox(p_objParent);
    Furnish(*cmb, p_strName);
    return cmb;
}

void CPageBuilder::Furnish(QComboBox& p_cmb, const QString& p_strName) const {
    p_cmb.setObjectName(p_strName);
    // Its longest entry fits. It is filled before anything asks for its size: to follow entries
    // that come later the toolkit would make what pops up already now, for every list.
    p_cmb.setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    m_objListGuard.Guard(p_cmb);
    TellFrame(p_cmb);
}

UCSpinEdit* CPageBuilder::MakeSpinEdit(QWidget* p_objParent, const QString& p_strName) const {
    auto* const Se = new UCSpinEdit(m_objMessageBox, p_objParent);
    Se->setObjectName(p_strName);
    TellFrame(*Se);
    return Se;
}

QLineEdit* CPageBuilder::MakeTextBox(QWidget* p_objParent, const QString& p_strName) const {
    auto* const txt = new QLineEdit(p_objParent);
    txt->setObjectName(p_strName);
    TellFrame(*txt);
    return txt;
}

QLabel* CPageBuilder::MakeLabel(QWidget* p_objParent, const QString& p_strCaption) const {
    auto* const lbl = new QLabel(p_objParent);
    lbl->setTextFormat(Qt::PlainText);  // "<T>" is a variant, no markup
    lbl->setText(p_strCaption);
    return lbl;
}

CFieldLabel* CPageBuilder::MakeFieldLabel(QWidget* p_objParent, const QString& p_strCaption) const {
    auto* const lbl = new CFieldLabel(p_objParent);
    lbl->setTextFormat(Qt::PlainText);
    lbl->setText(p_strCaption);
    return lbl;
}

QWidget* CPageBuilder::MakeField(QWidget* p_objParent, const QString& p_strName) const {
    if (p_strName.startsWith(QLatin1String("cmb"))) {
        return MakeList(p_objParent, p_strName);
    }
    if (p_strName.startsWith(QLatin1String("Se"))) {
        return MakeSpinEdit(p_objParent, p_strName);
    }
    return MakeTextBox(p_objParent, p_strName);
}

QWidget* CPageBuilder::AddField(QGridLayout& p_objGrid, int p_iRow, int p_iColumn,
                                const QString& p_strCaption, const QString& p_strName) const {
    QWidget* const objField = MakeField(p_objGrid.parentWidget(), p_strName);
    Add(p_objGrid, p_iRow, p_iColumn, p_strCaption, *objField);
    return objField;
}

QComboBox* CPageBuilder::AddList(QGridLayout& p_objGrid, int p_iRow, int p_iColumn,
                                 const QString& p_strCaption, const QString& p_strName) const {
    QComboBox* const cmb = MakeList(p_objGrid.parentWidget(), p_strName);
    Add(p_objGrid, p_iRow, p_iColumn, p_strCaption, *cmb);
    return cmb;
}

void CPageBuilder::Add(QGridLayout& p_objGrid, int p_iRow, int p_iColumn,
                       const QString& p_strCaption, QWidget& p_objField) const {
    CFieldLabel* const lbl = MakeFieldLabel(p_objGrid.parentWidget(), p_strCaption);
    lbl->setBuddy(&p_objField);  // with a buddy "&&" shows as "&"
    NameAfter(p_objField, p_strCaption);
    p_objGrid.addWidget(lbl, p_iRow, p_iColumn);
    p_objGrid.addWidget(&p_objField, p_iRow, p_iColumn + 1);
}

void CPageBuilder::MakeSameHeight(const QWidget& p_objPage) {
    QList<QWidget*> objFields;
    std::ranges::copy(MControl::All<QComboBox>(p_objPage), std::back_inserter(objFields));
    std::ranges::copy(MControl::All<UCSpinEdit>(p_objPage), std::back_inserter(objFields));
    int iHeight = 0;
    for (const QWidget* const objField : objFields) {
        iHeight = std::max(iHeight, objField->sizeHint().height());
    }
    for (QWidget* const objField : objFields) {
        objField->setMinimumHeight(iHeight);
    }
}

void CPageBuilder::NameAfter(QWidget& p_objField, const QString& p_strCaption) {
    const QString strName = QString(p_strCaption).replace("&&", "&");
    p_objField.setAccessibleName(strName);
    const auto* const Fr = qobject_cast<const QGroupBox*>(p_objField.parentWidget());
    if (Fr != nullptr && qobject_cast<const QComboBox*>(&p_objField) != nullptr) {
        // To some systems a list's name is what it shows.
        CFieldTexts::Of(p_objField)
            .Set(CFieldTexts::Part::Where,
                 strName == Fr->title() ? strName : strName + ", " + Fr->title());
    }
}
