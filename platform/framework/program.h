// The program's main window, as its end ends the program.
#pragma once

class CWnd;

namespace platform {

// The window of an object is gone, or the object is.
void MainWindowLeaves(const CWnd& object);

}  // namespace platform
