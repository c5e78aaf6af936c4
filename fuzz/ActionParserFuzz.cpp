#include "conversation/ActionParser.h"
#include "conversation/ReplyPreview.h"

#include <cstdlib>
#include <random>

using namespace pobblewig;

namespace {

void demand(bool holds)
{
    if (!holds)
        std::abort();
}

bool hasControlBlock(const QString& text)
{
    return text.contains(u"```buddy-actions\n") || text.contains(u"```buddy-tools\n");
}

/// However the reply is cut into tokens, the same is shown, and what was shown stays.
void checkPreview(const QString& text)
{
    std::minstd_rand random(unsigned(qHash(text)));
    ReplyPreview preview;
    for (qsizetype from = 0; from < text.size();) {
        const auto size = std::min(qsizetype(1 + random() % 24), text.size() - from);
        const auto before = preview.text();
        preview.append(text.sliced(from, size));
        from += size;
        demand(preview.text().startsWith(before));
        demand(preview.text() == ActionParser::sanitizeForPreview(text.first(from)));
        demand(!hasControlBlock(preview.text()));
    }
    if (!text.contains(u'`'))
        demand(preview.text() == text.trimmed());
}

} // namespace

/// A reply.
extern "C" int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    const auto bytes = QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
    const auto text = QString::fromUtf8(bytes);
    const auto result = ActionParser::parse(text, {});
    demand(result.actions.size() <= 50);
    demand(!hasControlBlock(result.displayText));
    demand(ActionParser::parseToolCalls(text).calls.size() <= 100);
    checkPreview(text);
    return 0;
}
