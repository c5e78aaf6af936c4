#include "markdown/MarkdownEntity.h"

#include <QHash>

namespace pobblewig {

namespace {

const QHash<QString, QString>& names()
{
    static const QHash<QString, QString> known {
        { QStringLiteral("amp"), QStringLiteral("&") },
        { QStringLiteral("lt"), QStringLiteral("<") },
        { QStringLiteral("gt"), QStringLiteral(">") },
        { QStringLiteral("quot"), QStringLiteral("\"") },
        { QStringLiteral("apos"), QStringLiteral("'") },
        { QStringLiteral("nbsp"), QString(QChar::Nbsp) },
        { QStringLiteral("ndash"), QStringLiteral("–") },
        { QStringLiteral("mdash"), QStringLiteral("—") },
        { QStringLiteral("hellip"), QStringLiteral("…") },
        { QStringLiteral("copy"), QStringLiteral("©") },
        { QStringLiteral("deg"), QStringLiteral("°") },
        { QStringLiteral("plusmn"), QStringLiteral("±") },
        { QStringLiteral("times"), QStringLiteral("×") },
        { QStringLiteral("divide"), QStringLiteral("÷") },
        { QStringLiteral("le"), QStringLiteral("≤") },
        { QStringLiteral("ge"), QStringLiteral("≥") },
        { QStringLiteral("ne"), QStringLiteral("≠") },
        { QStringLiteral("rarr"), QStringLiteral("→") },
        { QStringLiteral("larr"), QStringLiteral("←") },
        { QStringLiteral("euro"), QStringLiteral("€") },
    };
    return known;
}

QString numbered(QString number)
{
    const auto isHex = number.startsWith(u'x', Qt::CaseInsensitive);
    bool isNumber = false;
    const auto code = (isHex ? number.sliced(1) : number).toUInt(&isNumber, isHex ? 16 : 10);
    const auto isCharacter =
        isNumber && code >= u' ' && code <= QChar::LastValidCodePoint && !QChar::isSurrogate(code);
    return isCharacter ? QString::fromUcs4(reinterpret_cast<const char32_t*>(&code), 1)
                       : QString(QChar::ReplacementCharacter);
}

} // namespace

QString MarkdownEntity::decoded(const QString& entity)
{
    const auto name = entity.mid(1).chopped(1);
    return name.startsWith(u'#') ? numbered(name.mid(1)) : names().value(name, entity);
}

} // namespace pobblewig
