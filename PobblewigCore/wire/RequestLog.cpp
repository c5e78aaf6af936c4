#include "wire/RequestLog.h"

#include <algorithm>

namespace pobblewig {

RequestWatch::RequestWatch(std::shared_ptr<RequestRecord> record, Clock clock)
    : m_record(std::move(record))
    , m_clock(std::move(clock))
{
}

void RequestWatch::note(const LLMStreamEvent& event) const
{
    if (!m_record)
        return;
    auto& record = *m_record;
    if (std::holds_alternative<LLMToken>(event) || std::holds_alternative<LLMThought>(event)
        || std::holds_alternative<LLMToolCalls>(event)) {
        record.lastToken =
            std::chrono::duration_cast<std::chrono::milliseconds>(m_clock() - record.begunAt);
        record.firstToken = record.firstToken.value_or(*record.lastToken);
    } else if (const auto* usage = std::get_if<LLMUsage>(&event)) {
        record.promptTokens = usage->promptTokens;
        record.completionTokens = usage->completionTokens;
    } else if (const auto* finished = std::get_if<LLMFinished>(&event);
               finished && finished->isCutOff) {
        end(RequestRecord::Outcome::cutOff);
    }
}

void RequestWatch::finish(const std::optional<LLMFailure>& failure) const
{
    if (failure && m_record && m_record->outcome == RequestRecord::Outcome::underWay) {
        m_record->failure = loggable(*failure).trimmed();
        const auto* const error = std::get_if<LLMError>(&*failure);
        m_record->status = error ? error->status : 0;
    }
    end(failure ? RequestRecord::Outcome::failed : RequestRecord::Outcome::answered);
}

void RequestWatch::stop() const
{
    end(RequestRecord::Outcome::stopped);
}

void RequestWatch::end(RequestRecord::Outcome outcome) const
{
    if (m_record && m_record->outcome == RequestRecord::Outcome::underWay)
        m_record->outcome = outcome;
}

RequestWatch RequestLog::begin(ModelUse use, const QString& modelID)
{
    m_records.push_front(std::make_shared<RequestRecord>(
        RequestRecord { .use = use, .modelID = modelID, .begunAt = m_clock() }));
    if (m_records.size() > most)
        m_records.pop_back();
    return { m_records.front(), m_clock };
}

std::vector<RequestRecord> RequestLog::latest() const
{
    std::vector<RequestRecord> records;
    records.reserve(m_records.size());
    for (const auto& record : m_records)
        records.push_back(*record);
    return records;
}

QString RequestLog::lastError(ModelUse use) const
{
    const auto found = std::ranges::find_if(m_records, [use](const auto& record) {
        return record->use == use && record->outcome == RequestRecord::Outcome::failed;
    });
    return found == m_records.end() ? QString() : (*found)->failure;
}

} // namespace pobblewig
