// The end of a day without a model, with 30 messages and 200 observations: how long it takes, and
// for how long at a time nothing else can happen. The peer writes the same files as durably, and
// does nothing else.

#include "AppCoordinator.h"
#include "foundation/NetworkHTTPClient.h"
#include "support/FakeKeychain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace pobblewig {

namespace {

constexpr TimePoint evening { std::chrono::seconds(1772398800) };
constexpr TimePoint morning = evening + std::chrono::hours(10);
constexpr int runs = 20;
constexpr double mostTotal = 50;
constexpr double mostStall = 16;

/// Keeps the names of the files that are replaced.
class RecordingOperations : public FileOperations {
public:
    std::error_code rename(const QString& from, const QString& to) const override
    {
        replaced.append(to);
        return FileOperations::rename(from, to);
    }

    mutable QStringList replaced;
};

/// The longest time during which the event loop did nothing else.
class StallWatch {
public:
    StallWatch()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.callOnTimeout([this] { tick(); });
        m_timer.start(1);
        m_sinceTick.start();
    }

    double longest() const { return m_longest; }

private:
    void tick()
    {
        m_longest = std::max(m_longest, double(m_sinceTick.nsecsElapsed()) / 1e6);
        m_sinceTick.start();
    }

    QTimer m_timer;
    QElapsedTimer m_sinceTick;
    double m_longest = 0;
};

void write(const QDir& directory, const QString& name, const auto& value)
{
    if (!JSONFileStore(directory, name).save(value))
        qFatal("the directory cannot be filled");
}

void fill(const QDir& directory)
{
    const auto words = QStringLiteral("Read another chapter and asked what it was for. ");
    std::vector<ChatMessage> messages(30, { .text = words.repeated(6), .timestamp = evening });
    for (auto& message : messages)
        message.id = QUuid::createUuid();
    std::vector<DatedObservation> observations(200,
        { .occurredAt = evening,
            .recordedAt = evening,
            .summary = words.repeated(2),
            .observedFacts = { words } });
    for (auto& observation : observations)
        observation.id = QUuid::createUuid();
    const DailySession session { .id = QUuid::createUuid(),
        .dayKey = QStringLiteral("2026-03-01"),
        .startedAt = evening - std::chrono::hours(12),
        .lastActivityAt = evening,
        .turnCount = 15 };
    write(directory, QStringLiteral("chat.json"), messages);
    write(directory, QStringLiteral("observations.json"), observations);
    write(directory, QStringLiteral("sessions.json"), std::vector { session });
}

struct Run {
    double total = 0;
    double stall = 0;
    double bareWrites = 0;
    int writes = 0;
};

AppCoordinator::Parts parts(const DataDirectory& directory)
{
    return { .directory = directory,
        .http = std::make_unique<NetworkHTTPClient>(),
        .keychain = std::make_unique<FakeKeychain>(),
        .environment = [] { return Environment(); },
        .calendar = [] { return Calendar(); },
        .clock = [] { return morning; } };
}

void spin(const std::function<bool()>& isDone)
{
    while (!isDone())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

Task<> poll(AppCoordinator* coordinator, bool* isOver)
{
    co_await coordinator->pollOnce(morning);
    *isOver = true;
}

double millisecondsOfBareWrites(const QStringList& paths)
{
    std::vector<QByteArray> contents;
    for (const auto& path : paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("what was written cannot be read");
        contents.push_back(file.readAll());
    }
    QElapsedTimer time;
    time.start();
    for (size_t file = 0; file < contents.size(); ++file) {
        if (!writeDurably(paths[qsizetype(file)], contents[file], FileOperations()))
            qFatal("the directory cannot be written to");
    }
    return double(time.nsecsElapsed()) / 1e6;
}

void let(int milliseconds)
{
    QTimer pause;
    pause.setSingleShot(true);
    pause.start(milliseconds);
    spin([&] { return !pause.isActive(); });
}

Run measure()
{
    const QTemporaryDir scratch;
    DataDirectory directory { QDir(scratch.path()) };
    fill(directory.path);
    const auto operations = std::make_shared<RecordingOperations>();
    directory.operations = operations;
    AppCoordinator coordinator(parts(directory));
    const StallWatch watch;
    let(5);

    QElapsedTimer time;
    time.start();
    bool isOver = false;
    spawn(poll(&coordinator, &isOver));
    spin([&] { return isOver; });
    Run run { .total = double(time.nsecsElapsed()) / 1e6 };
    let(5);
    run.stall = watch.longest();
    run.writes = int(operations->replaced.size());
    run.bareWrites = millisecondsOfBareWrites(operations->replaced);
    if (!coordinator.memory().summaries.latestDaily())
        qFatal("the day did not end");
    return run;
}

struct Spread {
    double median = 0;
    double longest = 0;
};

Spread spread(const std::vector<Run>& measured, double Run::*value)
{
    auto sorted = measured;
    std::ranges::sort(sorted, {}, value);
    return { sorted[sorted.size() / 2].*value, sorted.back().*value };
}

int measureAll()
{
    std::vector<Run> all(runs);
    std::ranges::generate(all, measure);
    const auto total = spread(all, &Run::total);
    const auto stall = spread(all, &Run::stall);
    const auto bare = spread(all, &Run::bareWrites);
    std::printf("a rollover: median %.1f ms, longest %.1f ms (aim: %.0f ms)\n", total.median,
        total.longest, mostTotal);
    std::printf("the event loop stands still: median %.1f ms, longest %.1f ms (aim: %.0f ms)\n",
        stall.median, stall.longest, mostStall);
    std::printf("%d bare durable writes of the same files: median %.1f ms, longest %.1f ms\n",
        all.front().writes, bare.median, bare.longest);
    return total.median < mostTotal && stall.median <= mostStall ? 0 : 1;
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return pobblewig::measureAll();
}
