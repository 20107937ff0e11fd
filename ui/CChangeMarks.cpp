#include "ui/CChangeMarks.h"

#include "ui/CFieldLabel.h"
#include "ui/CFieldTexts.h"
#include "ui/UCSpinEdit.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>

#include <algorithm>
#include <functional>

namespace {

/// The label of p_objField: the one that leads to it; else the one that the field is called after,
/// as the parts of an address are; else that of the field before, in whose line it stands.
CFieldLabel* LabelOf(const QWidget& p_objField, const QList<CFieldLabel*>& p_objLabels,
                     CFieldLabel* p_objBefore) {
    const auto IsItsBuddy = [&](const CFieldLabel* p_objLabel) {
        return p_objLabel->buddy() == &p_objField;
    };
    const auto IsItsName = [&](const CFieldLabel* p_objLabel) {
        const QString strCaption = p_objLabel->text().replace("&&", "&");
        return p_objField.accessibleName() == strCaption;
    };
    for (const auto& fnIs :
         std::initializer_list<std::function<bool(const CFieldLabel*)>>{IsItsBuddy, IsItsName}) {
        const auto objFound = std::ranges::find_if(p_objLabels, fnIs);
        if (objFound != p_objLabels.end()) {
            return *objFound;
        }
    }
    return p_objBefore;
}

/// What the toolkit would show for p_objField.
QMenu* UsualMenu(QWidget& p_objField) {
    if (auto* const Se = qobject_cast<UCSpinEdit*>(&p_objField)) {
        return Se->MakeMenu();
    }
    if (auto* const txt = qobject_cast<QLineEdit*>(&p_objField)) {
        return txt->createStandardContextMenu();
    }
    return new QMenu(&p_objField);  // a list has none
}

}  // namespace

CChangeMarks::CChangeMarks(QWidget& p_objPage, CReadBaseline& p_objBaseline)
    : m_objBaseline(p_objBaseline) {
    const auto objLabels = p_objPage.findChildren<CFieldLabel*>();
    CFieldLabel* objBefore = nullptr;
    for (QWidget* const objField : m_objBaseline.Fields()) {
        objBefore = LabelOf(*objField, objLabels, objBefore);
        m_objLabels[objField] = objBefore;
        objField->installEventFilter(this);
    }
    connect(&m_objBaseline, &CReadBaseline::FieldChanged, this,
            [this](QWidget* p_objField) { Mark(*p_objField); });
}

void CChangeMarks::Mark(QWidget& p_objField) {
    QString strRead;
    if (m_objBaseline.IsChanged(p_objField)) {
        strRead =
            (m_objBaseline.WasRead() ? "read: " : "default: ") + m_objBaseline.Held(p_objField);
    }
    CFieldTexts::Of(p_objField).Set(CFieldTexts::Part::Read, strRead);
    if (CFieldLabel* const objLabel = m_objLabels.value(&p_objField)) {
        MarkLabel(*objLabel);
    }
}

void CChangeMarks::MarkLabel(CFieldLabel& p_objLabel) const {
    const bool bChanged =
        std::ranges::any_of(m_objBaseline.Fields(), [&](const QWidget* p_objField) {
            return m_objLabels.value(p_objField) == &p_objLabel &&
                   m_objBaseline.IsChanged(*p_objField);
        });
    p_objLabel.SetBold(bChanged);
}

bool CChangeMarks::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    if (p_objEvent->type() != QEvent::ContextMenu) {
        return false;
    }
    const auto& objEvent = *static_cast<const QContextMenuEvent*>(p_objEvent);
    ShowMenu(*qobject_cast<QWidget*>(p_objWatched), objEvent.globalPos());
    return true;
}

void CChangeMarks::ShowMenu(QWidget& p_objField, const QPoint& p_objPlace) {
    QMenu* const objMenu = UsualMenu(p_objField);
    objMenu->setAttribute(Qt::WA_DeleteOnClose);
    objMenu->setFont(p_objField.font());  // a menu has the system's own
    if (!objMenu->isEmpty()) {
        objMenu->addSeparator();
    }
    QAction* const objBack = objMenu->addAction(
        BackText, this, [this, &p_objField] { m_objBaseline.PutBack(p_objField); });
    objBack->setEnabled(m_objBaseline.IsChanged(p_objField));
    objMenu->popup(p_objPlace);
}
