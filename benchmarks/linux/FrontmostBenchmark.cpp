#include "PobblewigLinux/x11/X11FrontmostAppProvider.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace pobblewig;

namespace {

constexpr int mostLooks = 2000;
constexpr int looksBetweenTries = 100;

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

/// A window in front, made once: window managers are slow to forget one, and the next might get its
/// number.
class Scene {
public:
    Scene()
        : m_x11(X11Connection::open(qgetenv("DISPLAY").toStdString()))
    {
        if (!m_x11)
            qFatal("there is no X server");
        auto* const xcb = m_x11->get();
        const auto window = xcb_generate_id(xcb);
        xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, m_x11->root(), 0, 0, 99, 99, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
            8, 10, "code\0Code");
        for (int look = 0; !provider.frontmostApp(); ++look) {
            if (look == mostLooks)
                qFatal("the window did not come to the front");
            // A window manager that is still starting does not bring forward what it finds.
            if (look % looksBetweenTries == 0) {
                xcb_unmap_window(xcb, window);
                xcb_map_window(xcb, window);
            }
            ::usleep(10'000);
        }
    }

private:
    std::unique_ptr<X11Connection> m_x11;
    ApplicationNames m_names { DesktopEntries({}, {}) };

public:
    X11FrontmostAppProvider provider { *m_x11, m_names };
};

void pollTheServer(benchmark::State& state)
{
    static Scene scene;
    roundTrips = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(scene.provider.frontmostApp());
        benchmark::DoNotOptimize(scene.provider.idleSeconds());
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
