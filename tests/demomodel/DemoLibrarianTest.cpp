#include "PobblewigDemoModel/DemoReplies.h"

#include "foundation/EnumNames.h"
#include "foundation/ISO8601.h"
#include "memory/CleanupSnapshot.h"
#include "memory/librarian/LibrarianAnswers.h"
#include "memory/librarian/LibrarianSchemas.h"
#include "prompts/LibrarianPrompts.h"
#include "support/TableRow.h"

#include <QTimeZone>

namespace pobblewig {

namespace {

/// A Saturday in winter, in a zone an hour ahead of UTC.
QDateTime now()
{
    return { { 2026, 11, 21 }, { 14, 7, 30 }, QTimeZone("Europe/Berlin") };
}

TimePoint nowPoint()
{
    return TimePoint(std::chrono::milliseconds(now().toMSecsSinceEpoch()));
}

ChatRequest request(const QString& prompt, const std::optional<QString>& schema)
{
    ChatRequest request { .messages = { { QStringLiteral("user"), prompt, {}, {} } } };
    request.responseFormat = schema
        ? ChatResponseFormat { QStringLiteral("json_schema"), ChatSchema { *schema, {} } }
        : ChatResponseFormat { QStringLiteral("json_object"), std::nullopt };
    return request;
}

/// Asked with the schema and without it.
QString answer(const QString& prompt, const LLMResponseFormat& format)
{
    const auto told = DemoReplies::reply(request(prompt, format.name), now()).text;
    const auto guessed = DemoReplies::reply(request(prompt, std::nullopt), now()).text;
    return told == guessed ? told : QStringLiteral("the fallback differs: ") + guessed;
}

/// A line of the conversation, an hour before now.
QString user(const QString& text)
{
    return QStringLiteral("[2026-11-21T12:05:00Z] user: ") + text;
}

QString described(const ExtractionResult& found)
{
    QStringList all;
    for (const auto& note : found.notes)
        all.append(QStringLiteral("%1 %2: %3")
                       .arg(EnumNames::text(note.category), EnumNames::text(note.kind), note.text));
    for (const auto& observation : found.observations)
        all.append(QStringLiteral("%1: %2").arg(
            QStringList(observation.tags.begin(), observation.tags.end()).join(u','),
            observation.summary));
    for (const auto& item : found.referenceItems)
        all.append(
            QStringLiteral("%1: %2: %3 %4")
                .arg(item.path, item.title, item.summary, JSONValue(item.details).displayString()));
    for (const auto& section : found.proposedSections)
        all.append(QStringLiteral("%1: %2").arg(section.path, section.title));
    return all.join(u'|');
}

ExtractionResult extraction(const QString& window)
{
    const auto prompt = Prompts::extraction({
        .residentMemory = QStringLiteral("- I like spam"),
        .situation = user(QStringLiteral("I like spam")),
        .window = window,
        .referencePaths = { QStringLiteral("academics.exams"),
            QStringLiteral("academics.deadlines"), QStringLiteral("academics.professors"),
            QStringLiteral("people"), QStringLiteral("misc") },
    });
    return LibrarianAnswers::parseExtraction(
        answer(prompt, LibrarianSchemas::extraction()), {}, {}, nowPoint())
        .value();
}

DailyCloseout closeout(const QString& conversation, const std::vector<QString>& open = {},
    const QString& observations = {})
{
    const auto prompt = Prompts::dailyCloseout({ .dayKey = QStringLiteral("2026-11-21"),
        .previousIntent = open,
        .observations = observations,
        .activitySummary = QStringLiteral("I like spam"),
        .conversation = conversation });
    return LibrarianAnswers::parseCloseout(answer(prompt, LibrarianSchemas::dailyCloseout()))
        .value();
}

QString joined(const std::vector<QString>& texts)
{
    return QStringList(texts.begin(), texts.end()).join(u'|');
}

} // namespace

class DemoLibrarianTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatTheUserStatesIsRemembered_data()
    {
        QTest::addColumn<QString>("found");
        row("I like green tea", "preferences preference: The user likes green tea.");
        row("Good morning again! By the way, I really like Green Tea a lot!!",
            "preferences preference: The user likes Green Tea.");
        row("Do I like tea? I like it. hello", "");
        row("please remember that I don't like my bike and I hate mornings",
            "preferences preference: The user does not like their bike.|"
            "preferences preference: The user hates mornings.");
        row("my favorite colour is teal",
            "preferences preference: The user's favorite colour is teal.");
        row("don't nag me before noon",
            "preferences preference: The user asked: \"don't nag me before noon\".");
        row("My goal is to learn Welsh. I'd like to run a marathon",
            "goals goal: The user's goal is to learn Welsh.|goals goal: The user wants to run a "
            "marathon.");
        row("I want to call Ana tomorrow",
            "currentContext goal: The user wants to call Ana (Sunday, 22 November).");
        row("I study physics in Cork", "currentContext fact: The user studies physics in Cork.");
        row("No, it is on Friday", "misc correction: The user corrected: \"it is on Friday\".");
        row("no, the essay is due on Friday",
            "misc correction: The user corrected: \"the essay is due on "
            "Friday\".|academics.deadlines: Essay: Due Friday, 27 November, at 09:00. {dueAt: "
            "2026-11-27T09:00:00+01:00}");
        row("Actually, I prefer coffee", "preferences correction: The user prefers coffee.");
        row("no thanks", "");
        row("I am so tired, I slept badly before PSYC 2010",
            "sleep,fatigue,psyc-2010: The user is tired, they slept badly before PSYC 2010.");
        row("I went running", "movement: The user went running.");
        row("I am not stressed. Tomorrow I go running. I have to finish", "");
        row("My physics professor is Dr. Ada Byron",
            "academics.professors: Dr. Ada Byron: Teaches the user physics. {course: physics}");
        row("my roommate is Ana", "people: Ana: The user's roommate. {relation: roommate}");
        row("my psychology exam is on December 3rd at 10am",
            "academics.exams: Psychology exam: On Thursday, 3 December, at 10:00. {date: "
            "2026-12-03T10:00:00+01:00}");
        row("the essay is due on Friday",
            "academics.deadlines: Essay: Due Friday, 27 November, at 09:00. {dueAt: "
            "2026-11-27T09:00:00+01:00}");
        row("I have to hand in the essay tomorrow",
            "academics.deadlines: Essay: Due Sunday, 22 November, at 09:00. {dueAt: "
            "2026-11-22T09:00:00+01:00}");
        row("I've decided to drop Latin", "misc: Drop Latin: Decided by the user. {}");
        row("could you start a section about Sourdough Baking?",
            "custom.sourdough-baking: Sourdough Baking");
        row("I like {curly} braces }", "preferences preference: The user likes {curly} braces }.");
    }
    void whatTheUserStatesIsRemembered()
    {
        QTEST(described(extraction(user(QString::fromUtf8(QTest::currentDataTag())))), "found");
    }

    void onlyTheUsersOwnWordsCount()
    {
        const auto window = QStringList { user(QStringLiteral("hi\nI like tea")),
            QStringLiteral("[2026-11-21T12:06:00Z] assistant: I like cake\nI like wine"),
            user(QStringLiteral("I LIKE milk")), user(QStringLiteral("forget that I like milk")),
            user(QStringLiteral("I like tea")),
            user(QStringLiteral("I like ") + QString(4000, u'x')) };
        QCOMPARE(described(extraction(window.join(u'\n'))),
            QStringLiteral("preferences preference: The user likes tea."));
        QCOMPARE(described(extraction({})), QString());
    }

    void aWishForADayEndsWithIt()
    {
        const auto notes = extraction(user(QStringLiteral("I want to swim today"))).notes;
        QVERIFY(notes.at(0).isTemporary);
        // Midnight, an hour ahead of UTC.
        QCOMPARE(ISO8601::format(*notes[0].expiresAt), QStringLiteral("2026-11-21T23:00:00Z"));
        const auto late = user(QStringLiteral("I want to swim today"))
                              .replace(QStringLiteral("-21T"), QStringLiteral("-20T"));
        QVERIFY(extraction(late).notes.empty());
    }

    void aMeetingYieldsDatesAndDecisions()
    {
        const auto prompt = Prompts::meetingNotesExtraction({ .appName = QStringLiteral("Zoom"),
            .minutes = 30,
            .notes = QStringLiteral("# Notes\n- Deadline for the lab report: Friday\n* Decided to "
                                    "meet weekly\nSmall talk"),
            .referencePaths = {
                QStringLiteral("academics.deadlines"), QStringLiteral("decisions") } });
        const auto found = LibrarianAnswers::parseExtraction(
            answer(prompt, LibrarianSchemas::meetingNotesExtraction()), {}, {}, nowPoint());
        QCOMPARE(described(*found),
            QStringLiteral(
                "academics.deadlines: Lab report: Due Friday, 27 November, at 09:00. {dueAt: "
                "2026-11-27T09:00:00+01:00}|decisions: Meet weekly: Decided together. {}"));
    }

    void aDayIsTold()
    {
        const auto day = closeout(user(QStringLiteral("hello. I like tea")) + u'\n'
                + user(QStringLiteral("I have to email Ana tomorrow")),
            {},
            QStringLiteral("[2026-11-21T11:00:00Z] The user was glad.\n[2026-11-21T12:30:00Z] The "
                           "user likes tea."));
        QCOMPARE(day.summary,
            QStringLiteral("The user shared \"I like tea\", \"I have to email Ana tomorrow\". "
                           "Noted on the way: The user was glad. Still ahead: Email Ana (Sunday, "
                           "22 November). It was good to be along."));
        QCOMPARE(joined(day.highlights),
            QStringLiteral("12:00 The user was glad.|13:05 The user likes tea.|13:05 The user has "
                           "to email Ana tomorrow."));
        QVERIFY(day.unfinishedIntent
            == std::vector<CloseoutIntentItem>(
                { { QStringLiteral("Email Ana (Sunday, 22 November)"), IntentKind::task } }));
        QCOMPARE(closeout({}).summary,
            QStringLiteral("A quiet day without many words. It was good to be along."));
        QCOMPARE(closeout({}).highlights.size(), 0u);
    }

    void whatIsOpenStaysUntilItIsDone_data()
    {
        QTest::addColumn<QString>("open");
        const auto both =
            QStringLiteral("Hand in the essay (Sunday, 22 November)|Call the dentist");
        row("hello", both);
        row("I handed in the essay!", "Call the dentist");
        row("I haven't handed in the essay", both);
        row("I finished the dishes", both);
        row("I need to call the dentist", both);
        row("I should take a nap", both);
        row("remind me to call Ana on Friday",
            both + QStringLiteral("|Call Ana (Friday, 27 November)"));
        row("I'm waiting for the grade", both + QStringLiteral("|Grade"));
        row("The thesis is due on Friday", both + QStringLiteral("|Thesis (Friday, 27 November)"));
        row("I must water the plants. I finally did water the plants", both);
    }
    void whatIsOpenStaysUntilItIsDone()
    {
        QStringList open;
        const auto day = closeout(user(QString::fromUtf8(QTest::currentDataTag())),
            { QStringLiteral("Hand in the essay (Sunday, 22 November)"),
                QStringLiteral("Call the dentist"), QStringLiteral("Exam (Friday, 13 November)") });
        for (const auto& intent : day.unfinishedIntent)
            open.append(intent.text);
        QTEST(open.join(u'|'), "open");
    }

    void aWeekIsMadeOfItsDays()
    {
        const auto prompt = Prompts::weeklyRollup(
            QStringLiteral("2026-11-16\nRead. Slept.\nhighlights: 09:00 a; 10:00 b\nunresolved: x; "
                           "y\n\n2026-11-17\nQuiet\nunresolved: y"));
        const auto week =
            LibrarianAnswers::parseWeekly(answer(prompt, LibrarianSchemas::weeklyRollup()));
        QCOMPARE(week->summary, QStringLiteral("2026-11-16: Read. 2026-11-17: Quiet"));
        QCOMPARE(joined(week->highlights), QStringLiteral("2026-11-16 09:00 a|2026-11-16 10:00 b"));
        QCOMPARE(joined(week->unresolvedIntent), QStringLiteral("y"));
    }

    void aCleanupDropsOnlyTwinsAndWhatIsOver()
    {
        const auto note = [](const char* text, MemorySource source = {},
                              std::optional<TimePoint> end = {}) {
            return MemoryNote { .id = QUuid::createUuid(),
                .text = QString::fromUtf8(text),
                .category = MemoryCategory::goals,
                .kind = MemoryKind::goal,
                .source = source,
                .confidence = 0.5,
                .createdAt = nowPoint(),
                .lastObservedAt = nowPoint(),
                .isTemporary = end.has_value(),
                .expiresAt = end };
        };
        const auto synthesis = MemorySource::librarianSynthesis;
        const auto past = nowPoint() - std::chrono::minutes(1);
        const CleanupSnapshot seen {
            { note("Likes tea", synthesis), note("likes TEA!", synthesis),
                note("Plays {chess", synthesis), note("plays, chess", MemorySource::explicitUser),
                note("Swims", synthesis, past), note("Runs", MemorySource::explicitUser, past),
                note("Sings", synthesis, nowPoint() + std::chrono::minutes(1)) },
            { { .text = QStringLiteral("Often late"), .confidence = 0.5 } }
        };
        const auto text = answer(
            Prompts::cleanup(QString::fromUtf8(json::text(seen))), LibrarianSchemas::cleanup());
        const auto rewritten =
            LibrarianAnswers::parseCleanup(text, seen.notes, seen.patterns, nowPoint(), Calendar());
        auto kept = seen.notes;
        for (const size_t gone : { 4, 2, 1 })
            kept.erase(kept.begin() + qsizetype(gone));
        QVERIFY(rewritten->notes == kept);
        QVERIFY(rewritten->patterns == seen.patterns);
        QVERIFY(!LibrarianAnswers::parseCleanup(
            answer(Prompts::cleanup(QStringLiteral("{")), LibrarianSchemas::cleanup()), {}, {},
            nowPoint(), Calendar()));
    }

    void otherRequestsGetTheEmptiestAnswer()
    {
        QCOMPARE(DemoReplies::reply(
                     request(QStringLiteral("closing out one daily session"), std::nullopt), now())
                     .text,
            QStringLiteral("{}"));
        QCOMPARE(
            DemoReplies::reply(request(Prompts::weeklyRollup({}), QStringLiteral("other")), now())
                .text,
            QStringLiteral("{}"));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DemoLibrarianTest)
#include "DemoLibrarianTest.moc"
