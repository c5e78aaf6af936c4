#include "PobblewigDesktop/settings/SettingsWindow.h"

#include "PobblewigDesktop/settings/ConnectionTexts.h"
#include "PobblewigDesktop/settings/SettingsSearch.h"
#include "desktop/ScriptedParts.h"
#include "desktop/chat/PanelFixture.h"
#include "settings/ActionAutonomy.h"
#include "settings/SettingForms.h"
#include "settings/SharedFolders.h"
#include "support/ScriptedCalendar.h"
#include "support/ScriptedProvider.h"
#include "support/TableRow.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>

namespace pobblewig {

namespace {

/// As the desktop keeps it.
struct ScriptedAutostart : AutostartSwitching {
    bool isEnabled() const override { return isOn; }
    tl::expected<void, FileError> setEnabled(bool isEnabled) override
    {
        if (isBroken)
            return tl::unexpected(FileError { u"No space left on device"_s });
        isOn = isEnabled;
        return {};
    }

    bool isOn = false;
    bool isBroken = false;
};

/// Calendars in one of two places.
struct ScriptedSources : ScriptedCalendar {
    std::optional<CalendarSource> source() const override { return chosen; }
    void chooseSource(const CalendarSource& source) override { chosen = source; }

    CalendarSource chosen { CalendarSource::Kind::service, u"/home/ada/calendars"_s };
};

} // namespace

class SettingsWindowTest : public QObject {
    Q_OBJECT

    template <typename Widget>
    Widget& named(const char* name) const
    {
        auto* const widget = PanelFixture::find<Widget>(*m_window, name);
        if (!widget)
            qFatal("There is no control of the name %s.", name);
        return *widget;
    }

    bool saysAnywhere(const QString& words) const
    {
        const auto labels = m_window->findChildren<QLabel*>();
        return std::ranges::any_of(labels, [&](const QLabel* label) {
            return label->isVisible() && label->text().contains(words);
        });
    }

    const AppSettings& settings() const
    {
        return m_coordinator->state().of<SettingsState>().settings;
    }

    void open(const char* page)
    {
        m_window->openPage(QString::fromLatin1(page));
        QCOMPARE(m_window->currentPage(), QString::fromLatin1(page));
    }

private Q_SLOTS:
    void init()
    {
        m_scratch.emplace();
        m_autostart = {};
        auto parts = scriptedParts(m_scratch->path().path(), m_model);
        m_http = dynamic_cast<ScriptedHTTPClient*>(parts.http.get());
        auto calendars = std::make_unique<ScriptedSources>();
        m_calendars = calendars.get();
        parts.calendarProvider = std::move(calendars);
        m_coordinator.emplace(std::move(parts));
        m_window.emplace(*m_coordinator, GeneralPage::Desktop { &m_autostart, nullptr },
            Moment { [] { return ScriptedChat::now; },
                [] {
                    return Calendar { QTimeZone::utc(), QLocale(u"en_GB"_s) };
                } });
        QObject::connect(&*m_coordinator, &AppCoordinator::stateChanged, &*m_window,
            [this] { m_window->showState(m_coordinator->state()); });
        m_window->setTheme(Theme::palette(ColorScheme::light, {}));
        m_window->showState(m_coordinator->state());
        m_window->show();
    }
    void cleanup()
    {
        m_window.reset();
        m_coordinator.reset();
    }

    void whatHurtsCanBeTakenBack()
    {
        open("privacy");
        auto& memory = named<QAbstractButton>("Memory");
        QVERIFY(memory.isChecked());
        memory.click();
        QVERIFY(!settings().memoryEnabled && saysAnywhere(u"Memory is now: off"_s));
        named<QAbstractButton>("Undo").click();
        QVERIFY(settings().memoryEnabled && memory.isChecked());
        QTRY_VERIFY(!saysAnywhere(u"Memory is now: off"_s));
    }

    void everyKindOfControlChangesItsSetting()
    {
        open("activity");
        auto& days = named<QSpinBox>("Activity history kept for");
        QCOMPARE(days.text(), u"14 days"_s);
        days.setValue(1);
        QCOMPARE(days.text(), u"1 day"_s);
        QCOMPARE(settings().activityRetentionDays, 1);
        days.setValue(0);
        QCOMPARE(settings().activityRetentionDays, 1);

        auto& apps = named<QListWidget>("Excluded apps");
        const auto known = settings().excludedBundleIDs.size();
        auto& entry = named<QLineEdit>("Another entry");
        entry.setText(u"  org.example.Diary "_s);
        QTest::keyClick(&entry, Qt::Key_Return);
        QCOMPARE(settings().excludedBundleIDs.back(), u"org.example.Diary"_s);
        QCOMPARE(apps.count(), int(known) + 1);

        open("companion");
        named<QAbstractButton>("Tutor").click();
        QVERIFY(settings().roles == std::set { AssistantRole::tutor });
    }

    void aChangeFromElsewhereIsShownAndWhatIsWrittenStays()
    {
        open("activity");
        auto& entry = named<QLineEdit>("Another entry");
        entry.setText(u"org.exam"_s);
        m_coordinator->updateSettings(
            [](AppSettings& changed) { changed.activityRetentionDays = 30; });
        QCOMPARE(named<QSpinBox>("Activity history kept for").value(), 30);
        QCOMPARE(entry.text(), u"org.exam"_s);
    }

    void anAllowanceSaysSinceWhenAndIsRevoked()
    {
        m_coordinator->updateSettings([](AppSettings& changed) {
            ActionAutonomy::setAsks(changed, u"settings_change"_s, false, TimePoint());
        });
        open("confirmations");
        QVERIFY(saysAnywhere(u"Allowed since Thursday, 1 January 1970"_s));
        named<QAbstractButton>("Ask before changing a setting").click();
        QVERIFY(settings().actionConfirmations.at(u"settings_change"_s));
        QVERIFY(!settings().allowedSince && !saysAnywhere(u"Allowed since"_s));
    }

    void whatTheDesktopRefusesIsSaidBesideTheField()
    {
        auto& start = named<QAbstractButton>("Start at login");
        start.click();
        QVERIFY(m_autostart.isOn);
        m_autostart.isBroken = true;
        start.click();
        QVERIFY(start.isChecked() && saysAnywhere(u"This could not be changed: "_s));
    }

    void settingsAreFoundByTheirWords_data()
    {
        columns<QString, QString>("words", "place");
        row("label", u"memory"_s, "privacy memoryEnabled");
        row("beginning", u"Excl"_s, "activity excludedBundleIDs");
        row("part", u"history kept"_s, "activity activityRetentionDays");
        row("explanation", u"front noticE"_s, "activity pausedIndefinitely");
        row("another page", u"folders the"_s, "folders appDataSources");
        row("a field of a form", u"canvas address"_s, "connections canvasBaseURL");
        row("nothing", u"xyzzy"_s, "");
        row("no words", u"  "_s, "");
    }
    void settingsAreFoundByTheirWords()
    {
        QFETCH(QString, words);
        const auto found = SettingsSearch::place(words);
        const auto place = found ? found->page + u' ' + found->key : QString();
        QTEST(place, "place");
    }

    void whatIsFoundHasTheFocus()
    {
        auto& search = named<QLineEdit>("Search settings");
        search.setText(u"Keep conversations"_s);
        QTest::keyClick(&search, Qt::Key_Return);
        QCOMPARE(m_window->currentPage(), u"privacy"_s);
        QCOMPARE(m_window->focusWidget()->accessibleName(), u"Keep conversations"_s);
    }

    void aSchoolIsConnectedAndItsTokenNotShownAgain()
    {
        open("connections");
        QVERIFY(saysAnywhere(u"Not connected."_s));
        auto& address = named<QLineEdit>("Canvas address");
        auto& token = named<QLineEdit>("Canvas token");
        QVERIFY(!named<QAbstractButton>("Sync now").isEnabled());
        QCOMPARE(token.echoMode(), QLineEdit::Password);
        token.setText(u"secret"_s);
        address.setText(u"http://school.edu"_s);
        named<QAbstractButton>("Connect").click();
        QVERIFY(!settings().canvasSyncEnabled && saysAnywhere(u"Enter the address"_s));
        m_http->enqueue(401, "{}");
        address.setText(u"school.edu"_s);
        QTest::keyClick(&token, Qt::Key_Return);
        QTRY_VERIFY(saysAnywhere(u"Canvas token rejected (401) — generate a fresh token"_s));
        QVERIFY(token.text().isEmpty() && !saysAnywhere(u"Enter the address"_s));
        QCOMPARE(settings().canvasBaseURL, u"https://school.edu"_s);
        QCOMPARE(m_http->requests().back().url.host(), u"school.edu"_s);
        m_http->enqueue(200, "[]");
        named<QAbstractButton>("Sync now").click();
        QTRY_VERIFY(saysAnywhere(u"Connected. Last sync just now: 0 courses, 0 deadlines."_s));
        const auto asked = m_http->requests().size();
        address.setText(u"other.edu"_s);
        named<QAbstractButton>("Connect").click();
        QVERIFY(saysAnywhere(u"Paste a token of this site."_s));
        QCOMPARE(m_http->requests().size(), asked);
        named<QAbstractButton>("Disconnect").click();
        QTRY_VERIFY(!settings().canvasSyncEnabled);
        QVERIFY(!named<QAbstractButton>("Disconnect").isEnabled());
    }

    void calendarsAreReadFromWhereTheUserSays()
    {
        open("connections");
        auto& sync = named<QAbstractButton>("Sync calendars now");
        auto& folder = named<QAbstractButton>("Calendar folder");
        QVERIFY(!sync.isEnabled() && !folder.isVisible());
        named<QAbstractButton>("Calendar sync").click();
        m_calendars->events = {
            { .id = u"1"_s, .title = u"Dentist"_s, .startDate = ScriptedChat::now }
        };
        sync.click();
        QTRY_VERIFY(saysAnywhere(u"Connected. Last sync just now: 1 event, 0 reminders."_s));
        auto& places = named<QComboBox>("Read from");
        QCOMPARE(places.currentText(), u"The desktop's calendars"_s);
        m_calendars->outage = WriteError { u"The folder cannot be read."_s };
        QTest::keyClick(&places, Qt::Key_Down);
        QCOMPARE(m_calendars->chosen.kind, CalendarSource::Kind::folder);
        QVERIFY(folder.isVisible() && folder.text() == u"/home/ada/calendars"_s);
        QTRY_VERIFY(saysAnywhere(u"The folder cannot be read."_s));
    }

    void longNamesBreakInANarrowWindow()
    {
        m_window->resize(m_window->minimumSize());
        open("connections");
        const auto& page = named<QWidget>("Connections");
        QTRY_VERIFY(page.width() <= page.parentWidget()->width());
    }

    void aTokenGoesOnlyWhereItIsSafe()
    {
        const std::pair<QString, QString> addresses[] { { u" school.edu "_s,
                                                            u"https://school.edu"_s },
            { u"https://school.edu:8443/a"_s, u"https://school.edu:8443/a"_s },
            { u"http://127.0.0.1:8080"_s, u"http://127.0.0.1:8080"_s },
            { u"http://school.edu"_s, {} }, { u"http://me@127.0.0.1"_s, {} },
            { u"https://school.edu@evil.net"_s, {} }, { u"ftp://school.edu"_s, {} },
            { u"my school"_s, {} } };
        for (const auto& [typed, kept] : addresses)
            QCOMPARE(ConnectionTexts::address(typed).value_or(QString()), kept);
    }

    void theLatestSyncIsTold_data()
    {
        columns<qint64, QString>("seconds", "told");
        row("seconds", 59LL, u"Connected. Last sync just now: 1 course, 2 deadlines."_s);
        row("a minute", 119LL, u"Connected. Last sync 1 minute ago: 1 course, 2 deadlines."_s);
        row("hours", 7200LL, u"Connected. Last sync 2 hours ago: 1 course, 2 deadlines."_s);
        row("a day", 86400LL,
            u"Connected. Last sync Saturday, 28 February 2026, 08:15: 1 course, 2 deadlines."_s);
    }
    void theLatestSyncIsTold()
    {
        QFETCH(qint64, seconds);
        const ConnectionStatus status { .isWanted = true,
            .lastSyncAt = ScriptedChat::now - std::chrono::seconds(seconds),
            .found = ConnectionTexts::school(1, 2) };
        QTEST(ConnectionTexts::state(
                  status, ScriptedChat::now, { QTimeZone::utc(), QLocale(u"en_GB"_s) }),
            "told");
    }

    void aFolderIsSharedOnceAndByAPlainName()
    {
        const auto home = QDir::homePath();
        const auto shared = SharedFolders::with({}, home + u"/Documents/"_s);
        QVERIFY(shared.has_value());
        QCOMPARE(shared->front().rootPath, u"~/Documents"_s);
        QCOMPARE(shared->front().name, u"Documents"_s);
        QVERIFY(!SharedFolders::with(*shared, home + u"/Documents"_s));
        QVERIFY(!SharedFolders::with({}, u"/tmp/a\u202Eb"_s));
        for (const auto& path : { u"/"_s, home, u"/srv/~x~"_s }) {
            const auto one = SharedFolders::with({}, path);
            QVERIFY(one && SettingForms::isFolderPath(one->front().rootPath));
            QVERIFY(!one->front().name.isEmpty() && !one->front().name.contains(u'~'));
        }
    }

private:
    std::optional<ScratchDirectory> m_scratch;
    ScriptedProvider m_model;
    ScriptedAutostart m_autostart;
    /// Both are the coordinator's own.
    ScriptedHTTPClient* m_http = nullptr;
    ScriptedSources* m_calendars = nullptr;
    std::optional<AppCoordinator> m_coordinator;
    std::optional<SettingsWindow> m_window;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::SettingsWindowTest)
#include "SettingsWindowTest.moc"
