#pragma once

#include "foundation/KeychainHelper.h"
#include "wire/LaneLogic.h"

namespace pobblewig {

/// Finds the model for each use, again at every call: from the account's credential, the
/// environment and the keyring. A change of any of them applies from the next request on.
class ModelLanes {
public:
    using Text = std::optional<QString>;

    ModelLanes(KeychainHelper& keychain, MarketConfig market);

    /// The managed lane if there is one, else the direct one, or nothing if the use has no model.
    Task<std::optional<LLMConfiguration>> configuration(ModelUse use, Environment environment);

    Task<std::optional<LLMConfiguration>> managedConfiguration(
        ProviderRouting::Lane lane, Environment environment);

    /// The credential for requests to the product's own backend: the variable
    /// POBBLEWIG_CLOUD_CREDENTIAL, else the keyring's, else the session of a signed-in user.
    Task<Text> cloudCredential(Environment environment);

    /// The use's own key, from the environment, else the keyring, else the main model's key. The
    /// keyring is asked only if the environment names a model.
    Task<Text> mainAPIKey(Environment environment);
    Task<Text> visionAPIKey(Environment environment);
    Task<Text> librarianAPIKey(Environment environment);
    Task<Text> memeAPIKey(Environment environment);

    /// The models of the direct lanes.
    Task<MainModelConfig> resolvedMainModel(Environment environment);
    Task<MainModelConfig> resolvedVisionModel(Environment environment);
    Task<LibrarianModelConfig> resolvedLibrarianModel(Environment environment);
    Task<LibrarianModelConfig> resolvedMemeModel(Environment environment);

private:
    Task<std::optional<LaneKey>> laneKey(ModelUse use, Environment environment);
    Task<Text> apiKey(ModelUse use, Environment environment);
    Task<ModelUse> keyOwner(ModelUse use, Environment environment);
    Task<MainModelConfig> mainModel(ModelUse use, Environment environment);
    Task<LibrarianModelConfig> librarianModel(ModelUse use, Environment environment);
    Task<Text> kept(QString account);

    KeychainHelper& m_keychain;
    MarketConfig m_market;
};

} // namespace pobblewig
