#include "memory/history/ConversationLibrary.h"

#include "foundation/Text.h"
#include "memory/history/ChatArchive.h"
#include "memory/history/PastConversationLogic.h"

#include <QCoroFuture>
#include <QtConcurrentRun>

#include <algorithm>

namespace pobblewig {

namespace {

using Messages = ConversationLibrary::Messages;

/// What a scan finds in one conversation, before the main thread adds the day's summary.
struct Scanned {
    PastConversation conversation;
    std::optional<QUuid> session;
};

struct Scan {
    std::optional<QDir> directory;
    Messages current;
    QDate today;
    QStringList words;
    std::stop_token stop;
};

void add(std::vector<Scanned>& found, const Scan& scan, PastConversation conversation,
    const Messages& messages)
{
    conversation.match = PastConversationLogic::firstMatch(messages, scan.words);
    if (messages.empty() || (!scan.words.isEmpty() && !conversation.match))
        return;
    conversation.messageCount = int(messages.size());
    conversation.line = PastConversationLogic::firstLine(messages);
    found.push_back({ conversation, PastConversationLogic::session(messages) });
}

std::vector<Scanned> scanned(const Scan& scan)
{
    std::vector<Scanned> found;
    add(found, scan, { .day = scan.today }, scan.current);
    const auto names = scan.directory ? ChatArchive::names(*scan.directory) : QStringList();
    for (const auto& name : names) {
        if (scan.stop.stop_requested())
            return {};
        const auto messages = ChatArchive::read(scan.directory->filePath(name));
        add(found, scan, { .name = name, .day = ChatArchive::day(name) }, messages);
    }
    return found;
}

} // namespace

ConversationLibrary::ConversationLibrary(const ChatHistoryStore& history, const MemoryTiers& memory,
    const Moment& moment, std::optional<DataDirectory> directory)
    : m_history(history)
    , m_memory(memory)
    , m_moment(moment)
    , m_directory(std::move(directory))
{
}

Task<std::vector<PastConversation>> ConversationLibrary::find(
    QString wanted, std::stop_token stop) const
{
    const auto& current = m_history.transcript();
    const auto begin = current.empty() ? m_moment.now() : current.front().timestamp;
    Scan scan {
        .directory = m_directory ? std::optional(m_directory->path) : std::nullopt,
        .current = current,
        .today = m_moment.calendar().day(begin),
        .words = PastConversationLogic::words(wanted),
        .stop = stop,
    };
    auto found = co_await QtConcurrent::run(scanned, std::move(scan));
    std::vector<PastConversation> conversations;
    if (stop.stop_requested())
        co_return conversations;
    for (auto& [conversation, session] : found) {
        const auto line = session ? firstLine(*session) : QString();
        if (!line.isEmpty())
            conversation.line = line;
        conversations.push_back(std::move(conversation));
    }
    co_return conversations;
}

Task<Messages> ConversationLibrary::read(QString name) const
{
    if (name.isEmpty())
        co_return Messages(m_history.transcript());
    if (!m_directory || !ChatArchive::day(name).isValid())
        co_return Messages();
    co_return co_await QtConcurrent::run(ChatArchive::read, m_directory->path.filePath(name));
}

bool ConversationLibrary::remove(const QString& name)
{
    if (!m_directory || !ChatArchive::day(name).isValid())
        return false;
    m_directory->operations->remove(m_directory->path.filePath(name));
    return !m_directory->path.exists(name);
}

QString ConversationLibrary::firstLine(const QUuid& session) const
{
    const auto summary = m_memory.summaries.withID(dailySummaryID(session));
    return summary ? PastConversationLogic::firstLine(summary->summary) : QString();
}

} // namespace pobblewig
