// Compares a streamed reply read by our provider with the same bytes read by curl: the time to the
// first token and the throughput of a long reply.

#include "BlockingServer.h"
#include "Figure.h"
#include "network/CurlHTTPClient.h"
#include "support/Awaited.h"
#include "wire/OpenAICompatibleProvider.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

namespace pobblewig {

namespace {

constexpr qsizetype longReply = 10'000'000;

QByteArray event(const QByteArray& text)
{
    return "data: {\"id\":\"chatcmpl-AbCdEfGh123456\",\"object\":\"chat.completion.chunk\","
           "\"created\":1763700000,\"model\":\"some-model-name\",\"choices\":[{\"index\":0,"
           "\"delta\":{\"content\":\""
        + text + "\"},\"logprobs\":null,\"finish_reason\":null}]}\n\n";
}

struct Timing {
    double firstToken = 0;
    double total = 0;
};

Task<Timing> timedReply(HTTPClient* http, QUrl url)
{
    LLMConfiguration configuration;
    configuration.baseURL = url;
    configuration.modelID = QStringLiteral("model");
    configuration.apiKey = QStringLiteral("key");
    configuration.completionsPath = QStringLiteral("chat/completions");
    OpenAICompatibleProvider provider(configuration, *http);
    QElapsedTimer clock;
    clock.start();
    Timing timing;
    const auto stream = provider.streamChat({});
    while (const auto event = co_await stream.next()) {
        if (timing.firstToken == 0)
            timing.firstToken = double(clock.nsecsElapsed()) / 1e9;
    }
    timing.total = double(clock.nsecsElapsed()) / 1e9;
    if (stream.error())
        qFatal("%s", qPrintable(description(*stream.error())));
    co_return timing;
}

Timing timedByCurl(const QUrl& url)
{
    QProcess curl;
    curl.start(QStringLiteral("curl"),
        { QStringLiteral("-sN"), QStringLiteral("--noproxy"), QStringLiteral("*"),
            QStringLiteral("-o"), QStringLiteral("/dev/null"), QStringLiteral("-w"),
            QStringLiteral("%{time_starttransfer} %{time_total}"), url.toString() });
    if (!curl.waitForFinished() || curl.exitCode() != 0)
        qFatal("curl failed");
    const auto words = curl.readAllStandardOutput().split(' ');
    return { words.at(0).toDouble(), words.at(1).toDouble() };
}

template <typename Measure>
Timing medianTiming(int rounds, const Measure& measure)
{
    std::vector<double> first;
    std::vector<double> total;
    for (int round = 0; round < rounds; ++round) {
        const auto timing = measure();
        first.push_back(timing.firstToken);
        total.push_back(timing.total);
    }
    return { median(first), median(total) };
}

long peakMemoryInKB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const auto text = status.readAll();
    const auto from = text.indexOf("VmHWM:") + 6;
    return text.sliced(from, text.indexOf("kB", from) - from).trimmed().toLong();
}

void compare(const std::string& name, const std::vector<QByteArray>& pieces, int rounds)
{
    const BlockingServer server(pieces);
    CurlHTTPClient http;
    const auto before = peakMemoryInKB();
    const auto ours =
        medianTiming(rounds, [&] { return awaited(timedReply(&http, server.url())); });
    const auto growth = peakMemoryInKB() - before;
    const auto curls = medianTiming(rounds, [&] { return timedByCurl(server.url()); });
    Figure { .measured = name + ": first token",
        .value = ours.firstToken * 1e3,
        .peer = "curl",
        .peerValue = curls.firstToken * 1e3 }
        .report();
    Figure { .measured = name + ": whole",
        .value = ours.total * 1e3,
        .peer = "curl",
        .peerValue = curls.total * 1e3 }
        .report();
    Figure { .measured = name + ": peak memory", .value = double(growth) / 1e3, .unit = "MB" }
        .report();
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\n"
                            "Connection: close\r\n\r\n";
    const auto piece = pobblewig::event(" wombat");
    const auto count = pobblewig::longReply / piece.size();

    pobblewig::compare("a short reply", { head + piece, "data: [DONE]\n\n" }, 101);

    std::vector<QByteArray> pieces(size_t(count), piece);
    pieces.insert(pieces.begin(), head);
    pobblewig::compare("10 MB, an event a write", pieces, 5);

    pobblewig::compare("10 MB in one write", { head, piece.repeated(count) }, 5);
}
