#include "TermLedger.h"

#include <utility>

namespace pobblewig {

TermLedger::TermLedger(const QString& path)
    : m_file(path)
{
    if (!m_file.open(QIODevice::Append | QIODevice::Unbuffered))
        qFatal("the ledger cannot be written");
}

void TermLedger::said(const QUuid& message)
{
    write(QStringLiteral("said ") + message.toString());
}

void TermLedger::ends(const std::vector<QUuid>& messages)
{
    QStringList words(QStringLiteral("ends"));
    for (const auto& message : messages)
        words.append(message.toString());
    write(words.join(u' '));
}

void TermLedger::session(const QUuid& id, const QString& dayKey)
{
    write(QStringLiteral("session %1 %2").arg(id.toString(), dayKey));
}

void TermLedger::librarianCallsWhileOff(qint64 calls)
{
    write(QStringLiteral("off %1").arg(calls));
}

void TermLedger::killed(const QString& call)
{
    write(QStringLiteral("killed ") + call);
}

void TermLedger::survived()
{
    write(QStringLiteral("survived"));
}

void TermLedger::fault(const QString& text)
{
    write(QStringLiteral("fault ") + text);
}

void TermLedger::write(const QString& line)
{
    m_file.write(line.toUtf8() + '\n');
}

TermRecord TermRecord::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the ledger cannot be read");
    TermRecord record;
    for (const auto& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts))
        record.take(line);
    return record;
}

void TermRecord::take(const QString& line)
{
    auto words = line.split(u' ');
    const auto kind = words.takeFirst();
    if (kind == u"said") {
        takeMessage(words.front());
    } else if (kind == u"ends") {
        takeEnd(words);
    } else if (kind == u"session") {
        dayKeys.emplace(words[0], words[1]);
    } else if (kind == u"off") {
        librarianCallsWhileOff.insert(words.front());
    } else if (kind == u"killed") {
        killed.insert(words.join(u' '));
    } else if (kind == u"survived") {
        survived = true;
    } else {
        faults.append(words.join(u' '));
    }
}

void TermRecord::takeMessage(const QString& id)
{
    // A process that begins in the middle of a session sees again what another has seen.
    if (!said.insert(QUuid(id)).second)
        return;
    m_current.append(id);
}

void TermRecord::takeEnd(const QStringList& messages)
{
    // After a crash the same end comes again.
    if (m_current.isEmpty() && messages == m_ended)
        return;
    m_ended = std::exchange(m_current, {});
    if (messages != m_ended)
        faults.append(QStringLiteral("%1 messages stood where a session ended, not %2")
                          .arg(messages.size())
                          .arg(m_ended.size()));
}

} // namespace pobblewig
