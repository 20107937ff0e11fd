#include "ui/FmAbout.h"

#include "platform/IMessageBox.h"

#include <QFont>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

FmAbout::FmAbout(QWidget* p_objParent)
    : QDialog(p_objParent) {
    setObjectName("FmAbout");
    setWindowTitle(IMessageBox::ProgramTitle);
    setModal(true);
    QFont objFont = font();
    objFont.setFamily("Arial");
    setFont(objFont);

    auto* lblVersion = new QLabel("Version V002.003 (2.3.0)", this);
    lblVersion->setObjectName("lblVersion");
    auto* btnOk = new QPushButton("OK", this);
    btnOk->setObjectName("btnOk");
    btnOk->setDefault(true);
    connect(btnOk, &QPushButton::clicked, this, &FmAbout::accept);

    auto* objColumn = new QVBoxLayout(this);
    const int iSpace = fontMetrics().height();
    objColumn->setContentsMargins(2 * iSpace, iSpace, 2 * iSpace, iSpace);
    objColumn->setSpacing(iSpace);
    objColumn->setSizeConstraint(QLayout::SetFixedSize);
    objColumn->addWidget(lblVersion, 0, Qt::AlignCenter);
    objColumn->addWidget(btnOk, 0, Qt::AlignCenter);
}
