#pragma once

class QMouseEvent;

/// Presses of the mouse.
namespace MPress {

/// Whether p_objPress comes late: it takes the focus from another field first, and has waited
/// behind the range box of that one. Its mouse button was released meanwhile.
bool HasWaited(const QMouseEvent& p_objPress);

}  // namespace MPress
