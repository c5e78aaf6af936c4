// The end of a day without a model, with 30 messages and 200 observations: how long it takes, and
// for how long at a time nothing else can happen. The peer writes the same files as durably, and
// does nothing else.

#include "AppCoordinator.h"
#include "Figure.h"
#include "StallWatch.h"
#include "network/CurlHTTPClient.h"
#include "support/FakeKeychain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr TimePoint evening { std::chrono::seconds(1772398800) };
constexpr TimePoint morning = evening + std::chrono::hours(10);
constexpr int runs = 20;

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
};

AppCoordinator::Parts parts(const DataDirectory& directory)
{
    return { .directory = directory,
        .http = std::make_unique<CurlHTTPClient>(),
        .keychain = std::make_unique<FakeKeychain>(),
        .environment = [] { return Environment(); },
        .wording = PlatformWording::linuxDesktop,
        .moment = { [] { return morning; }, [] { return Calendar(); } } };
}

void spin(const std::function<bool()>& isDone)
{
    while (!isDone())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

Task<> poll(AppCoordinator* coordinator, bool* isOver)
{
    co_await coordinator->pollOnce();
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
    run.bareWrites = millisecondsOfBareWrites(operations->replaced);
    if (!coordinator.memory().summaries.latestDaily(morning))
        qFatal("the day did not end");
    return run;
}

double medianOf(double Run::*value, const std::vector<Run>& measured)
{
    std::vector<double> values(measured.size());
    std::ranges::transform(measured, values.begin(), [&](const Run& run) { return run.*value; });
    return median(values);
}

void measureAll()
{
    std::vector<Run> all(runs);
    std::ranges::generate(all, measure);
    Figure { .measured = "a rollover",
        .value = medianOf(&Run::total, all),
        .peer = "bare durable writes",
        .peerValue = medianOf(&Run::bareWrites, all),
        .most = 50 }
        .report();
    Figure { .measured = "the event loop stands still in a rollover",
        .value = medianOf(&Run::stall, all),
        .most = 16 }
        .report();
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    pobblewig::measureAll();
}
