#include "ui/FmAbout.h"

#include <QFont>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

FmAbout::FmAbout(QWidget* p_objParent)
    : QDialog(p_objParent) {
    setObjectName("FmAbout");
    setWindowTitle("Varden Setting Tool");
    setModal(true);
    QFont objFont = font();
    objFont.setFamily("Arial");
    setFont(objFont);

    auto* objVersion = new QLabel("Version V002.003 (2.3.0)", this);
    objVersion->setObjectName("lblVersion");
    auto* objOk = new QPushButton("OK", this);
    objOk->setObjectName("btnOk");
    objOk->setDefault(true);
    connect(objOk, &QPushButton::clicked, this, &FmAbout::accept);

    auto* objColumn = new QVBoxLayout(this);
    const int iSpace = fontMetrics().height();
    objColumn->setContentsMargins(2 * iSpace, iSpace, 2 * iSpace, iSpace);
    objColumn->setSpacing(iSpace);
    objColumn->setSizeConstraint(QLayout::SetFixedSize);
    objColumn->addWidget(objVersion, 0, Qt::AlignCenter);
    objColumn->addWidget(objOk, 0, Qt::AlignCenter);
}
