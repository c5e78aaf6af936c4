// For how long nothing else can happen while the librarian's fifteen findings are stored beside 5
// MB of earlier ones. The peer writes the same files as durably, and does nothing else.

#include "Figure.h"
#include "StallWatch.h"
#include "StudentWriter.h"
#include "foundation/JSONFileStore.h"
#include "memory/librarian/LibrarianService.h"
#include "support/ScriptedModels.h"
#include "support/ScriptedProvider.h"
#include "support/ScriptedStores.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>
#include <ctime>

namespace pobblewig {

namespace {

constexpr TimePoint now = ScriptedStores::morning;
constexpr int runs = 20;
constexpr int knownNotes = 1000;
constexpr int knownObservations = 6000;
constexpr int knownItems = 2600;
const QStringList fileNames { QStringLiteral("memory.json"), QStringLiteral("observations.json"),
    QStringLiteral("sessions.json"), QStringLiteral("reference.json") };

void write(const QDir& directory, const QString& name, const auto& value)
{
    if (!JSONFileStore(directory, name).save(value))
        qFatal("the directory cannot be filled");
}

void fill(const QDir& directory)
{
    StudentWriter writer;
    MemoryStoreData memory;
    for (int number = 0; number < knownNotes; ++number)
        memory.notes.push_back({ .id = QUuid::createUuid(),
            .text = writer.sentences(80),
            .createdAt = now,
            .lastObservedAt = now });
    DailySession session { .id = QUuid::createUuid(), .startedAt = now, .lastActivityAt = now };
    std::vector<DatedObservation> seen;
    for (int number = 0; number < knownObservations; ++number) {
        seen.push_back({ .id = QUuid::createUuid(),
            .occurredAt = now,
            .recordedAt = now,
            .summary = writer.sentences(90),
            .observedFacts = { writer.sentences(60) },
            .tags = { writer.word() } });
        session.observationIDs.push_back(seen.back().id);
    }
    ReferenceMemoryData reference;
    for (int number = 0; number < knownItems; ++number)
        reference.items.push_back({ .id = QUuid::createUuid(),
            .path = QStringLiteral("misc"),
            .title = QStringLiteral("%1 %2").arg(writer.word()).arg(number),
            .summary = writer.sentences(120),
            .createdAt = now,
            .updatedAt = now });
    write(directory, fileNames[0], memory);
    write(directory, fileNames[1], seen);
    write(directory, fileNames[2], std::vector { session });
    write(directory, fileNames[3], reference);
}

/// Five notes, six observations and four items, none of them known.
QString findings(int run)
{
    QStringList notes;
    QStringList observations;
    QStringList items;
    for (int number = 0; number < 6; ++number) {
        const auto name = QStringLiteral("%1 of run %2").arg(number).arg(run);
        observations << QStringLiteral(R"({"summary": "Saw %1"})").arg(name);
        if (number < 5)
            notes << QStringLiteral(R"({"text": "Likes %1"})").arg(name);
        if (number < 4)
            items << QStringLiteral(R"({"path": "misc", "title": "%1"})").arg(name);
    }
    return QStringLiteral(R"({"notes": [%1], "observations": [%2], "referenceItems": [%3]})")
        .arg(notes.join(u','), observations.join(u','), items.join(u','));
}

Task<> extraction(LibrarianService* librarian, bool* isOver)
{
    const ChatMessage message {
        .text = QStringLiteral("Hello"), .timestamp = now, .sessionID = QUuid::createUuid()
    };
    const auto result = co_await librarian->extractAfterTurn({ message }, {}, {}, {});
    if (!(result == LibrarianExtractionResult { 5, 6, 4, 0 }))
        qFatal("not all findings were stored");
    *isOver = true;
}

/// In milliseconds.
struct Cost {
    double ofMainThread = 0;
    double longestStall = 0;
};

double timeOfThisThread()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

Cost cost(LibrarianService& librarian, ScriptedProvider& model, int run)
{
    model.enqueueHeld(findings(run));
    bool isOver = false;
    spawn(extraction(&librarian, &isOver));
    const StallWatch watch;
    const auto before = timeOfThisThread();
    model.release();
    while (!isOver)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
    return { timeOfThisThread() - before, watch.longest() };
}

double bareWrites(const QDir& directory)
{
    std::vector<std::pair<QString, QByteArray>> files;
    for (const auto& name : fileNames) {
        QFile file(directory.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("what was written cannot be read");
        files.emplace_back(file.fileName(), file.readAll());
    }
    QElapsedTimer time;
    time.start();
    qsizetype size = 0;
    for (const auto& [path, bytes] : files) {
        size += bytes.size();
        if (!writeDurably(path, bytes, FileOperations()))
            qFatal("the directory cannot be written to");
    }
    const auto taken = double(time.nsecsElapsed()) / 1e6;
    std::printf("%.1f MB in %zu files\n", double(size) / 1e6, files.size());
    return taken;
}

void measure()
{
    const QTemporaryDir scratch;
    const QDir directory(scratch.path());
    fill(directory);
    ScriptedStores stores { DataDirectory(directory) };
    ScriptedProvider model;
    ScriptedModels models;
    models.librarian = &model;
    LibrarianService librarian(stores.all, stores.moment, models);
    std::vector<double> busy;
    std::vector<double> stalls;
    std::vector<double> peers;
    for (int run = 0; run < runs; ++run) {
        const auto [ofMainThread, longestStall] = cost(librarian, model, run);
        busy.push_back(ofMainThread);
        stalls.push_back(longestStall);
        peers.push_back(bareWrites(directory));
    }
    Figure { .measured = "fifteen findings beside 5 MB, of the main thread",
        .value = median(busy),
        .most = 16 }
        .report();
    Figure { .measured = "the event loop stands still for fifteen findings beside 5 MB",
        .value = median(stalls),
        .peer = "bare durable writes",
        .peerValue = median(peers) }
        .report();
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    pobblewig::measure();
}
