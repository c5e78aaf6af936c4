#include "PobblewigDemoModel/DemoWords.h"

#include <QRegularExpression>
#include <QStringList>

namespace pobblewig {

namespace {

constexpr qsizetype wordsInSlug = 4;

const QRegularExpression& smallWords()
{
    static const QRegularExpression words(QStringLiteral(
        R"(^(?:a|an|the|i|i'm|i've|me|my|mine|you|your|we|our|it|its|that|this|these|those|and|or|)"
        R"(but|of|to|in|on|at|for|from|with|about|is|am|are|was|were|be|been|have|has|had|do|does|)"
        R"(did|not|no|any|some|what|when|who|where|which|how|all|everything|anything|due)$)"));
    return words;
}

} // namespace

QRegularExpression DemoWords::pattern(const QString& text)
{
    return QRegularExpression(text,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
}

QString DemoWords::withoutCourtesies(const QString& text)
{
    static const QRegularExpression before(
        QStringLiteral(R"(^(?:(?:hey|hi|ok|okay|now|and|so|buddy|please|thanks)\b[ ,!]*)"
                       R"(|(?:can|could|would|will) you\b ?)+(?=\w))"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression after(
        QStringLiteral(R"([ ,.!]*\b(?:please|thanks|thank you)[ .!?]*$|[.!]+$)"),
        QRegularExpression::CaseInsensitiveOption);
    auto rest = text.simplified();
    rest.remove(before).remove(after);
    return rest;
}

QString DemoWords::title(QString text)
{
    static const auto before =
        pattern(QStringLiteral(R"(^(?:\W+|(?:to|about|of|that|a|an|the|my|i|have|for)\b ?)+)"));
    static const auto after = pattern(QStringLiteral(R"((?:[^\w)]+|\b(?:on|at|for|by|to))+$)"));
    text = text.simplified().remove(before).remove(after);
    return text.left(1).toUpper() + text.mid(1);
}

QString DemoWords::slug(const QString& text)
{
    static const QRegularExpression separators(QStringLiteral("[^a-z0-9]+"));
    auto words = text.toLower().split(separators, Qt::SkipEmptyParts);
    return words.mid(0, wordsInSlug).join(u'-');
}

QString DemoWords::keywords(const QString& text)
{
    static const QRegularExpression separators(QStringLiteral(R"([^\w'.-]+|[.]+(?:\s|$))"),
        QRegularExpression::UseUnicodePropertiesOption);
    auto words = text.split(separators, Qt::SkipEmptyParts);
    words.removeIf(
        [](const QString& word) { return smallWords().match(word.toLower()).hasMatch(); });
    return words.join(u' ');
}

} // namespace pobblewig
