#include "folders/FoldersFeature.h"

#include "folders/FolderTools.h"

#include <QStringList>

namespace pobblewig {

FoldersFeature::FoldersFeature(const SettingsStore& settings, const AppDataReading* reading)
    : m_settings(settings)
{
    if (reading)
        m_service.emplace([this] { return m_settings.settings().appDataSources; }, *reading);
}

std::vector<QString> FoldersFeature::situation(TimePoint) const
{
    QStringList names;
    for (const auto& source : m_settings.settings().appDataSources)
        names.append(source.name);
    if (names.isEmpty())
        return {};
    return { QStringLiteral("App data sources (read-only, via apps_list_files/apps_read_file): ")
        + names.join(QStringLiteral(" | ")) };
}

std::vector<Tool> FoldersFeature::tools()
{
    return FolderTools::tools(m_service ? &*m_service : nullptr);
}

} // namespace pobblewig
