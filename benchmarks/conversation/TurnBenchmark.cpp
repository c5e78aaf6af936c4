// What a turn costs beyond the network, with stores of many months: building the system prompt,
// the time from submitting a text to the request at the server, and from the last byte of the reply
// to the message on the screen.

#include "AppCoordinator.h"
#include "Figure.h"
#include "PobblewigDesktop/chat/ChatPanel.h"
#include "foundation/FileOperations.h"
#include "network/CurlHTTPClient.h"
#include "prompts/MainAssistantPrompt.h"
#include "support/FakeKeychain.h"
#include "support/LoopbackServer.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>

namespace pobblewig {

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };
constexpr int turns = 60;

QString words(int number)
{
    return QStringLiteral("Entry %1: read another chapter and asked what it was for. ").arg(number);
}

void write(const QDir& directory, const QString& name, const auto& value)
{
    if (!JSONFileStore(directory, name).save(value))
        qFatal("the directory cannot be filled");
}

MemoryStoreData notes()
{
    MemoryStoreData data;
    for (int number = 0; number < 800; ++number)
        data.notes.push_back({ .id = QUuid::createUuid(), .text = words(number) });
    return data;
}

std::vector<DatedObservation> observations()
{
    std::vector<DatedObservation> result;
    for (int number = 0; number < 18'000; ++number) {
        result.push_back({ .id = QUuid::createUuid(),
            .occurredAt = now - std::chrono::minutes(number),
            .recordedAt = now,
            .summary = words(number).repeated(3),
            .observedFacts = { words(number), words(number + 1) } });
    }
    return result;
}

ReferenceMemoryData reference()
{
    ReferenceMemoryData data;
    for (int number = 0; number < 12'000; ++number) {
        data.items.push_back({ .id = QUuid::createUuid(),
            .path = QStringLiteral("academics.deadlines"),
            .title = QStringLiteral("Essay %1").arg(number),
            .summary = words(number),
            .source = QStringLiteral("librarian"),
            .createdAt = now,
            .updatedAt = now });
    }
    return data;
}

std::vector<ChatMessage> history()
{
    std::vector<ChatMessage> messages;
    for (int number = 0; number < 30; ++number)
        messages.push_back({ .id = QUuid::createUuid(),
            .role = number % 2 ? ChatMessage::Role::assistant : ChatMessage::Role::user,
            .text = words(number).repeated(10),
            .timestamp = now });
    return messages;
}

void fill(const QDir& directory)
{
    write(directory, QStringLiteral("memory.json"), notes());
    write(directory, QStringLiteral("observations.json"), observations());
    write(directory, QStringLiteral("reference.json"), reference());
    write(directory, QStringLiteral("chat.json"), history());
}

AppCoordinator::Parts parts(const QDir& directory, const QUrl& model)
{
    return {
        .directory = directory,
        .http = std::make_unique<CurlHTTPClient>(),
        .keychain = std::make_unique<FakeKeychain>(),
        .environment =
            [model] {
                return Environment {
                    { QStringLiteral("MAIN_MODEL_BASE_URL"), model.toString() },
                    { QStringLiteral("MAIN_MODEL_API_KEY"), QStringLiteral("key") },
                    { QStringLiteral("MAIN_MODEL_ID"), QStringLiteral("model") },
                };
            },
        .wording = PlatformWording::linuxDesktop,
        .moment = { [] { return now; } },
    };
}

QByteArray event(const QByteArray& choices)
{
    return "data: {\"choices\":[" + choices + "]}\n\n";
}

/// Notes when a widget is painted.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    bool wasPainted = false;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        wasPainted |= event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }
};

void runUntil(const std::function<bool()>& isDone)
{
    QElapsedTimer time;
    time.start();
    while (!isDone()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        if (time.hasExpired(10'000))
            qFatal("waited in vain");
    }
}

/// Both ways of a turn pass through such a write: the message is on the disk before it goes on.
std::vector<double> durableWrites(const QDir& directory)
{
    std::vector<double> milliseconds;
    const auto bytes = QByteArray(25'000, 'x');
    for (int round = 0; round < turns; ++round) {
        QElapsedTimer time;
        time.start();
        if (!writeDurably(directory.filePath(QStringLiteral("peer")), bytes, FileOperations()))
            qFatal("the directory cannot be written to");
        milliseconds.push_back(double(time.nsecsElapsed()) / 1e6);
    }
    return milliseconds;
}

void report(
    const char* measured, const std::vector<double>& milliseconds, const std::vector<double>& bare)
{
    Figure { .measured = measured,
        .value = median(milliseconds),
        .peer = "bare durable write",
        .peerValue = median(bare),
        .most = 10 }
        .report();
}

void measureTurns()
{
    const QTemporaryDir scratch;
    fill(QDir(scratch.path()));
    LoopbackServer server;
    AppCoordinator coordinator(parts(QDir(scratch.path()), server.url(QStringLiteral("/v1"))));
    auto& chat = coordinator.chat();
    ChatPanel panel(chat, Calendar(), [] { return now; });
    panel.show();
    auto* const view = panel.findChild<QAbstractItemView*>();

    std::vector<double> before;
    std::vector<double> after;
    for (int turn = 0; turn < turns; ++turn) {
        server.enqueue({ LoopbackServer::Send { LoopbackServer::eventStreamHead()
                             + event(R"({"delta":{"content":"Fine"}})") },
            LoopbackServer::Hold {},
            LoopbackServer::Send {
                event(R"({"delta":{},"finish_reason":"stop"})") + "data: [DONE]\n\n" },
            LoopbackServer::Close {} });
        QElapsedTimer time;
        time.start();
        chat.submit(words(turn));
        runUntil([&] { return int(server.requests().size()) > turn; });
        before.push_back(double(time.nsecsElapsed()) / 1e6);
        runUntil([&] { return !chat.streamingPreview().isEmpty(); });

        PaintWatch paint(*view->viewport());
        const auto last = chat.messages().back().id;
        QObject::connect(
            &chat, &ChatService::messagesChanged, &paint, [&paint] { paint.wasPainted = false; });
        time.start();
        server.release();
        runUntil([&] { return chat.messages().back().id != last && paint.wasPainted; });
        after.push_back(double(time.nsecsElapsed()) / 1e6);
        runUntil([&] { return chat.canRetry(); });
    }
    const auto bare = durableWrites(scratch.path());
    report("from the text to the request at the server", before, bare);
    report("from the last byte to the message on the screen", after, bare);
}

void measurePrompt()
{
    MainAssistantPrompt prompt {
        .toolsAvailable = true, .now = now, .wording = PlatformWording::linuxDesktop
    };
    prompt.memory = words(0).repeated(MemoryStore::hardCapTokens * 4 / words(0).size());
    for (int line = 0; line < 40; ++line)
        prompt.situation.summary += words(line) + u'\n';
    for (int section = 0; section < 25; ++section)
        prompt.situation.referenceTOC += words(section) + u'\n';
    prompt.situation.persona = CompanionPersona::doomedCreature;
    std::vector<double> milliseconds;
    for (int round = 0; round < 1000; ++round) {
        QElapsedTimer time;
        time.start();
        const auto text = Prompts::mainAssistant(prompt);
        milliseconds.push_back(double(time.nsecsElapsed()) / 1e6);
        if (text.size() < 40'000)
            qFatal("the prompt is too short to be measured");
    }
    Figure { .measured = "system prompt", .value = median(milliseconds), .most = 2 }.report();
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    pobblewig::measurePrompt();
    pobblewig::measureTurns();
    return 0;
}
