#pragma once

#include "foundation/Time.h"
#include "wire/LLMProvider.h"
#include "wire/LaneConfigurations.h"

#include <deque>
#include <memory>

namespace pobblewig {

/// A request to a model, without anything that was said in it.
struct RequestRecord {
    enum class Outcome {
        underWay,
        answered,
        /// The reply ended at its length limit.
        cutOff,
        failed,
        /// The program wanted no more of it.
        stopped,
    };

    ModelUse use = ModelUse::main;
    QString modelID;
    TimePoint begunAt;
    /// From the begin of the request to the first and the last piece of the reply, or of the
    /// thoughts before it.
    std::optional<std::chrono::milliseconds> firstToken = std::nullopt;
    std::optional<std::chrono::milliseconds> lastToken = std::nullopt;
    /// 0 where the server does not tell.
    int promptTokens = 0;
    int completionTokens = 0;
    Outcome outcome = Outcome::underWay;
    /// Why it failed, without the server's words, and the status that it gave, or 0.
    QString failure = {};
    int status = 0;

    bool operator==(const RequestRecord&) const = default;
};

/// Notes what becomes of one request. It may outlive its log.
class RequestWatch {
public:
    /// Notes nothing.
    RequestWatch() = default;
    RequestWatch(std::shared_ptr<RequestRecord> record, Clock clock);

    void note(const LLMStreamEvent& event) const;
    /// What comes after the first end is ignored.
    void finish(const std::optional<LLMFailure>& failure) const;
    void stop() const;

private:
    void end(RequestRecord::Outcome outcome) const;

    std::shared_ptr<RequestRecord> m_record;
    Clock m_clock;
};

/// The latest requests to models since the start.
class RequestLog {
public:
    static constexpr size_t most = 50;

    explicit RequestLog(Clock clock)
        : m_clock(std::move(clock))
    {
    }

    RequestWatch begin(ModelUse use, const QString& modelID);

    /// Newest first.
    std::vector<RequestRecord> latest() const;

    /// Why the latest failed request of a use failed; empty if there is none.
    QString lastError(ModelUse use) const;

private:
    Clock m_clock;
    std::deque<std::shared_ptr<RequestRecord>> m_records;
};

} // namespace pobblewig
