#pragma once

class QWidget;

/// Over which window a new dialog or box belongs.
namespace MDialogOwner {

/// The dialog in front if there is one, else the window that has the keyboard, else, since not
/// every platform gives it back when a dialog closes, a main window that shows. Null when the
/// program has none of them.
QWidget* Find();

}  // namespace MDialogOwner
