#include "network/LineSplitter.h"

#include <utility>

namespace pobblewig {

QByteArrayList LineSplitter::add(QByteArrayView bytes)
{
    QByteArrayList lines;
    for (auto end = bytes.indexOf('\n'); end >= 0; end = bytes.indexOf('\n')) {
        if (!keep(bytes.first(end)))
            return lines;
        if (m_rest.endsWith('\r'))
            m_rest.chop(1);
        ++m_lineCount;
        if (auto line = takeLine())
            lines.append(*std::move(line));
        bytes = bytes.sliced(end + 1);
    }
    keep(bytes);
    return lines;
}

std::optional<QByteArray> LineSplitter::finish()
{
    return takeLine();
}

/// Returns nothing for a line that says nothing.
std::optional<QByteArray> LineSplitter::takeLine()
{
    if (!m_rest.isEmpty() && !m_rest.startsWith(':'))
        return std::exchange(m_rest, {});
    m_rest.resize(0);
    return std::nullopt;
}

bool LineSplitter::keep(QByteArrayView bytes)
{
    m_isTooLong = m_isTooLong || m_rest.size() + bytes.size() > m_maximumLength;
    if (m_isTooLong)
        m_rest.clear();
    else
        m_rest.append(bytes);
    return !m_isTooLong;
}

} // namespace pobblewig
