#include "PobblewigDesktop/chat/ConversationLogic.h"
#include "PobblewigDesktop/chat/FindLogic.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using Kind = ConversationRow::Kind;
using Role = ChatMessage::Role;

/// 2026-03-01 08:15 UTC, a Sunday.
constexpr TimePoint now { 1772352900s };
const Calendar calendar { QTimeZone::utc(), QLocale(QStringLiteral("en_GB")) };

ChatMessage message(Role role, const QString& text = {}, TimePoint timestamp = now)
{
    return { .id = QUuid::createUuid(), .role = role, .text = text, .timestamp = timestamp };
}

std::vector<Kind> kinds(const std::vector<ChatMessage>& messages, const Calendar& of = calendar)
{
    std::vector<Kind> result;
    for (const auto& row : ConversationLogic::rows(messages, now, of))
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
        row("tomorrow", QDate(2026, 3, 2), "Monday, 2 March 2026");
        row("today", QDate(2026, 3, 1), "Today");
        row("over the month", QDate(2026, 2, 28), "Yesterday");
        row("six days", QDate(2026, 2, 23), "Monday");
        row("a week", QDate(2026, 2, 22), "Sunday, 22 February 2026");
    }
    void aDayIsCalledByItsDistance()
    {
        QFETCH(QDate, day);
        const auto title = ConversationLogic::dayTitle(day, QDate(2026, 3, 1), calendar.locale);
        QTEST(title, "title");
    }

    void daysBeginAtTheReadersMidnight()
    {
        const auto evening = message(Role::user, {}, now - 9h);
        const Calendar west { QTimeZone(-9 * 3600), calendar.locale };
        QCOMPARE(kinds({ evening, message(Role::user) }),
            (std::vector { Kind::day, Kind::user, Kind::day, Kind::user }));
        QCOMPARE(kinds({ evening, message(Role::user) }, west),
            (std::vector { Kind::day, Kind::user, Kind::user }));
    }

    void whatNobodyAskedForIsANote()
    {
        const auto user = message(Role::user);
        const auto buddy = message(Role::assistant);
        auto proactive = buddy;
        proactive.relatedInterventionID = QUuid::createUuid();
        QCOMPARE(kinds({ buddy, user, buddy, buddy, proactive, buddy, user, user, buddy }),
            (std::vector { Kind::day, Kind::assistant, Kind::user, Kind::assistant, Kind::note,
                Kind::proactive, Kind::note, Kind::user, Kind::user, Kind::assistant }));
        QCOMPARE(kinds({ message(Role::system) }), (std::vector { Kind::day, Kind::note }));
    }

    void whatIsAnsweredBecomesOneCardWhereItWasMade()
    {
        using enum ProposalCard::Outcome;
        const auto ids = std::array { QUuid::createUuid(), QUuid::createUuid(), QUuid::createUuid(),
            QUuid::createUuid() };
        const auto about = [&](int proposal, const char* text) {
            auto told = message(Role::assistant, QString::fromLatin1(text));
            told.proposalID = ids[size_t(proposal)];
            return told;
        };
        const auto user = message(Role::user);
        const auto buddy = message(Role::assistant);
        const std::vector<ChatMessage> messages { user, buddy, about(0, "Queued"),
            about(1, "Queued"), about(2, "Queued"), user, about(3, "Queued"), about(0, "Done"),
            buddy, about(1, "Forgot it"), user };
        const ProposalCards cards {
            { ids[0], { .proposalId = u"a"_s, .outcome = done, .text = u"Mode: Focus"_s } },
            { ids[1], { .proposalId = u"b"_s, .outcome = dismissed } },
            { ids[2], { .proposalId = u"c"_s } },
        };
        const auto rows = ConversationLogic::rows(messages, now, calendar, cards);
        std::vector<Kind> shown;
        for (const auto& row : rows)
            shown.push_back(row.kind);
        QCOMPARE(shown,
            (std::vector { Kind::day, Kind::user, Kind::assistant, Kind::card, Kind::card,
                Kind::user, Kind::assistant, Kind::note, Kind::user }));
        QCOMPARE(rows[3].text, u"Mode: Focus"_s);
        QCOMPARE(rows[4].text, u"Forgot it"_s);
        QVERIFY(rows[3].isFirstOfCard && !rows[3].isLastOfCard);
        QVERIFY(!rows[4].isFirstOfCard && rows[4].isLastOfCard);

        // What is shown anew from a message on is the same as before.
        for (size_t changed = 0; changed <= messages.size(); ++changed) {
            const auto first = ConversationLogic::firstToShow(messages, changed);
            QVERIFY(first <= changed);
            const auto part = ConversationLogic::rows(messages, now, calendar, cards, first);
            QVERIFY(std::equal(part.rbegin(), part.rend(), rows.rbegin()));
            QVERIFY(first == 0 || rows[rows.size() - part.size() - 1].id == messages[first - 1].id);
        }
    }

    void everyMatchIsFoundInOrder()
    {
        const std::vector<ConversationRow> rows {
            { .kind = Kind::day, .text = QStringLiteral("Today, aa") },
            { .kind = Kind::user, .id = QUuid::createUuid(), .text = QStringLiteral("aAa b") },
            { .kind = Kind::assistant, .id = QUuid::createUuid(), .text = QStringLiteral("xAA") },
            { .kind = Kind::preview, .text = QStringLiteral("aa") },
        };
        const auto sourceOf = [](const auto& row) { return row.text; };
        const auto found = FindLogic::matches(rows, QStringLiteral("aa"), sourceOf);
        QCOMPARE(found,
            (std::vector<MessageRange> { { rows[1].id, { 0, 2 } }, { rows[2].id, { 1, 2 } } }));
        QVERIFY(FindLogic::matches(rows, {}, sourceOf).empty());

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
