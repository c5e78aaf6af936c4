#include "connections/canvas/CanvasFeature.h"

#include "connections/SituationLine.h"

namespace pobblewig {

namespace {

constexpr std::chrono::days daysAhead(14);
constexpr size_t mostItems = 3;

} // namespace

CanvasFeature::CanvasFeature(const Parts& parts)
    : SchoolFeature(parts)
    , m_service(parts.http, parts.reference, parts.moment, parts.directory)
    , m_deadlines(deadlinesPath, u"dueAt")
{
}

Task<> CanvasFeature::connect(QString address, QString token)
{
    const auto typed = token.trimmed();
    if (!typed.isEmpty())
        co_await m.settings.setCanvasAPIToken(typed);
    switchOn(address.trimmed());
    co_await syncNow();
}

Task<> CanvasFeature::disconnect()
{
    switchOff();
    co_await m.settings.setCanvasAPIToken(std::nullopt);
    m_hasToken = false;
    changed();
}

std::vector<QString> CanvasFeature::situation(TimePoint now) const
{
    std::vector<QString> lines;
    addSituationLine(lines, QStringLiteral("Upcoming deadlines (Canvas): "),
        m_deadlines.within(m.reference, now, now + daysAhead, mostItems));
    return lines;
}

void CanvasFeature::publish(PublishedState& state) const
{
    state.set(CanvasState { m_service.state(), isSyncing(), m_hasToken });
}

void CanvasFeature::switchOn(const QString& address)
{
    m.settings.update([&](AppSettings& settings) {
        if (!address.isEmpty())
            settings.canvasBaseURL = address;
        settings.canvasSyncEnabled = true;
    });
}

void CanvasFeature::switchOff()
{
    m.settings.update([](AppSettings& settings) { settings.canvasSyncEnabled = false; });
}

bool CanvasFeature::isEnabled() const
{
    return m.settings.settings().canvasSyncEnabled;
}

int CanvasFeature::intervalMinutes() const
{
    return m.settings.settings().canvasSyncIntervalMinutes;
}

Task<> CanvasFeature::sync()
{
    const auto environment = m.environment();
    const auto token = co_await m.settings.canvasAPIToken(environment);
    m_hasToken = token.has_value();
    if (token)
        co_await m_service.sync(m.settings.resolvedCanvasBaseURL(environment), *token);
    else
        record().fail(QStringLiteral("no Canvas token — paste one above first"), std::nullopt,
            m.moment.now());
}

} // namespace pobblewig
