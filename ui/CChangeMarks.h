#pragma once

#include "ui/CReadBaseline.h"

#include <QHash>
#include <QObject>

class CFieldLabel;

/// Shows which fields of a page differ from what was read: their labels in bold, the other value in
/// their texts, and in their context menus an entry that brings it back.
class CChangeMarks : public QObject {
    Q_OBJECT

public:
    static constexpr const char* BackText = "Back to what was read";

    /// Marks the fields of p_objBaseline by the labels of p_objPage from now on. Neither is owned;
    /// both outlive this.
    CChangeMarks(QWidget& p_objPage, CReadBaseline& p_objBaseline);

    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;

private:
    void Mark(QWidget& p_objField);
    void MarkLabel(CFieldLabel& p_objLabel) const;
    void ShowMenu(QWidget& p_objField, const QPoint& p_objPlace);

    CReadBaseline& m_objBaseline;
    QHash<const QWidget*, CFieldLabel*> m_objLabels;  ///< of each field; several can have one
};
