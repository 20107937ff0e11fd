#include "link/CInterface.h"
#include "platform/widgets/CQtPlatform.h"
#include "ui/FmInterfaceSetup.h"
#include "ui/FmMain.h"
#include "ui/UCSpinEdit.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

#include <cstdlib>
#include <iostream>
#include <string>

// Prints where a person finds the controls of the tool's windows, one a line:
//
//   WINDOW CONTROL LEFT TOP WIDTH HEIGHT
//
// in pixels from the window's own top left corner, as the windows are laid out on the display on
// which this runs. Of a spin edit it is the text box, of the pages the one that is in front at the
// start. The range box's own row is called "whole".

namespace {

void Print(const char* p_strWindow, const QString& p_strControl, const QWidget& p_objWidget,
           const QRect& p_objRect) {
    const QPoint objCorner = p_objWidget.mapTo(p_objWidget.window(), p_objRect.topLeft());
    std::cout << p_strWindow << ' ' << p_strControl.toStdString() << ' ' << objCorner.x() << ' '
              << objCorner.y() << ' ' << p_objRect.width() << ' ' << p_objRect.height() << '\n';
}

/// Whether a person does something with it, or looks at what it shows.
bool IsControl(const QWidget* p_objWidget) {
    return qobject_cast<const QAbstractButton*>(p_objWidget) != nullptr ||
           qobject_cast<const QComboBox*>(p_objWidget) != nullptr ||
           qobject_cast<const UCSpinEdit*>(p_objWidget) != nullptr ||
           qobject_cast<const QLabel*>(p_objWidget) != nullptr;
}

void PrintControls(const char* p_strWindow, const QWidget& p_objParent) {
    for (const QWidget* const objWidget : p_objParent.findChildren<QWidget*>()) {
        if (!IsControl(objWidget) || objWidget->objectName().isEmpty() || !objWidget->isVisible()) {
            continue;
        }
        const auto* const objPart = objWidget->findChild<QWidget*>("CText");
        const QWidget& objPlace = objPart != nullptr ? *objPart : *objWidget;
        Print(p_strWindow, objWidget->objectName(), objPlace, objPlace.rect());
    }
}

/// Lays a window out without showing it.
void LayOut(QWidget& p_objWindow) {
    p_objWindow.setAttribute(Qt::WA_DontShowOnScreen);
    p_objWindow.show();
    QCoreApplication::processEvents();
}

void PrintSetup(FmMain& p_objMain, IMessageBox& p_objBoxes) {
    FmInterfaceSetup objSetup(p_objBoxes, &p_objMain);
    objSetup.InitializeItem(p_objMain.Interface(), CInterface::LanInterface);
    LayOut(objSetup);
    PrintControls("FmInterfaceSetup", objSetup);
}

/// The range box comes up for a moment: nobody lays it out but its own exec.
void PrintRangeBox(IMessageBox& p_objBoxes) {
    QTimer::singleShot(0, [] {
        auto* const objBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (objBox != nullptr) {
            const QWidget& btnOk = *objBox->button(QMessageBox::Ok);
            Print("RangeBox", "OK", btnOk, btnOk.rect());
            Print("RangeBox", "whole", *objBox, objBox->rect());
            objBox->accept();
        }
    });
    p_objBoxes.Show(UCSpinEdit::RangeMessage, MessageIcon::None);
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    const QApplication objApplication(p_iCount, p_strArguments);
    CQtPlatform objPlatform;
    const CPlatform objInterfaces = objPlatform.Interfaces();
    FmMain objMain(objInterfaces);
    LayOut(objMain);
    PrintControls("FmMain", objMain);
    PrintSetup(objMain, objInterfaces.m_objMessageBox);
    PrintRangeBox(objInterfaces.m_objMessageBox);
    std::cout << std::flush;
    return EXIT_SUCCESS;
}
