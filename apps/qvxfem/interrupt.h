#pragma once

namespace qvx::app {

/// From here on Ctrl-C, SIGTERM and SIGHUP are the abort key: the engine asks for it in its long loops and ends by its
/// abort path, which leaves no file half written. A second signal ends the process at once. A signal that is ignored
/// stays so, as `nohup` wants it. Writing beyond a limit of the file size or into a closed pipe is an error of the writing
/// and no end of the process.
void CatchInterrupt();
/// Whether one of these signals came.
bool IsInterrupted();
/// Exit code of a run that a signal ended: 128 and its number, 130 for Ctrl-C.
int InterruptExitCode();

}  // namespace qvx::app
