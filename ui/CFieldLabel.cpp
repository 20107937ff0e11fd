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
    const auto SizeIn = [this](bool p_bBold) {
        QFont objFont = font();
        objFont.setBold(p_bBold);
        return QFontMetrics(objFont).size(Qt::TextShowMnemonic, text());
    };
    const QSize objThick = SizeIn(true).expandedTo(SizeIn(false));
    return p_objSize + (objThick - SizeIn(font().bold()));
}
