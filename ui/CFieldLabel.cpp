#include "ui/CFieldLabel.h"

void CFieldLabel::SetBold(bool p_bBold) {
    QFont objFont = font();
    if (objFont.bold() != p_bBold) {
        objFont.setBold(p_bBold);
        setFont(objFont);
    }
}

QSize CFieldLabel::sizeHint() const {
    return RoomForBold(QLabel::sizeHint());
}

QSize CFieldLabel::minimumSizeHint() const {
    return RoomForBold(QLabel::minimumSizeHint());
}

QSize CFieldLabel::RoomForBold(const QSize& p_objSize) const {
    // Layouts ask often, and to measure a text takes longer than all else about it.
    if (m_strMeasured != text() || m_objMeasuredIn != font()) {
        m_strMeasured = text();
        m_objMeasuredIn = font();
        const QSize objNow = SizeIn(font().bold());
        m_objRoom = SizeIn(!font().bold()).expandedTo(objNow) - objNow;
    }
    return p_objSize + m_objRoom;
}

QSize CFieldLabel::SizeIn(bool p_bBold) const {
    QFont objFont = font();
    objFont.setBold(p_bBold);
    return QFontMetrics(objFont).size(Qt::TextShowMnemonic, text());
}
