#pragma once

#include "foundation/JSONFileStore.h"
#include "memory/history/ChatMessage.h"

#include <QFutureWatcher>

#include <functional>
#include <optional>
#include <vector>

namespace pobblewig {

/// Every message of the conversation since the last archive, oldest first, kept in
/// "transcript.json".
///
/// An added message is written beside the event loop, however long the conversation is. A crash can
/// therefore cost the file up to `mostUnwritten` messages, which the caller must keep elsewhere.
/// Lives on the main thread. Without a directory it works in memory only.
class Transcript {
public:
    static constexpr size_t mostUnwritten = 30;

    explicit Transcript(const std::optional<DataDirectory>& directory);

    /// Waits for what is being written.
    ~Transcript();
    Q_DISABLE_COPY_MOVE(Transcript)

    const std::vector<ChatMessage>& messages() const { return m_messages; }

    void append(ChatMessage message);

    /// Changes messages in memory only; `save` follows.
    void edit(const std::function<void(std::vector<ChatMessage>& messages)>& change);

    /// Returns once the messages are on disk. A failure is logged; the next save includes the
    /// change.
    void save();

    /// Tries again to read a file that could not be read at the start. Returns nothing if there is
    /// none, or still no way to read it. The caller saves.
    std::optional<std::vector<ChatMessage>> loadAgain() const;

    /// Adds the messages that are missing, each after the one that it follows, and replaces those
    /// of the same id.
    static void merge(std::vector<ChatMessage>& messages, const std::vector<ChatMessage>& newer);

private:
    using Outcome = tl::expected<void, FileError>;

    void writeBeside();
    void goOn();
    void record(const Outcome& outcome);
    bool isWritable() const { return m_file && !m_file->isUnreadable(); }

    std::optional<JSONFileStore> m_file;
    std::vector<ChatMessage> m_messages;
    QFutureWatcher<Outcome> m_writing;
    bool m_isOutcomeAwaited = false;
    /// How many messages were added after the write under way began.
    size_t m_waiting = 0;
};

} // namespace pobblewig
