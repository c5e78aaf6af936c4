#include "wire/LaneProviders.h"

#include "wire/OpenAICompatibleProvider.h"

namespace pobblewig {

LaneProviders::LaneProviders(
    HTTPClient& http, ModelLanes& lanes, std::function<Environment()> environment)
    : m_http(http)
    , m_lanes(lanes)
    , m_environment(std::move(environment))
{
}

Task<std::unique_ptr<LLMProvider>> LaneProviders::makeProvider(ModelUse use)
{
    auto configuration = co_await m_lanes.configuration(use, m_environment());
    if (!configuration)
        co_return std::unique_ptr<LLMProvider>();
    onUse(*configuration);
    co_return std::make_unique<OpenAICompatibleProvider>(*std::move(configuration), m_http);
}

Task<MainModelConfig> LaneProviders::mainConfig()
{
    return m_lanes.resolvedMainModel(m_environment());
}

Task<MainModelConfig> LaneProviders::visionConfig()
{
    return m_lanes.resolvedVisionModel(m_environment());
}

Task<LibrarianModelConfig> LaneProviders::librarianConfig()
{
    return m_lanes.resolvedLibrarianModel(m_environment());
}

} // namespace pobblewig
