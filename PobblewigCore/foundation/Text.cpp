#include "foundation/Text.h"

#include <QTextBoundaryFinder>

namespace pobblewig {

qsizetype Text::characterCount(const QString& text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() >= 0)
        ++count;
    return count;
}

QString Text::firstCharacters(const QString& text, qsizetype count)
{
    if (text.size() <= count)
        return text;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype passed = 0; passed < count; ++passed) {
        if (finder.toNextBoundary() < 0)
            return text;
    }
    return text.first(finder.position());
}

QString Text::normalized(const QString& text)
{
    return text.toLower().simplified();
}

} // namespace pobblewig
