#include "ui/CReadBaseline.h"

#include "ui/UCSpinEdit.h"

#include <QComboBox>
#include <QLineEdit>

#include <utility>

CReadBaseline::CReadBaseline(std::vector<QWidget*> p_objFields)
    : m_objFields(std::move(p_objFields)) {
    for (QWidget* const objField : m_objFields) {
        m_objHeld[objField].m_strText = Shown(*objField);
        Watch(*objField);
    }
}

void CReadBaseline::Watch(QWidget& p_objField) {
    const auto OnChange = [this, objField = &p_objField] {
        if (Compare(*objField)) {
            emit Changed();
        }
        emit FieldShown(objField);
    };
    if (auto* const cmb = qobject_cast<QComboBox*>(&p_objField)) {
        connect(cmb, &QComboBox::currentTextChanged, this, OnChange);
    } else if (auto* const Se = qobject_cast<UCSpinEdit*>(&p_objField)) {
        connect(Se, &UCSpinEdit::TextChanged, this, OnChange);
    } else if (auto* const txt = qobject_cast<QLineEdit*>(&p_objField)) {
        connect(txt, &QLineEdit::textChanged, this, OnChange);
    }
}

void CReadBaseline::Begin() {
    Take({}, false);
}

void CReadBaseline::NoteRead(const QHash<const QWidget*, QString>& p_strUnshown) {
    Take(p_strUnshown, true);
}

void CReadBaseline::Take(const QHash<const QWidget*, QString>& p_strUnshown, bool p_bWasRead) {
    const bool bNewOrigin = std::exchange(m_bWasRead, p_bWasRead) != p_bWasRead;
    bool bChanged = bNewOrigin;
    for (QWidget* const objField : m_objFields) {
        const QString strHeld = p_strUnshown.value(objField, Shown(*objField));
        QString& strFormer = m_objHeld[objField].m_strText;
        const bool bMoved = std::exchange(strFormer, strHeld) != strHeld;
        if (Compare(*objField)) {
            bChanged = true;
        } else if (bMoved || bNewOrigin) {
            emit FieldChanged(objField);
        }
    }
    if (bChanged) {
        emit Changed();
    }
}

bool CReadBaseline::Compare(QWidget& p_objField) {
    Holding& objHolding = m_objHeld[&p_objField];
    const bool bChanged = Shown(p_objField) != objHolding.m_strText;
    if (std::exchange(objHolding.m_bChanged, bChanged) == bChanged) {
        return false;
    }
    m_iChanged += bChanged ? 1 : -1;
    emit FieldChanged(&p_objField);
    return true;
}

bool CReadBaseline::IsChanged(const QWidget& p_objField) const {
    return m_objHeld.value(&p_objField).m_bChanged;
}

QString CReadBaseline::Held(const QWidget& p_objField) const {
    return m_objHeld.value(&p_objField).m_strText;
}

void CReadBaseline::PutBack(QWidget& p_objField) const {
    const auto objFound = m_objHeld.constFind(&p_objField);
    if (objFound == m_objHeld.constEnd()) {
        return;
    }
    const QString strHeld = objFound->m_strText;
    if (auto* const cmb = qobject_cast<QComboBox*>(&p_objField)) {
        cmb->setCurrentIndex(cmb->findText(strHeld, Qt::MatchExactly | Qt::MatchCaseSensitive));
    } else if (auto* const Se = qobject_cast<UCSpinEdit*>(&p_objField)) {
        Se->Enter(strHeld);
    } else if (auto* const txt = qobject_cast<QLineEdit*>(&p_objField)) {
        txt->setText(strHeld);
    }
}

QString CReadBaseline::Shown(const QWidget& p_objField) {
    if (const auto* const cmb = qobject_cast<const QComboBox*>(&p_objField)) {
        return cmb->currentText();
    }
    if (const auto* const Se = qobject_cast<const UCSpinEdit*>(&p_objField)) {
        return Se->text();
    }
    const auto* const txt = qobject_cast<const QLineEdit*>(&p_objField);
    return txt != nullptr ? txt->text() : QString();
}
