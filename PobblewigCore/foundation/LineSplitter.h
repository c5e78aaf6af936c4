#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <optional>

namespace pobblewig {

/// Splits bytes that arrive in pieces into lines, which end with "\n" or "\r\n". Every byte is read
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

private:
    bool keep(QByteArrayView bytes);

    qsizetype m_maximumLength;
    QByteArray m_rest;
    bool m_isTooLong = false;
};

} // namespace pobblewig
