#pragma once

#include "ui/FmMain.h"
#include "ui/UCSpinEdit.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStringList>

#include <map>
#include <ostream>
#include <stdexcept>
#include <string>

/// Lets a failed comparison show a text as a text.
inline void PrintTo(const QString& p_strText, std::ostream* p_objStream) {
    *p_objStream << '"' << p_strText.toStdString() << '"';
}

/// The main window as a person works it: with keys and clicks, its controls found by name.
class CMainWindow {
public:
    explicit CMainWindow(const CPlatform& p_objPlatform);

    FmMain& Form() { return m_objForm; }

    /// The control of that name and kind; throws when the window has none.
    template <typename Control>
    Control& Get(const QString& p_strName) {
        auto* const objControl = m_objForm.findChild<Control*>(p_strName);
        if (objControl == nullptr) {
            throw std::runtime_error("no such control: " + p_strName.toStdString());
        }
        return *objControl;
    }
    QComboBox& List(const QString& p_strName) { return Get<QComboBox>(p_strName); }
    UCSpinEdit& Field(const QString& p_strName) { return Get<UCSpinEdit>(p_strName); }
    QPushButton& Button(const QString& p_strName) { return Get<QPushButton>(p_strName); }

    /// What a list, spin edit, text box or label shows.
    QString Shown(const QString& p_strName);

    /// What every list, spin edit and text box of the three tabs shows, by name.
    std::map<QString, QString> ShownFields();

    /// Opens the window and waits until it has the keyboard. False when it never does.
    bool Open();

    /// Brings the tab that holds the control to the front.
    void BringToFront(const QString& p_strName);

    /// Clicks the button, wherever it is.
    void Click(const QString& p_strName);

    /// Goes to the list and down to the entry with the keys.
    void Choose(const QString& p_strList, int p_iPosition);

    /// Types p_strText over what stands in the spin edit or text box. The focus stays there.
    void Type(const QString& p_strName, const QString& p_strText);

    /// Presses "Setup", and in the dialog types the address and presses "SET" (or "CANCEL").
    /// Returns when the link is open or has failed. False when no dialog came.
    bool SetUp(const QString& p_strAddress, bool p_bCancel = false);

    /// The action buttons, in the order in which they are switched.
    static const QStringList& ActionButtons();

    /// The action buttons that are disabled.
    QStringList DisabledButtons();

private:
    FmMain m_objForm;
};
