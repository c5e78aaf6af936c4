#include "PobblewigDesktop/presence/DesktopPresence.h"

#include "PobblewigDesktop/presence/BuddyFace.h"
#include "desktop/ScriptedParts.h"
#include "support/Awaited.h"
#include "support/TableRow.h"

#include <QBitmap>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace pobblewig {

class ScriptedHotKeys : public HotKeyProviding {
public:
    Task<Outcome> assign(QKeySequence keys) override
    {
        asked.append(keys.toString());
        if (problem)
            co_return tl::unexpected(HotKeyError { *problem, keys });
        co_return {};
    }

    QStringList asked;
    std::optional<HotKeyError::Kind> problem;
};

class ShownNotifications : public NotificationPresenting {
public:
    Task<bool> present(Notification notification) override
    {
        texts.append(notification.text);
        answers = notification.answers;
        co_return true;
    }
    void withdraw() override { texts.clear(); }

    QStringList texts;
    std::vector<Notification::Answer> answers;
};

class HeardSounds : public SoundPlaying {
public:
    void play(QStringView name) override { names.append(name.toString()); }

    QStringList names;
};

class ScriptedAutostart : public AutostartSwitching {
public:
    bool isEnabled() const override { return isOn; }
    tl::expected<void, FileError> setEnabled(bool isEnabled) override
    {
        if (isStuck)
            return tl::unexpected(FileError { QStringLiteral("Read-only file system") });
        isOn = isEnabled;
        return {};
    }

    bool isOn = false;
    bool isStuck = false;
};

class DesktopPresenceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch.emplace();
        m_settings.emplace(
            m_scratch->filePath(QStringLiteral("desktop.conf")), QSettings::IniFormat);
        m_hotKeys.emplace();
        m_notifications.emplace();
        m_sounds.names.clear();
        m_autostart.emplace();
        m_coordinator = std::make_unique<AppCoordinator>(scriptedParts(m_scratch->path(), m_model));
        start();
    }

    void cleanup()
    {
        m_presence.reset();
        m_coordinator->chat().cancelStreaming();
        QCoreApplication::processEvents();
        m_coordinator.reset();
    }

    void whyThereIsNoHotKeyIsSaidWhereItHelps_data()
    {
        using Kind = HotKeyError::Kind;
        QTest::addColumn<Kind>("problem");
        QTest::addColumn<bool>("isSaid");
        QTest::addColumn<QString>("nextTime");
        row("taken", Kind::taken, true, "Ctrl+Alt+Space");
        row("unusable", Kind::unusable, true, "Ctrl+Alt+Space");
        row("the user said no", Kind::refused, true, "");
        row("no desktop for it", Kind::unavailable, false, "Ctrl+Alt+Space");
    }
    void whyThereIsNoHotKeyIsSaidWhereItHelps()
    {
        QFETCH(HotKeyError::Kind, problem);
        m_hotKeys->problem = problem;
        start();
        QTEST(m_noticed->count() == 1, "isSaid");
        start();
        QTEST(m_hotKeys->asked.last(), "nextTime");
    }

    void onlyKeysThatCanBeHadReplaceTheOnesBefore()
    {
        auto& hotKey = m_presence->hotKey();
        const QSignalSpy changed(&hotKey, &ChatHotKey::changed);
        const QSignalSpy notChanged(&hotKey, &ChatHotKey::notChanged);
        hotKey.change(QKeySequence(QStringLiteral("Ctrl+Alt+P")));
        QCOMPARE(changed.count(), 1);
        m_hotKeys->problem = HotKeyError::Kind::taken;
        hotKey.change(QKeySequence(QStringLiteral("Ctrl+Alt+Q")));
        QCOMPARE(notChanged.count(), 1);
        QCOMPARE(m_noticed->count(), 0);
        start();
        QCOMPARE(m_hotKeys->asked.last(), QStringLiteral("Ctrl+Alt+P"));
    }

    void aReplyInANotificationWaitsForItsTurn()
    {
        auto& chat = m_coordinator->chat();
        QVERIFY(chat.submit(QStringLiteral("first")));
        QTRY_VERIFY(m_model.isAsked());
        Q_EMIT m_notifications->replied(QStringLiteral("second"));
        Q_EMIT m_notifications->replied(QStringLiteral("third"));
        for (const auto count : { 2u, 4u, 6u }) {
            QTRY_VERIFY(m_model.isAsked());
            m_model.say(QStringLiteral("yes"));
            m_model.finish();
            QTRY_VERIFY(chat.messages().size() >= count);
        }
        QCOMPARE(chat.messages()[2].text, QStringLiteral("second"));
        QCOMPARE(chat.messages()[4].text, QStringLiteral("third"));
    }

    void aReminderComesAsANotificationUnlessTheChatIsOpen_data()
    {
        QTest::addColumn<bool>("isChatShown");
        row("closed", false);
        row("open", true);
    }
    void aReminderComesAsANotificationUnlessTheChatIsOpen()
    {
        QFETCH(bool, isChatShown);
        const QSignalSpy reminded(&*m_presence, &DesktopPresence::reminded);
        m_presence->setChatShown(isChatShown);
        const auto record = QUuid::createUuid();
        const auto text = QStringLiteral("The lab report is due tonight.");
        m_coordinator->deliverProactiveMessage(text, record);
        QCOMPARE(reminded.count(), 1);
        QCOMPARE(m_sounds.names, QStringList(QStringLiteral("Glass")));
        QCOMPARE(m_notifications->texts, isChatShown ? QStringList() : QStringList(text));
        const auto& message = m_coordinator->chat().messages().back();
        QCOMPARE(message.text, text);
        QCOMPARE(message.relatedInterventionID, record);

        m_presence->setChatShown(true);
        QCOMPARE(m_notifications->texts, QStringList());
    }

    void aReminderIsAnsweredInItsNotification_data()
    {
        columns<QString, QString, int, bool>("kind", "answer", "offered", "opensChat");
        row("taken note of", u"canvas_deadline"_s, u"gotIt"_s, 4, false);
        row("wrong", u"canvas_deadline"_s, u"thatsWrong"_s, 4, true);
        row("a briefing", u"daily_briefing"_s, u"notNow"_s, 3, false);
    }
    void aReminderIsAnsweredInItsNotification()
    {
        QFETCH(QString, kind);
        QFETCH(QString, answer);
        const QSignalSpy opened(&*m_presence, &DesktopPresence::chatRequested);
        const auto id = QUuid::createUuid();
        auto& service = m_coordinator->interventions().service();
        service.recordFired({ .id = id, .triggerType = kind, .firedAt = ScriptedChat::now });
        m_coordinator->deliverProactiveMessage(u"The lab report is due tonight."_s, id);
        QTEST(int(m_notifications->answers.size()), "offered");
        Q_EMIT m_notifications->answered(u"nonsense"_s);
        QVERIFY(!service.records().front().outcome);
        const auto chosen = std::ranges::find_if(m_notifications->answers,
            [&](const auto& offered) { return offered.id.startsWith(answer); });
        Q_EMIT m_notifications->answered(chosen->id);
        QVERIFY(service.records().front().outcome);
        QTEST(opened.count() == 1, "opensChat");
    }

    void aNotificationOpensTheChat()
    {
        const QSignalSpy opened(&*m_presence, &DesktopPresence::chatRequested);
        Q_EMIT m_notifications->opened();
        QCOMPARE(opened.count(), 1);
    }

    void theFaceFillsTheSlotsOfTrays()
    {
        for (const auto side : { 16, 22, 24, 32, 48, 64 }) {
            const auto face =
                BuddyFace::pixmap(MascotSprite::forID(u"mouse"), PresenceBadge::none, side);
            const auto extent = QRegion(face.mask()).boundingRect();
            QVERIFY(extent.width() >= side * 85 / 100);
            QCOMPARE(extent.left(), side - 1 - extent.right());
        }
    }

    void aStartWithTheDesktopThatCannotBeSetIsSaid()
    {
        const auto menu = m_presence->makeMenu();
        auto* const start = action(*menu, QStringLiteral("Start at login"));
        start->trigger();
        QVERIFY(m_autostart->isOn && start->isChecked());
        m_autostart->isOn = false;
        Q_EMIT menu->aboutToShow();
        QVERIFY(!start->isChecked());
        m_autostart->isStuck = true;
        start->trigger();
        QVERIFY(!start->isChecked());
        QVERIFY(m_noticed->last().first().toString().contains(QStringLiteral("Read-only")));
    }

private:
    /// The presence anew, with what is kept.
    void start()
    {
        m_noticed.reset();
        m_presence.emplace(
            *m_settings, [] { return ScriptedChat::now; }, [] { return Calendar(); });
        m_noticed.emplace(&*m_presence, &DesktopPresence::noticed);
        m_presence->setSprite(MascotSprite::forID(u"mouse"));
        m_presence->follow(*m_coordinator);
        m_presence->useServices(
            { *m_hotKeys, *m_notifications, m_sounds, *m_autostart, m_windows });
    }

    static QAction* action(const QMenu& menu, const QString& text)
    {
        for (auto* const action : menu.findChildren<QAction*>()) {
            if (action->text() == text)
                return action;
        }
        qFatal("no such action");
    }

    std::optional<QTemporaryDir> m_scratch;
    std::optional<QSettings> m_settings;
    std::optional<ScriptedHotKeys> m_hotKeys;
    std::optional<ShownNotifications> m_notifications;
    HeardSounds m_sounds;
    UnavailableWindowActivation m_windows;
    std::optional<ScriptedAutostart> m_autostart;
    PromptedProvider m_model;
    std::unique_ptr<AppCoordinator> m_coordinator;
    std::optional<DesktopPresence> m_presence;
    std::optional<QSignalSpy> m_noticed;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::DesktopPresenceTest)
#include "DesktopPresenceTest.moc"
