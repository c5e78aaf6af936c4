#pragma once

#include "coordination/semester/TermChecks.h"
#include "coordination/semester/TermPlayer.h"

#include <QTemporaryDir>

namespace pobblewig {

/// Plays a term from its first day to its last in a directory that goes away with it.
class Semester {
public:
    explicit Semester(std::vector<TermDay> days);

    const std::vector<TermDay>& days() const { return m_days; }
    QDir data() const { return QDir(m_scratch.filePath(QStringLiteral("data"))); }
    TermRecord record() const { return TermRecord::read(ledger()); }

    void play(const std::function<void(const TermDay& day)>& dayIsOver = [](const auto&) {});

private:
    QString ledger() const { return m_scratch.filePath(QStringLiteral("ledger")); }

    QTemporaryDir m_scratch;
    std::vector<TermDay> m_days;
};

} // namespace pobblewig
