// What a turn of the conversation takes beside a librarian that misbehaves in every way that we
// could think of: thirty turns, of which two are followed by a batch for it, and a few more while
// the session ends. Whatever it does, no message may be lost.

#include "AppCoordinator.h"
#include "BlockingServer.h"
#include "Figure.h"
#include "foundation/Log.h"
#include "memory/MemorySnapshot.h"
#include "network/CurlHTTPClient.h"
#include "support/FakeKeychain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <cstdio>

namespace pobblewig {

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };
constexpr int turns = 30;
constexpr int turnsWhileClosing = 10;
/// Longer than all else takes, and shorter than the patience with a server that hangs.
constexpr int longestWait = 60'000;

using Pieces = BlockingServer::Pieces;

struct Case {
    const char* name;
    BlockingServer::Answer librarian = {};
    bool hangs = false;
};

const QByteArray streamHead =
    "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nConnection: close\r\n\r\n";

QByteArray event(const QByteArray& text)
{
    return "data: {\"choices\":[{\"delta\":{\"content\":\"" + text + "\"}}]}\n\n";
}

Pieces streamed(const QByteArray& text)
{
    return { streamHead + event(text) + "data: [DONE]\n\n" };
}

Pieces refusal(const QByteArray& status)
{
    return { "HTTP/1.1 " + status + "\r\nContent-Length: 5\r\nConnection: close\r\n\r\noops\n" };
}

/// Both what an extraction and what the account of a day can be.
Pieces healthy()
{
    return streamed(R"({\"notes\":[{\"text\":\"Reads a lot\"}],\"dailySummary\":\"Read.\"})");
}

std::vector<Case> cases()
{
    constexpr qsizetype megabyte = 1'000'000;
    const auto always = [](const Pieces& pieces) {
        return [pieces](const QByteArray&) { return pieces; };
    };
    const auto flood = event(QByteArray(100, 'x')).repeated(10 * megabyte / 100);
    const auto entries = QByteArray(R"({\"text\":\"a\"},)").repeated(10 * megabyte / 15);
    return {
        { "no librarian" },
        { "healthy", always(healthy()) },
        { "hangs", [](const QByteArray&) { return std::nullopt; }, true },
        { "cuts the connection", always({ streamHead + "data: {\"choi" }) },
        { "talks nonsense", always(streamed("<html>lorem ipsum</html>")) },
        { "refuses schemas",
            [](const QByteArray& request) {
                return request.contains("\"json_schema\"") ? refusal("400 Bad Request") : healthy();
            } },
        { "500", always(refusal("500 Internal Server Error")) },
        { "429", always(refusal("429 Too Many Requests")) },
        { "10 MB in 100,000 events", always({ streamHead, flood, "data: [DONE]\n\n" }) },
        { "10 MB of entries in one event",
            always({ streamHead, event(R"({\"notes\":[)" + entries + "]}"), "data: [DONE]\n\n" }) },
        { "7 MB of entries in one event",
            always({ streamHead, event(R"({\"notes\":[)" + entries.first(7 * megabyte) + "]}"),
                "data: [DONE]\n\n" }) },
        { "190 kB of entries in one event",
            always({ streamHead,
                event(R"({\"notes\":[)" + entries.first(12'600 * 15)
                    + R"({}],\"dailySummary\":\"R\"})"),
                "data: [DONE]\n\n" }) },
    };
}

AppCoordinator::Parts parts(const QDir& directory, const QUrl& model, const QUrl& librarian)
{
    const auto variable = [](const char* name, const QString& value) {
        return std::pair(QString::fromLatin1(name), value);
    };
    Environment environment { variable("MAIN_MODEL_BASE_URL", model.toString()),
        variable("MAIN_MODEL_API_KEY", QStringLiteral("key")),
        variable("MAIN_MODEL_ID", QStringLiteral("model")),
        variable("LIBRARIAN_MODEL_BASE_URL", librarian.toString()),
        variable("LIBRARIAN_MODEL_API_KEY", QStringLiteral("key")) };
    return {
        .directory = directory,
        .http = std::make_unique<CurlHTTPClient>(),
        .keychain = std::make_unique<FakeKeychain>(),
        .environment = [environment = std::move(environment)] { return environment; },
        .wording = PlatformWording::linuxDesktop,
        .moment = { [] { return now; } },
    };
}

/// The longest that anything else had to wait for the event loop meanwhile, in milliseconds.
double runUntil(const std::function<bool()>& isDone)
{
    QElapsedTimer time;
    time.start();
    double longest = 0;
    while (!isDone()) {
        const auto before = time.nsecsElapsed();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        longest = std::max(longest, double(time.nsecsElapsed() - before) / 1e6);
        if (time.hasExpired(longestWait))
            qFatal("waited in vain");
    }
    return longest;
}

struct Measured {
    std::vector<double> turns;
    std::vector<double> turnsWhileClosing;
    double longestStall = 0;
};

class Run {
public:
    explicit Run(const Case& given)
        : m_librarian(std::in_place, counting(given.librarian))
        , m_coordinator(parts(QDir(m_scratch.path()), m_main.url(), m_librarian->url()))
        , m_hangs(given.hangs)
    {
        m_coordinator.start();
        m_coordinator.updateSettings(
            [&](AppSettings& settings) { settings.memoryEnabled = bool(given.librarian); });
        runUntil([&] {
            return m_coordinator.state().of<MemorySnapshot>().activeDailySession.has_value();
        });
    }

    Measured measure()
    {
        for (int turn = 0; turn < turns; ++turn)
            m_measured.turns.push_back(ask(QStringLiteral("Question %1").arg(turn)));
        m_coordinator.startNewSession();
        for (int turn = 0; turn < turnsWhileClosing; ++turn)
            m_measured.turnsWhileClosing.push_back(ask(QStringLiteral("More %1").arg(turn)));
        if (m_hangs)
            m_librarian.reset();
        run([&] { return !m_coordinator.state().of<ConversationState>().isClosingSession; });
        return m_measured;
    }

    int calls() const { return m_calls; }

    /// All but what a history of so many messages does not hold anyway.
    bool hasLostNothing()
    {
        const QDir directory(m_scratch.path());
        const auto archives = directory.entryList({ QStringLiteral("chat-*") });
        if (archives.size() != 1)
            return false;
        const auto archived =
            JSONFileStore(directory, archives[0]).load<std::vector<ChatMessage>>();
        const auto& goesOn = m_coordinator.chat().messages();
        return archived && archived->size() == 2 * turns && archived->front().text == u"Question 0"
            && goesOn.size() == 2 * turnsWhileClosing && goesOn.front().text == u"More 0";
    }

private:
    BlockingServer::Answer counting(const BlockingServer::Answer& answer)
    {
        return [this, answer](const QByteArray& request) {
            ++m_calls;
            return answer ? answer(request) : std::nullopt;
        };
    }

    double ask(const QString& text)
    {
        QElapsedTimer time;
        time.start();
        auto& chat = m_coordinator.chat();
        if (!chat.submit(text))
            qFatal("the turn before is not over");
        run([&] { return !chat.isInTurn(); });
        if (chat.lastError() || chat.messages().back().role != ChatMessage::Role::assistant)
            qFatal("a turn failed");
        return double(time.nsecsElapsed()) / 1e6;
    }

    void run(const std::function<bool()>& isDone)
    {
        m_measured.longestStall = std::max(m_measured.longestStall, runUntil(isDone));
    }

    QTemporaryDir m_scratch;
    std::atomic<int> m_calls = 0;
    BlockingServer m_main { streamed("Fine, thank you.") };
    std::optional<BlockingServer> m_librarian;
    AppCoordinator m_coordinator;
    bool m_hangs;
    Measured m_measured;
};

struct Outcome {
    double turn = 0;
    double stall = 0;
    bool losesMessages = false;
};

Outcome measure(const Case& given)
{
    Run run(given);
    const auto measured = run.measure();
    const Outcome outcome { median(measured.turns), measured.longestStall, !run.hasLostNothing() };
    std::printf("%-31s %6.2f %6.2f   %6.2f %6.2f   %6.2f   %2d   %s\n", given.name, outcome.turn,
        std::ranges::max(measured.turns), median(measured.turnsWhileClosing),
        std::ranges::max(measured.turnsWhileClosing), outcome.stall, run.calls(),
        outcome.losesMessages ? "SOMETHING" : "nothing");
    return outcome;
}

void measureAll()
{
    std::vector<Outcome> all;
    for (const auto& given : cases())
        all.push_back(measure(given));
    Figure { .measured = "a turn beside the worst librarian",
        .value = std::ranges::max(all, {}, &Outcome::turn).turn,
        .peer = "none",
        .peerValue = all.front().turn }
        .report();
    Figure { .measured = "longest stall beside the worst librarian",
        .value = std::ranges::max(all, {}, &Outcome::stall).stall,
        .peer = "none",
        .peerValue = all.front().stall }
        .report();
    Figure { .measured = "librarians beside whom messages are lost",
        .value = double(std::ranges::count(all, true, &Outcome::losesMessages)),
        .unit = "",
        .most = 0 }
        .report();
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    pobblewig::Log::setSink([](const QString&) {});
    std::printf(
        "milliseconds                     a turn          while closing    longest"
        "  calls  lost\nlibrarian                       median  worst   median  worst    stall\n");
    pobblewig::measureAll();
    return 0;
}
