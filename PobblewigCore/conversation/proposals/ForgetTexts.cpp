#include "conversation/proposals/ForgetTexts.h"

#include <QStringList>

namespace pobblewig {

namespace {

QString words(const QString& kind, const std::optional<QString>& subject)
{
    const auto said = QStringLiteral("forget ") + kind;
    return subject && !subject->isEmpty() ? said + u' ' + *subject : said;
}

} // namespace

QString ForgetTexts::filter(const ProposedForget& forget)
{
    QStringList parts;
    if (forget.query)
        parts += u'"' + *forget.query + u'"';
    if (forget.from)
        parts += QStringLiteral("from ") + *forget.from;
    if (forget.to)
        parts += QStringLiteral("to ") + *forget.to;
    if (forget.tags && !forget.tags->empty()) {
        const QStringList tags(forget.tags->begin(), forget.tags->end());
        parts += QStringLiteral("tagged ") + tags.join(QStringLiteral(", "));
    }
    return parts.join(u' ');
}

QString ForgetTexts::summary(const ProposedForget& forget)
{
    using Target = ProposedForget::Target;
    switch (forget.target) {
    case Target::note:
        return words(QStringLiteral("note"), forget.id);
    case Target::referenceItem:
        return words(QStringLiteral("item"), forget.id);
    case Target::referenceSection:
        return words(QStringLiteral("section"), forget.path);
    case Target::observations:
        return words(QStringLiteral("observations"), filter(forget));
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
