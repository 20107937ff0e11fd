#include "ui/FmAbout.h"

#include "platform/IMessageBox.h"

#include <QFont>
#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace {

/// How wide a window has to be for its title to show whole. What the system puts around the title
/// is not known before; it is bold at most, and has an icon and no more than four buttons beside
/// it.
int WidthForTitle(const QWidget& p_objWindow) {
    constexpr int iBesideTheTitle = 5;
    QFont objFont = p_objWindow.font();
    objFont.setBold(true);
    return QFontMetrics(objFont).horizontalAdvance(p_objWindow.windowTitle()) +
           iBesideTheTitle * p_objWindow.style()->pixelMetric(QStyle::PM_TitleBarHeight);
}

}  // namespace

FmAbout::FmAbout(QWidget* p_objParent)
    : QDialog(p_objParent) {
    setObjectName("FmAbout");
    setWindowTitle(IMessageBox::ProgramTitle);
    setModal(true);
    QFont objFont = font();
    objFont.setFamily("Arial");
    setFont(objFont);

    auto* lblName = new QLabel(IMessageBox::ProgramTitle, this);
    lblName->setObjectName("lblName");
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
    objColumn->addStrut(WidthForTitle(*this));
    objColumn->addWidget(lblName, 0, Qt::AlignCenter);
    objColumn->addWidget(lblVersion, 0, Qt::AlignCenter);
    objColumn->addWidget(btnOk, 0, Qt::AlignCenter);
}
