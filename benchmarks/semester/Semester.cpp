#include "Semester.h"

#include <QCoreApplication>
#include <QProcess>

namespace pobblewig {

namespace {

using Ending = TermDay::Ending;

const auto victimOption = QStringLiteral("--victim");

const TermPlan plan {
    .begin = QDate(2026, 9, 28),
    .length = 120,
    .clockChange = QDate(2026, 10, 25),
    .absent = { 92, 105 },
    .abroad = { 51, 60 },
    .memoryOff = { 66, 75 },
    .mostTurns = 18,
    .daysBetweenNights = 4,
};

/// Shortly before the program is next opened.
QDateTime morningAfter(const Term& term, size_t day)
{
    return term[day + 1].acts.front().at.addSecs(-600);
}

} // namespace

Semester::Semester()
    : m_term(writtenTerm(plan))
{
}

std::optional<int> Semester::playVictim()
{
    auto arguments = QCoreApplication::arguments().mid(1);
    if (arguments.value(0) != victimOption)
        return std::nullopt;
    const auto term = writtenTerm(plan);
    const auto day = size_t(arguments[3].toInt());
    TermLedger ledger(arguments[2]);
    const auto prefix =
        term[day].ending == Ending::killedInTheWeek ? QStringLiteral("week ") : QString();
    const auto operations = std::make_shared<MortalFileOperations>(
        [&](const QString& call) { ledger.killed(prefix + call); });
    DataDirectory data { QDir(arguments[1]) };
    data.operations = operations;
    TermPlayer player(data, ledger);

    TermAct end { TermAct::Kind::launch, morningAfter(term, day), {}, std::nullopt };
    if (arguments[4].toInt()) {
        for (const auto& act : term[day].acts)
            player.play(act);
        end.kind = TermAct::Kind::poll;
    }
    operations->dieAt({ arguments[5].toInt(), arguments[6] });
    player.play(end);
    return 0;
}

void Semester::play(const std::function<void(const TermDay& day)>& dayIsOver)
{
    m_player.emplace(data(), m_ledger);
    for (size_t day = 0; day < m_term.size(); ++day) {
        if (m_term[day].ending == Ending::killedAfterTheDay)
            m_player->quit();
        else
            std::ranges::for_each(m_term[day].acts, [&](const auto& act) { m_player->play(act); });
        end(day);
        dayIsOver(m_term[day]);
    }
}

void Semester::end(size_t day)
{
    const auto ending = m_term[day].ending;
    if (ending == Ending::whole)
        return;
    m_player->quit();
    if (ending != Ending::killedInTheWeek) {
        auto& change = m_changes[ending];
        const auto fate = sendVictim(day, ending == Ending::killedAfterTheDay, { change + 1 });
        change = fate == Fate::killed ? change + 1 : 0;
        if (fate == Fate::survived)
            m_ledger.survived();
        return;
    }
    // The day's summary has been created and renamed.
    sendVictim(day, false, { 3, QStringLiteral("summaries.json") });
    for (int change = 1; sendVictim(day, false, { change }) == Fate::killed; ++change) { }
}

Semester::Fate Semester::sendVictim(
    size_t day, bool playsTheDay, const MortalFileOperations::Hour& hour)
{
    QProcess victim;
    victim.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    victim.start(QCoreApplication::applicationFilePath(),
        { victimOption, data().path(), ledgerPath(), QString::number(day),
            QString::number(playsTheDay), QString::number(hour.change), hour.file });
    if (!victim.waitForFinished(60'000))
        qFatal("a victim neither died nor survived");
    if (victim.exitStatus() == QProcess::CrashExit && victim.exitCode() == SIGKILL)
        return Fate::killed;
    if (victim.exitCode() != 0)
        qFatal("a victim failed");
    return Fate::survived;
}

} // namespace pobblewig
