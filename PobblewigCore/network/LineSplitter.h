#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <optional>

namespace pobblewig {

/// Splits an event stream that arrives in pieces into lines, which end with "\n" or "\r\n". Leaves
/// out lines that say nothing: blank ones and comments, which begin with ":". Every byte is read
/// once, however small the pieces are.
class LineSplitter {
public:
    explicit LineSplitter(qsizetype maximumLength)
        : m_maximumLength(maximumLength)
    {
    }

    /// Returns the lines that these bytes complete, without their ends.
    QByteArrayList add(QByteArrayView bytes);

    /// Returns the last line if it has no end.
    std::optional<QByteArray> finish();

    /// True once a line exceeds the maximum. That line and everything after it are dropped.
    bool isTooLong() const { return m_isTooLong; }

    /// How many lines have ended, with those that were left out.
    qsizetype lineCount() const { return m_lineCount; }

private:
    bool keep(QByteArrayView bytes);
    std::optional<QByteArray> takeLine();

    qsizetype m_maximumLength;
    QByteArray m_rest;
    bool m_isTooLong = false;
    qsizetype m_lineCount = 0;
};

} // namespace pobblewig
