#pragma once

#include "foundation/Task.h"
#include "memory/history/UsageCounter.h"
#include "wire/ModelProviding.h"

#include <memory>
#include <optional>
#include <stop_token>

namespace pobblewig {

/// Sends single questions to the librarian's model, or to another small one, and counts the tokens
/// used.
///
/// Lives on the main thread, as long as the process.
class LibrarianModel {
public:
    struct Question {
        QString prompt;
        LLMResponseFormat format;
        /// The maximum length of the answer, as a multiple of the usual one.
        int tokenFactor = 1;
        /// Without it, the usual one of the model's configuration.
        std::optional<int> maxTokens = {};
    };

    /// Who asks.
    struct Asker {
        ModelUse use = ModelUse::librarian;
        /// For the log.
        QString name = QStringLiteral("librarian");
    };

    /// Nothing without a model, or if the answer is no longer wanted.
    using Answer = std::optional<tl::expected<QString, LLMFailure>>;

    LibrarianModel(UsageCounter& usage, ModelProviding& models)
        : LibrarianModel(usage, models, Asker())
    {
    }
    LibrarianModel(UsageCounter& usage, ModelProviding& models, Asker asker);

    /// If a server rejects the request, asks once more without the schema, which the prompt
    /// describes as well. If the model's thoughts have used up the room for the answer, asks once
    /// more with more room, as from then on. Sends nothing after `stop`.
    Task<Answer> ask(Question question, std::stop_token stop);

    /// The usual maximum length of an answer.
    Task<int> answerTokens();

private:
    using Completion = tl::expected<LLMCompletion, LLMFailure>;

    Task<Completion> complete(
        std::shared_ptr<LLMProvider> provider, LLMRequest request, std::stop_token stop);
    Task<Completion> completeWithRoom(
        std::shared_ptr<LLMProvider> provider, LLMRequest request, std::stop_token stop);
    Task<Completion> completeOnce(std::shared_ptr<LLMProvider> provider, LLMRequest request);

    UsageCounter& m_usage;
    ModelProviding& m_models;
    Asker m_asker;
    bool m_thinks = false;
};

} // namespace pobblewig
