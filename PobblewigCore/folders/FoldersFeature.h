#pragma once

#include "features/Feature.h"
#include "folders/AppDataAccessService.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// The folders that the user shares with the model.
class FoldersFeature : public Feature {
public:
    /// Both must outlive the feature. Without `reading` no folder is read.
    FoldersFeature(const SettingsStore& settings, const AppDataReading* reading);

    std::vector<QString> situation(TimePoint now) const override;
    std::vector<Tool> tools() override;

private:
    const SettingsStore& m_settings;
    std::optional<AppDataAccessService> m_service;
};

} // namespace pobblewig
