#include "PobblewigDesktop/comingup/ComingUpWindow.h"

#include "PobblewigDesktop/comingup/ComingUpModel.h"
#include "foundation/ISO8601.h"
#include "prompts/PlatformWording.h"
#include "support/TableRow.h"

#include <QDesktopServices>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>

namespace pobblewig {

using namespace std::chrono_literals;

class ComingUpWindowTest : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE void follow(const QUrl& link) { m_followed.append(link.toString()); }

private:
    /// Sunday, 22 November 2026, 12:00.
    static constexpr TimePoint now { 1795348800s };

    void addDeadline(const QString& title, TimePoint due, std::map<QString, JSONValue> details = {})
    {
        details.emplace(u"dueAt"_s, ISO8601::format(due));
        m_reference.upsertItem(
            { .path = u"academics.deadlines"_s, .title = title, .details = details });
    }

    void showWindow(const QString& language = u"en_GB"_s)
    {
        m_window.emplace(m_reference,
            Moment { [] { return now; },
                [language] {
                    return Calendar { QTimeZone::utc(), QLocale(language) };
                } });
        m_window->setTheme(Theme::palette(ColorScheme::light, u"coral"_s));
        m_window->showState(m_state);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(&*m_window));
    }

    QListView& list() const
    {
        for (auto* const list : m_window->findChildren<QListView*>()) {
            if (list->accessibleName() == u"Coming up")
                return *list;
        }
        qFatal("There is no list.");
    }

    QStringList spoken() const
    {
        QStringList rows;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            rows.append(list().model()->index(row, 0).data(Qt::AccessibleTextRole).toString());
        return rows;
    }

private Q_SLOTS:
    void init() { m_reference.deleteAll(); }

    void aRowSaysAllThatIsSeen()
    {
        addDeadline(u"Essay"_s, now - 13h,
            { { u"course"_s, u"History"_s }, { u"pointsPossible"_s, JSONValue(12.5) } });
        addDeadline(u"Quiz"_s, now + 1h,
            { { u"course"_s, u"Statistics"_s }, { u"pointsPossible"_s, JSONValue(1) },
                { u"submissionState"_s, u"submitted"_s } });
        addDeadline(u"Reading"_s, now + 24h * 3);
        m_reference.upsertItem({ .path = u"calendar.reminders"_s, .title = u"Call home"_s });
        showWindow();
        QCOMPARE(spoken(),
            (QStringList { u"Overdue"_s, u"Essay, Yesterday, 23:00, History · 12.5 points"_s,
                u"Today"_s, u"Quiz, 13:00, Statistics · 1 point · Submitted"_s,
                u"Wednesday 25 November"_s, u"Reading, 12:00"_s, u"Some time"_s, u"Call home"_s }));
    }

    void aHeadingIsWrittenInItsLanguage_data()
    {
        columns<QString, QString>("language", "heading");
        row("American", u"en_US"_s, u"Wednesday, November 25"_s);
        row("German", u"de_DE"_s, u"Mittwoch, 25. November"_s);
        row("Spanish", u"es_ES"_s, u"miércoles, 25 de noviembre"_s);
        row("Japanese", u"ja_JP"_s, u"11月25日水曜日"_s);
        row("Hungarian", u"hu_HU"_s, u"november 25., szerda"_s);
        row("Russian", u"ru_RU"_s, u"среда, 25 ноября"_s);
    }
    void aHeadingIsWrittenInItsLanguage()
    {
        QFETCH(QString, language);
        addDeadline(u"Reading"_s, now + 24h * 3);
        showWindow(language);
        QTEST(spoken().front(), "heading");
    }

    void aLinkOpensByEnterAndClickAndHeadingsAreSkipped()
    {
        const auto link = [](int number) {
            return std::map<QString, JSONValue> { { u"htmlURL"_s,
                u"https://school.edu/%1"_s.arg(number) } };
        };
        addDeadline(u"First"_s, now + 1h, link(1));
        addDeadline(u"Without"_s, now + 2h);
        addDeadline(u"Second"_s, now + 25h, link(2));
        showWindow();
        QDesktopServices::setUrlHandler(u"https"_s, this, "follow");
        QTest::keyClick(&list(), Qt::Key_Return);
        QTest::keyClick(&list(), Qt::Key_Down);
        QTest::keyClick(&list(), Qt::Key_Return);
        QTest::keyClick(&list(), Qt::Key_Down);
        QCOMPARE(list().currentIndex().data().toString(), u"Second"_s);
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
            list().visualRect(list().currentIndex()).center());
        QDesktopServices::unsetUrlHandler(u"https"_s);
        QCOMPARE(
            m_followed, (QStringList { u"https://school.edu/1"_s, u"https://school.edu/2"_s }));
    }

    void withoutAnythingItSaysWhatToConnect()
    {
        showWindow();
        QSignalSpy requested(&*m_window, &PageWindow::linkRequested);
        QVERIFY(!list().isVisible());
        for (auto* const button : m_window->findChildren<QPushButton*>()) {
            if (button->text() == u"Open connections")
                button->click();
        }
        QCOMPARE(requested.value(0).value(0).toString(), u"pobblewig:settings/connections"_s);
        addDeadline(u"Reading"_s, now + 1h);
        m_window->showState(m_state);
        QVERIFY(list().isVisible());
    }

private:
    ReferenceMemoryStore m_reference { std::nullopt, PlatformWording::linuxDesktop };
    PublishedState m_state;
    std::optional<ComingUpWindow> m_window;
    QStringList m_followed;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::ComingUpWindowTest)
#include "ComingUpWindowTest.moc"
