#include "platform/widgets/CFileChooser.h"

#include "tests/platform_qt/CFolder.h"
#include "tests/platform_widgets/CFileDialogDriver.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::vector<CFileChooser::Parts> MissingParts{
    {.m_strName = "none", .m_strButtons = "none"},
    {.m_strName = "none"},
    {.m_strButtons = "none"},
    {.m_strName = "buttonBox", .m_strButtons = "fileNameEdit"},  // each of the other's kind
};

/// The dialog over a toolkit whose own lacks a part, or calls it something else.
class CFileChooserTest : public ::testing::TestWithParam<CFileChooser::Parts> {
protected:
    /// The toolkit's dialog keeps how it was last looked at in a file of the person's own.
    static void SetUpTestSuite() {
        static const CFolder objSettings;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(objSettings.Path()));
    }

    void Open(CFileChooser& p_objDialog, QFileDialog::AcceptMode p_iMode) {
        p_objDialog.setAcceptMode(p_iMode);
        p_objDialog.setDirectory(QString::fromStdString(m_objFolder.Path()));
        p_objDialog.show();
        p_objDialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&p_objDialog));
    }

    CFolder m_objFolder;
};

TEST_P(CFileChooserTest, SavesAndLoadsAPlainNameAllTheSame) {
    QFile objFile(QString::fromStdString(m_objFolder.Path("settings.dt1")));
    ASSERT_TRUE(objFile.open(QIODevice::WriteOnly));
    for (const auto iMode : {QFileDialog::AcceptSave, QFileDialog::AcceptOpen}) {
        CFileChooser objDialog(nullptr, GetParam());
        Open(objDialog, iMode);
        CFileDialogDriver(objDialog).TypeAndEnter("settings.dt1");
        EXPECT_FALSE(objDialog.isVisible());
        EXPECT_EQ(objDialog.Path().toStdString(), m_objFolder.Path("settings.dt1"));
    }
}

TEST_P(CFileChooserTest, TakesANameWithAQuotationMarkWithoutHarm) {
    for (const auto iMode : {QFileDialog::AcceptSave, QFileDialog::AcceptOpen}) {
        CFileChooser objDialog(nullptr, GetParam());
        Open(objDialog, iMode);
        CFileDialogDriver(objDialog).Type("roll 5\"");
        CFileDialogDriver(objDialog).Name().clear();
        CFileDialogDriver(objDialog).Cancel();
        EXPECT_FALSE(objDialog.isVisible());
        EXPECT_EQ(objDialog.Path(), QString());
    }
}

INSTANTIATE_TEST_SUITE_P(Missing, CFileChooserTest, ::testing::ValuesIn(MissingParts));

TEST_F(CFileChooserTest, WithoutTheButtonsReturnStillTakesANameWithAQuotationMark) {
    CFileChooser objDialog(nullptr, {.m_strButtons = "none"});
    Open(objDialog, QFileDialog::AcceptSave);
    CFileDialogDriver(objDialog).TypeAndEnter("roll 5\"");
    EXPECT_EQ(objDialog.Path().toStdString(), m_objFolder.Path("roll 5\""));
}

}  // namespace
