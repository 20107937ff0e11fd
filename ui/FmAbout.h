#pragma once

#include <QDialog>

/// The box that tells the program's name and version.
class FmAbout : public QDialog {
    Q_OBJECT

public:
    explicit FmAbout(QWidget* p_objParent = nullptr);
};
