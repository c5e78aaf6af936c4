#pragma once

#include "MortalFileOperations.h"
#include "TermPlayer.h"

#include <QTemporaryDir>

namespace pobblewig {

/// Plays a term from its first day to its last, in a directory that goes away with it.
///
/// The program ends and begins anew in this process. Where the script has it killed, this program
/// is started again, to play the part of the one that is.
class Semester {
public:
    Semester();

    /// To be called first of all, once there is an application: what to exit with, if this process
    /// was started to be killed.
    static std::optional<int> playVictim();

    const Term& term() const { return m_term; }
    QDir data() const { return QDir(m_scratch.filePath(QStringLiteral("data"))); }
    TermRecord record() const { return TermRecord::read(ledgerPath()); }

    void play(const std::function<void(const TermDay& day)>& dayIsOver = [](const auto&) {});

private:
    enum class Fate { killed, survived };

    QString ledgerPath() const { return m_scratch.filePath(QStringLiteral("ledger")); }
    void end(size_t day);
    Fate sendVictim(size_t day, bool playsTheDay, const MortalFileOperations::Hour& hour);

    Term m_term;
    QTemporaryDir m_scratch;
    TermLedger m_ledger { ledgerPath() };
    std::optional<TermPlayer> m_player;
    /// How far the victims of each kind have come.
    std::map<TermDay::Ending, int> m_changes;
};

} // namespace pobblewig
