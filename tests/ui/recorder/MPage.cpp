#include "tests/ui/recorder/MPage.h"

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QTabWidget>

#include <algorithm>
#include <array>

namespace {

constexpr const char* HostName = "printer-7";
constexpr int MostSteps = 7;

/// In the order of the pages.
constexpr std::array<MPage::Texts, 3> TextsOfPages{{
    {"SeFeedAdj", "1.5", "99.9"},
    {"SeLabelLen", "500", "50"},
    {"SeIpAddress1", "10", "999"},
}};

/// Steps a field away from where it stands, up where that is possible.
void Step(QAbstractSpinBox& p_objField, int p_iSteps) {
    const QString strBefore = p_objField.text();
    p_objField.stepBy(1);
    const int iWay = p_objField.text() != strBefore ? 1 : -1;
    for (int i = 1; i <= p_iSteps; ++i) {
        p_objField.stepBy(iWay);
    }
}

}  // namespace

namespace MPage {

void ChangeEverything(CMainWindow& p_objWindow) {
    const QWidget& objTabs = p_objWindow.Get<QWidget>("SSTab1");
    for (QComboBox* const cmb : objTabs.findChildren<QComboBox*>()) {
        cmb->setCurrentIndex((cmb->currentIndex() + 1) % std::max(cmb->count(), 1));
    }
    // By their names: their order among each other depends on the page that is in front.
    QList<QAbstractSpinBox*> objFields = objTabs.findChildren<QAbstractSpinBox*>();
    std::ranges::sort(objFields, {}, &QObject::objectName);
    int iSteps = 0;
    for (QAbstractSpinBox* const objField : objFields) {
        iSteps = iSteps % MostSteps + 1;
        Step(*objField, iSteps);
    }
    p_objWindow.Get<QLineEdit>("txtDhcpName").setText(HostName);
}

Texts TextsBeside(CMainWindow& p_objWindow, const std::string& p_strButton) {
    const auto& objTabs = p_objWindow.Get<QTabWidget>("SSTab1");
    const QWidget& objButton = p_objWindow.Get<QWidget>(QString::fromStdString(p_strButton));
    for (int i = 0; i < objTabs.count(); ++i) {
        if (objTabs.widget(i)->isAncestorOf(&objButton)) {
            return TextsOfPages.at(static_cast<std::size_t>(i));
        }
    }
    return TextsOfPages.front();
}

}  // namespace MPage
