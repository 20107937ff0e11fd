#include "tests/ui/CFormFixture.h"

#include <QAccessible>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <map>

namespace {

/// What is told of the window to who does not see it.
class FmMainReaderTest : public CFormFixture {
protected:
    static QString Text(QWidget& p_objControl, QAccessible::Text p_iText) {
        const QAccessibleInterface* const objInterface =
            QAccessible::queryAccessibleInterface(&p_objControl);
        return objInterface != nullptr ? objInterface->text(p_iText) : "nothing";
    }
};

TEST_F(FmMainReaderTest, StatusAndHeadCheckAreReadAsTheirText) {
    for (const QString strName : {"lblStatus", "lblHeadCheck"}) {
        SCOPED_TRACE(strName.toStdString());
        auto& lbl = m_objWindow.Get<QLabel>(strName);
        lbl.setText("00 ON LINE");
        EXPECT_EQ(Text(lbl, QAccessible::Name), "00 ON LINE");
        EXPECT_NE(Text(lbl, QAccessible::Description), "");
    }
}

TEST_F(FmMainReaderTest, EveryTabStopIsUniqueByNameAndDescription) {
    auto& objTabs = m_objWindow.Get<QTabWidget>("SSTab1");
    m_objWindow.List("cmbCode").setCurrentIndex(3);  // its three fields are stops, too
    std::map<QString, const QWidget*> objByTexts;
    for (int i = 0; i < objTabs.count(); ++i) {
        objTabs.setCurrentIndex(i);
        m_objWindow.List("cmbInterface").setFocus();
        QWidget* objStop = nullptr;
        for (int iStops = 0; iStops < 100; ++iStops) {
            QTest::keyClick(m_objWindow.Form().focusWidget(), Qt::Key_Tab);
            objStop = m_objWindow.Form().focusWidget();
            const QString strName = Text(*objStop, QAccessible::Name);
            EXPECT_NE(strName, "") << objStop->objectName().toStdString();
            const QString strTexts = strName + " / " + Text(*objStop, QAccessible::Description);
            const auto objFound = objByTexts.emplace(strTexts, objStop).first;
            EXPECT_EQ(objFound->second, objStop)
                << strTexts.toStdString() << " is " << objStop->objectName().toStdString()
                << " and " << objFound->second->objectName().toStdString();
            if (objStop == &m_objWindow.List("cmbInterface")) {
                break;
            }
        }
        EXPECT_EQ(objStop, &m_objWindow.List("cmbInterface"));
    }
    EXPECT_GT(objByTexts.size(), 80U);
}

}  // namespace
