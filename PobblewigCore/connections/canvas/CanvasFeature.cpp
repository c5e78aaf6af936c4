#include "connections/canvas/CanvasFeature.h"

#include "connections/SituationLine.h"
#include "connections/canvas/CanvasSyncLogic.h"

namespace pobblewig {

namespace {

constexpr int daysAhead = 14;
constexpr int mostItems = 3;

} // namespace

CanvasFeature::CanvasFeature(const ReferenceMemoryStore& reference)
    : m_reference(reference)
{
}

std::vector<QString> CanvasFeature::situation(TimePoint now) const
{
    std::vector<QString> lines;
    addSituationLine(lines, QStringLiteral("Upcoming deadlines (Canvas): "),
        CanvasSyncLogic::upcomingDeadlines(m_reference.allItems(), now, daysAhead, mostItems));
    return lines;
}

} // namespace pobblewig
