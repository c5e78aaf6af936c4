#pragma once

#include "foundation/Task.h"
#include "wire/LLMProvider.h"

#include <memory>

namespace pobblewig {

/// Hands a test's own model to code that wants to own one.
class BorrowedProvider : public LLMProvider {
public:
    explicit BorrowedProvider(LLMProvider& lender)
        : m_lender(lender)
    {
    }

    static std::unique_ptr<LLMProvider> of(LLMProvider* lender)
    {
        return lender ? std::make_unique<BorrowedProvider>(*lender) : nullptr;
    }

    static Task<std::unique_ptr<LLMProvider>> lent(LLMProvider* lender) { co_return of(lender); }

    const LLMConfiguration& configuration() const override { return m_lender.configuration(); }
    LLMStream streamChat(LLMRequest request) override
    {
        return m_lender.streamChat(std::move(request));
    }
    Task<std::vector<QString>> models() override { return m_lender.models(); }

private:
    LLMProvider& m_lender;
};

} // namespace pobblewig
