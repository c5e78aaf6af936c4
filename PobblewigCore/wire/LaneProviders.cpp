#include "wire/LaneProviders.h"

#include "wire/OpenAICompatibleProvider.h"

namespace pobblewig {

namespace {

constexpr std::chrono::seconds requestTimeout(120);

}

LaneProviders::LaneProviders(
    HTTPClient& http, ModelLanes& lanes, std::function<Environment()> environment)
    : m_http(http)
    , m_lanes(lanes)
    , m_environment(std::move(environment))
{
}

Task<std::unique_ptr<LLMProvider>> LaneProviders::makeMainProvider()
{
    return provider(ModelUse::main);
}

Task<std::unique_ptr<LLMProvider>> LaneProviders::makeVisionProvider()
{
    return provider(ModelUse::vision);
}

Task<std::unique_ptr<LLMProvider>> LaneProviders::makeLibrarianProvider()
{
    return provider(ModelUse::librarian);
}

Task<std::unique_ptr<LLMProvider>> LaneProviders::makeMemeProvider()
{
    return provider(ModelUse::meme);
}

Task<std::unique_ptr<LLMProvider>> LaneProviders::provider(ModelUse use)
{
    auto configuration = co_await m_lanes.configuration(use, m_environment());
    if (!configuration)
        co_return std::unique_ptr<LLMProvider>();
    co_return std::make_unique<OpenAICompatibleProvider>(
        *std::move(configuration), m_http, requestTimeout);
}

} // namespace pobblewig
