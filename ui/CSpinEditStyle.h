#pragma once

#include <QPalette>
#include <QProxyStyle>

/// The application's style, but with a spin box laid out to given widths.
///
/// A widget's own style takes no part in a change of the application's style; whoever uses one
/// makes a new one then.
class CSpinEditStyle : public QProxyStyle {
    Q_OBJECT

public:
    static constexpr int NativeWidth = -1;  ///< leave this part as the application's style has it

    /// @param p_iEditWidth   width of the text box, its frame included, or NativeWidth.
    /// @param p_iButtonWidth width of the button pair at the other edge, or NativeWidth; the text
    ///                       box without a width of its own takes what is left.
    CSpinEditStyle(int p_iEditWidth, int p_iButtonWidth);

    void drawComplexControl(ComplexControl p_iControl, const QStyleOptionComplex* p_objOption,
                            QPainter* p_objPainter, const QWidget* p_objWidget) const override;
    QRect subControlRect(ComplexControl p_iControl, const QStyleOptionComplex* p_objOption,
                         SubControl p_iPart, const QWidget* p_objWidget) const override;

private:
    [[nodiscard]] QRect EditRect(QRect p_objNative, const QRect& p_objWhole, bool p_bButtons) const;
    [[nodiscard]] QRect ButtonRect(QRect p_objNative, const QRect& p_objWhole) const;

    /// p_objPalette under a key that no other style uses. Styles keep the pictures of spin boxes by
    /// size, state and palette; only so are those of other widths told apart.
    [[nodiscard]] QPalette OwnPalette(const QPalette& p_objPalette) const;

    int m_iEditWidth;
    int m_iButtonWidth;
    mutable QPalette m_objPalette;
    mutable qint64 m_iPaletteKey = 0;
};
