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

bool dividesWords(QChar character)
{
    return (character >= u'\t' && character <= u'\r') || character == QChar(0x85)
        || character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
}

bool turnsDirection(QChar character)
{
    const auto code = character.unicode();
    return code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E)
        || (code >= 0x2066 && code <= 0x2069);
}

bool isUnseen(QChar character)
{
    return character.category() == QChar::Other_Control || turnsDirection(character);
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

QString Text::onOneLine(const QString& text)
{
    auto line = text;
    line.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    std::ranges::replace_if(line, dividesWords, QChar(u' '));
    return line.removeIf(isUnseen);
}

} // namespace pobblewig
