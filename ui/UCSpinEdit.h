#pragma once

#include "model/CItemValue.h"
#include "ui/CSpinForm.h"

#include <QAbstractSpinBox>
#include <QString>

#include <cstdint>

class CSpinEditLook;
class CSpinEditStyle;
class IMessageBox;
class QMenu;

/// The numeric field of the windows: a text box ("CText") with an up/down button pair.
///
/// Holds a 32-bit value inside a range, in units of the last shown decimal place (15 is shown as
/// 1.5 with one place), and shows it as a decimal number or in hexadecimal digits. What is typed
/// counts from the moment the focus moves on inside the window (CommitText); a menu or another
/// window only borrows the focus, and what is typed waits for what comes after. Until then stepping
/// goes on from the value that is held. A value is never moved to a bound: a step that would
/// leave the range is ignored, a typed or set value outside it is refused with the range box.
///
/// The mouse wheel steps only a field that has the focus and never gives it. Page keys and Return
/// are left to the window.
class UCSpinEdit : public QAbstractSpinBox {
    Q_OBJECT

public:
    static constexpr std::int16_t NoLengthLimit = 0;

    /// What the range box says, with one OK button and no icon.
    static constexpr const char* RangeMessage = "It is a value that exceeds the useful range. ";

    /// A field that holds and shows 0, range 0 to 100, step 1, decimal, no limit to its length.
    /// @param p_objBoxes shows the range box; not owned, must outlive the field.
    explicit UCSpinEdit(IMessageBox& p_objBoxes, QWidget* p_objParent = nullptr);
    ~UCSpinEdit() override;
    UCSpinEdit(const UCSpinEdit&) = delete;
    UCSpinEdit& operator=(const UCSpinEdit&) = delete;

    /// Whether the person can change the field; a field that is not enabled still shows its value.
    /// Disabling throws away what was typed and not yet checked.
    [[nodiscard]] bool Enable() const;
    void SetEnable(bool p_bValue);

    /// The text box's width in pixels, its frame included. Given at least the control's own width,
    /// the text box covers the whole control, without buttons, however wide the control becomes.
    [[nodiscard]] int EditWidth() const;
    void SetEditWidth(int p_iValue);

    /// Whether the up/down buttons are shown. They stay away while the text box covers the control.
    [[nodiscard]] bool SpinButton() const;
    void SetSpinButton(bool p_bValue);

    /// The button pair's width in pixels. Setting it lays the parts out anew: the text box takes
    /// the control's width less this one, the buttons stand right of it.
    [[nodiscard]] int SpinButtonWidth() const;
    void SetSpinButtonWidth(int p_iValue);

    /// Sets up range, step, length, format and mode, and shows the initial value, which is not
    /// checked against the range.
    /// @param p_iLength       how many characters can be typed (a longer value is still shown
    /// whole).
    /// @param p_iDecimalPoint decimal places: 0, 1 or 2; any other count keeps the form of the
    ///                        digits as it was.
    /// Throws CConversionError, and changes nothing, when a number is none.
    void InitializeSpinEdit(const CItemValue& p_vValue, const CItemValue& p_vMax,
                            const CItemValue& p_vMin, const CItemValue& p_vIncrement,
                            std::int16_t p_iLength = NoLengthLimit,
                            std::int16_t p_iDecimalPoint = 0, bool p_bHexaMode = false);
    [[nodiscard]] bool IsInitialized() const;

    /// New bounds, both inclusive; the held value is not looked at. Throw CConversionError.
    void SetMax(const CItemValue& p_vValue);
    void SetMin(const CItemValue& p_vValue);

    /// Holds and shows p_vValue, rounded with ties to even, or shows the range box and the old
    /// value again when it is outside the range as given, before rounding.
    /// Throws CConversionError, and changes nothing, for a text that is not a number.
    /// @return false when it was refused.
    bool SetValue(const CItemValue& p_vValue);

    /// With decimal places the held value as a number; without, the text box's text as it stands,
    /// so that a hexadecimal field gives its digits.
    [[nodiscard]] CItemValue GetValue() const;

    /// Takes the typed text as the new value, as leaving the field does. A text that is not a
    /// number gives way to the held value, without a message; a hexadecimal field reads it as 0.
    /// Behind the range box the text of the field that has the focus is selected.
    /// @return false when the range box had to be shown.
    bool CommitText();

    /// Takes p_strText as if a person had typed it and left the field.
    /// @return false when the range box had to be shown.
    bool Enter(const QString& p_strText);

    /// How the field would show p_vValue, which may be out of its range. Throws CConversionError.
    [[nodiscard]] QString TextFor(const CItemValue& p_vValue) const;

    /// The usual context menu. It goes when it is closed.
    [[nodiscard]] QMenu* MakeMenu();

    /// CommitText of every field of p_objWindow whose text is not that of the value it holds, in
    /// tab order, hidden ones too, whichever has the focus; the first that is refused ends it. For
    /// handlers that take the fields' values.
    /// @return false when one was refused.
    static bool CommitFields(const QWidget& p_objWindow);

    /// One increment up or down, whatever the count: neither page nor modifier keys make a bigger
    /// step.
    void stepBy(int p_iSteps) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;

signals:
    /// What the text box shows is not what it was, by typing or otherwise.
    void TextChanged();

protected:
    [[nodiscard]] StepEnabled stepEnabled() const override;
    void contextMenuEvent(QContextMenuEvent* p_objEvent) override;
    void focusOutEvent(QFocusEvent* p_objEvent) override;
    void keyPressEvent(QKeyEvent* p_objEvent) override;
    void mousePressEvent(QMouseEvent* p_objEvent) override;
    void wheelEvent(QWheelEvent* p_objEvent) override;

private:
    [[nodiscard]] bool HoldsUncheckedText() const;
    bool Store(double p_dValue);
    void TakeFocusChange(const QWidget* p_objNow);
    void LayOutParts();
    void TakeForm();
    void ShowValue();
    void ShowText(const QString& p_strText);
    void SelectWhatHasTheFocus() const;

    IMessageBox& m_objBoxes;
    CSpinEditLook* m_objLook;              ///< a child
    CSpinEditStyle* m_objStyle = nullptr;  ///< only while a part has a width of its own; a child

    std::int32_t m_iValue = 0;
    CSpinForm m_objForm;
    std::int16_t m_iLength = NoLengthLimit;
    bool m_bInitialized = false;

    bool m_bEnable = true;
    bool m_bSpinButton = true;
    bool m_bEditCovers = false;
    int m_iEditWidth;
    int m_iButtonWidth;
    bool m_bFocusLent = false;  ///< the focus is elsewhere for a while, the text not yet checked
    int m_iWheelRest = 0;       ///< what smooth wheels have turned since the last whole notch
};
