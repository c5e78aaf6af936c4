#include "PobblewigDesktop/chat/Quotation.h"

#include "foundation/Text.h"

#include <QStringList>

namespace pobblewig {

QString Quotation::ofText(const QString& text)
{
    auto beginning = Text::firstCharacters(text, longest);
    const auto isCut = beginning.size() < text.size();
    beginning.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    beginning = beginning.trimmed();
    if (beginning.isEmpty())
        return {};
    QString quotation;
    for (const auto& line : beginning.split(u'\n'))
        quotation += QStringLiteral("> ") + Text::onOneLine(line) + u'\n';
    if (isCut)
        quotation.insert(quotation.size() - 1, u'…');
    return quotation + u'\n';
}

} // namespace pobblewig
