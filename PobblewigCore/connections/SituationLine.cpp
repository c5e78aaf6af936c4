#include "connections/SituationLine.h"

#include "foundation/Text.h"

#include <QStringList>

namespace pobblewig {

namespace {

constexpr qsizetype itemCharacters = 160;

QString described(const ReferenceItem& item)
{
    const auto entry = item.summary.isEmpty()
        ? item.title
        : QStringLiteral("%1 — %2").arg(item.title, item.summary);
    return Text::firstCharacters(Text::onOneLine(entry), itemCharacters);
}

} // namespace

void addSituationLine(
    std::vector<QString>& lines, const QString& heading, const std::vector<ReferenceItem>& items)
{
    QStringList entries;
    for (const auto& item : items)
        entries.append(described(item));
    if (!entries.isEmpty())
        lines.push_back(heading + entries.join(QStringLiteral(" | ")));
}

} // namespace pobblewig
