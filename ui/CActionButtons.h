#pragma once

#include <QPointer>
#include <QPushButton>

#include <vector>

/// The eighteen buttons that start something with the printer or with what is shown, switched
/// together while an exchange runs.
class CActionButtons {
public:
    /// Their object names, in the order in which they are switched.
    static const std::vector<const char*>& Names();

    /// Finds the buttons by their object names below p_objWindow, which outlives this. Throws
    /// std::logic_error when one is missing, and when a button of the window has no name there or
    /// two.
    explicit CActionButtons(QWidget& p_objWindow,
                            const std::vector<const char*>& p_strNames = Names());

    /// Enables or disables all of them, in their order, and nothing else. The one that has the
    /// focus gets it back when it is enabled again, unless the person has moved on meanwhile.
    void SetEnabled(bool p_bEnabled);

private:
    void KeepFocus();
    void GiveFocusBack();

    QWidget& m_objWindow;
    std::vector<QPushButton*> m_objButtons;
    QPointer<QPushButton> m_btnFocus;  // had the focus when the buttons went off
};
