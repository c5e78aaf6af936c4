#include "markdown/MarkdownReader.h"

#include "markdown/EmojiRuns.h"
#include "markdown/MarkdownLines.h"
#include "markdown/StyledTextWriter.h"

#include <QRegularExpression>

namespace pobblewig {

namespace {

QString textOf(const MD_CHAR* text, MD_SIZE size)
{
    return QString::fromUtf8(text, static_cast<qsizetype>(size));
}

/// Rewrites what the parser takes for something else than people mean.
QString prepared(QString line)
{
    static const QRegularExpression definition(QStringLiteral("^ {0,3}\\[[^\\]]+\\]:"));
    static const QRegularExpression strokes(QStringLiteral("-+"));
    // Footnotes and addresses collected at the end would vanish from what is shown.
    if (line.contains(u"]:") && definition.match(line).hasMatch())
        line.insert(line.indexOf(u'['), u'\\');
    else if (MarkdownLines::isDelimiterRow(line))
        line.replace(strokes, QStringLiteral("---"));
    return line;
}

/// Products such as 3*4*5 are no emphasis.
QString withProducts(QString markdown)
{
    static const QRegularExpression product(QStringLiteral("(?<=\\d)\\*(?=\\d)"));
    return markdown.replace(product, QString(StyledTextWriter::plainAsterisk));
}

QString preparedLines(const QString& markdown)
{
    MarkdownLines reading({});
    const auto lines = QStringView(markdown).split(u'\n');
    QStringList result;
    for (const auto& line : lines) {
        const auto isCode = reading.isInCode();
        reading.read(line);
        result += isCode ? line.toString() : prepared(line.toString());
    }
    return result.join(u'\n');
}

StyledTextWriter& writer(void* data)
{
    return *static_cast<StyledTextWriter*>(data);
}

MD_PARSER parser()
{
    MD_PARSER parser {};
    parser.flags = MD_FLAG_TABLES | MD_FLAG_STRIKETHROUGH | MD_FLAG_TASKLISTS
        | MD_FLAG_PERMISSIVEAUTOLINKS | MD_FLAG_NOHTML | MD_FLAG_NOINDENTEDCODEBLOCKS;
    parser.enter_block = [](MD_BLOCKTYPE type, void* detail, void* data) {
        writer(data).enter(type, detail);
        return 0;
    };
    parser.leave_block = [](MD_BLOCKTYPE type, void*, void* data) {
        writer(data).leave(type);
        return 0;
    };
    parser.enter_span = [](MD_SPANTYPE type, void* detail, void* data) {
        writer(data).enter(type, detail);
        return 0;
    };
    parser.leave_span = [](MD_SPANTYPE type, void*, void* data) {
        writer(data).leave(type);
        return 0;
    };
    parser.text = [](MD_TEXTTYPE type, const MD_CHAR* text, MD_SIZE size, void* data) {
        writer(data).write(type, textOf(text, size));
        return 0;
    };
    return parser;
}

} // namespace

StyledText MarkdownReader::read(const QString& markdown)
{
    static const auto rules = parser();
    const auto source = preparedLines(withProducts(withJoinedEmoji(markdown))).toUtf8();
    StyledTextWriter text;
    if (md_parse(source.constData(), static_cast<MD_SIZE>(source.size()), &rules, &text) != 0)
        return StyledText::plain(markdown);
    return text.take();
}

} // namespace pobblewig
