#pragma once

namespace pobblewig::TerminationSignals {

/// From now on SIGINT, SIGTERM and SIGHUP quit the application from its event loop, as if the user
/// had quit it. Call once, on the main thread, when the application object is there.
void quitOnArrival();

} // namespace pobblewig::TerminationSignals
