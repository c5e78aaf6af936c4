#include "PobblewigDesktop/chat/ProposalBanners.h"

#include "PobblewigDesktop/chat/ConversationView.h"
#include "PobblewigDesktop/chat/ProposalBanner.h"
#include "desktop/chat/PanelFixture.h"
#include "support/TableRow.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QProxyStyle>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolButton>

namespace pobblewig {

namespace {

RuleProposal modeChange()
{
    return { .proposalId = QStringLiteral("mode"),
        .kind = RuleProposal::Kind::settingsChange,
        .name = QStringLiteral("mode → focus"),
        .settingsChange =
            ProposedSettingsChange { QStringLiteral("mode"), QStringLiteral("focus") } };
}

RuleProposal reminder(const QString& title)
{
    return { .proposalId = title,
        .kind = RuleProposal::Kind::reminder,
        .name = title,
        .reminder = ProposedReminder { title, ScriptedChat::now } };
}

RuleProposal forget(const QString& name)
{
    return { .proposalId = name, .kind = RuleProposal::Kind::forgetMemory, .name = name };
}

/// The desktop asks for windows that do not move.
class StillStyle : public QProxyStyle {
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
        QStyleHintReturn* returned) const override
    {
        return hint == SH_Widget_Animation_Duration
            ? 0
            : QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

QStringList childNames(const QAccessibleInterface& parent)
{
    QStringList names;
    for (auto number = 0; number < parent.childCount(); ++number) {
        const auto* const child = parent.child(number);
        if (!child->state().invisible)
            names.append(child->text(QAccessible::Name));
    }
    names.sort();
    return names;
}

} // namespace

class ProposalBannersTest : public QObject {
    Q_OBJECT

    ProposalBanner* banner(const QString& id) const
    {
        for (auto* const candidate : m->panel.findChildren<ProposalBanner*>()) {
            if (candidate->id() == id && !candidate->isHidden())
                return candidate;
        }
        return nullptr;
    }

    /// Shows each of several proposals.
    void show(const std::vector<RuleProposal>& proposals)
    {
        m->panel.setProposals(proposals, {});
        m->button("Show").click();
    }

    QPushButton* button(const QString& id, const char* name) const
    {
        return PanelFixture::find<QPushButton>(*banner(id), name);
    }

    QPoint middle(const QWidget* widget) const
    {
        return widget->mapTo(&m->panel, widget->rect().center());
    }

    /// Whether a press at its place would reach it.
    bool isWithinReach(const QWidget* widget) const
    {
        return m->panel.childAt(middle(widget)) == widget;
    }

    /// As the window system reports it.
    void click(const QPoint& place) const
    {
        QTest::mouseClick(m->panel.windowHandle(), Qt::LeftButton, {}, place);
    }

    QString focused() const { return m->panel.focusWidget()->accessibleName(); }

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new StillStyle); }
    void init()
    {
        m.emplace();
        m_answers.clear();
        QObject::connect(&m->panel, &ChatPanel::proposalAnswered, &m->panel,
            [this](const QString& id, ProposalAnswer answer) { m_answers[answer].append(id); });
    }
    void cleanup() { m.reset(); }

    void aProposalIsAGroupWithItsWordsAndAnswers_data()
    {
        QTest::addColumn<RuleProposal>("proposal");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("children");
        const QStringList always { QStringLiteral("Allow always for ordinary settings") };
        const QStringList answers { QStringLiteral("Confirm"), QStringLiteral("Dismiss") };
        const auto setting = QStringLiteral("Change a setting");
        row("a setting", modeChange(), "Proposal: mode → focus",
            always + QStringList { setting } + answers
                + QStringList { QStringLiteral("Mode: Open-ended → Focus") });
        auto cloud = modeChange();
        cloud.settingsChange = { QStringLiteral("cloudSyncEnabled"), true };
        row("a setting that always asks", cloud, "Proposal: mode → focus",
            QStringList { setting, QStringLiteral("Cloud sync: off → on") } + answers);
        row("a note", forget(QStringLiteral("Forget\u202e \"%1\"")), "Proposal: Forget \"%1\"",
            answers
                + QStringList { QStringLiteral("Forget \"%1\""),
                    QStringLiteral("Forget from memory"),
                    QStringLiteral("This cannot be undone.") });
    }
    void aProposalIsAGroupWithItsWordsAndAnswers()
    {
        QFETCH(RuleProposal, proposal);
        m->panel.setProposals({ proposal }, {});
        auto* const shown = QAccessible::queryAccessibleInterface(banner(proposal.proposalId));
        QCOMPARE(shown->role(), QAccessible::Grouping);
        QTEST(shown->text(QAccessible::Name), "name");
        QTEST(childNames(*shown), "children");
    }

    void enterNeverAnswersAndTheFocusNeverComesByItself()
    {
        show({ modeChange(), reminder(QStringLiteral("Tea")) });
        QCOMPARE(focused(), QStringLiteral("Message"));
        QTest::keyClicks(&m->input(), QStringLiteral("Hello"));
        QTest::keyClick(&m->input(), Qt::Key_Return);
        QTRY_VERIFY(m->talk.model.isAsked());
        auto* const confirm = button(QStringLiteral("mode"), "Confirm");
        confirm->setFocus(Qt::TabFocusReason);
        QTest::keyClick(confirm, Qt::Key_Return);
        QTest::keyClick(confirm, Qt::Key_Enter);
        QVERIFY(confirm->hasFocus() && confirmed().isEmpty());
        QTest::keyClick(confirm, Qt::Key_Space);
        QCOMPARE(confirmed().size(), 1);
        QCOMPARE(focused(), QStringLiteral("Message"));
    }

    void anAnswerIsGivenOnceUnlessItFails()
    {
        const auto id = QStringLiteral("mode");
        m->panel.setProposals({ modeChange() }, {});
        for (const auto* const name :
            { "Allow always for ordinary settings", "Confirm", "Dismiss" })
            button(id, name)->click();
        QCOMPARE(m_answers[ProposalAnswer::allowAlways].takeFirst(), id);
        QVERIFY(confirmed().isEmpty() && dismissed().isEmpty());
        // What else happens in the meantime is no outcome.
        show({ modeChange(), reminder(QStringLiteral("Tea")) });
        QVERIFY(!button(id, "Dismiss")->isEnabled());
        m->panel.allowAnswer(id);
        button(id, "Dismiss")->click();
        QCOMPARE(dismissed().takeFirst(), id);
        m->panel.setProposals({}, {});
        m->panel.allowAnswer(id);
        QVERIFY(!banner(id));
    }

    void aBannerThatGoesGivesTheFocusToTheInput()
    {
        const auto tea = reminder(QStringLiteral("Tea"));
        show({ modeChange(), tea });
        button(QStringLiteral("mode"), "Confirm")->setFocus(Qt::TabFocusReason);
        m->panel.setProposals({ tea }, {});
        QCOMPARE(focused(), QStringLiteral("Message"));
    }

    void whatStaysKeepsItsBannerAndAPressThatHasBegun()
    {
        const auto id = QStringLiteral("mode");
        m->panel.setProposals({ modeChange() }, {});
        const auto* const confirm = button(id, "Confirm");
        QTRY_VERIFY(isWithinReach(confirm));
        QTest::mousePress(m->panel.windowHandle(), Qt::LeftButton, {}, middle(confirm));
        AppSettings settings;
        settings.mode = CoachMode::studying;
        m->panel.setProposals({ modeChange() }, settings);
        QCOMPARE(button(id, "Confirm"), confirm);
        QCOMPARE(banner(id)->accessibleDescription(), QStringLiteral("Mode: Studying → Focus"));
        QTest::mouseRelease(m->panel.windowHandle(), Qt::LeftButton, {}, middle(confirm));
        QCOMPARE(confirmed().size(), 1);
    }

    void aPressMeantForWhatStoodThereIsNoAnswer()
    {
        const auto tea = reminder(QStringLiteral("Tea"));
        show({ modeChange(), tea });
        for (const auto& proposals : { std::vector { modeChange(), tea }, { modeChange() } }) {
            m->panel.setProposals(proposals, {});
            // Until the layout has come to rest; presses are held off for longer.
            for (auto round = 0; round < 10; ++round)
                QCoreApplication::processEvents();
            auto* const dismiss = button(QStringLiteral("mode"), "Dismiss");
            const auto place = middle(dismiss);
            click(place);
            QVERIFY(dismissed().isEmpty());
            QTRY_VERIFY(isWithinReach(dismiss));
            QCOMPARE(middle(dismiss), place);
            click(place);
            QCOMPARE(dismissed().takeFirst(), QStringLiteral("mode"));
            m->panel.allowAnswer(QStringLiteral("mode"));
        }
    }

    void whatIsShownAgainStaysWithinReach()
    {
        m->panel.setTheme(Theme::palette(ColorScheme::dark, {}));
        m->panel.setProposals({ modeChange() }, {});
        const auto* const confirm = button(QStringLiteral("mode"), "Confirm");
        QTRY_VERIFY(isWithinReach(confirm));
        m->panel.setTheme(Theme::palette(ColorScheme::dark, {}));
        m->panel.setProposals({ modeChange() }, {});
        QCoreApplication::sendPostedEvents();
        QVERIFY(isWithinReach(confirm));
    }

    void manyTakeTwoFifthsAndTheNewestIsInSight()
    {
        std::vector<RuleProposal> proposals;
        for (auto number = 0; number < 6; ++number)
            proposals.push_back(reminder(QStringLiteral("Tea %1").arg(number)));
        show({ proposals.begin(), proposals.end() - 1 });
        m->panel.setProposals(proposals, {});
        const auto* const newest = button(QStringLiteral("Tea 5"), "Confirm");
        const auto* const all = m->panel.findChild<ProposalBanners*>();
        QTRY_VERIFY(isWithinReach(newest));
        QCOMPARE(all->height(), m->panel.height() * 2 / 5);
        // A press on what is partly out of sight shows it first.
        const auto* const older = button(QStringLiteral("Tea 4"), "Confirm");
        const auto* const words = banner(QStringLiteral("Tea 4"));
        QVERIFY(isWithinReach(older) && words->visibleRegion().boundingRect() != words->rect());
        click(middle(older));
        QVERIFY(confirmed().isEmpty());
        QCOMPARE(words->visibleRegion().boundingRect(), words->rect());
        QTRY_VERIFY(isWithinReach(older));
        click(middle(older));
        QCOMPARE(confirmed().size(), 1);
        m->panel.resize(m->panel.width(), 500);
        QTRY_COMPARE(all->height(), 200);
    }

    void severalAreFoldedIntoOneLine()
    {
        const auto tea = reminder(QStringLiteral("Tea"));
        m->panel.setProposals({ modeChange(), tea }, {});
        QVERIFY(!banner(QStringLiteral("mode")) && !banner(QStringLiteral("Tea")));
        QVERIFY(m->named<QWidget>("2 things wait for you").isVisible());
        auto& dismissAll = m->button("Dismiss all");
        QTest::keyClick(&dismissAll, Qt::Key_Return);
        QVERIFY(dismissed().isEmpty());
        // The one that is left needs no line.
        m->panel.setProposals({ tea }, {});
        QVERIFY(banner(QStringLiteral("Tea")) && !dismissAll.isVisible());

        // What the user is at stays.
        button(QStringLiteral("Tea"), "Confirm")->setFocus();
        m->panel.setProposals({ tea, modeChange() }, {});
        QVERIFY(banner(QStringLiteral("Tea")) && banner(QStringLiteral("mode")));
        m->button("Hide").click();
        QVERIFY(!banner(QStringLiteral("Tea")));
        QTRY_VERIFY(isWithinReach(&dismissAll));
        click(middle(&dismissAll));
        QCOMPARE(dismissed(), QStringList({ QStringLiteral("Tea"), QStringLiteral("mode") }));
    }

    void theAnswersAreInSightInTheSmallestPanel()
    {
        m->panel.resize(m->panel.minimumSize());
        const auto id = QStringLiteral("A word and another. ").repeated(20).trimmed();
        m->panel.setProposals({ forget(id) }, {});
        const auto* const confirm = button(id, "Confirm");
        QTRY_COMPARE(confirm->visibleRegion().boundingRect(), confirm->rect());
        QVERIFY(banner(id)->findChild<QToolButton*>()->isVisible());
    }

    void whatIsDoneOffersToUndo()
    {
        auto change = modeChange();
        change.id = QUuid::createUuid();
        change.status = RuleProposal::Status::confirmed;
        m->talk.chat.say({ .text = QStringLiteral("Changed"), .proposalID = change.id });
        m->panel.setProposals({}, {}, { { change, true } });
        auto* const view = m->panel.findChild<ConversationView*>();
        const auto index = view->model()->index(1, 0);
        QCOMPARE(index.data(Qt::AccessibleTextRole), QStringLiteral("Done, 00:00: Mode: Focus"));
        QSignalSpy undone(&m->panel, &ChatPanel::undoRequested);
        QTRY_VERIFY(view->visualRect(index).height() > 30);
        const auto place = view->visualRect(index);
        // "Undo" stands at the end of the last line.
        for (auto y = place.top(); y < place.bottom(); y += 4)
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, { place.right() - 40, y });
        QVERIFY(!undone.isEmpty() && undone.first().first() == QStringLiteral("mode"));
    }

    void tabGoesThroughTheAnswersAsTheyAreRead()
    {
        show({ modeChange(), forget(QStringLiteral("Note")) });
        m->panel.findChild<QAbstractItemView*>()->setFocus();
        QStringList reached;
        do {
            QTest::keyClick(m->panel.focusWidget(), Qt::Key_Tab);
            reached.append(focused());
        } while (reached.last() != QStringLiteral("Message") && reached.size() < 20);
        const auto confirm = QStringLiteral("Confirm");
        const auto dismiss = QStringLiteral("Dismiss");
        const QStringList expected { QStringLiteral("Hide"), QStringLiteral("Dismiss all"), confirm,
            dismiss, QStringLiteral("Allow always for ordinary settings"), confirm, dismiss,
            QStringLiteral("Message") };
        QCOMPARE(reached, expected);
    }

    void aLongTextIsShownInFullOnDemand()
    {
        const auto id = QStringLiteral("A word and another. ").repeated(50).trimmed();
        m->panel.setProposals({ forget(id) }, {});
        auto* const more = banner(id)->findChild<QToolButton*>();
        QTRY_VERIFY(more->isVisible());
        const auto height = banner(id)->height();
        more->click();
        QCOMPARE(more->accessibleName(), QStringLiteral("Show less"));
        QTRY_VERIFY(banner(id)->height() > 2 * height);
        more->click();
        QTRY_COMPARE(banner(id)->height(), height);
    }

    void whatAlwaysAsksIsShownFromItsBeginning()
    {
        JSONValue::Array folders;
        for (int number = 0; number < 40; ++number)
            folders.push_back(JSONValue::Object { { QStringLiteral("name"), QStringLiteral("x") },
                { QStringLiteral("path"), QStringLiteral("/folder/%1").arg(number) } });
        auto change = modeChange();
        change.settingsChange = { QStringLiteral("appDataSources"), folders };
        m->panel.setProposals({ change }, {});
        const auto* const shown = banner(QStringLiteral("mode"));
        const auto* const label = shown->findChild<QLabel*>();
        QTRY_VERIFY(!label->visibleRegion().isEmpty());
        const auto* const confirm = button(QStringLiteral("mode"), "Confirm");
        QVERIFY(confirm->visibleRegion().isEmpty());
        QVERIFY(!shown->findChild<QToolButton*>()->isVisible());
    }

    void theQuestionForAPictureIsABannerAboveTheConversation()
    {
        auto& consent = m->talk.chat.captureConsent();
        std::optional<CaptureConsent::Verdict> verdict;
        std::stop_source stop;
        QCoro::connect(
            consent.ask(stop.get_token()), &m->panel, [&verdict](auto given) { verdict = given; });
        // What else is proposed meanwhile leaves it alone.
        m->panel.setProposals({ modeChange() }, {});
        m->panel.setProposals({}, {});
        auto* const shown = banner(QString());
        QVERIFY(shown && shown->isVisible());
        const auto place = shown->mapTo(&m->panel, QPoint()).y();
        QVERIFY(place < m->panel.findChild<QAbstractItemView*>()->y());
        button(QString(), "Look now")->click();
        QTRY_VERIFY(verdict == CaptureConsent::Verdict::granted);
        QVERIFY(!banner(QString()));
        QVERIFY(m_answers.empty());
    }

private:
    QStringList& confirmed() { return m_answers[ProposalAnswer::confirm]; }
    QStringList& dismissed() { return m_answers[ProposalAnswer::dismiss]; }

    std::optional<PanelFixture> m;
    std::map<ProposalAnswer, QStringList> m_answers;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::ProposalBannersTest)
#include "ProposalBannersTest.moc"
