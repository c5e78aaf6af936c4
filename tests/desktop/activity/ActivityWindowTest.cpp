#include "PobblewigDesktop/activity/ActivityWindow.h"

#include "desktop/ScriptedParts.h"
#include "desktop/chat/PanelFixture.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedProvider.h"
#include "support/TableRow.h"

#include <QMessageBox>
#include <QSignalSpy>
#include <QTableView>

namespace pobblewig {

using namespace std::chrono_literals;

namespace {

ActivitySession session(const QString& name, TimePoint startedAt, std::chrono::seconds length)
{
    return { .id = QUuid::createUuid(),
        .applicationName = name,
        .bundleIdentifier = name,
        .startedAt = startedAt,
        .endedAt = startedAt + length,
        .durationSeconds = double(length.count()) };
}

} // namespace

class ActivityWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch.emplace();
        const auto now = ScriptedChat::now;
        const std::vector sessions { session(u"kate"_s, now - 30min, 600s),
            session(u"firefox"_s, now - 3h, 5400s), session(u"okular"_s, now - 24h, 60s) };
        QVERIFY(JSONFileStore(*m_scratch, u"activity.json"_s).save(sessions));
        m_coordinator.emplace(scriptedParts(m_scratch->path().path(), m_model));
        m_window.emplace(*m_coordinator);
        connect(&*m_coordinator, &AppCoordinator::stateChanged, &*m_window,
            [this] { m_window->showState(m_coordinator->state()); });
        m_window->setTheme(Theme::palette(ColorScheme::light, u"coral"_s));
        m_window->showState(m_coordinator->state());
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(&*m_window));
    }

    void aDayIsReadByKeyboardAndAsATable()
    {
        auto& line = named<QWidget>("From midnight to midnight");
        line.setFocus();
        QVERIFY(line.accessibleDescription().startsWith(u"1 h 40 min"));
        QTest::keyClick(&line, Qt::Key_End);
        QVERIFY(line.accessibleDescription().startsWith(u"kate, "));
        QTest::keyClick(&line, Qt::Key_Left);
        QVERIFY(line.accessibleDescription().startsWith(u"Nothing observed, "));
        named<QAbstractButton>("Previous day").click();
        QTest::keyClick(&line, Qt::Key_Home);
        QVERIFY(line.accessibleDescription().startsWith(u"okular, "));
        auto* const button = line.parentWidget()->findChild<QAbstractButton*>();
        button->click();
        auto* const table = line.parentWidget()->findChild<QTableView*>();
        QVERIFY(table->isVisible() && !line.isVisible());
        QCOMPARE(table->model()->index(0, 2).data().toString(), u"okular"_s);
    }

    void whatIsDeletedIsNamedFirst()
    {
        button(u"The last hour…"_s).click();
        auto* const question = m_window->findChild<QMessageBox*>();
        QVERIFY(question->informativeText().contains(u"10 min"));
        QCOMPARE(m_coordinator->activityDesk().sessions().size(), 3u);
        for (auto* const answer : question->buttons()) {
            if (question->buttonRole(answer) == QMessageBox::DestructiveRole)
                answer->click();
        }
        QCOMPARE(m_coordinator->activityDesk().sessions().size(), 2u);
        QVERIFY(!button(u"The last hour…"_s).isEnabled());
        QVERIFY(button(u"This day…"_s).isEnabled());
    }

    void theTemplateIsOfferedSwitchedDeletedAndBroughtBack()
    {
        m_window->openPage(u"rules"_s);
        button(u"Add this rule"_s).click();
        const auto rules = [this] { return m_coordinator->state().of<ActivityState>().ruleList; };
        QCOMPARE(rules().size(), 1u);
        const auto name = rules()[0].name;
        auto& isOn = named<QAbstractButton>(name.toUtf8());
        QVERIFY(!isOn.isChecked() && isOn.accessibleDescription().contains(u"disabled"));
        isOn.click();
        QVERIFY(rules()[0].enabled && isOn.accessibleDescription().contains(u"nothing that it"));
        named<QAbstractButton>((u"Delete "_s + name).toUtf8()).click();
        QVERIFY(rules().empty());
        named<QAbstractButton>("Undo").click();
        QCOMPARE(rules().size(), 1u);
    }

    void usageAndWeekAreShown()
    {
        m_window->openPage(u"usage"_s);
        auto& lanes = named<QWidget>("Tokens in all");
        lanes.setFocus();
        QTest::keyClick(&lanes, Qt::Key_Home);
        QCOMPARE(lanes.accessibleDescription(), u"Conversation: 0"_s);
        m_window->openPage(u"week"_s);
        auto& week = named<QWidget>("Day by day");
        QTest::keyClick(&week, Qt::Key_End);
        QCOMPARE(week.accessibleDescription(), u"Sunday, Browsing: 1 h 30 min");
    }

private:
    template <typename Widget>
    Widget& named(const char* name)
    {
        if (auto* const widget = PanelFixture::find<Widget>(*m_window, name))
            return *widget;
        qFatal("There is no control of the name %s.", name);
    }
    QAbstractButton& button(const QString& text)
    {
        for (auto* const button : m_window->findChildren<QAbstractButton*>()) {
            if (button->text() == text)
                return *button;
        }
        qFatal("There is no button %s.", qPrintable(text));
    }

    std::optional<ScratchDirectory> m_scratch;
    ScriptedProvider m_model;
    std::optional<AppCoordinator> m_coordinator;
    std::optional<ActivityWindow> m_window;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::ActivityWindowTest)

#include "ActivityWindowTest.moc"
