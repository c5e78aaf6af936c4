#include "PobblewigDesktop/chat/Paragraphs.h"

namespace pobblewig {

QString Paragraphs::joined(const QString& first, const QString& second)
{
    if (first.trimmed().isEmpty())
        return second;
    return second.trimmed().isEmpty() ? first : first + QStringLiteral("\n\n") + second;
}

} // namespace pobblewig
