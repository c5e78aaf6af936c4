#pragma once

#include <QDate>
#include <QFile>
#include <QStringList>
#include <QUuid>

#include <map>
#include <set>
#include <vector>

namespace pobblewig {

/// What was seen of the program from outside while it ran. A file with a line for each thing, so
/// that it outlives a process that is killed.
class TermLedger {
public:
    explicit TermLedger(const QString& path);

    /// A message that entered the conversation.
    void said(const QUuid& message);

    /// A session is due to end, and the conversation holds these.
    void ends(const std::vector<QUuid>& messages);
    void session(const QUuid& id, const QString& dayKey);

    /// So many times the librarian's model has been asked, seen while the memory is off.
    void librarianCallsWhileOff(qint64 calls);

    /// The process is killed in place of this call.
    void killed(const QString& call);

    /// A rollover had no more steps than those that a process was killed at.
    void survived();

    /// Something went otherwise than it should.
    void fault(const QString& text);

private:
    void write(const QString& line);

    QFile m_file;
};

/// What a ledger says.
struct TermRecord {
    static TermRecord read(const QString& path);

    std::set<QUuid> said;
    std::map<QUuid, QString> dayKeys;
    std::set<QString> librarianCallsWhileOff;
    std::set<QString> killed;
    bool survived = false;
    QStringList faults;

private:
    void take(const QString& line);
    void takeMessage(const QString& id);
    void takeEnd(const QStringList& messages);

    /// Of the session under way, and of the one that ended last.
    QStringList m_current;
    QStringList m_ended;
};

} // namespace pobblewig
