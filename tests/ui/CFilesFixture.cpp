#include "tests/ui/CFilesFixture.h"

#include "tests/platform_widgets/CModalPerson.h"

#include <QAbstractButton>
#include <QTest>

CFilesFixture::Boxes CFilesFixture::Press(const char* p_strButton, const DialogAction& p_fnAction,
                                          bool p_bOverwrite) {
    Boxes objBoxes;
    int iFileDialogs = 0;
    const CModalPerson objPerson([&](QWidget& p_objModal) {
        EXPECT_EQ(p_objModal.parentWidget(), &m_objWindow.Form());
        if (auto* const objDialog = qobject_cast<QFileDialog*>(&p_objModal)) {
            EXPECT_TRUE(objBoxes.empty()) << "a box came before the file dialog";
            ++iFileDialogs;
            p_fnAction(*objDialog);
        } else {
            objBoxes.push_back(Answer(dynamic_cast<QMessageBox&>(p_objModal), p_bOverwrite));
        }
    });
    m_objWindow.Click(p_strButton);
    EXPECT_EQ(iFileDialogs, 1);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    // Not every platform gives the window the keyboard back when a dialog closes.
    m_objWindow.Form().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&m_objWindow.Form()));
    return objBoxes;
}

CFilesFixture::Box CFilesFixture::Answer(QMessageBox& p_objBox, bool p_bOverwrite) {
    const Box objSeen{p_objBox.text(), p_objBox.standardButtons(), p_objBox.windowTitle(),
                      p_objBox.icon()};
    auto* const btnAnswer = p_objBox.button(p_bOverwrite ? QMessageBox::Yes : QMessageBox::No);
    if (btnAnswer != nullptr) {
        QTest::mouseClick(btnAnswer, Qt::LeftButton);
    } else {
        QTest::keyClick(&p_objBox, Qt::Key_Return);
    }
    return objSeen;
}
