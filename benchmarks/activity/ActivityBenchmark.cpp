#include "activity/ActivityTracker.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace pobblewig;
using namespace std::chrono_literals;

namespace {

constexpr int pollsOfADay = 4320;
constexpr int changesOfADay = 500;

/// Names and identifiers as long as real ones.
class BusyDesktop : public FrontmostAppProviding {
public:
    void change() { ++m_number; }

    std::optional<FrontmostApp> frontmostApp() override
    {
        return FrontmostApp {
            .name = QStringLiteral("Application %1").arg(m_number % 20),
            .bundleIdentifier = QStringLiteral("org.example.Application%1").arg(m_number % 20),
        };
    }
    double idleSeconds() override { return 0; }

private:
    int m_number = 0;
};

/// A day of the user: every poll, and every change with its write, in a directory as it is used.
void aDayOfPolls(benchmark::State& state)
{
    auto now = systemNow();
    for (auto _ : state) {
        const QTemporaryDir scratch;
        BusyDesktop desktop;
        ActivityTracker tracker(desktop, QDir(scratch.path()));
        for (int poll = 0; poll < pollsOfADay; ++poll) {
            if (poll * changesOfADay / pollsOfADay != (poll + 1) * changesOfADay / pollsOfADay)
                desktop.change();
            tracker.poll(now += 20s);
        }
        if (tracker.history().size() < changesOfADay - 1)
            state.SkipWithError("changes were missed");
    }
}
BENCHMARK(aDayOfPolls)->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(2);

/// The disk's share of it: as many durable writes of a file of the middling size.
void theWritesOfADay(benchmark::State& state)
{
    const QTemporaryDir scratch;
    const QByteArray bytes(90'000, 'x');
    for (auto _ : state) {
        for (int change = 0; change < changesOfADay; ++change) {
            if (!writeDurably(scratch.filePath(QStringLiteral("bare")), bytes, {}))
                state.SkipWithError("the write failed");
        }
    }
}
BENCHMARK(theWritesOfADay)->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(2);

/// What each publishing of the state asks, with a full history of one day.
void theCategoriesOfADay(benchmark::State& state)
{
    const Calendar calendar;
    const TimePoint morning(std::chrono::seconds(1772352000));
    BusyDesktop desktop;
    ActivityTracker tracker(desktop, std::nullopt);
    for (int session = 0; session <= changesOfADay; ++session) {
        tracker.poll(morning + session * 20s);
        desktop.change();
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(tracker.categoryDurations(morning, calendar));
}
BENCHMARK(theCategoriesOfADay)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
