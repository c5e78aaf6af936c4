#include "PobblewigDemoModel/DemoReplies.h"
#include "PobblewigDemoModel/HTTPRequestReader.h"

using pobblewig::ChatRequest, pobblewig::DemoReplies::reply, pobblewig::HTTPRequestReader;

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
    if (const auto request = ChatRequest::parse(body))
        reply(*request, QTime(0, 0));
    return 0;
}
