// Draws the chat panel in each of its states into the folder that is named as the argument.

#include "PobblewigDesktop/chat/ChatPanel.h"
#include "PobblewigDesktop/chat/FindBar.h"
#include "PobblewigDesktop/presence/BuddyFace.h"
#include "desktop/chat/ScriptedChat.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

void fill(ScriptedChat& talk)
{
    const auto now = ScriptedChat::now;
    talk.exchange(QStringLiteral("I keep putting off the statistics problem set."),
        QStringLiteral("Then let us make it small. Which exercise looks least unpleasant?\n\nPick "
                       "that one, set a timer for fifteen minutes, and stop when it rings."),
        now - 26h);
    talk.history.append({ .id = QUuid::createUuid(),
        .role = ChatMessage::Role::assistant,
        .text = QStringLiteral("The lab report is due tomorrow at 12:00. Shall we look at it now?"),
        .timestamp = now - 50min,
        .relatedInterventionID = QUuid::createUuid() });
    talk.exchange(QStringLiteral("Remind me at six 🙂👩‍👩‍👧‍👦"),
        QStringLiteral("Done. I will nudge you at six."), now - 40min);
    talk.add(ChatMessage::Role::assistant, QStringLiteral("Added reminder 'Lab report' due 18:00"),
        now - 39min);
    talk.exchange(QStringLiteral("مرحبا، كيف حالك اليوم؟"),
        QStringLiteral("أنا بخير، شكرا! هل نبدأ بمراجعة الفصل الثالث من كتاب Statistics معا؟"),
        now - 10min);
    talk.exchange(QStringLiteral("Donaudampfschiff").repeated(6),
        QStringLiteral("That is quite a word."), now - 2min);
}

RuleProposal changed(const QString& key, JSONValue value)
{
    return { .proposalId = key,
        .kind = RuleProposal::Kind::settingsChange,
        .name = key,
        .settingsChange = ProposedSettingsChange { key, std::move(value) } };
}

RuleProposal planned(const QString& title, const QString& notes)
{
    const ProposedCalendarEvent event { .title = title,
        .start = ScriptedChat::now + 30h,
        .end = ScriptedChat::now + 31h,
        .notes = notes };
    return { .proposalId = title,
        .kind = RuleProposal::Kind::calendarEvent,
        .name = title,
        .event = event };
}

RuleProposal forgotten(const QString& note)
{
    return { .proposalId = note,
        .kind = RuleProposal::Kind::forgetMemory,
        .name = QStringLiteral("Delete the memory note \"%1\"").arg(note) };
}

std::vector<RuleProposal> proposals()
{
    return {
        changed(QStringLiteral("mode"), QStringLiteral("focus")),
        planned(QStringLiteral("Dentist 🦷"),
            QStringLiteral(
                "Bring the insurance card. The practice moved: second floor, left of "
                "the pharmacy, ring twice. Call if you are more than ten minutes late.")),
        forgotten(
            QStringLiteral("Finds statistics hard and is ashamed of it. ").repeated(12).trimmed()),
        planned(QStringLiteral("موعد مع الأستاذ حول كتاب Statistics في الساعة التاسعة صباحا"),
            QStringLiteral("إحضار الفصل الثالث")),
        changed(QStringLiteral("excludedBundleIDs"),
            JSONValue::Array {
                QStringLiteral("com.example.") + QStringLiteral("verylong").repeated(8),
                QStringLiteral("org.mozilla.firefox") }),
        { .proposalId = QStringLiteral("rule"),
            .name = QStringLiteral("Donaudampfschiff").repeated(4),
            .applicationMatch = { QStringLiteral("YouTube"), QStringLiteral("Netflix") },
            .thresholdMinutes = 30,
            .excludedModes = { CoachMode::relaxing },
            .cooldownMinutes = 120 },
    };
}

struct Scene {
    explicit Scene(ColorScheme scheme)
    {
        panel.setTheme(Theme::palette(scheme, QStringLiteral("coral")));
        panel.setModelLabel(QStringLiteral("demo model"));
        panel.setStateText(QStringLiteral("focus until 15:30"));
        panel.setFace(BuddyFace::icon(MascotSprite::forID(u"axolotl")));
        panel.show();
    }

    void propose(size_t from, size_t count)
    {
        const auto all = proposals();
        fill(talk);
        panel.setProposals({ all.begin() + from, all.begin() + from + count }, {});
    }

    QAbstractButton& button(const char* name)
    {
        for (auto* const candidate : panel.findChildren<QAbstractButton*>()) {
            if (candidate->isVisible() && candidate->accessibleName() == QLatin1String(name))
                return *candidate;
        }
        qFatal("There is no button of the name %s.", name);
    }

    void ask(const QString& text)
    {
        talk.chat.submit(text);
        if (!QTest::qWaitFor([this] { return talk.model.isAsked(); }))
            qFatal("The model was never asked.");
    }

    ScriptedChat talk;
    ChatPanel panel { talk.chat, Calendar { QTimeZone::utc(), QLocale(QStringLiteral("en_GB")) },
        [] { return ScriptedChat::now; } };
};

using State = std::pair<const char*, std::function<void(Scene&)>>;

const State states[] = {
    { "empty", [](Scene&) {} },
    { "conversation", [](Scene& scene) { fill(scene.talk); } },
    { "streaming",
        [](Scene& scene) {
            fill(scene.talk);
            scene.ask(QStringLiteral("Explain the central limit theorem."));
            scene.talk.model.say(QStringLiteral(
                "Take many samples, average each one, and the averages gather around the true mean "
                "in a bell shape, whatever the"));
        } },
    { "error",
        [](Scene& scene) {
            fill(scene.talk);
            scene.ask(QStringLiteral("Are you there?"));
            scene.talk.model.finish(TransportError { TransportError::Kind::unreachable,
                QStringLiteral("The server does not answer. Check the network, then retry.") });
        } },
    { "looking",
        [](Scene& scene) {
            fill(scene.talk);
            scene.talk.screen.enqueue(CapturedScreenshot { "JPEG",
                QStringLiteral("Captured \"Problem set 7, exercise 3 - Statistics.pdf\" of "
                               "Document Viewer") });
            scene.talk.chat.submit(
                QStringLiteral("What am I missing here?"), ChatService::Screenshot::with);
            if (!QTest::qWaitFor([&scene] { return scene.talk.model.isAsked(); }))
                qFatal("The model was never asked.");
            scene.talk.model.say(QStringLiteral("The second line divides by"));
        } },
    { "find",
        [](Scene& scene) {
            fill(scene.talk);
            scene.panel.findChild<FindBar*>()->open();
            scene.panel.findChild<QLineEdit*>()->setText(QStringLiteral("re"));
        } },
    { "proposal", [](Scene& scene) { scene.propose(0, 1); } },
    { "proposal-focused",
        [](Scene& scene) {
            scene.propose(0, 1);
            scene.button("Confirm").setFocus(Qt::TabFocusReason);
        } },
    { "proposal-answered",
        [](Scene& scene) {
            scene.propose(1, 1);
            scene.button("Confirm").click();
        } },
    { "proposal-long", [](Scene& scene) { scene.propose(2, 1); } },
    { "proposal-expanded",
        [](Scene& scene) {
            scene.propose(2, 1);
            QTest::qWait(700);
            scene.button("Show all").click();
        } },
    { "proposals-right-to-left", [](Scene& scene) { scene.propose(3, 1); } },
    { "proposals-list", [](Scene& scene) { scene.propose(4, 1); } },
    { "proposals-three", [](Scene& scene) { scene.propose(0, 3); } },
    { "proposals-six", [](Scene& scene) { scene.propose(0, 6); } },
    { "proposals-narrow",
        [](Scene& scene) {
            scene.panel.resize(300, 420);
            scene.propose(0, 2);
        } },
    { "scrolled",
        [](Scene& scene) {
            for (auto count = 0; count < 5; ++count)
                fill(scene.talk);
            QTest::qWait(100);
            scene.panel.findChild<QListView*>()->verticalScrollBar()->setValue(0);
            scene.panel.findChild<QPlainTextEdit*>()->setPlainText(
                QStringLiteral("One\nTwo\nThree\nFour\nFive\nSix\nSeven"));
            scene.panel.setNotice(QStringLiteral("Pobblewig cannot save to its folder: the disk "
                                                 "is full. What you say now will be lost."));
        } },
};

void draw(const State& state, ColorScheme scheme, const QDir& folder)
{
    Scene scene(scheme);
    state.second(scene);
    QTest::qWait(400);
    const auto name =
        QStringLiteral("%1-%2-%3x.png")
            .arg(QLatin1String(state.first),
                scheme == ColorScheme::dark ? QStringLiteral("dark") : QStringLiteral("light"))
            .arg(scene.panel.devicePixelRatioF());
    scene.panel.grab().save(folder.filePath(name));
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    const QDir folder(application.arguments().value(1, QStringLiteral(".")));
    for (const auto& state : pobblewig::states) {
        for (const auto scheme : { pobblewig::ColorScheme::light, pobblewig::ColorScheme::dark })
            pobblewig::draw(state, scheme, folder);
    }
    return 0;
}
