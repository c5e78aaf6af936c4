#include "foundation/JSONFileStore.h"
#include "memory/history/ChatMessage.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

using namespace pobblewig;

namespace {

/// About 1 MB on the disk.
std::vector<ChatMessage> messages()
{
    std::vector<ChatMessage> result;
    for (int number = 0; number < 1200; ++number) {
        result.push_back({
            .id = QUuid::createUuid(),
            .text = QStringLiteral("A sentence of a message. ").repeated(26),
            .timestamp = systemNow(),
        });
    }
    return result;
}

void saveAStore(benchmark::State& state)
{
    const QTemporaryDir scratch;
    const JSONFileStore file(QDir(scratch.path()), QStringLiteral("chat.json"));
    const auto value = messages();
    for (auto _ : state) {
        if (!file.save(value))
            state.SkipWithError("the save failed");
    }
    state.SetBytesProcessed(state.iterations() * json::text(value).size());
}
BENCHMARK(saveAStore)->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(2);

/// The peer: the same bytes, written, synced and renamed with nothing else.
void writeTheBareBytes(benchmark::State& state)
{
    const QTemporaryDir scratch;
    const auto bytes = json::text(messages());
    const auto partial = scratch.filePath(QStringLiteral("partial")).toLocal8Bit();
    const auto target = scratch.filePath(QStringLiteral("chat.json")).toLocal8Bit();
    for (auto _ : state) {
        const auto file = open(partial.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        if (write(file, bytes.constData(), size_t(bytes.size())) != bytes.size()
            || fsync(file) != 0)
            state.SkipWithError("the write failed");
        close(file);
        rename(partial.constData(), target.constData());
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(writeTheBareBytes)->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(2);

} // namespace

BENCHMARK_MAIN();
