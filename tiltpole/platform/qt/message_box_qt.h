#pragma once

namespace tiltpole::detail {

/// From now on the library's messages come up in a QMessageBox, where the process runs a
/// QApplication and the host has set no handler of its own.
void ShowMessagesInQtBoxes();

}  // namespace tiltpole::detail
