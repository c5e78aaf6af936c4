#include "connections/classroom/ClassroomFeature.h"

namespace pobblewig {

ClassroomFeature::ClassroomFeature(const Parts& parts, Roads roads)
    : SchoolFeature(parts)
    , m_roads(std::move(roads))
    , m_service({ parts.http, parts.reference, parts.moment, parts.directory, m_roads.baseURL })
{
}

Task<> ClassroomFeature::connect(QString token)
{
    const auto typed = token.trimmed();
    if (!typed.isEmpty())
        co_await m.settings.setClassroomAccessToken(typed);
    setEnabled(true);
    co_await syncNow();
}

Task<> ClassroomFeature::disconnect()
{
    setEnabled(false);
    co_await m.settings.setClassroomAccessToken(std::nullopt);
    m_hasToken = false;
    changed();
}

void ClassroomFeature::publish(PublishedState& state) const
{
    state.set(ClassroomState { m_service.state(), isSyncing(), m_hasToken });
}

void ClassroomFeature::setEnabled(bool isEnabled)
{
    m.settings.update([=](AppSettings& settings) { settings.classroomSyncEnabled = isEnabled; });
}

bool ClassroomFeature::isEnabled() const
{
    return m.settings.settings().classroomSyncEnabled;
}

int ClassroomFeature::intervalMinutes() const
{
    return m.settings.settings().classroomSyncIntervalMinutes;
}

Task<> ClassroomFeature::sync()
{
    const auto session = m_roads.sessionToken();
    const auto token = co_await m.settings.classroomAccessToken(m.environment());
    m_hasToken = token.has_value();
    if (!session.isEmpty())
        co_await m_service.syncViaBackend(session, m_roads.backendBaseUrl);
    else if (token)
        co_await m_service.sync(*token);
    else
        record().fail(QStringLiteral("no Classroom access — connect Google with Classroom scope "
                                     "or paste a dev access token"),
            std::nullopt, m.moment.now());
}

} // namespace pobblewig
