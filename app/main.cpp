#include "platform/widgets/CQtPlatform.h"
#include "ui/FmMain.h"
#include "ui/MProgram.h"

#include <QApplication>

#include <iostream>
#include <memory>
#include <optional>

int main(int p_iCount, char** p_strArguments) {
    QApplication objApplication(p_iCount, p_strArguments);
    std::optional<CQtPlatform> objPlatform;
    std::unique_ptr<FmMain> objMain;
    return MProgram::Run(
        [&] {
            objPlatform.emplace();
            objMain = std::make_unique<FmMain>(objPlatform->Interfaces());
            // Ends the event loop under whatever dialog or wait is open.
            QObject::connect(objMain.get(), &FmMain::Closed, &objApplication,
                             [] { QCoreApplication::exit(0); });
            objMain->show();
        },
        [] { return QApplication::exec(); }, std::cerr);
}
