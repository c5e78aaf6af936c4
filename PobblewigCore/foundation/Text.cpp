#include "foundation/Text.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace pobblewig {

namespace {

/// In UTF-16 units, twice that of the longest emoji.
constexpr qsizetype longestCharacter = 32;

bool isASCII(QChar character)
{
    return character.unicode() < 128;
}

QChar asciiLowered(QChar character)
{
    const bool isUpper = character >= u'A' && character <= u'Z';
    return isUpper ? QChar(character.unicode() + u'a' - u'A') : character;
}

// toLower() looks every character up in its tables; most texts are ASCII, which needs none.
QString lowered(QString text)
{
    std::ranges::transform(text, text.begin(), asciiLowered);
    for (qsizetype at = 0;;) {
        const auto rest = QStringView(text).sliced(at);
        const auto from = std::ranges::find_if_not(rest, isASCII);
        if (from == rest.end())
            return text;
        const QStringView run(from, std::find_if(from, rest.end(), isASCII));
        const auto replacement = run.toString().toLower();
        at += from - rest.begin();
        text.replace(at, run.size(), replacement);
        at += replacement.size();
    }
}

} // namespace

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
    // The finder looks at all that it is given.
    auto beginning = text.left(count * longestCharacter);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, beginning);
    for (qsizetype passed = 0; passed < count; ++passed) {
        if (finder.toNextBoundary() < 0)
            return beginning;
    }
    return beginning.first(finder.position());
}

QString Text::normalized(const QString& text)
{
    return lowered(text).simplified();
}

} // namespace pobblewig
