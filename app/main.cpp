#include "platform/widgets/CQtPlatform.h"
#include "ui/FmMain.h"

#include <QApplication>

int main(int p_iCount, char** p_strArguments) {
    QApplication objApplication(p_iCount, p_strArguments);
    CQtPlatform objPlatform;
    FmMain objMain(objPlatform.Interfaces());
    // Ends the event loop under whatever dialog or wait is open.
    QObject::connect(&objMain, &FmMain::Closed, &objApplication, [] { QCoreApplication::exit(0); });
    objMain.show();
    return QApplication::exec();
}
