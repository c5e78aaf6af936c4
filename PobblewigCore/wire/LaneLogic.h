#pragma once

#include "settings/Environment.h"
#include "wire/LLMProvider.h"
#include "wire/LaneConfigurations.h"
#include "wire/MarketConfig.h"

namespace pobblewig {

/// A vendor's key, and the use that it belongs to.
struct LaneKey {
    QString key;
    ModelUse owner = ModelUse::main;

    bool operator==(const LaneKey&) const = default;
};

/// Which model serves a use, on which server. A lane has two forms: a managed one goes through the
/// product's own backend, a direct one straight to a vendor with the user's key.
namespace LaneLogic {

/// Where the use's own key is found, in the environment and in the keyring.
QString keyVariable(ModelUse use);
QString keyAccount(ModelUse use);

/// Where the use's own model is found in the environment.
QString modelVariable(ModelUse use);

ProviderRouting::Lane managedLane(ModelUse use);

/// Whether the environment names a model that the use may get. A keyring can ask the user for a
/// password, so that it is opened only then.
bool namesModel(ModelUse use, const Environment& environment);

/// The model for a key of that owner. A librarian without a model of its own uses the main model
/// where it borrows the main key, and thereby the main server. Empty if there is none.
QString modelID(ModelUse use, ModelUse keyOwner, const Environment& environment);

/// The length limit of a reply in tokens. `usual` unless the environment gives a sensible number.
int maxOutputTokens(ModelUse use, const Environment& environment, int usual);

/// Used as a label only.
QString provider(ModelUse use, const Environment& environment, const MarketConfig& market);

/// The server for a key of that owner. A key is sent only to the server that it belongs to: a use
/// that borrows the main key is served by the main server, and an own key without an own server
/// belongs to the default vendor.
QString baseURL(
    ModelUse use, ModelUse keyOwner, const Environment& environment, const MarketConfig& market);

/// Returns nothing without a key, a model or a usable URL.
std::optional<LLMConfiguration> directConfiguration(ModelUse use, const std::optional<LaneKey>& key,
    const Environment& environment, const MarketConfig& market);

/// Whether the deployment has a backend with a model for the lane.
bool isManaged(ProviderRouting::Lane lane, const MarketConfig& market);

/// Returns nothing without a credential, or if the lane is not managed.
std::optional<LLMConfiguration> managedConfiguration(ProviderRouting::Lane lane,
    const std::optional<QString>& credential, const std::optional<QString>& sessionToken,
    const MarketConfig& market);

} // namespace LaneLogic

} // namespace pobblewig
