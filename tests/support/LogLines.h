#pragma once

#include "foundation/Log.h"

#include <QStringList>

namespace pobblewig {

/// Collects what is logged during its life, in place of writing it.
class LogLines {
public:
    LogLines();
    ~LogLines();
    Q_DISABLE_COPY_MOVE(LogLines)

    const QStringList& lines() const { return m_lines; }

private:
    QStringList m_lines;
    Log::Sink m_previous;
};

} // namespace pobblewig
