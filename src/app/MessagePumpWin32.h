#pragma once

namespace tlm {

// Runs the window procedures of every waiting message and returns once none is left, so the window
// stays alive during long work on its own thread. A WM_QUIT met here is posted again with its exit
// code and ends the pump at once, so the main loop still sees it afterwards. No accelerators apply.
void PumpMessages();

} // namespace tlm
