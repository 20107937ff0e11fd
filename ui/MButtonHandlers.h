#pragma once

#include <functional>
#include <vector>

class QWidget;

/// What the buttons of a window start.
namespace MButtonHandlers {

struct Row {
    const char* m_strButton = nullptr;  ///< its object name
    std::function<void()> m_fnHandler;
};

/// Has each button of p_objWindow run its handler from now on, for as long as the window lives. The
/// fields of the window are checked before (UCSpinEdit::CommitFields); while one is refused nothing
/// is run. Throws std::logic_error when a row has no button or no handler, or a button of the
/// window no row or two.
void Connect(const std::vector<Row>& p_objRows, QWidget& p_objWindow);

}  // namespace MButtonHandlers
