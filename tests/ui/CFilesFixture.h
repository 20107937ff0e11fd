#pragma once

#include "platform/widgets/CQtPlatform.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/platform_widgets/CFileDialogDriver.h"
#include "tests/ui/CMainWindow.h"

#include <QFileDialog>
#include <QMessageBox>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

/// The open main window with nothing in it replaced, but for the folder in which it believes to
/// lie: real file dialogs, message boxes and files, and a person who works them.
class CFilesFixture : public ::testing::Test {
protected:
    /// Everything that a person sees of a message box.
    struct Box {
        QString m_strText;
        QMessageBox::StandardButtons m_iButtons = QMessageBox::Ok;
        QString m_strTitle = IMessageBox::ProgramTitle;
        QMessageBox::Icon m_iIcon = QMessageBox::NoIcon;

        bool operator==(const Box&) const = default;

        friend std::ostream& operator<<(std::ostream& p_objStream, const Box& p_objBox) {
            return p_objStream << p_objBox.m_strTitle.toStdString() << ": "
                               << p_objBox.m_strText.toStdString() << ", buttons "
                               << p_objBox.m_iButtons.toInt() << ", icon " << p_objBox.m_iIcon;
        }
    };
    using Boxes = std::vector<Box>;
    using Names = std::vector<std::string>;
    using DialogAction = std::function<void(QFileDialog&)>;

    void SetUp() override { ASSERT_TRUE(m_objWindow.Open()); }

    static Box Normal() { return {"Normal termination"}; }
    static Box Abnormal() { return {"Abnormal termination"}; }
    static Box Question() {
        return {"The file already exists. Do you overwrite?", QMessageBox::Yes | QMessageBox::No};
    }

    /// Presses the button, does p_fnAction in the file dialog, and answers the boxes that follow:
    /// the question with "Yes" or "No", any other with its only button. Returns when the handler
    /// is over, with the boxes in the order in which they came. Every button is enabled then.
    Boxes Press(const char* p_strButton, const DialogAction& p_fnAction, bool p_bOverwrite = true);

    /// Types a name, or a path, and presses Return.
    static DialogAction Enter(const std::string& p_strName) {
        return [p_strName](QFileDialog& p_objDialog) {
            CFileDialogDriver(p_objDialog).TypeAndEnter(QString::fromStdString(p_strName));
        };
    }

    QString Shown(const QString& p_strName) { return m_objWindow.Shown(p_strName); }

    CFolder m_objFolder;
    CQtPlatform m_objPlatform;
    CMainWindow m_objWindow{LyingIn(m_objFolder.Path())};

private:
    CPlatform LyingIn(const std::string& p_strFolder) {
        CPlatform objInterfaces = m_objPlatform.Interfaces();
        objInterfaces.m_strProgramFolder = p_strFolder;
        return objInterfaces;
    }
    Box Answer(QMessageBox& p_objBox, bool p_bOverwrite);
};
