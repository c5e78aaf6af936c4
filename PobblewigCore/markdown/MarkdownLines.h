#pragma once

#include <QString>

namespace pobblewig {

/// Follows the lines of a Markdown text and knows what goes on in the next.
class MarkdownLines {
public:
    static bool isBlank(QStringView line);

    /// Whether the line tells that a table follows, such as "|---|:-:|".
    static bool isDelimiterRow(QStringView line);

    /// `opening` is what goes on in the first line.
    explicit MarkdownLines(const QString& opening);

    bool isInCode() const { return !m_fence.isEmpty(); }

    /// The lines that have to stand in front of what follows, so that it is read
    /// correctly: those
    /// that began the code or the table. Otherwise empty.
    const QString& opening() const { return m_opening; }

    /// The line has to exist until the next one is read.
    void read(QStringView line);

private:
    void begin(QStringView fence, QStringView line);
    void readCode(QStringView line);

    QString m_opening;
    QString m_fence;
    QStringView m_previous;
};

} // namespace pobblewig
