#pragma once

#include <QLabel>

/// The caption of a field, which can be set off in bold. It takes the room of the bold text at all
/// times, so that nothing moves.
class CFieldLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    void SetBold(bool p_bBold);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    [[nodiscard]] QSize RoomForBold(const QSize& p_objSize) const;
    [[nodiscard]] QSize SizeIn(bool p_bBold) const;

    mutable QString m_strMeasured;
    mutable QFont m_objMeasuredIn;
    mutable QSize m_objRoom{0, 0};  ///< what that text in that font lacks in the other weight
};
