#include "markdown/MarkdownText.h"
#include "markdown/EmojiRuns.h"

#include "support/TableRow.h"

#include <QTest>

namespace pobblewig {

using Growth = MarkdownText::Growth;

namespace {

QString kindOf(const StyledText::Block& block)
{
    switch (block.kind) {
    case StyledText::BlockKind::heading:
        return u"h%1"_s.arg(block.level);
    case StyledText::BlockKind::code:
        return u"code(%1)"_s.arg(block.language);
    case StyledText::BlockKind::rule:
        return u"rule"_s;
    case StyledText::BlockKind::cell:
        return u"cell%1.%2"_s.arg(block.row).arg(block.column);
    case StyledText::BlockKind::paragraph:
        break;
    }
    return u"p"_s;
}

/// Everything about the text in one line, such as "p[a {1:b}] · h2[c]".
QString description(const StyledText& text)
{
    QStringList blocks;
    for (const auto& block : text.blocks) {
        auto shown = text.text.mid(block.range.start, block.range.length);
        for (auto span = text.spans.rbegin(); span != text.spans.rend(); ++span) {
            const auto at = span->range.start - block.range.start;
            if (at < 0 || span->range.end() > block.range.end())
                continue;
            shown.insert(at + span->range.length, u'}');
            shown.insert(
                at, u"{%1%2:"_s.arg(span->looks).arg(span->link.isEmpty() ? u""_s : u"@"_s));
        }
        blocks += QString(block.quotes, u'>') + QString(block.lists, u'-') + kindOf(block) + u'['
            + shown.replace(u'\n', u'/') + u']';
    }
    return blocks.join(u" "_s);
}

StyledText whole(const QString& source)
{
    MarkdownText text;
    text.setSource(source, Growth::whole);
    return text.shown();
}

QString everything()
{
    return u"# Plan\n\nHello **bold *and* more** with `code`, ~~gone~~ and [a "
           u"page](https://kde.org/x).\n"
           "Second line\n\n- one\n- two **strong**\n  1. inner\n  2. again\n\n- [x] loose\n\n> "
           "said\n> twice\n\n"
           "| a | b |\n|---|--:|\n| 1 | `2` |\n| 3 | 4 |\n\n```cpp\nint *a;\n\n# no "
           "heading\n```\nEnd\n\n---\n"
           "Last <b>text</b> &amp; [^1]\n\n[^1]: note\n"_s;
}

} // namespace

class MarkdownTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shows_data()
    {
        columns<QString, QString>("source", "shown");
        row("looks", u"a **b *c*** `d*` ~~e~~"_s, u"p[a {2:b }{3:c} {4:d*} {8:e}]"_s);
        row("lines stay", u"a\nb  \nc"_s, u"p[a/b/c]"_s);
        row("headings", u"# A\nb\n\n### C #"_s, u"h1[A] p[b] h3[C]"_s);
        row("lists", u"1. a\n2. b\n   - c\n\n   d\n- [ ] e"_s,
            u"-p[1. a] -p[2. b] --p[◦ c] -p[d] -p[☐ e]"_s);
        row("empty item", u"- \n- a"_s, u"-p[• ] -p[• a]"_s);
        row("item of code", u"- ```\n  x\n  ```"_s, u"-p[• ] -code()[x]"_s);
        row("quotations", u"> a\n> > b\n\nc"_s, u">p[a] >>p[b] p[c]"_s);
        row("code", u"```py x\na\n\n  b\n```"_s, u"code(py)[a//  b]"_s);
        row("code as it is", u"```\n[a]: b\n-|-\n🏳️‍🌈\n```"_s,
            u"code()[[a]: b/-|-/🏳\u200D🌈]"_s);
        row("an address that a cell cuts off", u"http://.o|\n-|\nb\n\n```\nE"_s,
            u"cell0.0[{2:http://.o}] cell1.0[b] code()[E]"_s);
        row("code that is empty", u"a\n```\n```\nb"_s, u"p[a] code()[] p[b]"_s);
        row("code without an end", u"~~~\na"_s, u"code()[a]"_s);
        row("table", u"|a|*b*|\n|-|:-:|\n|c|"_s,
            u"cell0.0[{2:a}] cell0.1[{3:b}] cell1.0[c] cell1.1[]"_s);
        row("rule", u"a\n\n***\nb"_s, u"p[a] rule[] p[b]"_s);
        row("no HTML", u"<script>x</script>\n\n<b>y</b>"_s, u"p[<script>x</script>] p[<b>y</b>]"_s);
        row("no footnotes", u"a[^1] [b][2]\n\n[^1]: c\n  [2]: https://d.org"_s,
            u"p[a[^1] [b][2]] p[[^1]: c/[2]: {0@:https://d.org}]"_s);
        row("entities", u"&lt;&#65;&nope;&#0;"_s, u"p[<A&nope;\uFFFD]"_s);
        row("links", u"[a](https://b.org/c) <https://b.org> [b.org/x](http://b.org/y)"_s,
            u"p[{0@:a}{16@: (b.org)} {0@:https://b.org} {0@:b.org/x}]"_s);
        row("a link in disguise", u"[b.org](https://b.org@evil.org) [b.org.uk](http://b.org)"_s,
            u"p[{0@:b.org}{16@: (evil.org)} {0@:b.org.uk}{16@: (b.org)}]"_s);
        row("no files", u"[a](file:///etc/passwd) ![b](/c.png) [d](javascript:e)"_s, u"p[a b d]"_s);
        row("mail", u"[write](mailto:a@b.org)"_s, u"p[{0@:write}{16@: (a@b.org)}]"_s);
        row("a picture is its description", u"![cat](https://c.org/c.png)"_s,
            u"p[{0@:cat}{16@: (c.org)}]"_s);
        row("signs alone", u"2 * 3 * 4 = 2*3*4 = `2*3` = snake_case_name"_s,
            u"p[2 * 3 * 4 = 2*3*4 = {4:2*3} = snake_case_name]"_s);
    }
    void shows()
    {
        QFETCH(QString, source);
        QTEST(description(whole(source)), "shown");
    }

    void growsAsItEnds()
    {
        for (const auto& source :
            { everything(), everything().repeated(60), u"word **word** "_s.repeated(2000),
                u"```c\n"_s + u"x = 1; // line\n"_s.repeated(1500) + u"```\nend"_s,
                u"|a|b|\n|-|-|\n"_s + u"|some text|more|\n"_s.repeated(1200),
                u"1. item\n"_s.repeated(2500) }) {
            MarkdownText grown;
            const auto step = std::max<qsizetype>(1, source.size() / 200);
            for (auto end = step; end < source.size(); end += step) {
                const auto before = grown.shown();
                const auto same = grown.setSource(source.first(end), Growth::growing);
                QVERIFY(same <= std::min(before.text.size(), grown.shown().text.size()));
                QCOMPARE(before.text.first(same), grown.shown().text.first(same));
            }
            grown.setSource(source, Growth::whole);
            QCOMPARE(description(grown.shown()), description(whole(source)));
        }
    }

    void neverFlashesSigns()
    {
        const auto source = everything();
        MarkdownText grown;
        for (qsizetype end = 1; end < source.size(); ++end) {
            grown.setSource(source.first(end), Growth::growing);
            for (const auto* sign : { u"**", u"``", u"~~", u"](", u"|", u"--", u"# P" })
                QVERIFY2(!grown.shown().text.contains(QStringView(sign)),
                    qPrintable(
                        source.first(end).right(30) + u" => "_s + grown.shown().text.right(30)));
        }
    }

    void cutsWhatDoesNotEnd()
    {
        const auto code = whole(u"```c\n"_s + u"x\n"_s.repeated(9000) + u"```"_s);
        QCOMPARE(code.blocks.size(), 1u);
        QCOMPARE(code.text.size(), 9000 * 2 - 1);
        const auto paragraph = whole(u"word "_s.repeated(5000));
        QCOMPARE(paragraph.blocks.size(), 1u);
        QCOMPARE(paragraph.text, u"word "_s.repeated(5000).trimmed());
        const auto table = whole(u"|a|\n|-|\n"_s + u"|some text in here|\n"_s.repeated(1000));
        QCOMPARE(table.blocks.size(), 1001u);
        QCOMPARE(table.blocks.back().row, 1000);
    }

    void emojiAreFoundWhole()
    {
        for (const auto& emoji :
            { u"❤️"_s, u"☕"_s, u"👍🏽"_s, u"🏳️‍🌈"_s, u"👩‍👩‍👧‍👦"_s,
                u"1️⃣"_s, u"🇩🇪🇫🇷"_s, u"🏴󠁧󠁢󠁥󠁮󠁧󠁿"_s }) {
            const auto found = emojiRuns(u"a "_s + emoji + u" b"_s);
            QCOMPARE(found, (std::vector<TextRange> { { 2, emoji.size() } }));
        }
        for (const auto& text :
            { u"plain 12 # *"_s, u"© ™ → ✔ ☀"_s, u"☕︎"_s, u"नमस्ते é"_s, QString(QChar(0xD83D)) })
            QVERIFY2(emojiRuns(text).empty(), qPrintable(text));
    }

    void copiesWithEmptyLines()
    {
        const auto text = whole(u"# A\nb\n\n- c\n- d"_s);
        QCOMPARE(text.copied({ 0, text.text.size() }), u"A\nb\n\n• c\n• d"_s);
        QCOMPARE(text.copied({ 2, 3 }), u"b\n\n•"_s);
        QCOMPARE(whole(u"a [b](http://c.org)"_s).linkAt(3), u"http://c.org"_s);
        QVERIFY(whole(u"a [b](http://c.org)"_s).linkAt(1).isEmpty());
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MarkdownTextTest)
#include "MarkdownTextTest.moc"
