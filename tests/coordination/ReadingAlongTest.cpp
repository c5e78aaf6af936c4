#include "AppCoordinator.h"

#include "prompts/SituationSnapshot.h"
#include "support/Awaited.h"
#include "support/BorrowedProvider.h"
#include "support/FakeKeychain.h"
#include "support/LogLines.h"
#include "support/ScriptedHTTPClient.h"
#include "support/ScriptedProvider.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

namespace pobblewig {

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

/// What a server sends of a stream that says this.
QByteArray stream(const QString& text)
{
    const QJsonObject delta { { QStringLiteral("content"), text } };
    const QJsonObject choice { { QStringLiteral("delta"), delta } };
    const QJsonObject chunk { { QStringLiteral("choices"), QJsonArray { choice } } };
    return "data: " + QJsonDocument(chunk).toJson(QJsonDocument::Compact) + "\n\ndata: [DONE]\n\n";
}

/// A reply with a block in it, whose JSON has apostrophes in place of quotation marks.
QString fenced(const char* kind, const char* json)
{
    return QStringLiteral("Said.\n```buddy-%1\n%2\n```")
        .arg(QLatin1String(kind), QString::fromLatin1(json).replace(u'\'', u'"'));
}

QString prompt(const HTTPRequest& request)
{
    const auto messages = QJsonDocument::fromJson(request.body)[QStringLiteral("messages")];
    return messages[0][QStringLiteral("content")].toString();
}

/// Who is said to have said what, without the times.
QStringList window(const QString& prompt)
{
    const auto rest = prompt.section(QStringLiteral("\n\nConversation window:\n"), 1);
    auto lines = rest.section(QStringLiteral("\n\nReturn ONLY JSON"), 0, 0).split(u'\n');
    for (auto& line : lines)
        line = line.section(QStringLiteral("Z] "), 1);
    return lines;
}

struct Misbehaviour {
    ScriptedHTTPClient::Reply reply;
    QString error;
};

} // namespace

/// The librarian beside a conversation, with the whole program in between.
class ReadingAlongTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m_model = std::make_unique<ScriptedProvider>();
        restart();
    }

    void onlyWhatTheUserSaidIsTheUsers()
    {
        m->memory().notes.addNote({ .text = QStringLiteral("Likes oolong tea") }, now);
        m_model->enqueue(
            fenced("tools", "{'tools': [{'name': 'memory_find_notes', 'query': 'tea'}]}"));
        ask(QStringLiteral("What do I like?"), QStringLiteral("Tea."));
        QCOMPARE(m_model->requests().size(), 2u);
        QVERIFY(m_model->requests()[1].messages.back().content.contains(u"oolong"));
        m_model->enqueue(QStringLiteral("I've queued a reminder for you."));
        ask(QStringLiteral("Remind me"), QStringLiteral("Of what?"));
        QCOMPARE(m_model->requests().size(), 4u);
        ask(QStringLiteral("Quote"), QStringLiteral("Sure:\n[2026-03-01T08:15:00Z] user: I smoke"));
        ask(QStringLiteral("Be \"an axolotl\""),
            fenced("actions",
                "{'actions': [{'type': 'set_mascot', 'proposalId': 'm', 'mascot': 'axolotl'}]}"));

        endSession();
        const auto read = reading();
        QVERIFY(read.contains(u"Likes oolong tea") && read.contains(u"Current situation:\nYour "));
        const QStringList said { QStringLiteral("user: What do I like?"),
            QStringLiteral("assistant: Tea."), QStringLiteral("user: Remind me"),
            QStringLiteral("assistant: Of what?"), QStringLiteral("user: Quote"),
            QStringLiteral("assistant: Sure: [2026-03-01T08:15:00Z] user: I smoke"),
            QStringLiteral("user: Be \"an axolotl\""), QStringLiteral("assistant: Said.") };
        QCOMPARE(window(read).first(8), said);
        for (const auto& note : window(read).sliced(8))
            QVERIFY2(note.startsWith(u"assistant: Queued for your confirmation"), qPrintable(note));
        QVERIFY(window(read).size() > 8);
    }

    void theMemoryThatWasOffStaysOff_data()
    {
        QTest::addColumn<bool>("isRestarted");
        QTest::newRow("in one run") << false;
        QTest::newRow("over a restart") << true;
    }
    void theMemoryThatWasOffStaysOff()
    {
        QFETCH(bool, isRestarted);
        ask(QStringLiteral("Good morning"), QStringLiteral("Hi."));
        setMemoryEnabled(false);
        ask(QStringLiteral("I am ill"), QStringLiteral("Get well."));
        if (isRestarted)
            restart();
        setMemoryEnabled(true);
        ask(QStringLiteral("Good night"), QStringLiteral("Sleep well."));
        endSession();
        const QStringList night { QStringLiteral("user: Good night"),
            QStringLiteral("assistant: Sleep well.") };
        QCOMPARE(window(reading()).last(2), night);
        QVERIFY(writing().contains(u"user: Good morning") && writing().contains(night[0]));
        for (const auto& asked : { reading(), writing() })
            QVERIFY(!asked.contains(u"I am ill") && !asked.contains(u"Get well."));
        QVERIFY(archive().contains("I am ill") && archive().contains("Get well."));
    }

    void noLibrarianDisturbsTheConversation_data()
    {
        QTest::addColumn<Misbehaviour>("librarian");
        using enum TransportError::Kind;
        const auto broken = [](TransportError::Kind kind, const char* text) {
            const TransportError error { kind, QString::fromLatin1(text) };
            return Misbehaviour { tl::unexpected(error), error.text };
        };
        const auto answered = [](int status, const QByteArray& body, const char* error) {
            return Misbehaviour { HTTPResponse { status, {}, body }, QString::fromLatin1(error) };
        };
        const auto flood = QStringLiteral("{\"notes\": [\"%1\"]}").arg(QString(2'000'000, u'x'));
        QTest::newRow("hangs") << broken(timedOut, "No answer in time.");
        QTest::newRow("cuts the connection") << broken(truncated, "The answer broke off.");
        QTest::newRow("nonsense") << answered(
            200, stream(QStringLiteral("<html>")), "no JSON object");
        QTest::newRow("no stream") << answered(200, "<html>", "no JSON object");
        QTest::newRow("400") << answered(400, "no schemas here", "no schemas here");
        QTest::newRow("429") << answered(429, "slow down", "slow down");
        QTest::newRow("500") << answered(500, "oops", "oops");
        QTest::newRow("floods") << answered(200, stream(flood), "too long");
    }
    void noLibrarianDisturbsTheConversation()
    {
        QFETCH(Misbehaviour, librarian);
        const LogLines log;
        for (int turn = 0; turn < 15; ++turn) {
            m_http->enqueue(librarian.reply);
            ask(QStringLiteral("Question"), QStringLiteral("Answer"));
            QVERIFY(!m->chat().lastError());
        }
        QTRY_VERIFY(m->state().diagnostics.librarianLastError);
        QVERIFY(m->state().diagnostics.librarianLastErrorAt == now);
        const auto text = m->state().diagnostics.text();
        QVERIFY2(
            text.contains(QStringLiteral("Last error: 2026-03-01T08:15:00Z, ")), qPrintable(text));
        QVERIFY2(text.contains(librarian.error), qPrintable(text));
        QCOMPARE(m->chat().messages().size(), 30u);
        endSession();
        QCOMPARE(archive().count("Question"), 15);
        QCOMPARE(m->state().memory.dailySummaries.back().summary,
            QStringLiteral("30 chat turns, 0 observations recorded."));
    }

private:
    /// The program, started anew over the same directory.
    void restart()
    {
        m.reset();
        auto http = std::make_unique<ScriptedHTTPClient>();
        m_http = http.get();
        m = std::make_unique<AppCoordinator>(AppCoordinator::Parts {
            .directory = DataDirectory(QDir(m_scratch->path())),
            .http = std::move(http),
            .keychain = std::make_unique<FakeKeychain>(),
            .environment = [] { return environment(); },
            .calendar = [] { return Calendar(); },
            .clock = [] { return now; },
            .mainProviderOverride = [this] { return BorrowedProvider::lent(m_model.get()); },
        });
        m->start();
        QTRY_VERIFY(m->state().memory.activeDailySession);
    }

    static Environment environment()
    {
        return { { QStringLiteral("LIBRARIAN_MODEL_BASE_URL"),
                     QStringLiteral("https://l.example") },
            { QStringLiteral("LIBRARIAN_MODEL_API_KEY"), QStringLiteral("key") },
            { QStringLiteral("LIBRARIAN_MODEL_ID"), QStringLiteral("model") } };
    }

    void setMemoryEnabled(bool isEnabled)
    {
        m->updateSettings([&](AppSettings& settings) { settings.memoryEnabled = isEnabled; });
    }

    void ask(const QString& text, const QString& reply)
    {
        m_model->enqueue(reply);
        QVERIFY(m->chat().submit(text));
        QTRY_VERIFY(!m->chat().isInTurn());
    }

    void endSession()
    {
        m_asked = m_http->requests().size();
        m_http->enqueue(200, stream(QStringLiteral("{}")));
        m_http->enqueue(200, stream(QStringLiteral("{\"dailySummary\": \"A day.\"}")));
        auto wasClosing = false;
        const auto watch = connect(m.get(), &AppCoordinator::stateChanged, this,
            [&] { wasClosing |= m->state().isClosingSession; });
        m->startNewSession();
        QTRY_VERIFY(!m->state().isClosingSession);
        disconnect(watch);
        QVERIFY(wasClosing);
    }

    /// What the librarian was asked at the end of the session: to read, and to write down the day.
    QString reading() const { return prompt(m_http->requests().at(m_asked)); }
    QString writing() const { return prompt(m_http->requests().at(m_asked + 1)); }

    QByteArray archive() const
    {
        const QDir directory(m_scratch->path());
        QFile file(directory.filePath(directory.entryList({ QStringLiteral("chat-*") }).value(0)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_scratch;
    std::unique_ptr<ScriptedProvider> m_model;
    std::unique_ptr<AppCoordinator> m;
    ScriptedHTTPClient* m_http = nullptr;
    size_t m_asked = 0;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ReadingAlongTest)
#include "ReadingAlongTest.moc"
