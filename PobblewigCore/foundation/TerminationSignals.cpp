#include "foundation/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace pobblewig {

namespace {

int pipeForHandler = -1;

// A signal handler may interrupt anything, so it only writes a byte that the event loop reads.
extern "C" void wakeEventLoop(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = write(pipeForHandler, &byte, 1);
}

} // namespace

void TerminationSignals::quitOnArrival()
{
    std::array<int, 2> ends {};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    pipeForHandler = ends[1];
    auto* arrival = new QSocketNotifier(ends[0], QSocketNotifier::Read, qApp);
    QObject::connect(arrival, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    for (const auto signal : { SIGINT, SIGTERM, SIGHUP })
        std::signal(signal, wakeEventLoop);
}

} // namespace pobblewig
