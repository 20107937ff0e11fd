#include "ui/MPress.h"

#include <QGuiApplication>
#include <QMouseEvent>

bool MPress::HasWaited(const QMouseEvent& p_objPress) {
    return (QGuiApplication::mouseButtons() & p_objPress.button()) == 0;
}
