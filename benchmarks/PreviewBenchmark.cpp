// What a long streaming reply costs the chat panel: whether the cost grows with its length only,
// and for how long the event loop stands still.

#include "Figure.h"
#include "PobblewigDesktop/chat/ChatPanel.h"
#include "desktop/chat/ScriptedChat.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QListView>
#include <QTimer>

#include <algorithm>
#include <array>
#include <ctime>

namespace pobblewig {

namespace {

constexpr int charactersPerToken = 4;
constexpr int tokensPerTurn = 40;

enum class Sample { paragraphs, oneParagraph, markdown };

/// What models write, over and over.
QString markdown(int length)
{
    const auto text = QStringLiteral(
        "## A heading\n\nSome **bold words** and *others* with `code` and [a "
        "link](https://kde.org).\n\n"
        "1. first item\n2. second item\n   - with one inside\n\n| Day | What | Hours "
        "|\n|---|---|---:|\n"
        "| Monday | the lab report, due at noon | 3 |\n| Friday | the exam | 1 |\n\n"
        "```cpp\nfor (const auto& item : items)\n    visit(item);\n```\n\n> Well said.\n\n");
    return text.repeated(length / static_cast<int>(text.size()) + 1).first(length);
}

/// Words of everyday lengths; one paragraph, or one of about 400 characters after the other.
QString prose(int length, Sample kind)
{
    if (kind == Sample::markdown)
        return markdown(length);
    const auto words = QStringLiteral("the quick idea of a small crab that walks over every desk ");
    auto text = words.repeated(length / static_cast<int>(words.size()) + 1).first(length);
    for (auto end = 400; kind == Sample::paragraphs && end < length; end += 400)
        text[end] = u'\n';
    return text;
}

std::string shape(Sample kind)
{
    if (kind == Sample::markdown)
        return "Markdown";
    return kind == Sample::oneParagraph ? "one paragraph" : "paragraphs";
}

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void wait(const std::function<bool()>& isDone)
{
    const QDeadlineTimer limit(std::chrono::minutes(2));
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (isDone() || limit.hasExpired())
            loop.quit();
    });
    poll.start(1);
    loop.exec();
}

/// How long the event loop let a timer of one millisecond wait.
class StallMeter {
public:
    StallMeter()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            m_stalls.push_back(static_cast<double>(m_sinceLast.nsecsElapsed()) / 1e6);
            m_sinceLast.restart();
        });
        m_sinceLast.start();
        m_timer.start(1);
    }

    void report(const std::string& measured)
    {
        std::ranges::sort(m_stalls);
        const auto last = static_cast<double>(m_stalls.size() - 1);
        Figure { .measured = "longest " + measured, .value = m_stalls.back() }.report();
        Figure { .measured = measured + ", 99 per cent below",
            .value = m_stalls[static_cast<std::size_t>(0.99 * last)] }
            .report();
    }

private:
    QTimer m_timer;
    QElapsedTimer m_sinceLast;
    std::vector<double> m_stalls { 0 };
};

struct Talk {
    explicit Talk(bool isLong)
        : panel(scripted.chat, { QTimeZone::utc(), QLocale::c() }, [] { return ScriptedChat::now; })
    {
        for (auto count = 0; isLong && count < 500; ++count) {
            if (count % 33 == 0 && count < 495)
                scripted.exchange(prose(10'000, Sample::paragraphs),
                    prose(10'000, count % 2 == 0 ? Sample::markdown : Sample::oneParagraph));
            else
                scripted.exchange(QStringLiteral("How does that go on?"), markdown(500));
        }
        panel.show();
        settle();
    }

    static void settle()
    {
        QElapsedTimer time;
        time.start();
        wait([&time] { return time.hasExpired(1500); });
    }

    /// Streams a reply a few tokens at a time, as a fast model does, until it is in the history.
    void stream(const QString& text)
    {
        const auto before = scripted.history.messages().back().id;
        scripted.chat.submit(QStringLiteral("Go on"));
        wait([this] { return scripted.model.isAsked(); });
        QTimer speaker;
        qsizetype said = 0;
        QObject::connect(&speaker, &QTimer::timeout, &speaker, [&] {
            for (auto token = 0; token < tokensPerTurn && said < text.size(); ++token) {
                scripted.model.say(text.mid(said, charactersPerToken));
                said += charactersPerToken;
            }
            if (said >= text.size()) {
                speaker.stop();
                scripted.model.finish();
            }
        });
        speaker.start(1);
        wait([&] {
            return !scripted.chat.isStreaming() && scripted.history.messages().back().id != before;
        });
    }

    ScriptedChat scripted;
    ChatPanel panel;
};

double costOf(int length, Sample kind)
{
    Talk talk(false);
    talk.scripted.exchange(QStringLiteral("Hello"), QStringLiteral("Hello"));
    const auto start = processorSeconds();
    talk.stream(prose(length, kind));
    return processorSeconds() - start;
}

void measureGrowth(Sample kind)
{
    const auto half = costOf(50'000, kind);
    const auto otherHalf = costOf(50'000, kind);
    const auto whole = costOf(100'000, kind);
    Figure { .measured = "reply of 100,000 characters, " + shape(kind),
        .value = whole * 1000,
        .peer = "2 x 50,000",
        .peerValue = (half + otherHalf) * 1000 }
        .report();
}

void measureStalls(Sample kind)
{
    Talk talk(true);
    StallMeter meter;
    talk.stream(prose(100'000, kind));
    wait([time = QDeadlineTimer(500)] { return time.hasExpired(); });
    meter.report("stall while streaming " + shape(kind));
}

void measureResizing()
{
    Talk talk(true);
    StallMeter meter;
    for (auto width = 400; width < 700; width += 5) {
        talk.panel.resize(width, 600);
        wait([time = QDeadlineTimer(20)] { return time.hasExpired(); });
    }
    talk.settle();
    meter.report("stall while resizing");
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    using enum pobblewig::Sample;
    constexpr std::array everyKind { paragraphs, oneParagraph, markdown };
    const QApplication application(argc, argv);
    for (const auto kind : everyKind)
        pobblewig::measureGrowth(kind);
    for (const auto kind : everyKind)
        pobblewig::measureStalls(kind);
    pobblewig::measureResizing();
    return 0;
}
