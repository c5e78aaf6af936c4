#include "AppCoordinator.h"
#include "network/CurlHTTPClient.h"
#include "support/FakeKeychain.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace pobblewig;

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

QString words(int number)
{
    return QStringLiteral("Note %1: read another chapter and asked what it was for. ").arg(number);
}

void write(const QDir& directory, const QString& name, const auto& value)
{
    if (!JSONFileStore(directory, name).save(value))
        qFatal("the directory cannot be filled");
}

std::vector<DatedObservation> observations(int count)
{
    std::vector<DatedObservation> result;
    for (int number = 0; number < count; ++number) {
        result.push_back({
            .id = QUuid::createUuid(),
            .occurredAt = now - std::chrono::minutes(number),
            .recordedAt = now,
            .summary = words(number).repeated(3),
            .observedFacts = { words(number), words(number + 1) },
            .tags = { QStringLiteral("reading") },
        });
    }
    return result;
}

ReferenceMemoryData reference(int count)
{
    ReferenceMemoryData data;
    for (int number = 0; number < count; ++number) {
        data.items.push_back({
            .id = QUuid::createUuid(),
            .path = QStringLiteral("academics.deadlines"),
            .title = QStringLiteral("Essay %1").arg(number),
            .summary = words(number).repeated(3),
            .details = { { QStringLiteral("course"), JSONValue(QStringLiteral("History")) } },
            .source = QStringLiteral("librarian"),
            .createdAt = now,
            .updatedAt = now,
        });
    }
    return data;
}

/// Two thirds observations, one third reference items.
void fill(const QDir& directory, int megabytes)
{
    write(directory, QStringLiteral("observations.json"), observations(megabytes * 900));
    write(directory, QStringLiteral("reference.json"), reference(megabytes * 600));
}

double bytesIn(const QDir& directory)
{
    double bytes = 0;
    for (const auto& entry : directory.entryInfoList(QDir::Files))
        bytes += double(entry.size());
    return bytes;
}

AppCoordinator::Parts parts(const QDir& directory)
{
    return {
        .directory = directory,
        .http = std::make_unique<CurlHTTPClient>(),
        .keychain = std::make_unique<FakeKeychain>(),
        .environment = [] { return Environment(); },
        .wording = PlatformWording::linuxDesktop,
        .moment = { [] { return now; } },
    };
}

/// From the files to the end of the first poll.
void startUp(benchmark::State& state)
{
    const QTemporaryDir scratch;
    const QDir directory(scratch.path());
    fill(directory, int(state.range(0)));
    for (auto _ : state) {
        std::optional<AppCoordinator> coordinator(std::in_place, parts(directory));
        spawn(coordinator->pollOnce());
        // A program that quits takes nothing apart.
        state.PauseTiming();
        coordinator.reset();
        state.ResumeTiming();
    }
    state.counters["MB"] = bytesIn(directory) / 1e6;
}
BENCHMARK(startUp)->Arg(1)->Arg(5)->Arg(10)->Arg(20)->Unit(benchmark::kMillisecond);

/// The peer: the same files, read and parsed by the library alone.
void parseTheFiles(benchmark::State& state)
{
    const QTemporaryDir scratch;
    const QDir directory(scratch.path());
    fill(directory, int(state.range(0)));
    for (auto _ : state) {
        for (const auto& entry : directory.entryInfoList(QDir::Files)) {
            QFile file(entry.filePath());
            if (!file.open(QIODevice::ReadOnly))
                state.SkipWithError("a file cannot be read");
            benchmark::DoNotOptimize(QJsonDocument::fromJson(file.readAll()));
        }
    }
}
BENCHMARK(parseTheFiles)->Arg(1)->Arg(5)->Arg(10)->Arg(20)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
