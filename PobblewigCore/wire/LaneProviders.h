#pragma once

#include "foundation/HTTPClient.h"
#include "wire/LLMProvider.h"
#include "wire/ModelLanes.h"

#include <functional>
#include <memory>

namespace pobblewig {

/// Makes the model behind each lane, anew at every use; null where the lane is not configured.
class LaneProviders {
public:
    /// `environment` is asked at every use.
    LaneProviders(HTTPClient& http, ModelLanes& lanes, std::function<Environment()> environment);

    Task<std::unique_ptr<LLMProvider>> makeMainProvider();
    Task<std::unique_ptr<LLMProvider>> makeVisionProvider();
    Task<std::unique_ptr<LLMProvider>> makeLibrarianProvider();
    Task<std::unique_ptr<LLMProvider>> makeMemeProvider();

private:
    Task<std::unique_ptr<LLMProvider>> provider(ModelUse use);

    HTTPClient& m_http;
    ModelLanes& m_lanes;
    std::function<Environment()> m_environment;
};

} // namespace pobblewig
