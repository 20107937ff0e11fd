#include "ui/CElidedLabel.h"

#include <QPainter>
#include <QStyle>

CElidedLabel::CElidedLabel(QWidget* p_objParent)
    : QLabel(p_objParent) {
    setTextFormat(Qt::PlainText);
}

void CElidedLabel::Show(const QString& p_strPlace, const QString& p_strText) {
    const QString strName = p_strText.isEmpty() ? p_strPlace : p_strPlace + ": " + p_strText;
    if (text() == p_strText && accessibleName() == strName) {
        return;
    }
    setText(p_strText);
    setAccessibleName(strName);
    TellWhole();
}

QSize CElidedLabel::minimumSizeHint() const {
    const int iLeast = fontMetrics().horizontalAdvance(QStringLiteral("\u2026"));
    return {text().isEmpty() ? 0 : iLeast, QLabel::minimumSizeHint().height()};
}

void CElidedLabel::paintEvent(QPaintEvent* /*p_objEvent*/) {
    QPainter objPainter(this);
    style()->drawItemText(&objPainter, contentsRect(), static_cast<int>(alignment()), palette(),
                          isEnabled(), Elided(), foregroundRole());
}

void CElidedLabel::resizeEvent(QResizeEvent* p_objEvent) {
    QLabel::resizeEvent(p_objEvent);
    TellWhole();
}

void CElidedLabel::showEvent(QShowEvent* p_objEvent) {
    QLabel::showEvent(p_objEvent);
    TellWhole();
}

QString CElidedLabel::Elided() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

void CElidedLabel::TellWhole() {
    if (!isVisible()) {
        return;  // nobody can point at it, and its width is not yet known
    }
    // A file may be named like markup.
    const QString strWhole =
        Qt::mightBeRichText(text()) ? "<p>" + text().toHtmlEscaped() + "</p>" : text();
    setToolTip(Elided() == text() ? QString() : strWhole);
}
