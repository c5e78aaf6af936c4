// What a server that floods the program costs its user, through the whole chat: the longest time
// between two turns of the event loop, the peak of the memory above idle, and how long Stop takes.
// Each flood runs in a process of its own, so that none inherits the memory of another.

#include "BlockingServer.h"
#include "Figure.h"
#include "PobblewigDesktop/chat/ChatPanel.h"
#include "network/CurlHTTPClient.h"
#include "support/ScriptedModels.h"
#include "support/ScriptedStores.h"
#include "wire/OpenAICompatibleProvider.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTimer>

#include <ctime>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr qsizetype megabyte = 1'000'000;
constexpr auto longestWatch = 20s;
const QByteArray head = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n";

struct Flood {
    const char* name;
    BlockingServer::Pieces pieces;
    std::chrono::milliseconds pause = {};
};

BlockingServer::Pieces repeated(const QByteArray& begin, int count, const QByteArray& piece)
{
    BlockingServer::Pieces pieces(size_t(count), piece);
    pieces.insert(pieces.begin(), begin);
    return pieces;
}

/// So many megabytes of this text.
BlockingServer::Pieces megabytes(int count, const QByteArray& text)
{
    return repeated(head, count, text.repeated(megabyte / text.size()));
}

/// More than anybody reads.
BlockingServer::Pieces endless(const QByteArray& begin, const QByteArray& text)
{
    return repeated(begin, 100'000, text.repeated(megabyte / text.size()));
}

std::vector<Flood> floods()
{
    const QByteArray token = "data: {\"choices\":[{\"delta\":{\"content\":\"a\"}}]}\n\n";
    const QByteArray chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    return {
        { "line ends", megabytes(63, "\n") },
        { "comments", megabytes(63, ": a comment\n") },
        { "tiny tokens", megabytes(63, token) },
        { "empty tokens", megabytes(63, QByteArray(token).replace("\"a\"", "\"\"")) },
        { "short lines", megabytes(63, "x\n") },
        { "a call of many pieces",
            megabytes(63,
                "data: {\"choices\":[{\"delta\":{\"tool_calls\":[{\"index\":0,"
                "\"function\":{\"name\":\"x\",\"arguments\":\"aaaaaaaaaaaaaaaa\"}}]}}]}\n\n") },
        { "long lines",
            repeated(head, 8, QByteArray("data: ") + QByteArray(7'500'000, '[') + "\n\n") },
        { "an endless header line", endless("HTTP/1.1 200 OK\r\nX-Endless: ", "x") },
        { "endless headers", endless("HTTP/1.1 200 OK\r\n", "X-Endless: x\r\n") },
        { "an endless chunk extension", endless(chunked + "1;", "x") },
        { "endless chunk extensions",
            endless(chunked, "1;" + QByteArray(100'000, 'x') + "\r\n\n\r\n") },
        { "a trickle", repeated(head, 120, ":"), 1s },
    };
}

double memoryInMB(const char* field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("no memory can be measured");
    const auto text = status.readAll();
    const auto from = text.indexOf(field) + qsizetype(qstrlen(field));
    return text.sliced(from, text.indexOf("kB", from) - from).trimmed().toDouble() / 1e3;
}

void forgetPeakMemory()
{
    QFile references(QStringLiteral("/proc/self/clear_refs"));
    if (!references.open(QIODevice::WriteOnly) || references.write("5") != 1)
        qFatal("the peak of the memory cannot be forgotten");
}

/// The longest time, and the most work of this thread, between two ticks of a timer.
class TurnMeter {
public:
    TurnMeter()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { tick(); });
        m_sinceLast.start();
        m_timer.start(1);
    }

    double longest() const { return m_longest; }
    double mostWork() const { return m_mostWork; }

private:
    static double work()
    {
        timespec time {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
    }

    void tick()
    {
        m_longest = std::max(m_longest, double(m_sinceLast.nsecsElapsed()) / 1e6);
        m_mostWork = std::max(m_mostWork, work() - m_workAtLast);
        m_sinceLast.start();
        m_workAtLast = work();
    }

    QTimer m_timer;
    QElapsedTimer m_sinceLast;
    double m_workAtLast = work();
    double m_longest = 0;
    double m_mostWork = 0;
};

/// The chat with its panel, and a model at this address.
struct Talk : ScriptedStores {
    explicit Talk(const QUrl& url)
        : provider({ .baseURL = url,
                       .modelID = QStringLiteral("model"),
                       .apiKey = QStringLiteral("key"),
                       .completionsPath = QStringLiteral("chat/completions") },
            http, { .beginning = 3s })
    {
        models.main = &provider;
        panel.show();
    }
    Q_DISABLE_COPY_MOVE(Talk)
    ~Talk() = default;

    void ask()
    {
        if (!chat.submit(QStringLiteral("Go on")))
            qFatal("the chat does not listen");
    }

    CurlHTTPClient http;
    OpenAICompatibleProvider provider;
    ScriptedModels models;
    ChatService chat { all, moment,
        { .models = models, .situation = [] { return SituationSnapshot(); } } };
    ChatPanel panel { chat, Calendar(), [] { return morning; } };
};

void runUntil(const std::function<bool()>& isDone, std::chrono::milliseconds longest)
{
    const QDeadlineTimer limit(longest);
    while (!isDone() && !limit.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void measureFlood(const std::string& name, const BlockingServer& server)
{
    Talk talk(server.url());
    runUntil([] { return false; }, 500ms);
    forgetPeakMemory();
    const auto idle = memoryInMB("VmRSS:");
    const TurnMeter meter;
    QElapsedTimer time;
    time.start();
    talk.ask();
    runUntil([&] { return !talk.chat.isInTurn(); }, longestWatch);
    Figure { .measured = name + ": longest turn", .value = meter.longest(), .most = 50 }.report();
    Figure { .measured = name + ": most work in a turn", .value = meter.mostWork() }.report();
    Figure { .measured = name + ": memory above idle",
        .value = memoryInMB("VmHWM:") - idle,
        .unit = "MB",
        .most = 64 }
        .report();
    Figure {
        .measured = name + ": until it ended", .value = double(time.elapsed()) / 1e3, .unit = "s"
    }
        .report();
    std::printf("%s: %s\n", name.c_str(),
        qPrintable(talk.chat.isInTurn()
                ? QStringLiteral("under way")
                : talk.chat.lastError().value_or(QStringLiteral("a reply"))));
    talk.chat.cancelStreaming();
}

void measureStop(const std::string& name, const BlockingServer& server)
{
    constexpr auto beforeStop = 300ms;
    Talk talk(server.url());
    double delay = 0;
    QElapsedTimer time;
    time.start();
    talk.ask();
    QTimer::singleShot(beforeStop, Qt::PreciseTimer, &talk.chat, [&] {
        talk.chat.cancelStreaming();
        while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) { }
        delay = double(time.nsecsElapsed()) / 1e6 - double(beforeStop.count());
    });
    runUntil([&] { return delay > 0; }, longestWatch);
    Figure { .measured = name + ": Stop", .value = delay, .most = 100 }.report();
}

void measure(const QString& name)
{
    for (const auto& flood : floods()) {
        if (name != QLatin1String(flood.name))
            continue;
        const BlockingServer server(flood.pieces, flood.pause);
        measureStop(flood.name, server);
        measureFlood(flood.name, server);
    }
}

bool runApart(const QString& name)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(), { name });
    const auto isDone = process.waitForFinished(120'000);
    process.kill();
    process.waitForFinished();
    return isDone && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    if (argc > 1) {
        pobblewig::measure(QString::fromLocal8Bit(argv[1]));
        return 0;
    }
    auto isDone = true;
    for (const auto& flood : pobblewig::floods())
        isDone = pobblewig::runApart(QLatin1String(flood.name)) && isDone;
    return isDone ? 0 : 1;
}
