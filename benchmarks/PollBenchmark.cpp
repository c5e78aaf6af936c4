#include "AppCoordinator.h"
#include "foundation/QtKeychainHelper.h"
#include "network/CurlHTTPClient.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace pobblewig;

namespace {

class CountingOperations : public FileOperations {
public:
    tl::expected<int, std::error_code> create(
        const QString& path, std::optional<unsigned> permissions) const override
    {
        ++writes;
        return FileOperations::create(path, permissions);
    }

    mutable int writes = 0;
};

void pollWithNothingDue(benchmark::State& state)
{
    const QTemporaryDir scratch;
    const auto operations = std::make_shared<CountingOperations>();
    DataDirectory directory { QDir(scratch.path()) };
    directory.operations = operations;
    AppCoordinator coordinator({
        .directory = directory,
        .http = std::make_unique<CurlHTTPClient>(),
        .keychain = std::make_unique<QtKeychainHelper>(),
        .environment = [] { return Environment(); },
        .wording = PlatformWording::linuxDesktop,
    });
    for (auto _ : state)
        spawn(coordinator.pollOnce());
    state.counters["writes"] = operations->writes;
}
BENCHMARK(pollWithNothingDue)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
