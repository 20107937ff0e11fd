#pragma once

#include "ui/CSpinForm.h"

#include <QObject>

class UCSpinEdit;

/// Shows by the look of a spin edit that what stands in it could not be entered, and says it and
/// the range in its texts.
class CSpinEditLook : public QObject {
    Q_OBJECT

public:
    /// Looks after p_Se, which owns it.
    explicit CSpinEditLook(UCSpinEdit& p_Se);

    /// Looks at p_strText, which stands in the field, with the field's form.
    void Update(const CSpinForm& p_objForm, const QString& p_strText);

    /// Follows a change of the colours around the field.
    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;

private:
    void Paint();

    UCSpinEdit& m_Se;
    bool m_bWrong = false;
    bool m_bPainting = false;
};
