#pragma once

#include "tests/fakes/CFakeMessageBox.h"
#include "ui/UCSpinEdit.h"

#include <QString>
#include <QWidget>

#include <gtest/gtest.h>

class QLineEdit;

/// A window in front with a spin edit, which has the focus, and a text box next to it.
class CSpinEditFixture : public ::testing::Test {
protected:
    CSpinEditFixture();

    void SetUp() override;

    [[nodiscard]] QString Shown() const;
    void ExpectRangeBox() { m_objBoxes.Expect(UCSpinEdit::RangeMessage); }

    /// Types p_strText over what stands in the spin edit.
    void Type(const char* p_strText);
    /// Tab to the text box.
    void Leave();
    /// Types p_strText and leaves; what the field shows then. It has the focus again afterwards.
    QString Entered(const char* p_strText);

    /// Turns the wheel over the spin edit; true when the field took it.
    bool Turn(int p_iDelta, Qt::KeyboardModifiers p_iModifiers = Qt::NoModifier);

    /// Where the up or the down button is.
    [[nodiscard]] QRect ButtonRect(bool p_bUp) const;

    CFakeMessageBox m_objBoxes;  // outlives the fields
    QWidget m_objWindow;
    UCSpinEdit* m_Se;
    QLineEdit* m_objText;
    QLineEdit* m_objOther;
};
