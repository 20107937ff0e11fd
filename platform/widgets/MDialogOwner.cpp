#include "platform/widgets/MDialogOwner.h"

#include <QApplication>
#include <QWidget>

namespace MDialogOwner {

QWidget* Find() {
    if (QWidget* const objModal = QApplication::activeModalWidget()) {
        return objModal;
    }
    // A dialog that has just been closed can still count as active, and is soon gone.
    QWidget* const objActive = QApplication::activeWindow();
    if (objActive != nullptr && objActive->isVisible()) {
        return objActive;
    }
    for (QWidget* const objWidget : QApplication::topLevelWidgets()) {
        if (objWidget->isVisible() && objWidget->windowType() == Qt::Window) {
            return objWidget;
        }
    }
    return nullptr;
}

}  // namespace MDialogOwner
