// The window that the tool's is held against: as many lists, spin boxes, labels and buttons in
// three tabs, made of the bare toolkit and of nothing else. "--empty": a window with nothing in it.

#include <QApplication>
#include <QComboBox>
#include <QFont>
#include <QGridLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>

#include <array>
#include <memory>

namespace {

/// What stands in a tab.
struct Page {
    const char* m_strName;
    int m_iLists;
    int m_iEntries;  ///< of all lists together
    int m_iSpinBoxes;
    int m_iLabels;
    int m_iButtons;
};

constexpr std::array<Page, 3> Pages{{
    {"Parameters", 25, 77, 15, 45, 4},
    {"Maintenance", 10, 30, 2, 14, 10},
    {"Network", 2, 6, 13, 15, 4},
}};

constexpr int Columns = 8;

QWidget* MakePage(const Page& p_objPage) {
    auto* const objPage = new QWidget;
    auto* const objGrid = new QGridLayout(objPage);
    int iPlace = 0;
    int iEntry = 0;
    const auto fnAdd = [&](QWidget* p_objControl) {
        objGrid->addWidget(p_objControl, iPlace / Columns, iPlace % Columns);
        ++iPlace;
    };
    for (int i = 0; i < p_objPage.m_iLabels; ++i) {
        fnAdd(new QLabel(QString("Label %1").arg(i)));
    }
    for (int i = 0; i < p_objPage.m_iLists; ++i) {
        auto* const objList = new QComboBox;
        for (; iEntry < p_objPage.m_iEntries * (i + 1) / p_objPage.m_iLists; ++iEntry) {
            objList->addItem(QString("Entry %1").arg(iEntry));
        }
        fnAdd(objList);
    }
    for (int i = 0; i < p_objPage.m_iSpinBoxes; ++i) {
        fnAdd(new QSpinBox);
    }
    for (int i = 0; i < p_objPage.m_iButtons; ++i) {
        fnAdd(new QPushButton(QString("Button %1").arg(i)));
    }
    return objPage;
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    const QApplication objApplication(p_iCount, p_strArguments);
    QMainWindow objWindow;
    QFont objFont = objWindow.font();
    objFont.setFamily("Arial");  // the tool's
    objWindow.setFont(objFont);
    if (!QCoreApplication::arguments().contains("--empty")) {
        auto* const objTabs = new QTabWidget;
        const bool bFront = QCoreApplication::arguments().contains("--front");
        for (const Page& objPage : Pages) {
            const bool bMade = !bFront || objTabs->count() == 0;
            objTabs->addTab(bMade ? MakePage(objPage) : new QWidget, objPage.m_strName);
        }
        objWindow.setCentralWidget(objTabs);
    }
    objWindow.show();
    return QApplication::exec();
}
