#pragma once

#include "foundation/HTTPClient.h"
#include "wire/ModelLanes.h"
#include "wire/ModelProviding.h"
#include "wire/RequestLog.h"

#include <functional>
#include <memory>

namespace pobblewig {

/// The models configured by account, environment and keyring, reached over HTTP.
class LaneProviders : public ModelProviding {
public:
    /// `environment` is called at every use. The others must outlive this object.
    LaneProviders(HTTPClient& http, ModelLanes& lanes, RequestLog& requests,
        std::function<Environment()> environment);

    Task<std::unique_ptr<LLMProvider>> makeProvider(ModelUse use) override;
    Task<MainModelConfig> mainConfig() override;
    Task<MainModelConfig> visionConfig() override;
    Task<LibrarianModelConfig> librarianConfig() override;
    void chooseModel(ModelUse use, const QString& modelID) override;

private:
    Environment environment() const;
    std::unique_ptr<LLMProvider> provider(ModelUse use, LLMConfiguration configuration);

    HTTPClient& m_http;
    ModelLanes& m_lanes;
    RequestLog& m_requests;
    std::function<Environment()> m_environment;
    /// What the user chose, in place of the variables of the same names.
    Environment m_choices;
};

} // namespace pobblewig
