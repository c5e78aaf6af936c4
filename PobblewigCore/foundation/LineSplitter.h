#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <optional>

namespace pobblewig {

/// Cuts bytes that arrive in pieces into lines, which end with "\n" or "\r\n". Every byte is looked
/// at once, however small the pieces are.
class LineSplitter {
public:
    explicit LineSplitter(qsizetype maximumLength)
        : m_maximumLength(maximumLength)
    {
    }

    /// The lines that these bytes complete, without their ends.
    QByteArrayList add(QByteArrayView bytes);

    /// The last line if it has no end.
    std::optional<QByteArray> finish();

    /// True once a line exceeded the maximum; it and all that follows is dropped.
    bool isTooLong() const { return m_isTooLong; }

private:
    bool keep(QByteArrayView bytes);

    qsizetype m_maximumLength;
    QByteArray m_rest;
    bool m_isTooLong = false;
};

} // namespace pobblewig
