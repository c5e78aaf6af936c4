#include "TermPlayer.h"

#include "support/FakeKeychain.h"

#include <QAbstractEventDispatcher>
#include <QThreadPool>

namespace pobblewig {

TermPlayer::TermPlayer(DataDirectory directory, TermLedger& ledger)
    : m_directory(std::move(directory))
    , m_ledger(ledger)
    , m_previousSink(Log::setSink([this](const QString& line) { noteFailure(line); }))
{
    const auto port = m_model.listen(0);
    if (!port)
        qFatal("the demo model cannot listen");
    m_modelURL = QStringLiteral("http://127.0.0.1:%1/v1").arg(*port);
}

TermPlayer::~TermPlayer()
{
    Log::setSink(std::move(m_previousSink));
}

void TermPlayer::play(const TermAct& act)
{
    m_time = act.at;
    if (act.kind == TermAct::Kind::launch) {
        quit();
        m_program.emplace(parts());
    }
    const auto before = activeSession();
    perform(act);
    settle();
    checkEnd(act, before);
    notePresent();
}

void TermPlayer::quit()
{
    m_program.reset();
}

void TermPlayer::perform(const TermAct& act)
{
    switch (act.kind) {
    case TermAct::Kind::launch:
        noteEndIfDue();
        return m_program->start();
    case TermAct::Kind::poll:
        noteEndIfDue();
        return spawn(m_program->pollOnce());
    case TermAct::Kind::say:
        // There is always a poll between two sentences.
        spawn(m_program->pollOnce());
        settle();
        if (!m_program->chat().submit(act.text))
            m_ledger.fault(QStringLiteral("a turn was refused"));
        return;
    case TermAct::Kind::startNewSession:
        noteEnd();
        return m_program->startNewSession();
    case TermAct::Kind::switchMemoryOff:
    case TermAct::Kind::switchMemoryOn:
        return switchMemory(act.kind == TermAct::Kind::switchMemoryOn);
    }
}

void TermPlayer::switchMemory(bool isOn)
{
    m_program->updateSettings([=](auto& settings) { settings.memoryEnabled = isOn; });
}

AppCoordinator::Parts TermPlayer::parts()
{
    auto http = std::make_unique<WatchedHTTPClient>([this] { m_time = m_time.addSecs(2); });
    m_http = http.get();
    return {
        .directory = m_directory,
        .http = std::move(http),
        .keychain = std::make_unique<FakeKeychain>(),
        .environment = [this] { return environment(); },
        .wording = PlatformWording::linuxDesktop,
        .moment = { [this] { return now(); }, [this] { return calendar(); } },
    };
}

Environment TermPlayer::environment() const
{
    Environment environment;
    for (const auto* use : { u"MAIN", u"LIBRARIAN" }) {
        const auto prefix = QStringView(use).toString() + QStringLiteral("_MODEL_");
        environment[prefix + QStringLiteral("BASE_URL")] = m_modelURL;
        environment[prefix + QStringLiteral("API_KEY")] = QStringLiteral("key");
        environment[prefix + QStringLiteral("ID")] = QStringLiteral("demo");
    }
    return environment;
}

void TermPlayer::settle()
{
    auto* const events = QAbstractEventDispatcher::instance();
    const auto isBusy = [this] {
        return !m_http->isIdle() || QThreadPool::globalInstance()->activeThreadCount() > 0;
    };
    // What one event leaves behind may only be seen by the next look.
    for (int quietLooks = 0; quietLooks < 3; ++quietLooks) {
        while (isBusy())
            events->processEvents(QEventLoop::WaitForMoreEvents);
        if (events->processEvents(QEventLoop::AllEvents) || isBusy())
            quietLooks = -1;
    }
}

TimePoint TermPlayer::now() const
{
    return TimePoint(std::chrono::milliseconds(m_time.toMSecsSinceEpoch()));
}

std::optional<QUuid> TermPlayer::activeSession()
{
    const auto session = m_program->memory().sessions.activeSession();
    return session ? std::optional(session->id) : std::nullopt;
}

void TermPlayer::noteEndIfDue()
{
    if (m_program->memory().sessions.shouldRollOver(now(), calendar()))
        noteEnd();
}

void TermPlayer::noteEnd()
{
    std::vector<QUuid> messages;
    for (const auto& message : m_program->chat().messages())
        messages.push_back(message.id);
    m_ledger.ends(messages);
}

void TermPlayer::notePresent()
{
    for (const auto& message : m_program->chat().messages()) {
        if (m_known.insert(message.id).second)
            m_ledger.said(message.id);
    }
    for (const auto& session : m_program->memory().sessions.sessions()) {
        if (m_known.insert(session.id).second)
            m_ledger.session(session.id, session.dayKey);
    }
    if (!m_program->state().of<SettingsState>().settings.memoryEnabled)
        m_ledger.librarianCallsWhileOff(m_program->usage().snapshot().librarianCalls);
}

void TermPlayer::noteFailure(const QString& logged)
{
    for (const auto* sign : { u"corrupt", u"failed to persist", u"failed to archive" }) {
        if (logged.contains(QStringView(sign)))
            m_ledger.fault(logged);
    }
}

void TermPlayer::checkEnd(const TermAct& act, std::optional<QUuid> before)
{
    const auto ended = before && before != activeSession();
    if (act.endsSession.value_or(ended) == ended && !m_program->chat().isStreaming())
        return;
    m_ledger.fault(
        QStringLiteral("%1: a session %2")
            .arg(act.at.toString(Qt::ISODate),
                ended ? QStringLiteral("ended too early") : QStringLiteral("did not end")));
}

} // namespace pobblewig
