#pragma once

#include "features/Stores.h"
#include "foundation/Moment.h"
#include "prompts/InterventionPrompts.h"
#include "wire/ModelProviding.h"

namespace pobblewig {

/// Lets the main model write a message that the companion begins.
class InterventionComposer {
public:
    using Text = tl::expected<QString, QString>;

    /// All must outlive the composer.
    InterventionComposer(const Stores& stores, const Moment& moment, ModelProviding& models);

    /// The persona, the memory unless it is off, and the latest messages.
    InterventionPrompts::Background background() const;

    /// The reply in plain words, or why there is none.
    Task<Text> compose(QString prompt);

private:
    const SettingsStore& m_settings;
    const MemoryTiers& m_memory;
    const ChatHistoryStore& m_history;
    UsageCounter& m_usage;
    const Moment& m_moment;
    ModelProviding& m_models;
};

} // namespace pobblewig
