#pragma once

#include "foundation/Task.h"
#include "wire/LLMProvider.h"
#include "wire/LaneConfigurations.h"

#include <functional>
#include <memory>

namespace pobblewig {

/// Provides the models. Asked at every use, so that a change of account, environment or keyring
/// applies from the next request on.
class ModelProviding {
public:
    virtual ~ModelProviding() = default;

    /// Returns null if that use has no model.
    virtual Task<std::unique_ptr<LLMProvider>> makeProvider(ModelUse use) = 0;

    virtual Task<MainModelConfig> mainConfig() = 0;
    virtual Task<MainModelConfig> visionConfig() = 0;
    virtual Task<LibrarianModelConfig> librarianConfig() = 0;

    /// From now on, until the program ends, that model serves the use. Has no effect on a use that
    /// the product's own backend serves.
    virtual void chooseModel(ModelUse, const QString& /*modelID*/) { }

    /// Called with each model that is about to be used.
    std::function<void(const LLMConfiguration&)> onUse = [](const LLMConfiguration&) {};
};

} // namespace pobblewig
