#include "memory/librarian/CutAnswer.h"

#include <QStringBuilder>

namespace pobblewig {

namespace {

/// The position after the string that begins there, or the end of the text.
qsizetype afterString(const QString& text, qsizetype at)
{
    for (++at; at < text.size() && text[at] != u'"'; ++at) {
        if (text[at] == u'\\')
            ++at;
    }
    return at + 1;
}

} // namespace

std::optional<QString> CutAnswer::wholeEntries(const QString& text)
{
    const auto start = text.indexOf(u'{');
    QString open;
    qsizetype end = -1;
    for (auto at = start; at >= 0 && at < text.size();) {
        const auto sign = text[at];
        if (sign == u'"') {
            at = afterString(text, at);
            continue;
        }
        ++at;
        if (sign == u'{' || sign == u'[')
            open += sign;
        if (sign != u'}' && sign != u']')
            continue;
        open.chop(1);
        if (open.isEmpty())
            return std::nullopt;
        if (open == u"{[" && sign == u'}')
            end = at;
    }
    if (end < 0)
        return std::nullopt;
    return text.sliced(start, end - start) % u"]}";
}

} // namespace pobblewig
