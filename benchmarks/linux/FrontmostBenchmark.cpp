#include "PobblewigLinux/X11FrontmostAppProvider.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace pobblewig;

namespace {

/// How often something was sent, and then an answer awaited.
int roundTrips = 0;

/// What a desktop with many applications in many languages has.
void writeDesktopFiles(const QTemporaryDir& directory)
{
    constexpr int files = 300;
    constexpr int languages = 100;
    for (int i = 0; i < files; ++i) {
        QFile file(directory.filePath(QStringLiteral("app%1.desktop").arg(i)));
        if (!file.open(QIODevice::WriteOnly))
            continue;
        file.write("[Desktop Entry]\nType=Application\nName=App\nExec=env A=b app %U\n");
        for (int language = 0; language < languages; ++language) {
            const auto key = "[l" + QByteArray::number(language) + "]=";
            file.write("Name" + key + "Name\nComment" + key + "What it is good for\n");
        }
    }
}

void pollTheServer(benchmark::State& state)
{
    const auto x11 = X11Connection::open(qgetenv("DISPLAY").toStdString());
    if (!x11) {
        state.SkipWithError("there is no X server");
        return;
    }
    ApplicationNames names(DesktopEntries({}, {}));
    X11FrontmostAppProvider provider(*x11, names);

    const auto window = xcb_generate_id(x11->get());
    xcb_create_window(x11->get(), XCB_COPY_FROM_PARENT, window, x11->root(), 0, 0, 99, 99, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_change_property(x11->get(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
        XCB_ATOM_STRING, 8, 10, "code\0Code");
    xcb_map_window(x11->get(), window);
    while (!provider.frontmostApp())
        continue;

    roundTrips = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(provider.frontmostApp());
        benchmark::DoNotOptimize(provider.idleSeconds());
    }
    state.counters["round trips"] =
        benchmark::Counter(roundTrips, benchmark::Counter::kAvgIterations);
}
BENCHMARK(pollTheServer)->Unit(benchmark::kMicrosecond);

void readAllDesktopFiles(benchmark::State& state)
{
    const QTemporaryDir directory;
    writeDesktopFiles(directory);
    for (auto _ : state) {
        DesktopEntries entries({ directory.path() }, { QStringLiteral("l50") });
        benchmark::DoNotOptimize(entries.find({ .windowClass = QStringLiteral("app7") }));
    }
}
BENCHMARK(readAllDesktopFiles)->Unit(benchmark::kMillisecond);

} // namespace

/// Stands before the one of the C library, so that the library that speaks X11 comes by here: once
/// to send, then until all of the answer is there.
extern "C" int poll(pollfd* files, nfds_t count, int timeout)
{
    static bool hasSent = false;
    const bool sends = (files->events & POLLOUT) != 0;
    if (hasSent && !sends)
        ++roundTrips;
    hasSent = sends;
    return int(syscall(SYS_poll, files, count, timeout));
}

BENCHMARK_MAIN();
