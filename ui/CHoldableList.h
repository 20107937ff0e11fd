#pragma once

#include <QComboBox>

/// A list that can be kept from opening, whoever asks: a person, or an assistive program, which
/// presses no key.
class CHoldableList : public QComboBox {
    Q_OBJECT

public:
    using QComboBox::QComboBox;

    /// Keeps it closed from now on, or does not any more.
    void SetHeld(bool p_bHeld);

    void showPopup() override;

private:
    bool m_bHeld = false;
};
