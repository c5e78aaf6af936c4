#pragma once

#include "connections/SchoolSync.h"
#include "features/Feature.h"
#include "foundation/HTTPClient.h"
#include "foundation/Moment.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// A school service: read when its interval has passed, or when the user asks.
class SchoolFeature : public Feature {
public:
    struct Parts {
        HTTPClient& http;
        SettingsStore& settings;
        ReferenceMemoryStore& reference;
        const Moment& moment;
        /// Read at each use.
        std::function<Environment()> environment;
        const std::optional<DataDirectory>& directory;
    };

    explicit SchoolFeature(const Parts& parts)
        : m(parts)
    {
    }

    Task<> tick() override;

    /// Syncs whatever the interval; does nothing while a sync is under way.
    Task<> syncNow();

    bool isSyncing() const { return m_isSyncing; }

    virtual SchoolSync& record() = 0;

protected:
    virtual bool isEnabled() const = 0;
    virtual int intervalMinutes() const = 0;

    /// One sync. The outcome shows in the record.
    virtual Task<> sync() = 0;

    /// The name in log messages, such as "canvas".
    virtual QString name() const = 0;

    Parts m;

private:
    bool m_isSyncing = false;
};

} // namespace pobblewig
