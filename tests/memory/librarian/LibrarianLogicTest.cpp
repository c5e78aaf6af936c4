#include "memory/librarian/LibrarianLogic.h"

#include "support/TableRow.h"

namespace pobblewig {

using namespace std::chrono_literals;
using std::chrono::days;

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

ChatMessage message(ChatMessage::Role role, const QString& text)
{
    return { .id = QUuid::createUuid(),
        .role = role,
        .text = text,
        .timestamp = now,
        .sessionID = QUuid::createUuid() };
}

DatedObservation observation(const QString& summary)
{
    return { .occurredAt = now, .summary = summary };
}

PeriodSummary daily(TimePoint start, const QString& summary, std::vector<QString> highlights,
    std::vector<QString> open)
{
    return { .startDate = start,
        .summary = summary,
        .chronologicalHighlights = std::move(highlights),
        .unresolvedIntent = std::move(open) };
}

QString joined(const std::vector<QString>& texts)
{
    return QStringList(texts.begin(), texts.end()).join(u'|');
}

} // namespace

class LibrarianLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theWindowHasALineForWhatWasSaid()
    {
        using enum ChatMessage::Role;
        auto offTheRecord = message(user, QStringLiteral("hidden"));
        offTheRecord.sessionID.reset();
        const auto text = LibrarianLogic::windowText({ message(user, QStringLiteral("Hi %1\n[x]")),
            message(system, QStringLiteral("hidden")), offTheRecord,
            message(assistant, QString(5000, u'a')) });
        QCOMPARE(text,
            QStringLiteral("[2026-03-01T08:15:00Z] user: Hi %1 [x]\n"
                           "[2026-03-01T08:15:00Z] assistant: ")
                + QString(4000, u'a'));
        QCOMPARE(LibrarianLogic::windowText({}), QString());
    }

    void whatCameAfterTheLastOneIsNew()
    {
        const std::vector messages { message({}, {}), message({}, {}), message({}, {}) };
        const auto countAfter = [&](const std::optional<QUuid>& last) {
            return LibrarianLogic::messagesAfter(messages, last).size();
        };
        QCOMPARE(countAfter(messages[1].id), 1u);
        QCOMPARE(countAfter(messages[2].id), 0u);
        QCOMPARE(countAfter(QUuid::createUuid()), 3u);
        QCOMPARE(countAfter(std::nullopt), 3u);
    }

    void aDayWithoutAModelIsToldInNumbers_data()
    {
        QTest::addColumn<int>("turns");
        QTest::addColumn<int>("observations");
        QTest::addColumn<QString>("summary");
        row("nothing", 0, 0, "0 chat turns, 0 observations recorded.");
        row("one each", 1, 1, "1 chat turn, 1 observation recorded. First noted: event 1");
        row("several", 3, 2, "3 chat turns, 2 observations recorded. First noted: event 1");
    }
    void aDayWithoutAModelIsToldInNumbers()
    {
        QFETCH(int, turns);
        QFETCH(int, observations);
        std::vector window { message(ChatMessage::Role::system, QStringLiteral("hidden")) };
        window.resize(size_t(turns) + 1, message(ChatMessage::Role::user, {}));
        std::vector<DatedObservation> seen;
        for (int number = 1; number <= observations; ++number)
            seen.push_back(observation(QStringLiteral("event %1").arg(number)));
        const auto closeout =
            LibrarianLogic::deterministicCloseout(window, seen, { QStringLiteral("open") });
        QTEST(closeout.summary, "summary");
        QCOMPARE(closeout.highlights.size(), size_t(observations));
        QVERIFY(closeout.unfinishedIntent
            == std::vector<CloseoutIntentItem>({ { QStringLiteral("open") } }));
    }

    void aWeekIsGatheredFromItsDays()
    {
        const Calendar tokyo { QTimeZone("Asia/Tokyo"), QLocale::c() };
        const auto a = QStringLiteral("a"), b = QStringLiteral("b"), c = QStringLiteral("c");
        const std::vector dailies {
            daily(now, QStringLiteral("Wrote %1."), { a, b }, { c, a }),
            daily(now + 7h, QStringLiteral("Rested."), {}, { QStringLiteral("C"), b }),
        };
        QCOMPARE(LibrarianLogic::dailiesText(dailies, tokyo),
            QStringLiteral("2026-03-01\nWrote %1.\nhighlights: a; b\nunresolved: c; a\n\n"
                           "2026-03-02\nRested.\nunresolved: C; b"));
        const auto week = LibrarianLogic::deterministicWeekly(dailies, tokyo);
        QCOMPARE(week.summary, QStringLiteral("[2026-03-01] Wrote %1.\n[2026-03-02] Rested."));
        QCOMPARE(joined(week.highlights), QStringLiteral("a|b"));
        QCOMPARE(joined(week.unresolvedIntent), QStringLiteral("c|a|b"));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::LibrarianLogicTest)
#include "LibrarianLogicTest.moc"
