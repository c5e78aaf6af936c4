#include "presence/PresenceLogic.h"

#include "presence/HotKeyLogic.h"
#include "support/TableRow.h"

namespace pobblewig {

using Activity = PresenceState::Activity;

class PresenceLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theEndIsToldAsPeopleWould_data()
    {
        columns<QString, QString>("end", "words");
        row("later today", "2026-03-27T15:30", "15:30");
        row("the last minute of today", "2026-03-27T23:59", "23:59");
        row("midnight", "2026-03-28T00:00", "tomorrow");
        row("tomorrow", "2026-03-28T00:01", "tomorrow, 00:01");
        row("after the clocks changed", "2026-03-29T09:00", "Sunday, 09:00");
        row("within a week", "2026-04-02T09:00", "Thursday, 09:00");
        row("a week from now", "2026-04-03T09:00", "Friday, 3 April 2026, 09:00");
        row("over already", "2026-03-26T09:00", "Thursday, 26 March 2026, 09:00");
    }
    void theEndIsToldAsPeopleWould()
    {
        QFETCH(QString, end);
        QTEST(PresenceLogic::timeInWords(at(end), m_now, m_calendar), "words");
    }

    void tomorrowBeginsWithTheDay()
    {
        for (const auto* day : { "2026-03-28", "2026-03-29", "2026-10-25" }) {
            const auto evening = at(QLatin1String(day) + u"T21:00"_s);
            const auto tomorrow = PresenceLogic::startOfTomorrow(evening, m_calendar);
            QCOMPARE(m_calendar.dateTime(tomorrow).time(), QTime(0, 0));
            QCOMPARE(m_calendar.day(evening).daysTo(m_calendar.day(tomorrow)), 1);
        }
    }

    void theStateIsAMarkAndALine_data()
    {
        columns<PresenceState, PresenceBadge, QString>("state", "badge", "words");
        const auto end = at(u"2026-03-27T15:30"_s);
        const PresenceState focus { .mode = CoachMode::focus, .modeRevertAt = end };
        const auto paused = [&](Activity activity, std::optional<TimePoint> until) {
            return PresenceState { .isPaused = true, .pausedUntil = until, .activity = activity };
        };
        row("resting", PresenceState(), PresenceBadge::none, "Pobblewig · Open-ended");
        row("a mode for a while", focus, PresenceBadge::none, "Pobblewig · Focus until 15:30");
        row("asleep", PresenceState { .activity = Activity::asleep }, PresenceBadge::asleep,
            "Pobblewig · Open-ended · asleep");
        row("a pause outweighs sleep", paused(Activity::asleep, std::nullopt),
            PresenceBadge::paused, "Pobblewig · Open-ended · observation paused · asleep");
        row("work outweighs a pause", paused(Activity::working, end), PresenceBadge::working,
            "Pobblewig · Open-ended · observation paused until 15:30 · thinking…");
        row("a reminder outweighs a pause", paused(Activity::reminding, end),
            PresenceBadge::reminder,
            "Pobblewig · Open-ended · observation paused until 15:30 · has a reminder for you");
    }
    void theStateIsAMarkAndALine()
    {
        QFETCH(PresenceState, state);
        QTEST(PresenceLogic::badge(state), "badge");
        QTEST(PresenceLogic::inWords(state, m_now, m_calendar), "words");
    }

    void aPauseWithoutEndHasNone()
    {
        AppSettings settings { .pausedUntil = m_now };
        QVERIFY(PresenceLogic::endOfPause(settings, true) == m_now);
        QVERIFY(!PresenceLogic::endOfPause(settings, false));
        settings.pausedIndefinitely = true;
        QVERIFY(!PresenceLogic::endOfPause(settings, true));
    }

    void aHotKeyTakesNoKeyThatPeopleTypeWith()
    {
        const auto isUsable = [](const QString& keys) {
            return HotKeyLogic::isUsable(QKeySequence(keys, QKeySequence::PortableText));
        };
        for (const auto& keys : { u"Ctrl+Alt+Space"_s, u"Meta+Ctrl+Alt+Shift+F12"_s })
            QVERIFY2(isUsable(keys), qPrintable(keys));
        for (const auto& keys : { u"P"_s, u"Shift+P"_s, u"F9"_s, u"Ctrl+K, Ctrl+P"_s,
                 u"Ctrl+Num+5"_s, u"Ctrl+Nonsense"_s, QString() })
            QVERIFY2(!isUsable(keys), qPrintable(keys));
    }

private:
    TimePoint at(const QString& local) const
    {
        auto moment = QDateTime::fromString(local, Qt::ISODate);
        moment.setTimeZone(m_calendar.timeZone);
        return TimePoint(std::chrono::milliseconds(moment.toMSecsSinceEpoch()));
    }

    const Calendar m_calendar { QTimeZone("Europe/Zurich"), QLocale(u"en_GB") };
    const TimePoint m_now = at(u"2026-03-27T14:00"_s);
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::PresenceLogicTest)
#include "PresenceLogicTest.moc"
