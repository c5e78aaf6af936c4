#include "PobblewigDesktop/contactsheet/PanelScenes.h"

#include "PobblewigDesktop/chat/FindBar.h"
#include "PobblewigDesktop/chat/KeyboardSheet.h"
#include "PobblewigDesktop/presence/BuddyFace.h"

#include <QEventLoop>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

/// Until everything has slid in.
constexpr auto settlingTime = 400ms;

void converse(StagedChat& talk)
{
    const auto now = StagedChat::now;
    talk.exchange(QStringLiteral("I keep putting off the statistics problem set."),
        QStringLiteral("Then let us make it small. Which exercise looks least unpleasant?\n\nPick "
                       "that one, set a timer for fifteen minutes, and stop when it rings."),
        now - 26h);
    talk.add({ .id = QUuid::createUuid(),
        .role = ChatMessage::Role::assistant,
        .text = QStringLiteral("The lab report is due tomorrow at 12:00. Shall we look at it now?"),
        .timestamp = now - 50min,
        .relatedInterventionID = QUuid::createUuid() });
    talk.exchange(QStringLiteral("Remind me at six 🙂👩‍👩‍👧‍👦"),
        QStringLiteral("Done. I will nudge you at six."), now - 40min);
    talk.add({ .id = QUuid::createUuid(),
        .role = ChatMessage::Role::assistant,
        .text = QStringLiteral("Added reminder 'Lab report' due 18:00"),
        .timestamp = now - 39min });
    talk.exchange(QStringLiteral("مرحبا، كيف حالك اليوم؟"),
        QStringLiteral("أنا بخير، شكرا! هل نبدأ بمراجعة الفصل الثالث من كتاب Statistics معا؟"),
        now - 10min);
    talk.exchange(QStringLiteral("Donaudampfschiff").repeated(6),
        QStringLiteral("That is quite a word."), now - 2min);
}

/// The companion begins, and the user can answer with one click.
void remind(PanelStage& stage)
{
    const auto id = QUuid::createUuid();
    stage.talk.add({ .id = QUuid::createUuid(),
        .role = ChatMessage::Role::assistant,
        .text = QStringLiteral("The essay on the Congress of Vienna is due tomorrow at 17:15."),
        .timestamp = StagedChat::now,
        .relatedInterventionID = id });
    stage.panel.setInterventions({ { .id = id, .firedAt = StagedChat::now } });
}

/// Files of these names, which the user drops on the panel.
void attach(PanelStage& stage, const QStringList& names)
{
    static const QTemporaryDir directory;
    DropContents contents;
    for (const auto& name : names) {
        QFile file(directory.filePath(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(QByteArray("Mitosis has four phases.\n").repeated(100));
        contents.files.append(QUrl::fromLocalFile(file.fileName()));
    }
    stage.panel.attach(contents);
}

QImage sunset()
{
    QImage picture(400, 300, QImage::Format_RGB32);
    QLinearGradient sky(0, 0, 0, picture.height());
    sky.setColorAt(0, Qt::darkBlue);
    sky.setColorAt(1, Qt::yellow);
    QPainter(&picture).fillRect(picture.rect(), sky);
    return picture;
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
    const ProposedCalendarEvent event {
        .title = title, .start = StagedChat::now + 30h, .end = StagedChat::now + 31h, .notes = notes
    };
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

JSONValue folder(const QString& name, const QString& path)
{
    return JSONValue::Object { { QStringLiteral("name"), name }, { QStringLiteral("path"), path } };
}

/// A folder that holds everything, among others with harmless names.
RuleProposal everythingShared(int others)
{
    JSONValue::Array folders;
    for (int number = 1; number <= others; ++number)
        folders.push_back(folder(QStringLiteral("Week %1").arg(number),
            QStringLiteral("~/Documents/Lectures/%1").arg(number)));
    folders.push_back(folder(QStringLiteral("Lecture slides, read only"),
        others > 0 ? QStringLiteral("~") : QStringLiteral("/")));
    return changed(QStringLiteral("appDataSources"), folders);
}

/// An address that begins like the school's.
RuleProposal longAddress()
{
    return changed(QStringLiteral("canvasBaseURL"),
        QStringLiteral("https://canvas.school.edu.%1example.net/login")
            .arg(QStringLiteral("courses.").repeated(24)));
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

void proposeAlone(PanelStage& stage, const RuleProposal& proposal)
{
    converse(stage.talk);
    stage.panel.setProposals({ proposal }, {});
}

Task<> askForPicture(CaptureConsent* consent)
{
    std::ignore = co_await consent->ask({});
}

void propose(PanelStage& stage, std::ptrdiff_t from, std::ptrdiff_t count)
{
    const auto all = proposals();
    converse(stage.talk);
    stage.panel.setProposals({ all.begin() + from, all.begin() + from + count }, {});
}

/// What became of a proposal, as the conversation tells it.
AnsweredProposal answered(
    StagedChat& talk, RuleProposal proposal, RuleProposal::Status status, const char* told)
{
    proposal.id = QUuid::createUuid();
    proposal.status = status;
    proposal.settledAt = StagedChat::now - 1min;
    talk.add({ .id = QUuid::createUuid(),
        .role = ChatMessage::Role::assistant,
        .text = QString::fromLatin1(told),
        .timestamp = StagedChat::now - 1min,
        .proposalID = proposal.id });
    return { proposal, false };
}

void decide(PanelStage& stage)
{
    using enum RuleProposal::Status;
    auto& talk = stage.talk;
    AppSettings settings;
    settings.mascot = QStringLiteral("axolotl");
    settings.mascotColorScheme = QStringLiteral("axolotl.pink");
    talk.exchange(QStringLiteral("Turn into a pink axolotl."), QStringLiteral("Watch me."),
        StagedChat::now - 5min);
    auto form = answered(talk, changed(QStringLiteral("mascot"), QStringLiteral("axolotl")),
        confirmed, "Changed setting: mascot → axolotl");
    form.proposal.replaced.emplace().emplace(QStringLiteral("mascot"), QStringLiteral("mouse"));
    form.canBeUndone = true;
    auto mode = answered(
        talk, changed(QStringLiteral("mode"), QStringLiteral("relaxing")), rejected, "Dismissed");
    talk.exchange(QStringLiteral("And put the dentist into my calendar, and watch my videos."),
        QStringLiteral("Both are yours to confirm."), StagedChat::now - 3min);
    const auto all = proposals();
    auto dentist = answered(talk, all[1], confirmed, "Added 'Dentist' to your calendar");
    auto rule = answered(talk, all[5], confirmed, "Rule is now active");
    rule.proposal.undoneAt = StagedChat::now;
    auto forgotten = answered(talk, all[2], confirmed, "Forgot the note \"Finds statistics hard\"");
    forgotten.proposal.name.clear();
    stage.panel.setProposals({}, settings, { form, mode, dentist, rule, forgotten });
}

QString refusal()
{
    return QStringLiteral(
        R"({"error":{"message":"Incorrect API key provided: sk-abcd****wxyz1234. )"
        R"(You can find your key on your account's page.","code":401}})");
}

} // namespace

PanelStage::PanelStage(ColorScheme scheme)
    : panel(talk.chat(), Calendar { QTimeZone::utc(), QLocale(QStringLiteral("en_GB")) },
        [] { return StagedChat::now; })
{
    panel.setTheme(Theme::palette(scheme, QStringLiteral("coral")));
    panel.setModelLabel(QStringLiteral("demo model"));
    panel.setStateText(QStringLiteral("Focus until 15:30"));
    panel.setFace(BuddyFace::icon(MascotSprite::forID(u"axolotl")));
    panel.show();
}

QAbstractButton& PanelStage::button(const char* name)
{
    for (auto* const candidate : panel.findChildren<QAbstractButton*>()) {
        if (candidate->isVisible() && candidate->accessibleName() == QLatin1String(name))
            return *candidate;
    }
    qFatal("There is no button of the name %s.", name);
}

void PanelStage::watch(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

QImage PanelScene::picture(ColorScheme scheme) const
{
    PanelStage stage(scheme);
    play(stage);
    PanelStage::watch(settlingTime);
    return stage.panel.grab().toImage();
}

std::vector<PanelScene> PanelScenes::all()
{
    return {
        { QStringLiteral("empty"), [](PanelStage&) {} },
        { QStringLiteral("conversation"), [](PanelStage& stage) { converse(stage.talk); } },
        { QStringLiteral("quick answers"),
            [](PanelStage& stage) {
                converse(stage.talk);
                remind(stage);
            } },
        { QStringLiteral("quick answers, narrow"),
            [](PanelStage& stage) {
                stage.panel.resize(300, 420);
                remind(stage);
            } },
        { QStringLiteral("streaming"),
            [](PanelStage& stage) {
                converse(stage.talk);
                stage.talk.ask(QStringLiteral("Explain the central limit theorem."));
                stage.talk.say(QStringLiteral("Take many samples, average each one, and the "
                                              "averages gather around the true mean "
                                              "in a bell shape, whatever the"));
            } },
        { QStringLiteral("error"),
            [](PanelStage& stage) {
                converse(stage.talk);
                stage.talk.ask(QStringLiteral("Are you there?"));
                stage.talk.fail(TransportError { TransportError::Kind::refused,
                    QStringLiteral("Nothing answers at 127.0.0.1:11434.") });
            } },
        { QStringLiteral("error, details"),
            [](PanelStage& stage) {
                converse(stage.talk);
                stage.talk.ask(QStringLiteral("Are you there?"));
                stage.talk.fail(LLMError::http(401, refusal()));
                PanelStage::watch(100ms);
                stage.button("Details").click();
            } },
        { QStringLiteral("error, narrow"),
            [](PanelStage& stage) {
                stage.panel.resize(300, 320);
                converse(stage.talk);
                stage.talk.ask(QStringLiteral("Are you there?"));
                stage.talk.fail(LLMError::http(401, refusal()));
            } },
        { QStringLiteral("error, narrow, details"),
            [](PanelStage& stage) {
                stage.panel.resize(300, 320);
                converse(stage.talk);
                stage.talk.ask(QStringLiteral("Are you there?"));
                stage.talk.fail(LLMError::http(401, refusal()));
                PanelStage::watch(100ms);
                stage.button("Details").click();
            } },
        { QStringLiteral("error, another model"),
            [](PanelStage& stage) {
                stage.talk.ask(QStringLiteral("Are you there?"));
                stage.talk.fail(LLMError::http(404, QStringLiteral("model \"owl\" not found")));
            } },
        { QStringLiteral("error, wait"),
            [](PanelStage& stage) {
                stage.talk.ask(QStringLiteral("Are you there?"));
                auto busy = LLMError::http(429, QStringLiteral("Rate limit reached"));
                busy.retryAfter = "42";
                stage.talk.fail(busy);
            } },
        { QStringLiteral("set-up"),
            [](PanelStage& stage) {
                stage.talk.ask(QStringLiteral("Are you there?"));
                stage.talk.fail(LLMError::notConfigured({}));
                PanelStage::watch(100ms);
                stage.button("How to set it up").click();
            } },
        { QStringLiteral("thinking"),
            [](PanelStage& stage) {
                converse(stage.talk);
                stage.talk.ask(QStringLiteral("Explain the central limit theorem."));
                stage.talk.think(QStringLiteral("The user studies statistics. "));
            } },
        { QStringLiteral("thoughts"),
            [](PanelStage& stage) {
                converse(stage.talk);
                stage.talk.ask(QStringLiteral("Explain the central limit theorem."));
                stage.talk.think(
                    QStringLiteral("The user studies statistics, so a picture helps more than a "
                                   "proof. Means of samples; the bell shape; how fast. ")
                        .repeated(8));
                PanelStage::watch(100ms);
                stage.button("Thinking, 0 s").click();
                stage.talk.say(QStringLiteral("Take many samples, and"));
            } },
        { QStringLiteral("keyboard"),
            [](PanelStage& stage) {
                converse(stage.talk);
                stage.panel.findChild<KeyboardSheet*>()->open();
            } },
        { QStringLiteral("looking"),
            [](PanelStage& stage) {
                converse(stage.talk);
                stage.talk.ask(
                    QStringLiteral("What am I missing here?"), ChatService::Screenshot::with);
                stage.talk.say(QStringLiteral("The second line divides by"));
            } },
        { QStringLiteral("attachments"),
            [](PanelStage& stage) {
                stage.panel.resize(440, 600);
                converse(stage.talk);
                attach(stage, { QStringLiteral("Lecture 7, cell division.txt") });
                stage.panel.attach({ .picture = sunset() });
            } },
        { QStringLiteral("attachments, narrow"),
            [](PanelStage& stage) {
                stage.panel.resize(300, 320);
                converse(stage.talk);
                attach(stage,
                    { QStringLiteral("Lecture 7, cell division.txt"), QStringLiteral("id_rsa"),
                        QStringLiteral("ملاحظات.txt"), QStringLiteral("🦉.md") });
                stage.panel.attach({ .picture = sunset() });
            } },
        { QStringLiteral("stopped, and a new session"),
            [](PanelStage& stage) {
                stage.talk.ask(QStringLiteral("Write a long story."));
                stage.talk.say(QStringLiteral("Once upon a time"));
                PanelStage::watch(100ms);
                stage.button("Stop").click();
                stage.button("New session").click();
            } },
        { QStringLiteral("find"),
            [](PanelStage& stage) {
                converse(stage.talk);
                stage.panel.findChild<FindBar*>()->open();
                stage.panel.findChild<QLineEdit*>()->setText(QStringLiteral("re"));
            } },
        { QStringLiteral("proposal"), [](PanelStage& stage) { propose(stage, 0, 1); } },
        { QStringLiteral("proposal, focused"),
            [](PanelStage& stage) {
                propose(stage, 0, 1);
                stage.button("Confirm").setFocus(Qt::TabFocusReason);
            } },
        { QStringLiteral("proposal, answered"),
            [](PanelStage& stage) {
                propose(stage, 1, 1);
                stage.button("Confirm").click();
            } },
        { QStringLiteral("proposal, long"), [](PanelStage& stage) { propose(stage, 2, 1); } },
        { QStringLiteral("proposal, expanded"),
            [](PanelStage& stage) {
                propose(stage, 2, 1);
                PanelStage::watch(700ms);
                stage.button("Show all").click();
            } },
        { QStringLiteral("proposals, right to left"),
            [](PanelStage& stage) { propose(stage, 3, 1); } },
        { QStringLiteral("proposals, list"), [](PanelStage& stage) { propose(stage, 4, 1); } },
        { QStringLiteral("proposal, the whole disk"),
            [](PanelStage& stage) { proposeAlone(stage, everythingShared(0)); } },
        { QStringLiteral("proposal, many folders"),
            [](PanelStage& stage) { proposeAlone(stage, everythingShared(22)); } },
        { QStringLiteral("proposal, long address"),
            [](PanelStage& stage) { proposeAlone(stage, longAddress()); } },
        { QStringLiteral("question for a picture"),
            [](PanelStage& stage) {
                converse(stage.talk);
                stage.talk.ask(QStringLiteral("What am I missing here?"));
                spawn(askForPicture(&stage.talk.chat().captureConsent()));
            } },
        { QStringLiteral("proposals, three"), [](PanelStage& stage) { propose(stage, 0, 3); } },
        { QStringLiteral("proposals, shown"),
            [](PanelStage& stage) {
                propose(stage, 0, 6);
                stage.button("Show").click();
            } },
        { QStringLiteral("cards"), decide },
        { QStringLiteral("cards, narrow"),
            [](PanelStage& stage) {
                stage.panel.resize(300, 320);
                decide(stage);
            } },
        { QStringLiteral("proposal, smallest"),
            [](PanelStage& stage) {
                stage.panel.resize(300, 320);
                propose(stage, 1, 1);
            } },
        { QStringLiteral("forgetting, smallest"),
            [](PanelStage& stage) {
                stage.panel.resize(300, 320);
                propose(stage, 2, 1);
            } },
        { QStringLiteral("proposals, smallest"),
            [](PanelStage& stage) {
                stage.panel.resize(300, 320);
                propose(stage, 0, 2);
            } },
        { QStringLiteral("scrolled"),
            [](PanelStage& stage) {
                for (auto count = 0; count < 5; ++count)
                    converse(stage.talk);
                PanelStage::watch(100ms);
                stage.panel.findChild<QListView*>()->verticalScrollBar()->setValue(0);
                stage.panel.findChild<QPlainTextEdit*>()->setPlainText(
                    QStringLiteral("One\nTwo\nThree\nFour\nFive\nSix\nSeven"));
                stage.panel.setNotice(QStringLiteral(
                    "Pobblewig cannot save everything at the moment: No space left on "
                    "device. What you write now is kept only until you quit."));
            } },
    };
}

} // namespace pobblewig
