#include "platform/widgets/CQtPlatform.h"
#include "ui/FmMain.h"
#include "ui/MProgram.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>

#include <iostream>
#include <memory>
#include <optional>

namespace {

/// By which a desktop knows whose windows these are, and what it shows for them.
void Introduce() {
    QGuiApplication::setDesktopFileName(VARDEN_APP_ID);
    QIcon objIcon;
    for (const QFileInfo& objFile : QDir(":/icon").entryInfoList()) {
        objIcon.addFile(objFile.filePath());
    }
    QGuiApplication::setWindowIcon(objIcon);
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    QApplication objApplication(p_iCount, p_strArguments);
    Introduce();
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
