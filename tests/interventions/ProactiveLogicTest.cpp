#include "interventions/ProactiveLogic.h"

#include "support/TableRow.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using enum InterventionOutcome;
using ProactiveLogic::Silence;
using std::chrono::days;
using Outcome = std::optional<InterventionOutcome>;
using Records = std::vector<InterventionRecord>;

/// 08:15 in UTC.
constexpr TimePoint now { 1772352900s };

InterventionRecord fired(std::chrono::milliseconds ago, Outcome outcome = {},
    const QString& triggerType = u"canvas_deadline"_s)
{
    return { .triggerType = triggerType, .firedAt = now - ago, .outcome = outcome };
}

InterventionRecord about(const QString& key, TimePoint dueAt, Outcome outcome,
    std::optional<TimePoint> until = std::nullopt)
{
    return { .triggerType = u"canvas_deadline"_s,
        .firedAt = now - 3h,
        .outcome = outcome,
        .suppressUntil = until,
        .reminderKey = key,
        .dueAt = dueAt };
}

} // namespace

class ProactiveLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nobodyIsDisturbed()
    {
        const Calendar calendar;
        const Records none;
        const auto silence = [&](ProactiveLogic::Circumstances circumstances) {
            return ProactiveLogic::silence(u"canvas_deadline"_s, circumstances);
        };
        QVERIFY(!silence({ now, calendar, false, CoachMode::focus, Occupation::none, none }));
        QVERIFY(silence({ now, calendar, true, CoachMode::focus, Occupation::none, none })
            == Silence::paused);
        QVERIFY(silence({ now, calendar, false, CoachMode::doNotDisturb, Occupation::none, none })
            == Silence::doNotDisturb);
        QVERIFY(silence({ now, calendar, false, CoachMode::focus, Occupation::call, none })
            == Silence::call);
        QVERIFY(silence({ now, calendar, false, CoachMode::focus, Occupation::fullScreen, none })
            == Silence::fullScreen);
    }

    void whatTheUserAnsweredCounts_data()
    {
        columns<Records, std::optional<Silence>>("records", "silence");
        const auto free = std::optional<Silence>();
        const auto unwelcome = std::optional(Silence::unwelcome);
        row("three today", Records { fired(1h), fired(2h), fired(8h) }, free);
        row("four today",
            Records { fired(1h), fired(2h), fired(3h, {}, u"daily_briefing"_s), fired(8h) },
            std::optional(Silence::enoughForToday));
        row("four, one of them yesterday", Records { fired(1h), fired(2h), fired(3h), fired(9h) },
            free);
        row("turned down once", Records { fired(20h, dismissed), fired(40h, accepted) }, free);
        row("turned down twice", Records { fired(20h, dismissed), fired(40h, dismissed) },
            unwelcome);
        row("of different kinds",
            Records { fired(20h, dismissed), fired(40h, dismissed, u"daily_briefing"_s) }, free);
        row("two days later", Records { fired(40h, dismissed), fired(60h, dismissed) }, free);
        row("the next one was welcome, half as often still",
            Records { fired(10h, accepted), fired(58h, dismissed), fired(80h, dismissed) },
            unwelcome);
        row("a week later",
            Records { fired(10h, accepted), fired(days(7), dismissed), fired(days(8), dismissed) },
            free);
    }
    void whatTheUserAnsweredCounts()
    {
        QFETCH(Records, records);
        QFETCH(std::optional<Silence>, silence);
        const Calendar calendar;
        QVERIFY(ProactiveLogic::silence(
                    u"canvas_deadline"_s, { .now = now, .calendar = calendar, .records = records })
            == silence);
    }

    void aSettledDeadlineIsLeftAlone_data()
    {
        columns<InterventionRecord, bool, bool>("record", "isSettled", "isPutOff");
        const auto key = u"canvas-7-2026-02-28"_s;
        const auto due = now + 10h;
        row("taken note of", about(key, due, accepted), true, false);
        row("wrong", about(key, due, contextCorrected), true, false);
        row("turned down", about(key, due, dismissed), false, false);
        row("not answered", about(key, due, {}), false, false);
        row("the date has moved", about(key, due - 1h, accepted), false, false);
        row("another one", about(u"canvas-77-2026-02-28"_s, due, accepted), false, false);
        row("put off", about(key, due, snoozed, now + 1s), true, false);
        row("put off until now", about(key, due, snoozed, now), false, true);
    }
    void aSettledDeadlineIsLeftAlone()
    {
        QFETCH(InterventionRecord, record);
        QFETCH(bool, isSettled);
        QFETCH(bool, isPutOff);
        const auto key = u"canvas-7-2026-03-01"_s;
        QCOMPARE(ProactiveLogic::isSettled({ record }, key, now + 10h, now), isSettled);
        QCOMPARE(ProactiveLogic::putOff({ record }, key, now) != nullptr, isPutOff);
        const auto counting =
            ProactiveLogic::remindedKeys({ *record.reminderKey }, { record }, now);
        QCOMPARE(counting.empty(), isPutOff);
    }

    void laterIsBeforeTheDeadline()
    {
        QVERIFY(ProactiveLogic::snoozedUntil(fired(0s), now) == now + 2h);
        QVERIFY(ProactiveLogic::snoozedUntil(about({}, now + 10h, {}), now) == now + 2h);
        QVERIFY(ProactiveLogic::snoozedUntil(about({}, now + 1h, {}), now) == now + 30min);
        QVERIFY(ProactiveLogic::snoozedUntil(about({}, now - 1h, {}), now) == now + 2h);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ProactiveLogicTest)
#include "ProactiveLogicTest.moc"
