#pragma once

#include <QGenericPlugin>
#include <QStringList>
#include <QTimer>

/// Works the window of a program that knows nothing of it. The toolkit loads it into any program
/// whose environment asks for it: QT_PLUGIN_PATH says where it lies, and
/// QT_QPA_GENERIC_PLUGINS=varden-driver:STEP;STEP... what to do once the window stands.
///
/// Steps: "choose LIST POSITION", "type FIELD TEXT", "click BUTTON", "show CONTROL", which prints
/// "driver: CONTROL shows TEXT", and "close". A step that cannot be done ends the program with 9.
/// A message box that comes is closed after printing "driver: box TEXT".
class CWindowDriver : public QObject {
    Q_OBJECT

public:
    explicit CWindowDriver(const QString& p_strSteps);

private:
    void Look();
    void Start(QWidget& p_objWindow);
    static bool Do(QWidget& p_objWindow, const QString& p_strStep);

    QStringList m_strSteps;
    QTimer m_objLook;
    bool m_bStarted = false;
};

/// What the toolkit finds.
class CWindowDriverPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")

public:
    QObject* create(const QString& p_strKey, const QString& p_strSteps) override;
};
