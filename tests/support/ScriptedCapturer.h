#pragma once

#include "foundation/Stream.h"
#include "screen/ScreenCapturing.h"

#include <variant>
#include <vector>

namespace pobblewig {

/// A screen that is looked at once for each result that the test gives, whenever it does.
class ScriptedCapturer : public ScreenCapturing {
public:
    using Result = tl::expected<CapturedScreenshot, ScreenCaptureError>;

    void enqueue(Result result) { m_results.sink().push(std::move(result)); }

    /// What was excluded, for each look.
    const std::vector<std::set<QString>>& looks() const { return m_looks; }

    Task<Result> captureForCurrentContext(std::set<QString> excludedBundleIDs) override
    {
        m_looks.push_back(std::move(excludedBundleIDs));
        const auto result = co_await m_results.next();
        co_return *result;
    }

private:
    Stream<Result, std::monostate> m_results;
    std::vector<std::set<QString>> m_looks;
};

} // namespace pobblewig
