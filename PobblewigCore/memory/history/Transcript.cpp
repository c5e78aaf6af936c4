#include "memory/history/Transcript.h"

#include "foundation/Log.h"

#include <QtConcurrentRun>

#include <algorithm>
#include <map>
#include <utility>

namespace pobblewig {

namespace {

tl::expected<void, FileError> writeMessages(
    const JSONFileStore& file, const std::vector<ChatMessage>& messages)
{
    return file.write(json::text(messages));
}

/// Joins two lists of messages, each in its own order.
class Joining {
public:
    explicit Joining(std::vector<ChatMessage> old)
        : m_old(std::move(old))
    {
        for (const auto& message : m_old)
            m_places.emplace(message.id, m_places.size());
    }

    /// Passes what comes before all that both lists have.
    void skipOwn(const std::vector<ChatMessage>& newer)
    {
        auto first = m_old.size();
        for (const auto& message : newer) {
            if (const auto known = m_places.find(message.id); known != m_places.end())
                first = std::min(first, known->second);
        }
        passUntil(first);
    }

    void take(const ChatMessage& message)
    {
        const auto known = m_places.find(message.id);
        if (known == m_places.end()) {
            m_joined.push_back(message);
        } else if (known->second >= m_next) {
            passUntil(known->second);
            m_joined.push_back(message);
            ++m_next;
        } else {
            *std::ranges::find(m_joined, message.id, &ChatMessage::id) = message;
        }
    }

    std::vector<ChatMessage> all()
    {
        passUntil(m_old.size());
        return std::move(m_joined);
    }

private:
    void passUntil(size_t end)
    {
        for (; m_next < end; ++m_next)
            m_joined.push_back(std::move(m_old[m_next]));
    }

    std::vector<ChatMessage> m_old;
    std::map<QUuid, size_t> m_places;
    std::vector<ChatMessage> m_joined;
    /// The first of the old ones that has not been passed.
    size_t m_next = 0;
};

} // namespace

Transcript::Transcript(const std::optional<DataDirectory>& directory)
{
    if (!directory)
        return;
    m_file.emplace(*directory, QStringLiteral("transcript.json"));
    m_messages = m_file->load<std::vector<ChatMessage>>().value_or(std::vector<ChatMessage>());
    QObject::connect(&m_writing, &QFutureWatcherBase::finished, &m_writing, [this] { goOn(); });
}

Transcript::~Transcript()
{
    m_writing.waitForFinished();
}

void Transcript::append(ChatMessage message)
{
    m_messages.push_back(std::move(message));
    if (!isWritable())
        return;
    ++m_waiting;
    // As many again may be in the write under way.
    if (m_waiting >= mostUnwritten / 2)
        m_writing.waitForFinished();
    if (!m_writing.isRunning())
        writeBeside();
}

void Transcript::edit(const std::function<void(std::vector<ChatMessage>& messages)>& change)
{
    change(m_messages);
}

void Transcript::save()
{
    m_waiting = 0;
    if (!isWritable())
        return;
    m_writing.waitForFinished();
    m_isOutcomeAwaited = false;
    record(writeMessages(*m_file, m_messages));
}

std::optional<std::vector<ChatMessage>> Transcript::loadAgain() const
{
    if (!m_file || !m_file->isUnreadable())
        return std::nullopt;
    auto messages = m_file->load<std::vector<ChatMessage>>();
    if (m_file->isUnreadable())
        return std::nullopt;
    return messages.value_or(std::vector<ChatMessage>());
}

void Transcript::merge(std::vector<ChatMessage>& messages, const std::vector<ChatMessage>& newer)
{
    Joining joining(std::move(messages));
    joining.skipOwn(newer);
    for (const auto& message : newer)
        joining.take(message);
    messages = joining.all();
}

void Transcript::writeBeside()
{
    m_waiting = 0;
    m_isOutcomeAwaited = true;
    m_writing.setFuture(QtConcurrent::run(writeMessages, *m_file, m_messages));
}

void Transcript::goOn()
{
    // A later save has the last word.
    if (!std::exchange(m_isOutcomeAwaited, false))
        return;
    record(m_writing.result());
    if (m_waiting > 0)
        writeBeside();
}

void Transcript::record(const Outcome& outcome)
{
    m_file->record(outcome);
    if (!outcome)
        Log::line(QStringLiteral("buddy: failed to persist transcript: %1")
                      .arg(outcome.error().description()));
}

} // namespace pobblewig
