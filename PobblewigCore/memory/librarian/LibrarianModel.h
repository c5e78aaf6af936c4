#pragma once

#include "foundation/Task.h"
#include "memory/history/UsageCounter.h"
#include "wire/ModelProviding.h"

#include <memory>
#include <optional>
#include <stop_token>

namespace pobblewig {

/// Puts single questions to the model of the librarian's lane and counts what they cost.
///
/// Lives on the main thread, as long as the process.
class LibrarianModel {
public:
    struct Question {
        QString prompt;
        LLMResponseFormat format;
        /// How many times the usual length the answer may take.
        int tokenFactor = 1;
    };

    /// Nothing without a model, and once it is no longer wanted.
    using Answer = std::optional<tl::expected<QString, LLMFailure>>;

    LibrarianModel(UsageCounter& usage, ModelProviding& models);

    /// A server that rejects the form of the answer is asked once more without it: the question
    /// shows the form as well. Nothing is sent after `stop`.
    Task<Answer> ask(Question question, std::stop_token stop);

private:
    using Completion = tl::expected<LLMCompletion, LLMFailure>;

    Task<Completion> complete(
        std::shared_ptr<LLMProvider> provider, LLMRequest request, std::stop_token stop);
    Task<Completion> completeOnce(std::shared_ptr<LLMProvider> provider, LLMRequest request);

    UsageCounter& m_usage;
    ModelProviding& m_models;
};

} // namespace pobblewig
