#pragma once

#include "platform/widgets/CQtPlatform.h"
#include "ui/FmMain.h"

#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <string>
#include <vector>

class QWidget;

/// Works the real window as a person would, with mouse and keyboard, shows what it does and what
/// it sees, and keeps count of what is not as it should be.
class CTour {
public:
    /// Pictures go into p_strPictures, which exists.
    explicit CTour(QString p_strPictures);

    FmMain& Window() { return m_objWindow; }

    /// The path of a device, such as "com1", where the tool looks for its serial port.
    [[nodiscard]] QString DeviceFile(const QString& p_strName) const {
        return m_objDevices.filePath(p_strName);
    }

    /// How many expectations have failed so far.
    [[nodiscard]] int FailureCount() const { return m_iFailures; }

    /// Prints a heading for what comes next.
    void Heading(const std::string& p_strText) const;

    /// Prints p_strText, which is neither right nor wrong.
    void Note(const std::string& p_strText) const;

    /// Prints whether p_strFound is what it should be; a difference counts as a failure.
    void Expect(const std::string& p_strWhat, const std::string& p_strFound,
                const std::string& p_strExpected);

    /// Brings a tab to the front by its number and waits until it shows.
    void ShowTab(int p_iTab);

    /// Waits until what is in front, a dialog or else the window, has the keyboard.
    void TakeKeyboard();

    // Each of these acts on the control of that name in the dialog in front, or else in the
    // window, and fails the tour when there is none.

    /// Clicks a button. Returns when what the click has started is over.
    void Click(const QString& p_strButton);
    /// Clicks the button with that caption.
    void ClickCaption(const QString& p_strCaption);
    /// Chooses an entry of a list by the arrow keys.
    void Choose(const QString& p_strList, const QString& p_strEntry);
    /// Types p_strText in place of a field's content and leaves the field.
    void Type(const QString& p_strField, const QString& p_strText);
    /// The same without leaving it.
    void TypeOnly(const QString& p_strField, const QString& p_strText);
    /// What a list, a field or a label shows.
    [[nodiscard]] std::string Shown(const QString& p_strControl);

    /// Does p_objSteps in the dialog or box that p_objOpen opens, which must be closed by them.
    /// p_strTitle is its title.
    void InDialog(const QString& p_strTitle, const std::function<void()>& p_objOpen,
                  const std::function<void()>& p_objSteps);

    /// The same whatever its title is.
    void InAnyDialog(const std::function<void()>& p_objOpen,
                     const std::function<void()>& p_objSteps);

    /// One of several dialogs that follow each other: its title and what is done in it.
    struct Dialog {
        QString m_strTitle;  ///< empty: whatever it is
        std::function<void()> m_objSteps;
    };

    /// The same for all the dialogs, in their order, that one p_objOpen opens one after the other.
    void InDialogs(const std::vector<Dialog>& p_objDialogs, const std::function<void()>& p_objOpen);

    /// Opens the menu entry of that name.
    void TriggerMenu(const QString& p_strAction);

    /// Prints each label of the tab in front with what its field shows.
    void PrintPage() const;

    /// Saves a picture of what is in front: the window, or the dialog over it.
    void Picture(const QString& p_strName);

    /// The same in dark colours.
    void DarkPicture(const QString& p_strName);

    /// True when every button of the window is enabled.
    [[nodiscard]] bool ButtonsEnabled() const;

private:
    template <typename Control>
    Control* Find(const QString& p_strName);
    QWidget* Front();
    void Fail(const std::string& p_strText);
    void DealWith(QWidget& p_objModal, const Dialog& p_objDialog);
    QWidget* Edit(const QString& p_strField, const QString& p_strText);

    QTemporaryDir m_objDevices;
    CQtPlatform m_objPlatform;
    FmMain m_objWindow;
    QString m_strPictures;
    int m_iFailures = 0;
};
