#include "PobblewigDemoModel/CompletionFormat.h"
#include "PobblewigDemoModel/HTTPRequestReader.h"

#include <QTimeZone>

using namespace pobblewig;

/// Two pieces of a connection, divided at a place that the first byte names, and the reply to it.
extern "C" int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    const auto bytes = QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
    if (bytes.isEmpty())
        return 0;
    HTTPRequestReader reader;
    const auto middle = qMin(qsizetype(uchar(bytes[0])), bytes.size());
    auto outcome = reader.feed(bytes.mid(1, middle));
    if (!outcome)
        outcome = reader.feed(bytes.mid(1 + middle));
    const auto body = outcome && *outcome ? (*outcome)->body : bytes.mid(1);
    const QDateTime now({ 2026, 12, 31 }, { 23, 59 }, QTimeZone::utc());
    if (const auto request = ChatRequest::parse(body))
        CompletionFormat::events(*request, DemoReplies::reply(*request, now), TimePoint());
    return 0;
}
