#pragma once

namespace qvx::app {

/// From here on Ctrl-C is the abort key: the engine asks for it in its long loops and ends by its abort path.
/// A second Ctrl-C ends the process at once.
void CatchInterrupt();
/// Whether Ctrl-C was pressed.
bool IsInterrupted();

}  // namespace qvx::app
