#include "coordination/World.h"
#include "foundation/ISO8601.h"
#include "support/Joined.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using ProactiveLogic::QuickAnswer;
using std::chrono::days;

} // namespace

/// The messages that the companion begins, with a clock that moves at each look.
class SpeakingFirstTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m = std::make_unique<World>();
        m->step = 3s;
        m_announced.clear();
        (*m)->onInterventionFired = [this](const auto& message) { m_announced << message; };
    }

    void aCloseDeadlineIsSpokenOfOnceADay()
    {
        addDeadline(u"Essay"_s, m->time + 30h, u"canvas_sync"_s);
        addDeadline(u"Lab"_s, m->time + 50h, u"canvas_sync"_s);
        m->poll();
        QCOMPARE(said(), QString());
        m->time += 7h;
        speak(u"The essay is due tomorrow."_s);
        QCOMPARE(said(), u"The essay is due tomorrow."_s);
        QCOMPARE(m_announced, QStringList(u"The essay is due tomorrow."_s));
        const auto prompt = m->model.requests().back().messages.front().content;
        QVERIFY(
            prompt.contains(u"A Canvas deadline is close: \"Essay\" for Art is due 2 Mar 2026"));
        QVERIFY(prompt.contains(u"(about 22 hours left) and nothing is submitted yet."));
        QVERIFY(prompt.endsWith(u"\n\nReply with only the reminder text."));
        const auto& record = records().front();
        QCOMPARE(record.triggerType, u"canvas_deadline");
        QCOMPARE((*m)->chat().messages().back().relatedInterventionID, record.id);
        QCOMPARE((*m)->usage().snapshot().interventions, 1);
        QCOMPARE((*m)->memory().observations.search({}).front().summary,
            u"Canvas deadline reminder: Essay");
        m->poll();
        m->restart();
        m->poll();
        QCOMPARE(records().size(), 1u);
        m->time += 21h;
        speak(u"Two hours left."_s);
        QCOMPARE(said(), u"Two hours left."_s);
    }

    void overlappingPollsSendOne()
    {
        addDeadline(u"Essay"_s, m->time + 3h, u"classroom_sync"_s);
        m->model.enqueueHeld(u"Soon."_s);
        auto first = (*m)->pollOnce();
        QTRY_COMPARE(m->model.requests().size(), 1u);
        m->poll();
        m->model.release();
        awaited(std::move(first));
        QCOMPARE(joined(records(), &InterventionRecord::triggerType), u"classroom_deadline"_s);
        QVERIFY(m->model.requests().front().messages.front().content.contains(
            u"A Google Classroom deadline is close"));
    }

    void whatTheModelFailsAtIsTriedAgain_data()
    {
        columns<ScriptedProvider::Reply>("reply");
        using Reply = ScriptedProvider::Reply;
        row("an error", Reply { {}, LLMFailure(LLMError::invalidResponse(u"no"_s)) });
        row("nothing", Reply { { LLMToken { u" \n"_s } } });
        row("code alone", Reply { { LLMToken { u"```json\n{}\n```"_s } } });
        row("half a sentence",
            Reply { { LLMToken { u"The"_s } }, {}, false, { .isCutOff = true } });
    }
    void whatTheModelFailsAtIsTriedAgain()
    {
        QFETCH(ScriptedProvider::Reply, reply);
        addDeadline(u"Essay"_s, m->time + 5h, u"canvas_sync"_s);
        for (size_t attempt = 1; attempt <= 3; ++attempt) {
            m->model.enqueue(reply);
            m->poll();
            QCOMPARE(m->model.requests().size(), attempt);
            QVERIFY(records().empty());
        }
        m->poll();
        QVERIFY2(m->model.requests().size() == 3, "then it is left alone for a while");
        m->time += 5min;
        speak(u"\"The essay is due.\""_s);
        QCOMPARE(said(), u"The essay is due."_s);
    }

    void nobodyIsDisturbed()
    {
        addDeadline(u"Essay"_s, m->time + 20h, u"canvas_sync"_s);
        const auto staysSilent = [this] {
            m->poll();
            return m->model.requests().empty();
        };
        (*m)->modes().pauseObservation(m->time + 1h);
        QVERIFY(staysSilent());
        m->time += 1h;
        (*m)->modes().setMode(CoachMode::doNotDisturb);
        QVERIFY(staysSilent());
        (*m)->modes().setMode(CoachMode::focus);
        for (const auto occupation : { Occupation::call, Occupation::fullScreen }) {
            m->occupation.now = occupation;
            QVERIFY(staysSilent());
        }
        QVERIFY((*m)->diagnostics().text().contains(
            u"Canvas deadlines: not sent: a full-screen window is in front (since "));
        m->occupation.now = Occupation::none;
        (*m)->updateSettings([](auto& each) { each.canvasDeadlineRemindersEnabled = false; });
        QVERIFY(staysSilent());
        (*m)->updateSettings([](auto& each) { each.canvasDeadlineRemindersEnabled = true; });
        speak(u"Now."_s);
        QCOMPARE(said(), u"Now."_s);
    }

    void aQuickAnswerChangesWhatFollows_data()
    {
        columns<QuickAnswer, std::chrono::hours, QString, size_t>(
            "answer", "later", "word", "messages");
        row("got it", QuickAnswer::gotIt, 24h, u"[accepted]"_s, size_t(1));
        row("not now", QuickAnswer::notNow, 24h, u"[dismissed]"_s, size_t(2));
        row("that's wrong", QuickAnswer::thatsWrong, 24h, u"[contextCorrected]"_s, size_t(1));
        row("later", QuickAnswer::remindLater, 3h, u"[snoozed]"_s, size_t(2));
    }
    void aQuickAnswerChangesWhatFollows()
    {
        QFETCH(QuickAnswer, answer);
        QFETCH(std::chrono::hours, later);
        QFETCH(QString, word);
        QFETCH(size_t, messages);
        (*m)->updateSettings([](auto& each) { each.canvasDeadlineReminderHours = 72; });
        addDeadline(u"Essay"_s, m->time + 60h, u"canvas_sync"_s);
        speak(u"Anything else?"_s);
        (*m)->interventions().answer(records().front().id, answer);
        const auto isWrong = answer == QuickAnswer::thatsWrong;
        QCOMPARE(said() == u"Sorry about that. What did I get wrong?", isWrong);
        m->poll();
        QCOMPARE(records().size(), 1u);
        m->ask(u"hm"_s);
        QVERIFY(m->prompt().contains(u"Recent proactive messages: Anything else? "_s + word));
        QCOMPARE(m->prompt().contains(u"latest proactive message is wrong"), isWrong);
        m->time += later;
        speak(u"Again."_s);
        QCOMPARE(records().size(), messages);
    }

    void theDayBeginsWithABriefing()
    {
        brief();
        QVERIFY2(m->model.requests().empty(), "nothing tells of the user's days");
        for (int number = 1; number <= 7; ++number)
            addDeadline(u"Task %1"_s.arg(number), m->time + number * 8h, u"canvas_sync"_s);
        addDeadline(u"Done"_s, m->time + 1h, u"canvas_sync"_s, u"submitted"_s);
        (*m)->updateSettings([](auto& each) { each.canvasDeadlineReminderHours = 0; });
        brief();
        QCOMPARE(m->model.requests().size(), 1u);
        QVERIFY2(records().empty(), "nothing was scripted");
        m->model.enqueue(u"Six things."_s);
        brief();
        brief();
        QCOMPARE(said(), u"Six things."_s);
        QCOMPARE(m_announced, QStringList());
        QCOMPARE(records().front().triggerType, u"daily_briefing");
        const auto prompt = m->model.requests().back().messages.front().content;
        QVERIFY(prompt.contains(u"- Task 5 — ") && !prompt.contains(u"- Task 6"));
        QVERIFY(prompt.contains(u"2 more due this week") && !prompt.contains(u"Done"));
        m->time += days(1);
        (*m)->modes().setMode(CoachMode::doNotDisturb);
        brief();
        (*m)->modes().setMode(CoachMode::openEnded);
        m->model.enqueue(u"Good morning."_s);
        brief();
        QCOMPARE(said(), u"Good morning."_s);
    }

    void aBriefingDoesNotTalkOverAnotherMessage()
    {
        addDeadline(u"Essay"_s, m->time + 5h, u"canvas_sync"_s);
        speak(u"The essay."_s);
        brief();
        QCOMPARE(said(), u"The essay."_s);
        (*m)->interventions().answer(records().front().id, QuickAnswer::gotIt);
        m->model.enqueue(u"One thing is due."_s);
        brief();
        QCOMPARE(said(), u"One thing is due."_s);
    }

    void aFreeDayIsSaidToBeFree()
    {
        (*m)->updateSettings([](auto& each) { each.calendarSyncEnabled = true; });
        m->model.enqueue(u"Clear skies."_s);
        brief();
        const auto prompt = m->model.requests().back().messages.front().content;
        QVERIFY(prompt.contains(u"Nothing is due and the schedule is clear"));
        QVERIFY(!prompt.contains(u"in the next"));
    }

private:
    void addDeadline(const QString& title, TimePoint due, const QString& source,
        const QString& state = u"unsubmitted"_s)
    {
        (*m)->memory().reference.upsertItem({ .id = QUuid::createUuid(),
            .path = deadlinesPath.toString(),
            .title = title,
            .summary = u"Due soon"_s,
            .details = { { u"dueAt"_s, JSONValue(ISO8601::format(due)) },
                { u"course"_s, JSONValue(u"Art"_s) }, { u"submissionState"_s, JSONValue(state) } },
            .source = source });
    }

    void speak(const QString& reply)
    {
        m->model.enqueue(reply);
        m->poll();
    }

    void brief() { awaited((*m)->interventions().deliverDailyBriefingIfDue()); }

    const std::vector<InterventionRecord>& records() const
    {
        return (*m)->interventions().service().records();
    }

    /// The newest message.
    QString said() const
    {
        const auto& messages = (*m)->chat().messages();
        return messages.empty() ? QString() : messages.back().text;
    }

    std::unique_ptr<World> m;
    QStringList m_announced;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SpeakingFirstTest)
#include "SpeakingFirstTest.moc"
