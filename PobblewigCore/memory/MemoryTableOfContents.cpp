#include "memory/MemoryTableOfContents.h"

#include "foundation/ISO8601.h"

#include <QStringList>

namespace pobblewig {

namespace {

QString updatedText(const TOCEntry& entry)
{
    return QStringLiteral(", updated ")
        + (entry.lastUpdatedAt ? ISO8601::format(*entry.lastUpdatedAt) : QStringLiteral("—"));
}

} // namespace

std::vector<QString> MemoryTableOfContents::paths() const
{
    std::vector<QString> paths;
    paths.reserve(entries.size());
    for (const auto& entry : entries)
        paths.push_back(entry.path);
    return paths;
}

QString MemoryTableOfContents::compactText(
    IncludeEmpty includeEmpty, IncludeTimestamps includeTimestamps) const
{
    QStringList lines;
    for (const auto& entry : entries) {
        if (entry.itemCount == 0 && includeEmpty == IncludeEmpty::no)
            continue;
        const auto count = QString::number(entry.itemCount);
        const auto updated =
            includeTimestamps == IncludeTimestamps::yes ? updatedText(entry) : QString();
        lines.append(QStringLiteral("- %1 — %2 (%3 items%4): %5")
                         .arg(entry.path, entry.title, count, updated, entry.summary));
    }
    return lines.isEmpty() ? QStringLiteral("(reference memory is empty)") : lines.join(u'\n');
}

} // namespace pobblewig
