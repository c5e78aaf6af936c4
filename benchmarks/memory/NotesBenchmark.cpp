// What the durable notes cost: their text for each prompt, and the addition of one to a great many
// beside a bare durable write of the same bytes.

#include "memory/MemoryStore.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

using namespace pobblewig;

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };
constexpr int manyNotes = 5000;

QString sentence(int number)
{
    return QStringLiteral("Prefers the café by the library for chapter %1, “quiet and warm”.")
        .arg(number);
}

MemoryStoreData notes(int count)
{
    MemoryStoreData data;
    for (int number = 0; number < count; ++number) {
        data.notes.push_back({ .id = QUuid::createUuid(),
            .text = sentence(number),
            .category = MemoryCategory(number % 7),
            .createdAt = now,
            .lastObservedAt = now,
            .observationCount = 1 + number % 3 });
    }
    return data;
}

MemoryStore store(const QTemporaryDir& scratch, int count)
{
    const DataDirectory directory { QDir(scratch.path()) };
    if (!JSONFileStore(directory, QStringLiteral("memory.json")).save(notes(count)))
        qFatal("the notes could not be saved");
    return { directory, [] { return Calendar(); } };
}

/// 500 notes come close to the cap, with 700 a section is dropped.
void renderTheResidentMemory(benchmark::State& state)
{
    const QTemporaryDir scratch;
    const auto memory = store(scratch, int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(memory.residentMemory(MemoryStore::hardCapTokens, now));
    state.counters["tokens"] = memory.residentTokenEstimate(now);
}
BENCHMARK(renderTheResidentMemory)
    ->Arg(500)
    ->Arg(700)
    ->Arg(manyNotes)
    ->Unit(benchmark::kMillisecond);

void addANoteToMany(benchmark::State& state)
{
    const QTemporaryDir scratch;
    auto memory = store(scratch, manyNotes);
    auto number = manyNotes;
    for (auto _ : state)
        memory.addNote({ sentence(number++) }, now);
}
BENCHMARK(addANoteToMany)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(200);

/// The peer: written, synced, renamed and the directory synced, with nothing else.
void writeTheBareBytes(benchmark::State& state)
{
    const QTemporaryDir scratch;
    const auto bytes = json::text(notes(manyNotes));
    const auto partial = scratch.filePath(QStringLiteral("partial")).toLocal8Bit();
    const auto target = scratch.filePath(QStringLiteral("memory.json")).toLocal8Bit();
    const auto directory = open(scratch.path().toLocal8Bit().constData(), O_RDONLY | O_DIRECTORY);
    for (auto _ : state) {
        const auto file = open(partial.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        const auto written = write(file, bytes.constData(), size_t(bytes.size()));
        if (written != bytes.size() || fsync(file) != 0 || close(file) != 0
            || rename(partial.constData(), target.constData()) != 0 || fsync(directory) != 0)
            state.SkipWithError("the write failed");
    }
    close(directory);
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(writeTheBareBytes)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(200);

} // namespace

BENCHMARK_MAIN();
