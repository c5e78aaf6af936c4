#include "PobblewigDesktop/contactsheet/StagedHome.h"

#include "foundation/ISO8601.h"
#include "memory/history/UsageCounter.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

using Details = std::map<QString, JSONValue>;

/// Reaches nobody.
class StagedNetwork : public HTTPClient {
public:
    Task<tl::expected<HTTPResponse, TransportError>> send(HTTPRequest) override
    {
        co_return tl::unexpected(TransportError {});
    }
    HTTPStream stream(HTTPRequest) override
    {
        HTTPStream stream;
        stream.sink().finish(TransportError {});
        return stream;
    }
};

std::unique_ptr<KeychainHelper> keychain()
{
    auto keychain = std::make_unique<QtKeychainHelper>();
    keychain->isDisabled = true;
    return keychain;
}

AppCoordinator::Parts parts(const QString& home, StagedModel::Prompter& prompter)
{
    return {
        .directory = DataDirectory(QDir(home)),
        .http = std::make_unique<StagedNetwork>(),
        .keychain = keychain(),
        .environment =
            [] {
                return Environment { { QStringLiteral("MAIN_MODEL_ID"), QStringLiteral("owl") },
                    { QStringLiteral("MAIN_MODEL_BASE_URL"),
                        QStringLiteral("http://127.0.0.1:11434/v1") },
                    { QStringLiteral("MAIN_MODEL_API_KEY"), QStringLiteral("none") } };
            },
        .environmentFile = QStringLiteral("~/.config/Pobblewig/environment"),
        .wording = PlatformWording::linuxDesktop,
        .moment = StagedHome::moment(),
        .models = std::make_unique<StagedModels>(prompter),
    };
}

template <typename Value>
void write(const QDir& directory, const QString& name, const Value& value)
{
    if (!JSONFileStore(DataDirectory(directory), name).save(value))
        qFatal("A file cannot be written.");
}

/// One school that is read and one that refuses.
void writeSyncs(const QDir& directory)
{
    write(directory, QStringLiteral("canvas.json"),
        SchoolSyncState { .lastSyncAt = StagedHome::now - 5min,
            .lastStatus = QStringLiteral("ok"),
            .courseCount = 6,
            .deadlineCount = 42 });
    write(directory, QStringLiteral("classroom.json"),
        SchoolSyncState { .lastSyncAt = StagedHome::now - 2h,
            .lastStatus = QStringLiteral("failed"),
            .lastError = QStringLiteral("Google Classroom token rejected (401) — re-authenticate "
                                        "with Classroom scope") });
}

} // namespace

StagedHome::StagedHome()
{
    addActivity();
    addUsage();
    writeSyncs(directory());
    m_coordinator.emplace(parts(m_home.path(), m_prompter));
    addNotes();
    addReference();
    addDays();
    m_coordinator->updateSettings([](AppSettings& settings) {
        settings.canvasSyncEnabled = true;
        settings.classroomSyncEnabled = true;
    });
    m_coordinator->activityDesk().saveRule(AccountabilityRule::youtubeTemplate(now));
    m_coordinator->refresh();
}

Calendar StagedHome::calendar()
{
    return { QTimeZone::utc(), QLocale(QStringLiteral("en_GB")) };
}

void StagedHome::addComingUp()
{
    auto& reference = m_coordinator->memory().reference;
    const auto add = [&](const QString& path, const QString& title, Details details,
                         const QString& key, std::chrono::minutes from) {
        details.emplace(key, ISO8601::format(now + from));
        reference.upsertItem({ .path = path, .title = title, .details = std::move(details) });
    };
    const auto deadline = [&](const char* title, const char* course, int points,
                              std::chrono::minutes from, const char* state = "unsubmitted") {
        add(QStringLiteral("academics.deadlines"), QString::fromUtf8(title),
            { { QStringLiteral("course"), QString::fromUtf8(course) },
                { QStringLiteral("pointsPossible"), points },
                { QStringLiteral("submissionState"), QString::fromLatin1(state) } },
            QStringLiteral("dueAt"), from);
    };
    const auto event = [&](const char* title, bool isAllDay, std::chrono::minutes from,
                           std::chrono::minutes length) {
        add(QStringLiteral("calendar.events"), QString::fromUtf8(title),
            { { QStringLiteral("calendar"), QStringLiteral("Personal") },
                { QStringLiteral("allDay"), isAllDay },
                { QStringLiteral("endAt"), ISO8601::format(now + from + length) } },
            QStringLiteral("startAt"), from);
    };
    deadline("Lab report on diffusion", "Biology II", 20, -31h);
    deadline("Homework 8", "Statistics", 10, 30min, "submitted");
    deadline("Essay on the Congress of Vienna", "History of Europe", 50, 33h);
    deadline("Vorbereitung auf die Grundlagenwissenschaftsprüfung, mit allen Anhängen",
        "Grundlagenwissenschaftsprüfungsvorbereitungsseminar", 100, 34h);
    deadline("واجب الخط العربي", "اللغة العربية", 5, 58h);
    deadline("Reading quiz 🦉", "Literature", 1, 80h, "graded");
    event("Dentist", false, 25h, 45min);
    event("Rowing weekend", true, 72h, 48h);
    add(QStringLiteral("calendar.reminders"), QStringLiteral("Return the library books"),
        { { QStringLiteral("list"), QStringLiteral("Errands") } }, QStringLiteral("dueAt"), 26h);
    reference.upsertItem({ .path = QStringLiteral("calendar.reminders"),
        .title = QStringLiteral("Learn to whistle") });
    m_coordinator->refresh();
}

void StagedHome::addActivity() const
{
    struct App {
        const char* name;
        const char* id;
    };
    constexpr std::array apps { App { "Writer", "org.libreoffice.LibreOffice.writer" },
        App { "Firefox", "org.mozilla.firefox" }, App { "Discord", "com.discordapp.Discord" },
        App { "Kate", "org.kde.kate" }, App { "VLC", "org.videolan.VLC" },
        App { "Anki", "net.ankiweb.Anki" } };
    std::vector<ActivitySession> sessions;
    auto end = now;
    for (size_t number = 0; number < 160; ++number) {
        const auto& app = apps[(number * 5 + number / 7) % apps.size()];
        const auto lasted = std::chrono::minutes(7 + number * 11 % 50);
        sessions.push_back({ .id = QUuid::createUuid(),
            .applicationName = QString::fromLatin1(app.name),
            .bundleIdentifier = QString::fromLatin1(app.id),
            .startedAt = end - lasted,
            .endedAt = end,
            .durationSeconds = double(std::chrono::seconds(lasted).count()),
            .isActive = true });
        if (number % 5 == 1)
            sessions.back().idle = { { end - lasted / 2, end } };
        end -= lasted + (number % 9 == 8 ? 600min : number % 4 == 3 ? 25min : 0min);
    }
    write(directory(), QStringLiteral("activity.json"), sessions);
}

void StagedHome::addUsage() const
{
    std::vector<UsageCounter::Day> days;
    UsageCounter::Snapshot all;
    for (int before = 12; before >= 0; --before) {
        UsageCounter::Snapshot usage;
        usage.mainPromptTokens = 21'000 + before * 7919 % 30'000;
        usage.mainCompletionTokens = 1'900 + before * 311 % 1'500;
        usage.chatCalls = 9 + before % 5;
        usage.librarianPromptTokens = 9'000 + before * 4421 % 8'000;
        usage.librarianCompletionTokens = 700;
        usage.librarianCalls = 4;
        all = { .mainPromptTokens = all.mainPromptTokens + usage.mainPromptTokens,
            .mainCompletionTokens = all.mainCompletionTokens + usage.mainCompletionTokens,
            .librarianPromptTokens = all.librarianPromptTokens + usage.librarianPromptTokens };
        days.push_back(
            { calendar().day(now - std::chrono::days(before)).toString(Qt::ISODate), usage });
    }
    write(directory(), QStringLiteral("usage.json"), all);
    write(directory(), QStringLiteral("usage_days.json"), days);
}

void StagedHome::addNotes()
{
    auto& notes = m_coordinator->memory().notes;
    const auto add = [&](const QString& text, MemoryCategory category, int daysAgo) {
        notes.addNote({ .text = text, .category = category, .confidence = 0.8 },
            now - std::chrono::days(daysAgo));
    };
    using enum MemoryCategory;
    add(QStringLiteral("Is studying statistics in the fourth semester."), currentContext, 21);
    add(QStringLiteral("Prefers short answers in the evening."), preferences, 14);
    add(QStringLiteral("Likes tea ☕, with milk."), preferences, 9);
    add(QStringLiteral("Wants to pass the Grundlagenwissenschaftsprüfungsvorbereitungsseminar in "
                       "March without a second attempt, whatever the timetable says."),
        goals, 5);
    add(QStringLiteral("تتعلم العربية منذ الشتاء."), journeys, 3);
    notes.putBack(PatternNote { .id = QUuid::createUuid(),
                      .text = QStringLiteral("Begins work late and regrets it."),
                      .evidenceCount = 4,
                      .firstObservedAt = now - std::chrono::days(20),
                      .lastObservedAt = now - std::chrono::days(2),
                      .sourceNoteIDs = { notes.notes().front().id },
                      .confidence = 0.7 },
        now);
}

void StagedHome::addReference()
{
    auto& reference = m_coordinator->memory().reference;
    reference.proposeSection(QStringLiteral("rowing"), QStringLiteral("Rowing"),
        QStringLiteral("Training times and races of the rowing club."));
    for (const auto& section : reference.allSections()) {
        if (!section.confirmed)
            continue;
        reference.upsertItem({ .id = QUuid::createUuid(),
            .path = section.path,
            .title = QStringLiteral("Dr Okafor"),
            .summary = QStringLiteral("Teaches statistics; office hours on Tuesdays."),
            .source = QStringLiteral("conversation"),
            .createdAt = now,
            .updatedAt = now });
        break;
    }
}

void StagedHome::addDays()
{
    auto& memory = m_coordinator->memory();
    for (int daysAgo = 3; daysAgo > 0; --daysAgo) {
        const auto begin = now - std::chrono::days(daysAgo);
        memory.sessions.ensureActiveSession(begin, calendar());
        memory.observations.add({ .id = QUuid::createUuid(),
            .occurredAt = begin,
            .recordedAt = begin,
            .summary = QStringLiteral("Finished problem set %1.").arg(8 - daysAgo),
            .observedFacts = { QStringLiteral("Handed it in two hours early.") },
            .inference = QStringLiteral("It went well."),
            .tags = { QStringLiteral("statistics"), QStringLiteral("success") } });
        memory.sessions.finalizeActiveSession(
            { .summary = QStringLiteral("Worked on statistics, then talked about the weekend.") },
            begin + 2h);
    }
    memory.sessions.ensureActiveSession(now, calendar());
}

} // namespace pobblewig
