#pragma once

#include "settings/Environment.h"
#include "wire/LLMProvider.h"
#include "wire/LaneConfigurations.h"
#include "wire/MarketConfig.h"

namespace pobblewig {

/// A vendor's key, and the use that it was given for.
struct LaneKey {
    QString key;
    ModelUse owner = ModelUse::main;

    bool operator==(const LaneKey&) const = default;
};

/// Which model serves a use, on which server. There are two forms of a lane: a managed one goes
/// through the product's own backend, a direct one straight to a vendor with a key of the user's.
namespace LaneLogic {

/// Where the use's own key stands, in the environment and in the keyring.
QString keyVariable(ModelUse use);
QString keyAccount(ModelUse use);

ProviderRouting::Lane managedLane(ModelUse use);

/// Empty if the environment names none and the use has no default.
QString modelID(ModelUse use, const Environment& environment);

/// A label only.
QString provider(ModelUse use, const Environment& environment, const MarketConfig& market);

/// The server for a key of that owner. A key travels only to the server that it belongs to: the
/// main one's serves another use on the main one's server only.
QString baseURL(
    ModelUse use, ModelUse keyOwner, const Environment& environment, const MarketConfig& market);

/// Nothing without a key, a model or a usable URL.
std::optional<LLMConfiguration> directConfiguration(ModelUse use, const std::optional<LaneKey>& key,
    const Environment& environment, const MarketConfig& market);

/// Whether the deployment has a backend with a model for the lane.
bool isManaged(ProviderRouting::Lane lane, const MarketConfig& market);

/// Nothing without a credential, or where the lane is not managed.
std::optional<LLMConfiguration> managedConfiguration(ProviderRouting::Lane lane,
    const std::optional<QString>& credential, const std::optional<QString>& sessionToken,
    const MarketConfig& market);

} // namespace LaneLogic

} // namespace pobblewig
