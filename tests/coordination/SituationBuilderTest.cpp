#include "conversation/SituationBuilder.h"

#include "foundation/ISO8601.h"

#include <QTest>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr TimePoint now { 1772352900s };

void add(ReferenceMemoryStore& reference, const char* path, const QString& title,
    const QString& summary, const char* dateKey, TimePoint date)
{
    reference.upsertItem({ .id = QUuid::createUuid(),
        .path = QString::fromLatin1(path),
        .title = title,
        .summary = summary,
        .details = { { QString::fromLatin1(dateKey), JSONValue(ISO8601::format(date)) } } });
}

} // namespace

class SituationBuilderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_memory = std::make_unique<MemoryTiers>(std::nullopt, [] { return Calendar(); });
        m_settings = {};
    }

    void anOrdinaryMomentHasThreeLines()
    {
        const auto lines = this->lines();
        QCOMPARE(lines.size(), 3);
        QVERIFY(
            lines[0].startsWith(u"Your current desktop form: mouse (original color scheme) — "));
        QVERIFY(lines[0].contains(u"say mouse and no other animal."));
        QVERIFY(lines[1].contains(u": mode openEnded; roles [] — this line is rebuilt"));
        QCOMPARE(lines[2], QStringLiteral("No active app session right now."));
        QVERIFY(!snapshot().canvasConnected);
    }

    void theFormIsWhatTheUserSees()
    {
        m_settings.mascot = QStringLiteral("axolotl");
        m_settings.mascotColorScheme = QStringLiteral("pink");
        QCOMPARE(snapshot().currentForm, QStringLiteral("axolotl (pink color scheme)"));
        m_settings.mascot = QStringLiteral("unicorn");
        QCOMPARE(snapshot().currentForm, QStringLiteral("mouse (original color scheme)"));
        m_settings.mascot = QStringLiteral("skrit");
        QCOMPARE(snapshot().currentForm, QString());
        QVERIFY(lines().front().startsWith(u"Your settings"));
    }

    void everythingThatAppliesStandsInOrder()
    {
        auto& reference = m_memory->reference;
        const auto later = now + 24h;
        for (const auto* title : { "a", "b", "c", "d" })
            add(reference, "academics.deadlines", QString::fromLatin1(title), {}, "dueAt", later);
        add(reference, "calendar.events", QStringLiteral("Class"), QStringLiteral("10:00\nRoom 1"),
            "startAt", now + 1h);
        add(reference, "calendar.reminders", QString(200, u'x'), QStringLiteral("y"), "dueAt",
            now + 48h);
        add(reference, "calendar.reminders", QStringLiteral("too far"), {}, "dueAt",
            now + 48h + 1s);
        m_settings.roles = { AssistantRole::tutor, AssistantRole::accountabilityPartner };
        m_settings.mode = CoachMode::doNotDisturb;
        m_settings.memoryEnabled = false;
        m_settings.appDataSources = { { .name = QStringLiteral("Notes") },
            { .name = QStringLiteral("Code") } };
        const ActivitySession session { .applicationName = QStringLiteral("Writer"),
            .bundleIdentifier = QStringLiteral("org.writer"),
            .durationSeconds = 179,
            .isActive = false };
        const auto lines = snapshot(session, true).summary.split(u'\n').mid(1);
        QVERIFY(lines[0].contains(u": mode doNotDisturb; roles [accountabilityPartner, tutor] — "));
        QVERIFY(lines[3].startsWith(u"The user has turned your memory off"));
        const QStringList expected {
            QStringLiteral("Current app: Writer (org.writer), active for 2 min, user appears idle"),
            QStringLiteral("Observation is currently paused by the user."),
            lines[3],
            QStringLiteral("Upcoming deadlines (Canvas): a | b | c"),
            QStringLiteral("Today's events: Class — 10:00 Room 1"),
            QStringLiteral("Upcoming events (Calendar): Class — 10:00 Room 1"),
            QStringLiteral("Due reminders: ") + QString(160, u'x'),
            QStringLiteral("App data sources (read-only, via apps_list_files/apps_read_file): "
                           "Notes | Code"),
        };
        QCOMPARE(lines.mid(1), expected);
    }

private:
    SituationSnapshot snapshot(
        const std::optional<ActivitySession>& session = std::nullopt, bool isPaused = false) const
    {
        return SituationBuilder::snapshot({ .settings = m_settings,
            .isPaused = isPaused,
            .currentSession = session,
            .memory = *m_memory,
            .now = now });
    }

    QStringList lines() const { return snapshot().summary.split(u'\n'); }

    AppSettings m_settings;
    std::unique_ptr<MemoryTiers> m_memory;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SituationBuilderTest)
#include "SituationBuilderTest.moc"
