#include "activity/AccountabilityRule.h"
#include "activity/ActivitySession.h"
#include "conversation/proposals/ProposalManager.h"
#include "memory/DailySession.h"
#include "memory/MemoryStore.h"
#include "memory/PeriodSummary.h"
#include "memory/ReferenceItem.h"
#include "memory/history/ChatMessage.h"
#include "memory/history/UsageCounter.h"
#include "settings/AppSettings.h"

#include <QJsonDocument>

#include <cstdlib>

using namespace pobblewig;

namespace {

void demand(bool holds)
{
    if (!holds)
        std::abort();
}

QJsonValue parsed(const QByteArray& text)
{
    const auto document = QJsonDocument::fromJson(text);
    if (document.isNull())
        return QJsonValue::Undefined;
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

/// What is read is what is written, and reads the same again.
template <typename Value>
void check(const QJsonValue& json)
{
    const auto value = json::decode<Value>(json);
    if (!value) {
        demand(value.error().path.startsWith(u'$') && !value.error().problem.isEmpty());
        return;
    }
    const auto text = json::text(*value);
    const auto again = json::decode<Value>(parsed(text));
    demand(again && *again == *value);
    demand(json::text(*again) == text);
}

/// The contents of the files. A new kind comes last: the seeds name theirs by its letter.
constexpr std::array checks {
    check<AppSettings>,
    check<std::vector<ChatMessage>>,
    check<UsageCounter::Snapshot>,
    check<MemoryStoreData>,
    check<std::vector<DailySession>>,
    check<std::vector<DatedObservation>>,
    check<std::vector<PeriodSummary>>,
    check<ReferenceMemoryData>,
    check<std::vector<AccountabilityRule>>,
    check<std::vector<ActivitySession>>,
    check<ProposalManager::SavedState>,
};

} // namespace

/// A letter, "a" for the first kind of file, and what stands in the file.
extern "C" int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    if (size == 0)
        return 0;
    const auto text = QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)).sliced(1);
    if (const auto json = parsed(text); !json.isUndefined())
        checks[uchar(data[0] - 'a') % checks.size()](json);
    return 0;
}
