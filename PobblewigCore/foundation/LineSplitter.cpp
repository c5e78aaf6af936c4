#include "foundation/LineSplitter.h"

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
        lines.append(std::exchange(m_rest, {}));
        bytes = bytes.sliced(end + 1);
    }
    keep(bytes);
    return lines;
}

std::optional<QByteArray> LineSplitter::finish()
{
    if (m_rest.isEmpty())
        return std::nullopt;
    return std::exchange(m_rest, {});
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
