#include "ui/CSpinEditStyle.h"

#include <QApplication>
#include <QStyleFactory>
#include <QStyleOptionSpinBox>

#include <algorithm>

CSpinEditStyle::CSpinEditStyle(int p_iEditWidth, int p_iButtonWidth)
    : QProxyStyle(QStyleFactory::create(QApplication::style()->name()))
    , m_iEditWidth(p_iEditWidth)
    , m_iButtonWidth(p_iButtonWidth) {}

QRect CSpinEditStyle::subControlRect(ComplexControl p_iControl,
                                     const QStyleOptionComplex* p_objOption, SubControl p_iPart,
                                     const QWidget* p_objWidget) const {
    const QRect objNative =
        QProxyStyle::subControlRect(p_iControl, p_objOption, p_iPart, p_objWidget);
    const auto* objSpinBox = qstyleoption_cast<const QStyleOptionSpinBox*>(p_objOption);
    if (p_iControl != CC_SpinBox || objSpinBox == nullptr) {
        return objNative;
    }
    const QRect& objWhole = objSpinBox->rect;
    const bool bButtons = objSpinBox->buttonSymbols != QAbstractSpinBox::NoButtons;
    // Mirroring twice changes nothing: the widths are reckoned as if text ran left to right.
    QRect objRect = visualRect(objSpinBox->direction, objWhole, objNative);
    if (p_iPart == SC_SpinBoxEditField) {
        objRect = EditRect(objRect, objWhole, bButtons);
    } else if (bButtons && (p_iPart == SC_SpinBoxUp || p_iPart == SC_SpinBoxDown)) {
        objRect = ButtonRect(objRect, objWhole);
    }
    return visualRect(objSpinBox->direction, objWhole, objRect);
}

QRect CSpinEditStyle::EditRect(QRect p_objNative, const QRect& p_objWhole, bool p_bButtons) const {
    if (m_iEditWidth != NativeWidth) {
        p_objNative.setRight(p_objWhole.left() + m_iEditWidth - 1);
    } else if (p_bButtons && m_iButtonWidth != NativeWidth) {
        p_objNative.setRight(p_objWhole.right() - m_iButtonWidth);
    }
    p_objNative.setWidth(std::max(p_objNative.width(), 0));
    return p_objNative;
}

QRect CSpinEditStyle::ButtonRect(QRect p_objNative, const QRect& p_objWhole) const {
    if (m_iButtonWidth != NativeWidth) {
        p_objNative.setRight(p_objWhole.right());
        p_objNative.setLeft(p_objWhole.right() - m_iButtonWidth + 1);
    }
    if (m_iEditWidth != NativeWidth) {  // the text box would hide what lies under it
        p_objNative.setLeft(std::max(p_objNative.left(), p_objWhole.left() + m_iEditWidth));
    }
    p_objNative.setWidth(std::max(p_objNative.width(), 0));
    return p_objNative;
}

void CSpinEditStyle::drawComplexControl(ComplexControl p_iControl,
                                        const QStyleOptionComplex* p_objOption,
                                        QPainter* p_objPainter, const QWidget* p_objWidget) const {
    const auto* objSpinBox = qstyleoption_cast<const QStyleOptionSpinBox*>(p_objOption);
    if (p_iControl != CC_SpinBox || objSpinBox == nullptr) {
        QProxyStyle::drawComplexControl(p_iControl, p_objOption, p_objPainter, p_objWidget);
        return;
    }
    QStyleOptionSpinBox objOption = *objSpinBox;
    objOption.palette = OwnPalette(objSpinBox->palette);
    QProxyStyle::drawComplexControl(p_iControl, &objOption, p_objPainter, p_objWidget);
}

QPalette CSpinEditStyle::OwnPalette(const QPalette& p_objPalette) const {
    if (m_iPaletteKey != p_objPalette.cacheKey()) {
        m_iPaletteKey = p_objPalette.cacheKey();
        m_objPalette = p_objPalette;
        // Nothing is painted with this role; setting it gives the palette a key of its own.
        m_objPalette.setColor(QPalette::NoRole, Qt::transparent);
    }
    return m_objPalette;
}
