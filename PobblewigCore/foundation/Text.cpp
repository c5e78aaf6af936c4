#include "foundation/Text.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

/// In UTF-16 units; twice the length of the longest emoji.
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

// toLower() looks up every character in its tables; most texts are ASCII and need no look-up.
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

bool isBlank(char32_t character)
{
    const auto category = QChar::category(character);
    return QChar::isSpace(character) || category == QChar::Other_Control;
}

/// Whether it shapes its neighbours, as in an emoji family or in the words of many scripts.
bool isShaping(char32_t character)
{
    constexpr char32_t nonJoiner = 0x200C;
    constexpr char32_t joiner = 0x200D;
    const bool isVariation = (character >= 0xFE00 && character <= 0xFE0F)
        || (character >= 0xE0100 && character <= 0xE01EF);
    return character == nonJoiner || character == joiner || isVariation;
}

char32_t characterAt(QStringView text, qsizetype place)
{
    const auto unit = text[place];
    const bool isPair =
        unit.isHighSurrogate() && place + 1 < text.size() && text[place + 1].isLowSurrogate();
    if (isPair)
        return QChar::surrogateToUcs4(unit, text[place + 1]);
    return unit.isSurrogate() ? char32_t(QChar::ReplacementCharacter) : char32_t(unit.unicode());
}

/// Reads the text until the result has this many units.
QString withoutTricks(QStringView text, qsizetype units)
{
    QString shown;
    auto isApart = false;
    auto isShaped = true;
    for (qsizetype at = 0; at < text.size() && shown.size() < units;) {
        const auto character = characterAt(text, at);
        at += QChar::requiresSurrogates(character) ? 2 : 1;
        if (isBlank(character)) {
            isApart = !shown.isEmpty();
            isShaped = true;
            continue;
        }
        const auto shapes = isShaping(character);
        if (shapes ? isShaped : QChar::category(character) == QChar::Other_Format)
            continue;
        if (std::exchange(isApart, false))
            shown += u' ';
        shown += QChar::fromUcs4(character);
        isShaped = shapes;
    }
    return shown;
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
    // The finder examines all the text that it is given.
    auto beginning = text.left(count * longestCharacter);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, beginning);
    for (qsizetype passed = 0; passed < count; ++passed) {
        if (finder.toNextBoundary() < 0)
            return beginning;
    }
    return beginning.first(finder.position());
}

QString Text::plainLine(const QString& text, qsizetype count)
{
    const auto line = withoutTricks(text, (count + 1) * longestCharacter);
    const auto beginning = firstCharacters(line, count);
    return beginning.size() == line.size() ? line : beginning + u'…';
}

QString Text::counted(qint64 count, QStringView thing)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(thing, count == 1 ? u"" : u"s");
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

QString Text::foreignLine(const QString& text)
{
    constexpr qsizetype mostCharacters = 200;
    const auto line = onOneLine(text);
    const auto shown = firstCharacters(line, mostCharacters);
    return shown.size() == line.size() ? line : firstCharacters(shown, mostCharacters - 1) + u'…';
}

} // namespace pobblewig
