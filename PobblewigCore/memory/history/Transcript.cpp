#include "memory/history/Transcript.h"

#include "foundation/Log.h"

#include <QtConcurrentRun>

#include <map>
#include <utility>

namespace pobblewig {

namespace {

tl::expected<void, FileError> writeMessages(
    const JSONFileStore& file, const std::vector<ChatMessage>& messages)
{
    return file.write(json::text(messages));
}

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
    std::map<QUuid, size_t> places;
    for (size_t place = 0; place < messages.size(); ++place)
        places.emplace(messages[place].id, place);
    for (const auto& message : newer) {
        const auto [known, isNew] = places.emplace(message.id, messages.size());
        if (isNew)
            messages.push_back(message);
        else
            messages[known->second] = message;
    }
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
