#include "markdown/EmojiRuns.h"
#include "markdown/LinkAddress.h"
#include "markdown/MarkdownText.h"

#include <QUrl>

#include <algorithm>
#include <cstdlib>
#include <random>

using namespace pobblewig;
using Growth = MarkdownText::Growth;

namespace {

void demand(bool holds)
{
    if (!holds)
        std::abort();
}

/// Parts follow one another and lie in the text.
template <typename Parts>
void checkOrder(const Parts& parts, qsizetype size)
{
    qsizetype end = 0;
    for (const auto& part : parts) {
        demand(part.range.start >= end && part.range.length >= 0);
        end = part.range.end();
    }
    demand(end <= size);
}

void check(const StyledText& shown)
{
    checkOrder(shown.blocks, shown.text.size());
    checkOrder(shown.spans, shown.text.size());
    demand(shown.text.isEmpty() || !shown.blocks.empty());
    for (const auto& span : shown.spans) {
        const auto scheme = QUrl(span.link).scheme();
        demand(
            span.link.isEmpty() || scheme == u"https" || scheme == u"http" || scheme == u"mailto");
    }
    for (const auto& run : emojiRuns(shown.text))
        demand(run.start >= 0 && run.length > 0 && run.end() <= shown.text.size());
}

/// However a text grows, it ends as if read at once, and what is said to stay does.
void checkGrowth(const QString& text, const StyledText& whole)
{
    std::minstd_rand random(unsigned(qHash(text)));
    MarkdownText grown;
    for (qsizetype end = 0; end < text.size();) {
        end = std::min<qsizetype>(text.size(), end + 1 + qsizetype(random() % 48));
        const auto before = grown.shown().text;
        const auto same = grown.setSource(text.first(end), Growth::growing);
        demand(same <= std::min(before.size(), grown.shown().text.size()));
        demand(before.first(same) == grown.shown().text.first(same));
        check(grown.shown());
    }
    grown.setSource(text, Growth::whole);
    demand(grown.shown().text == whole.text && grown.shown().blocks == whole.blocks
        && grown.shown().spans == whole.spans);
}

} // namespace

/// A reply with markup.
extern "C" int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    const auto bytes = QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
    const auto text = QString::fromUtf8(bytes);
    MarkdownText whole;
    whole.setSource(text, Growth::whole);
    check(whole.shown());
    checkGrowth(text, whole.shown());
    return 0;
}
