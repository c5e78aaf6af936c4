#include "support/LogLines.h"

namespace pobblewig {

LogLines::LogLines()
    : m_previous(Log::setSink([this](const QString& line) { m_lines.append(line); }))
{
}

LogLines::~LogLines()
{
    Log::setSink(std::move(m_previous));
}

} // namespace pobblewig
