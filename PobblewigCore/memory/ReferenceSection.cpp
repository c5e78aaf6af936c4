#include "memory/ReferenceSection.h"

#include "foundation/IDPrefix.h"

#include <QStringList>

namespace pobblewig {

QString detailsText(const ReferenceItem& item)
{
    if (item.details.empty())
        return {};
    QStringList texts;
    for (const auto& [key, value] : item.details)
        texts.append(key + u'=' + value.displayString());
    return QStringLiteral(" [%1]").arg(texts.join(QStringLiteral(", ")));
}

QString ReferenceSection::compactText() const
{
    QStringList lines { QStringLiteral("%1 (%2)").arg(meta.title, meta.path), meta.summary };
    for (const auto& item : items)
        lines.append(
            QStringLiteral("- [id:%1] %2: %3%4")
                .arg(IDPrefix::shortID(item.id), item.title, item.summary, detailsText(item)));
    return lines.join(u'\n');
}

} // namespace pobblewig
