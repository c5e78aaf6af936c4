#pragma once

#include "foundation/Log.h"

#include <QStringList>

namespace pobblewig {

/// Collects what is logged during its life, in place of writing it.
class LogLines {
public:
    LogLines() = default;
    ~LogLines() { Log::setSink(std::move(m_previous)); }
    Q_DISABLE_COPY_MOVE(LogLines)

    const QStringList& lines() const { return m_lines; }

private:
    QStringList m_lines;
    Log::Sink m_previous = Log::setSink([this](const QString& line) { m_lines.append(line); });
};

} // namespace pobblewig
