#include "wire/ModelLanes.h"

namespace pobblewig {

ModelLanes::ModelLanes(KeychainHelper& keychain, MarketConfig market)
    : m_keychain(keychain)
    , m_market(std::move(market))
{
}

auto ModelLanes::configuration(ModelUse use, Environment environment)
    -> Task<std::optional<LLMConfiguration>>
{
    const auto managed = co_await managedConfiguration(LaneLogic::managedLane(use), environment);
    if (managed)
        co_return managed;
    if (LaneLogic::modelID(use, use, environment).isEmpty())
        co_return std::nullopt;
    const auto key = co_await laneKey(use, environment);
    co_return LaneLogic::directConfiguration(use, key, environment, m_market);
}

auto ModelLanes::managedConfiguration(ProviderRouting::Lane lane, Environment environment)
    -> Task<std::optional<LLMConfiguration>>
{
    // Without a backend there is no need to ask the keyring.
    if (!LaneLogic::isManaged(lane, m_market))
        co_return std::nullopt;
    const auto credential = co_await cloudCredential(environment);
    if (!credential)
        co_return std::nullopt;
    const auto sessionToken =
        co_await kept(QString::fromUtf16(KeychainHelper::sessionTokenAccount));
    co_return LaneLogic::managedConfiguration(lane, credential, sessionToken, m_market);
}

auto ModelLanes::cloudCredential(Environment environment) -> Task<Text>
{
    if (const auto given = variable(environment, QStringLiteral("POBBLEWIG_CLOUD_CREDENTIAL")))
        co_return given;
    const auto credential =
        co_await kept(QString::fromUtf16(KeychainHelper::cloudCredentialAccount));
    if (credential)
        co_return credential;
    const auto sessionToken =
        co_await kept(QString::fromUtf16(KeychainHelper::sessionTokenAccount));
    co_return sessionToken;
}

auto ModelLanes::mainAPIKey(Environment environment) -> Task<Text>
{
    return apiKey(ModelUse::main, std::move(environment));
}

auto ModelLanes::visionAPIKey(Environment environment) -> Task<Text>
{
    return apiKey(ModelUse::vision, std::move(environment));
}

auto ModelLanes::librarianAPIKey(Environment environment) -> Task<Text>
{
    return apiKey(ModelUse::librarian, std::move(environment));
}

auto ModelLanes::memeAPIKey(Environment environment) -> Task<Text>
{
    return apiKey(ModelUse::meme, std::move(environment));
}

Task<MainModelConfig> ModelLanes::resolvedMainModel(Environment environment)
{
    return mainModel(ModelUse::main, std::move(environment));
}

Task<MainModelConfig> ModelLanes::resolvedVisionModel(Environment environment)
{
    return mainModel(ModelUse::vision, std::move(environment));
}

Task<LibrarianModelConfig> ModelLanes::resolvedLibrarianModel(Environment environment)
{
    return librarianModel(ModelUse::librarian, std::move(environment));
}

Task<LibrarianModelConfig> ModelLanes::resolvedMemeModel(Environment environment)
{
    return librarianModel(ModelUse::meme, std::move(environment));
}

auto ModelLanes::laneKey(ModelUse use, Environment environment) -> Task<std::optional<LaneKey>>
{
    const auto mayAskKeyring = LaneLogic::namesModel(use, environment);
    std::vector<ModelUse> owners { use };
    if (use != ModelUse::main)
        owners.push_back(ModelUse::main);
    for (const auto owner : owners) {
        if (const auto key = variable(environment, LaneLogic::keyVariable(owner)))
            co_return LaneKey { *key, owner };
        if (!mayAskKeyring)
            continue;
        const auto key = co_await kept(LaneLogic::keyAccount(owner));
        if (key)
            co_return LaneKey { *key, owner };
    }
    co_return std::nullopt;
}

auto ModelLanes::apiKey(ModelUse use, Environment environment) -> Task<Text>
{
    const auto found = co_await laneKey(use, std::move(environment));
    co_return found ? Text(found->key) : std::nullopt;
}

Task<ModelUse> ModelLanes::keyOwner(ModelUse use, Environment environment)
{
    const auto key = co_await laneKey(use, environment);
    co_return key ? key->owner : use;
}

Task<MainModelConfig> ModelLanes::mainModel(ModelUse use, Environment environment)
{
    const auto owner = co_await keyOwner(use, environment);
    MainModelConfig config {
        .provider = LaneLogic::provider(use, environment, m_market),
        .baseURL = LaneLogic::baseURL(use, owner, environment, m_market),
        .modelID = LaneLogic::modelID(use, owner, environment),
    };
    config.maxOutputTokens = LaneLogic::maxOutputTokens(use, environment, config.maxOutputTokens);
    co_return config;
}

Task<LibrarianModelConfig> ModelLanes::librarianModel(ModelUse use, Environment environment)
{
    const auto owner = co_await keyOwner(use, environment);
    LibrarianModelConfig config {
        .baseURL = LaneLogic::baseURL(use, owner, environment, m_market),
        .modelID = LaneLogic::modelID(use, owner, environment),
    };
    config.maxOutputTokens = LaneLogic::maxOutputTokens(use, environment, config.maxOutputTokens);
    co_return config;
}

auto ModelLanes::kept(QString account) -> Task<Text>
{
    const auto value = co_await m_keychain.read(std::move(account));
    co_return value && !value->isEmpty() ? value : std::nullopt;
}

} // namespace pobblewig
