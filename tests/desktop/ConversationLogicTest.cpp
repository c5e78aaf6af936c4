#include "PobblewigDesktop/ConversationLogic.h"
#include "PobblewigDesktop/FindLogic.h"

#include <QTest>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using Kind = ConversationRow::Kind;
using Role = ChatMessage::Role;

/// 2026-03-01 08:15 UTC, a Sunday.
constexpr TimePoint now { 1772352900s };
const Calendar calendar { QTimeZone::utc(), QLocale(QStringLiteral("en_GB")) };

ChatMessage message(Role role, const QString& text, TimePoint timestamp = now)
{
    return { .id = QUuid::createUuid(), .role = role, .text = text, .timestamp = timestamp };
}

std::vector<Kind> kinds(const std::vector<ChatMessage>& messages)
{
    std::vector<Kind> result;
    for (const auto& row : ConversationLogic::rows(messages, now, calendar))
        result.push_back(row.kind);
    return result;
}

} // namespace

class ConversationLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDayIsCalledByItsDistance_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QString>("title");
        QTest::newRow("tomorrow") << QDate(2026, 3, 2) << QStringLiteral("Monday, 2 March 2026");
        QTest::newRow("today") << QDate(2026, 3, 1) << QStringLiteral("Today");
        QTest::newRow("over the month") << QDate(2026, 2, 28) << QStringLiteral("Yesterday");
        QTest::newRow("six days") << QDate(2026, 2, 23) << QStringLiteral("Monday");
        QTest::newRow("a week") << QDate(2026, 2, 22) << QStringLiteral("Sunday, 22 February 2026");
    }
    void aDayIsCalledByItsDistance()
    {
        QFETCH(QDate, day);
        QFETCH(QString, title);
        QCOMPARE(ConversationLogic::dayTitle(day, QDate(2026, 3, 1), calendar.locale), title);
    }

    void daysBeginAtTheReadersMidnight()
    {
        const auto evening = now - 9h;
        const std::vector messages { message(Role::user, {}, evening),
            message(Role::assistant, {}) };
        QCOMPARE(
            kinds(messages), (std::vector { Kind::day, Kind::user, Kind::day, Kind::assistant }));
        const Calendar west { QTimeZone(-9 * 3600), calendar.locale };
        QCOMPARE(ConversationLogic::rows(messages, now, west).size(), 3u);
    }

    void whatNobodyAskedForIsANote()
    {
        auto proactive = message(Role::assistant, {});
        proactive.relatedInterventionID = QUuid::createUuid();
        const auto user = message(Role::user, {});
        const auto buddy = message(Role::assistant, {});
        QCOMPARE(kinds({ buddy, user, buddy, buddy, proactive, buddy, user, user, buddy }),
            (std::vector { Kind::day, Kind::assistant, Kind::user, Kind::assistant, Kind::note,
                Kind::proactive, Kind::note, Kind::user, Kind::user, Kind::assistant }));
        QCOMPARE(kinds({ message(Role::system, {}) }), (std::vector { Kind::day, Kind::note }));
    }

    void aRowSaysWhoSpeaksAndWhen()
    {
        ConversationRow row {
            .kind = Kind::user, .text = QStringLiteral("Hi"), .time = QStringLiteral("14:05")
        };
        QCOMPARE(ConversationLogic::spoken(row), QStringLiteral("You, 14:05: Hi"));
        row.hadImage = true;
        QCOMPARE(ConversationLogic::spoken(row),
            QStringLiteral("You, 14:05, with a picture of the screen: Hi"));
        // What a message says is never taken for a calendar to fill in.
        row = { .kind = Kind::note, .text = QStringLiteral("%1"), .time = QStringLiteral("%2") };
        QCOMPARE(ConversationLogic::spoken(row), QStringLiteral("Note, %2: %1"));
    }

    void theTranscriptNamesDaysSpeakersAndTimes()
    {
        QCOMPARE(ConversationLogic::transcript(
                     { message(Role::user, QStringLiteral("Hi %1"), now - 24h),
                         message(Role::assistant, QStringLiteral("Hello\nyou")) },
                     calendar),
            QStringLiteral("Saturday, 28 February 2026\n\nYou, 08:15\nHi %1\n\n"
                           "Sunday, 1 March 2026\n\nPobblewig, 08:15\nHello\nyou\n\n"));
    }

    void everyMatchIsFoundInOrder()
    {
        const std::vector<ConversationRow> rows {
            { .kind = Kind::day, .text = QStringLiteral("Today, aa") },
            { .kind = Kind::user, .id = QUuid::createUuid(), .text = QStringLiteral("aAa b") },
            { .kind = Kind::assistant, .id = QUuid::createUuid(), .text = QStringLiteral("xAA") },
            { .kind = Kind::preview, .text = QStringLiteral("aa") },
        };
        const auto found = FindLogic::matches(rows, QStringLiteral("aa"));
        QCOMPARE(found,
            (std::vector<MessageRange> { { rows[1].id, { 0, 2 } }, { rows[2].id, { 1, 2 } } }));
        QVERIFY(FindLogic::matches(rows, {}).empty());

        QCOMPARE(FindLogic::neighbour(found, std::nullopt, 1), 1u);
        QCOMPARE(FindLogic::neighbour(found, found[1], 1), 0u);
        QCOMPARE(FindLogic::neighbour(found, found[0], -1), 1u);
        QCOMPARE(FindLogic::neighbour(found, found[0], 0), 0u);
        QVERIFY(!FindLogic::neighbour({}, std::nullopt, 1));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ConversationLogicTest)
#include "ConversationLogicTest.moc"
