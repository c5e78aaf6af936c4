#pragma once

namespace pobblewig::TerminationSignals {

/// Makes SIGINT, SIGTERM and SIGHUP quit the application from its event loop, as the user would.
/// Call this once, on the main thread, after the application object is created.
void quitOnArrival();

} // namespace pobblewig::TerminationSignals
