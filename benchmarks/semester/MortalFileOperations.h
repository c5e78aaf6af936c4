#pragma once

#include "foundation/FileOperations.h"

#include <QFileInfo>

#include <csignal>
#include <functional>
#include <map>
#include <optional>

#include <unistd.h>

namespace pobblewig {

/// The system calls of a process that is killed right before one of those that change a directory.
class MortalFileOperations : public FileOperations {
public:
    /// Only changes of `file` count, or all if it is empty. Those before the end of a session
    /// begins, with its summary, do not.
    struct Hour {
        int change = 1;
        QString file = {};
    };

    /// Is told of the last call, such as "rename sessions.json 2" for its second time. Archives
    /// are all called "archive".
    using LastWords = std::function<void(const QString& call)>;

    explicit MortalFileOperations(LastWords lastWords)
        : m_lastWords(std::move(lastWords))
    {
    }

    void dieAt(Hour hour) { m_hour = std::move(hour); }

    tl::expected<int, std::error_code> create(
        const QString& path, std::optional<unsigned> permissions) const override
    {
        // A new file has the name of the one that it will replace, and more around it.
        auto name = path;
        count(QStringLiteral("create"), name.remove(QStringLiteral(".partial")));
        return FileOperations::create(path, permissions);
    }

    std::error_code rename(const QString& from, const QString& to) const override
    {
        count(QStringLiteral("rename"), to);
        return FileOperations::rename(from, to);
    }

    void remove(const QString& path) const override
    {
        count(QStringLiteral("remove"), path);
        FileOperations::remove(path);
    }

private:
    static QString subject(const QString& path)
    {
        auto name = QFileInfo(path).fileName();
        if (name.startsWith(u'.'))
            name.remove(0, 1);
        return name.startsWith(u"chat-") ? QStringLiteral("archive") : name;
    }

    void count(const QString& call, const QString& path) const
    {
        if (!m_hour)
            return;
        const auto file = subject(path);
        m_isEnding |= file == u"summaries.json";
        if (!m_isEnding)
            return;
        const auto times = ++m_calls[call + u' ' + file];
        if (!m_hour->file.isEmpty() && m_hour->file != file)
            return;
        if (--m_hour->change > 0)
            return;
        m_lastWords(QStringLiteral("%1 %2 %3").arg(call, file).arg(times));
        ::kill(::getpid(), SIGKILL);
    }

    LastWords m_lastWords;
    mutable std::optional<Hour> m_hour;
    mutable bool m_isEnding = false;
    mutable std::map<QString, int> m_calls;
};

} // namespace pobblewig
