#include "memory/librarian/NoteCleanup.h"

#include "foundation/Log.h"
#include "memory/librarian/CleanupLogic.h"
#include "memory/librarian/LibrarianSchemas.h"
#include "prompts/LibrarianPrompts.h"

namespace pobblewig {

namespace {

/// The maximum length of an answer, as a multiple of the usual one.
constexpr int tokenFactor = 3;
constexpr int mostRefusals = 2;

void logFailure(const QString& problem)
{
    Log::line(QStringLiteral("buddy: librarian cleanup failed: ") + problem);
}

} // namespace

NoteCleanup::NoteCleanup(Dependencies dependencies)
    : m(dependencies)
{
}

Task<> NoteCleanup::runIfDue(std::stop_token stop)
{
    if (m_isUnderWay || !mayRemember() || !m.notes.shouldRunCleanup(m.moment.now()))
        co_return;
    m_isUnderWay = true;
    co_await run(stop);
    m_isUnderWay = false;
}

Task<> NoteCleanup::run(std::stop_token stop)
{
    const auto answerTokens = co_await m.model.answerTokens();
    const auto begun = m.moment.now();
    const auto memory = CleanupLogic::candidates(
        { m.notes.notes(), m.notes.allPatterns() }, m.notes.lastCleanupTriedAt(), begun);
    int refusals = 0;
    for (const auto& portion : CleanupLogic::portions(memory, answerTokens * tokenFactor)) {
        const auto outcome = co_await clean(portion, begun, stop);
        refusals = outcome == Outcome::refused ? refusals + 1 : 0;
        if (outcome == Outcome::over || refusals == mostRefusals)
            co_return;
    }
}

auto NoteCleanup::clean(CleanupSnapshot portion, TimePoint begun, std::stop_token stop)
    -> Task<Outcome>
{
    if (!mayRemember())
        co_return Outcome::over;
    if (isOvertaken(portion))
        co_return Outcome::fine;
    const auto prompt = Prompts::cleanup(QString::fromUtf8(json::text(portion)));
    const auto answer =
        co_await m.model.ask({ prompt, LibrarianSchemas::cleanup(), tokenFactor }, stop);
    if (!answer || !mayRemember())
        co_return Outcome::over;
    if (m.notes.lastCleanupTriedAt() != begun)
        m.notes.markCleanupTried(begun);
    if (!*answer) {
        logFailure(loggable(answer->error()));
        co_return Outcome::over;
    }
    const auto rewritten = read(**answer, portion);
    if (!rewritten) {
        logFailure(rewritten.error());
        co_return Outcome::refused;
    }
    if (isOvertaken(portion) || (rewritten->notes.empty() && rewritten->patterns.empty()))
        co_return Outcome::fine;
    m_lastRunAt = m.moment.now();
    m.notes.applyCleanup(portion, *rewritten, *m_lastRunAt);
    co_return Outcome::fine;
}

bool NoteCleanup::isOvertaken(const CleanupSnapshot& portion) const
{
    return CleanupLogic::isOvertaken(portion, m.notes.notes(), m.notes.allPatterns());
}

auto NoteCleanup::read(const QString& answer, const CleanupSnapshot& portion) const
    -> LibrarianAnswers::Parsed<CleanupSnapshot>
{
    using enum CleanupLogic::Verdict;
    const auto now = m.moment.now();
    auto rewritten = LibrarianAnswers::parseCleanup(
        answer, m.notes.notes(), m.notes.allPatterns(), now, m.moment.calendar());
    if (!rewritten)
        return rewritten;
    const auto verdict = CleanupLogic::verdict(portion, *rewritten, now);
    if (verdict == tooShort)
        return tl::unexpected(QStringLiteral("The model's answer drops more than half."));
    return verdict == good ? rewritten : CleanupSnapshot();
}

} // namespace pobblewig
