#include "AppTurn.h"
#include "foundation/EnumNames.h"
#include "foundation/ISO8601.h"
#include "memory/CleanupSnapshot.h"
#include "memory/librarian/LibrarianAnswers.h"
#include "memory/librarian/LibrarianSchemas.h"
#include "prompts/LibrarianPrompts.h"
#include "support/Joined.h"

#include <span>

namespace pobblewig {

namespace {

const TimePoint now(std::chrono::milliseconds(demoNow().toMSecsSinceEpoch()));

ChatRequest request(const QString& prompt, const std::optional<QString>& schema)
{
    ChatRequest request { .messages = { { u"user"_s, prompt, {}, {} } } };
    request.responseFormat = schema
        ? ChatResponseFormat { u"json_schema"_s, ChatSchema { *schema, {} } }
        : ChatResponseFormat { u"json_object"_s, std::nullopt };
    return request;
}

/// Asked with the schema and without it.
QString answer(const QString& prompt, const LLMResponseFormat& format)
{
    const auto told = DemoReplies::reply(request(prompt, format.name), demoNow()).text;
    const auto guessed = DemoReplies::reply(request(prompt, std::nullopt), demoNow()).text;
    return told == guessed ? told : u"the fallback differs: "_s + guessed;
}

/// A line of the conversation, an hour before now.
QString user(const QString& text)
{
    return u"[2026-11-21T12:05:00Z] user: "_s + text;
}

/// What of the answer concerns one kind of memory is told in one line each.
QString described(const ExtractionResult& found)
{
    QStringList all;
    for (const auto& note : found.notes)
        all += u"%1 %2: %3"_s.arg(
            EnumNames::text(note.category), EnumNames::text(note.kind), note.text);
    for (const auto& observation : found.observations)
        all += joined(observation.tags) + u": "_s + observation.summary;
    for (const auto& item : found.referenceItems)
        all += u"%1: %2: %3 %4"_s.arg(
            item.path, item.title, item.summary, JSONValue(item.details).displayString());
    for (const auto& section : found.proposedSections)
        all += section.path + u": "_s + section.title;
    return all.join(u'|');
}

ExtractionResult extraction(const QString& window)
{
    const auto prompt = Prompts::extraction({ .residentMemory = u"- I like spam"_s,
        .situation = user(u"I like spam"_s),
        .window = window,
        .referencePaths = { u"academics.exams"_s, u"academics.deadlines"_s,
            u"academics.professors"_s, u"people"_s, u"misc"_s } });
    const auto text = answer(prompt, LibrarianSchemas::extraction());
    return LibrarianAnswers::parseExtraction(text, {}, {}, now).value();
}

DailyCloseout closeout(const QString& conversation, const std::vector<QString>& open = {},
    const QString& observations = {})
{
    const auto prompt = Prompts::dailyCloseout({ .dayKey = u"2026-11-21"_s,
        .previousIntent = open,
        .observations = observations,
        .activitySummary = u"I like spam"_s,
        .conversation = conversation });
    return LibrarianAnswers::parseCloseout(answer(prompt, LibrarianSchemas::dailyCloseout()))
        .value();
}

} // namespace

class DemoLibrarianTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatTheUserStatesIsRemembered_data()
    {
        columns<QString>("found");
        row("Do I like tea? I like it. no thanks. I am not stressed. Tomorrow I go running", "");
        row("Good day! By the way, I don't like my bike and I really hate mornings a lot!!",
            "preferences preference: The user does not like their bike.|"
            "preferences preference: The user hates mornings.");
        row("my favorite colour is teal. don't nag me",
            "preferences preference: The user's favorite colour is teal.|"
            "preferences preference: The user asked: \"don't nag me\".");
        row("My goal is to learn Welsh. I want to call Ana tomorrow. I study law in Cork",
            "goals goal: The user's goal is to learn Welsh.|"
            "currentContext goal: The user wants to call Ana (Sunday, 22 November).|"
            "currentContext fact: The user studies law in Cork.");
        row("no, the essay is due on Friday",
            "misc correction: The user corrected: \"the essay is due on Friday\".|"
            "academics.deadlines: Essay: Due Friday, 27 November, at 09:00. "
            "{dueAt: 2026-11-27T09:00:00+01:00}");
        row("Actually, I prefer coffee", "preferences correction: The user prefers coffee.");
        row("I am so tired, I slept badly before PSYC 2010",
            "sleep|fatigue|psyc-2010: The user is tired, they slept badly before PSYC 2010.");
        row("My physics professor is Dr. Ada Byron. my roommate is Ana",
            "academics.professors: Dr. Ada Byron: Teaches the user physics. {course: physics}|"
            "people: Ana: The user's roommate. {relation: roommate}");
        row("my psychology exam is on December 3rd at 10am. I've decided to drop Latin",
            "academics.exams: Psychology exam: On Thursday, 3 December, at 10:00. "
            "{date: 2026-12-03T10:00:00+01:00}|misc: Drop Latin: Decided by the user. {}");
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
        const QStringList window { user(u"hi\nI like tea"_s),
            u"[2026-11-21T12:06:00Z] assistant: I like cake\nI like wine"_s, user(u"I LIKE milk"_s),
            user(u"forget that I like milk"_s), user(u"I like tea"_s),
            user(u"I like "_s + QString(4000, u'x')) };
        QCOMPARE(described(extraction(window.join(u'\n'))),
            u"preferences preference: The user likes tea.");
    }

    void aWishForADayEndsWithIt()
    {
        const auto wish = user(u"I want to swim today"_s);
        const auto note = extraction(wish).notes.at(0);
        // Midnight, an hour ahead of UTC.
        QCOMPARE(ISO8601::format(*note.expiresAt), u"2026-11-21T23:00:00Z");
        QVERIFY(extraction(QString(wish).replace(u"-21T"_s, u"-20T"_s)).notes.empty());
    }

    void aDayIsTold()
    {
        const auto day = closeout(
            user(u"hello. I like tea"_s) + u'\n' + user(u"I have to email Ana tomorrow"_s), {},
            u"[2026-11-21T11:00:00Z] The user was glad.\n[2026-11-21T12:30:00Z] The user likes tea."_s);
        QCOMPARE(day.summary,
            u"The user shared \"I like tea\", \"I have to email Ana tomorrow\". Noted on the way: "
            "The user was glad. Still ahead: Email Ana (Sunday, 22 November). It was good to be "
            "along.");
        QCOMPARE(joined(day.highlights),
            u"12:00 The user was glad.|13:05 The user likes tea.|13:05 The user has to email Ana "
            "tomorrow.");
        QCOMPARE(closeout({}).summary, u"A quiet day without many words. It was good to be along.");
    }

    void whatIsOpenStaysUntilItIsDone_data()
    {
        columns<QString>("open");
        const auto both = u"Hand in the essay (Sunday, 22 November)|Call the dentist"_s;
        row("I handed in the essay!", "Call the dentist");
        row("I haven't handed in the essay. I finished the dishes. I should take a nap", both);
        row("remind me to call Ana on Friday", both + u"|Call Ana (Friday, 27 November)"_s);
        row("I'm waiting for the grade", both + u"|Grade"_s);
        row("I must water the plants. I finally did water the plants", both);
    }
    void whatIsOpenStaysUntilItIsDone()
    {
        const auto day = closeout(user(QString::fromUtf8(QTest::currentDataTag())),
            { u"Hand in the essay (Sunday, 22 November)"_s, u"Call the dentist"_s,
                u"Exam (Friday, 13 November)"_s });
        QTEST(joined(day.unfinishedIntent, &CloseoutIntentItem::text), "open");
    }

    void aWeekIsMadeOfItsDays()
    {
        const auto prompt = Prompts::weeklyRollup(
            u"2026-11-16\nRead. Slept.\nhighlights: 09:00 a; 10:00 b\nunresolved: x; y\n\n"
            "2026-11-17\nQuiet\nunresolved: y"_s);
        const auto week =
            LibrarianAnswers::parseWeekly(answer(prompt, LibrarianSchemas::weeklyRollup()));
        QCOMPARE(week->summary, u"2026-11-16: Read. 2026-11-17: Quiet");
        QCOMPARE(joined(week->highlights), u"2026-11-16 09:00 a|2026-11-16 10:00 b");
        QCOMPARE(joined(week->unresolvedIntent), u"y");
    }

    void aCleanupDropsOnlyTwinsAndWhatIsOver()
    {
        const auto note = [](const char* text, MemorySource source,
                              std::optional<TimePoint> end = {}) {
            return MemoryNote { .id = QUuid::createUuid(),
                .text = QString::fromUtf8(text),
                .source = source,
                .confidence = 0.5,
                .createdAt = now,
                .lastObservedAt = now,
                .isTemporary = end.has_value(),
                .expiresAt = end };
        };
        using enum MemorySource;
        const auto minute = std::chrono::minutes(1);
        const CleanupSnapshot seen {
            { note("Likes tea", librarianSynthesis), note("plays, chess", explicitUser),
                note("Runs", explicitUser, now - minute),
                note("Sings", librarianSynthesis, now + minute),
                note("likes TEA!", librarianSynthesis), note("Plays {chess", librarianSynthesis),
                note("Swims", librarianSynthesis, now - minute) },
            { { .text = u"Often late"_s, .confidence = 0.5 } }
        };
        const auto cleaned = [&](const QString& memory) {
            const auto text = answer(Prompts::cleanup(memory), LibrarianSchemas::cleanup());
            return LibrarianAnswers::parseCleanup(text, seen.notes, seen.patterns, now, Calendar());
        };
        const auto result = cleaned(QString::fromUtf8(json::text(seen)));
        QVERIFY(std::ranges::equal(result->notes, std::span(seen.notes).first(4)));
        QVERIFY(result->patterns == seen.patterns);
        QVERIFY(!cleaned(u"{"_s));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DemoLibrarianTest)
#include "DemoLibrarianTest.moc"
