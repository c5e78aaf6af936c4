#include "wire/LaneProviders.h"

#include "wire/OpenAICompatibleProvider.h"

namespace pobblewig {

LaneProviders::LaneProviders(HTTPClient& http, ModelLanes& lanes, RequestLog& requests,
    std::function<Environment()> environment)
    : m_http(http)
    , m_lanes(lanes)
    , m_requests(requests)
    , m_environment(std::move(environment))
{
}

Task<std::unique_ptr<LLMProvider>> LaneProviders::makeProvider(ModelUse use)
{
    auto configuration = co_await m_lanes.configuration(use, environment());
    if (!configuration)
        co_return std::unique_ptr<LLMProvider>();
    onUse(*configuration);
    co_return provider(use, *std::move(configuration));
}

Task<MainModelConfig> LaneProviders::mainConfig()
{
    return m_lanes.resolvedMainModel(environment());
}

Task<MainModelConfig> LaneProviders::visionConfig()
{
    return m_lanes.resolvedVisionModel(environment());
}

Task<LibrarianModelConfig> LaneProviders::librarianConfig()
{
    return m_lanes.resolvedLibrarianModel(environment());
}

void LaneProviders::chooseModel(ModelUse use, const QString& modelID)
{
    m_choices.insert_or_assign(LaneLogic::modelVariable(use), modelID);
}

std::unique_ptr<LLMProvider> LaneProviders::provider(ModelUse use, LLMConfiguration configuration)
{
    auto watch = [this, use, modelID = configuration.modelID] {
        return m_requests.begin(use, modelID);
    };
    auto provider = std::make_unique<OpenAICompatibleProvider>(std::move(configuration), m_http);
    provider->setWatching(std::move(watch));
    return provider;
}

Environment LaneProviders::environment() const
{
    auto variables = m_choices;
    variables.merge(m_environment());
    return variables;
}

} // namespace pobblewig
