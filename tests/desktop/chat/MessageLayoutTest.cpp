#include "PobblewigDesktop/chat/MessageLayout.h"

#include "PobblewigDesktop/chat/TableColumns.h"
#include "support/TableRow.h"

#include <QImage>
#include <QPainter>

namespace pobblewig {

namespace {

using Alignment = MessageLayout::Alignment;
using Growth = MarkdownText::Growth;
using Markup = MessageLayout::Markup;

MessageLayout layoutOf(
    const QString& text, Alignment alignment = Alignment::natural, Markup markup = Markup::plain)
{
    MessageLayout layout({ QFont(), 300, alignment, markup });
    layout.setText(text);
    layout.layOut();
    return layout;
}

const auto prose = QStringLiteral("A small crab walks over the desk, looks around, and sits. ");
const auto markdown =
    QStringLiteral("# Plan\n\n1. **one** `two`\n   - [three](https://kde.org)\n\n> four\n\n"
                   "| a | b |\n|---|---|\n| five five five | six |\n| 7 | 8 |\n\n"
                   "```cpp\nint nine;\n\n  ten();\n```\n\n---\nEnd\n\n");
const auto arabic = QStringLiteral("هل نبدأ بمراجعة الفصل الثالث من الكتاب معا؟ ");

/// Nothing if both show the same lines.
QString difference(MessageLayout one, MessageLayout other)
{
    if (one.text() != other.text())
        return QStringLiteral("the texts");
    if (one.height() != other.height())
        return QStringLiteral("heights %1 and %2").arg(one.height()).arg(other.height());
    for (qsizetype position = 0; position < one.text().size(); position += 7) {
        if (one.cursorAt(position) != other.cursorAt(position))
            return QStringLiteral("the cursor at %1").arg(position);
    }
    return {};
}

} // namespace

class MessageLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyWayOfGrowingShowsTheSameAsTheWhole_data()
    {
        QTest::addColumn<QString>("text");
        row("one line", "Hello");
        row("one long paragraph", prose.repeated(40));
        row("paragraphs", (prose.repeated(3) + u'\n').repeated(12));
        row("blank lines", "\n\none\n\n\ntwo\n\n");
        row("other line ends", "one\r\ntwo\u2028three\u2029four");
        row("a word without end", QStringLiteral("Donaudampfschiff").repeated(300));
        row("right to left", arabic.repeated(60));
        row("both directions", (arabic + prose + u'\n' + prose + arabic).repeated(9));
        row("emoji", QStringLiteral("🙂👩‍👩‍👧‍👦 ok ").repeated(200));
        row("a line that never ends", u'e' + QString(5000, QChar(0x0301)));
        row("markdown", markdown.repeated(12));
        row("a long table", markdown.section(u'|', 1) + u"| row | row |\n"_s.repeated(90));
        row("right to left lists", u"- "_s + arabic + u"\n\n> "_s + arabic);
    }
    void everyWayOfGrowingShowsTheSameAsTheWhole()
    {
        QFETCH(QString, text);
        for (const auto markup : { Markup::plain, Markup::markdown }) {
            const MessageLayout::Shape shape { QFont(), 300, Alignment::natural, markup };
            for (const qsizetype piece : { 97, 700 }) {
                MessageLayout grown(shape);
                for (auto end = piece; end < text.size(); end += piece) {
                    grown.setText(text.first(end), Growth::growing);
                    grown.layOut();
                }
                grown.setText(text);
                grown.layOut();
                QCOMPARE(
                    difference(std::move(grown), layoutOf(text, shape.alignment, markup)), u""_s);
            }
            MessageLayout sliced(shape);
            sliced.setText(text);
            for (auto slices = text.size() / 500 + 1; slices > 0; --slices)
                sliced.layOut(500);
            QVERIFY(sliced.isComplete());
            QCOMPARE(difference(std::move(sliced), layoutOf(text, shape.alignment, markup)), u""_s);
        }
    }

    void anotherEndShowsTheSameAsTheWhole_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        const auto text = prose.repeated(60);
        row("blanks cut off", text + u'\n', text.trimmed());
        row("half gone", text, text.first(text.size() / 2));
        row("another last word", text + QStringLiteral("end"), text + arabic);
        row("nothing in common", text, arabic);
        row("cut at a line end", "one\ntwo", "one\n");
        row("all gone", text, QString());
    }
    void anotherEndShowsTheSameAsTheWhole()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        auto changed = layoutOf(before);
        changed.setText(after);
        changed.layOut();
        QCOMPARE(difference(std::move(changed), layoutOf(after)), QString());
    }

    void theHeightIsEstimatedUntilItIsKnown()
    {
        MessageLayout waiting({ QFont(), 300, Alignment::natural });
        waiting.setText(prose.repeated(100));
        const auto known = layoutOf(prose.repeated(100)).height();
        QVERIFY(waiting.height() > known / 2 && waiting.height() < known * 2);
    }

    void whatIsPointedAtIsFound_data()
    {
        QTest::addColumn<QString>("text");
        row("paragraphs", (prose.repeated(20) + u'\n').repeated(2));
        row("a word without end", QStringLiteral("Donaudampfschiff").repeated(99));
        row("right to left", arabic.repeated(40));
    }
    void whatIsPointedAtIsFound()
    {
        QFETCH(QString, text);
        const auto layout = layoutOf(text);
        for (qsizetype position = 0; position < text.size(); position += 3) {
            const auto found = layout.positionAt(layout.cursorAt(position).center());
            QVERIFY2(qAbs(found - position) <= 1, qPrintable(QString::number(position)));
        }
        QCOMPARE(layout.positionAt({ 0, -100 }), layout.positionAt({ 0, 0 }));
        QVERIFY(layout.positionAt({ 1000, 1e6 }) <= text.size());
    }

    void buttonsAndLinksAreFound()
    {
        auto layout = layoutOf(
            u"[a](https://kde.org) b\n\n```\ncode\n```"_s, Alignment::natural, Markup::markdown);
        const auto at = [&layout](qsizetype position) {
            return layout.cursorAt(position).center() + QPointF(2, 0);
        };
        QCOMPARE(layout.linkAt(at(0)), u"https://kde.org"_s);
        QCOMPARE(layout.linkAt(at(layout.text().indexOf(u'b'))), QString());
        QCOMPARE(layout.linkAt({ 290, at(0).y() }), QString());
        const auto code = layout.text().indexOf(u"code"_s);
        const auto head = layout.cursorAt(code).top() - 10;
        QCOMPARE(layout.copyButtonAt({ 280, head }), (TextRange { code, 4 }));
        QVERIFY(!layout.copyButtonAt({ 100, head }));
        QVERIFY(!layout.copyButtonAt({ 280, at(code).y() }));
    }

    void aWideTableSharesTheRoom()
    {
        QCOMPARE(
            TableColumns::widths({ 50, 400, 300 }, 350), (std::vector<qreal> { 50, 150, 150 }));
        QCOMPARE(TableColumns::widths({ 50, 20 }, 350), (std::vector<qreal> { 50, 20 }));
    }

    void aParagraphBeginsAtTheSideOfItsScript()
    {
        QVERIFY(layoutOf(prose).cursorAt(0).left() < 1);
        QVERIFY(layoutOf(arabic).cursorAt(0).left() > 290);
        // The end of a long paragraph too, whatever script that is in.
        const auto text = arabic + prose.repeated(20) + QStringLiteral("END");
        QVERIFY(layoutOf(text).cursorAt(text.size() - 1).left() > 280);
        QVERIFY(layoutOf(text).cursorAt(text.size() - 3).left() > 260);
    }

    void aSnugLayoutIsAsWideAsItsText()
    {
        const auto bubble = layoutOf(arabic.first(12), Alignment::snug);
        QVERIFY(bubble.contentWidth() < 200);
        QVERIFY(qAbs(bubble.cursorAt(0).left() - bubble.contentWidth()) < 2);
    }

    void aWordIsFound()
    {
        const auto layout = layoutOf(QStringLiteral("Crabs don't walk"));
        QCOMPARE(layout.wordAt(0), (TextRange { 0, 5 }));
        QCOMPARE(layout.wordAt(8), (TextRange { 6, 5 }));
        QCOMPARE(layout.wordAt(16), (TextRange { 12, 4 }));
    }

    void onlyMarkedTextIsMarked()
    {
        const auto layout = layoutOf(prose.repeated(4));
        const MessageLayout::Ink ink {
            .text = Qt::black, .selection = Qt::green, .match = Qt::yellow, .currentMatch = Qt::red
        };
        const MessageLayout::Marks marks {
            .selection = TextRange { 100, 20 },
            .matches = { { 2, 5 }, { 60, 5 } },
            .currentMatch = TextRange { 60, 5 },
        };
        QImage image(300, static_cast<int>(layout.height()), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        layout.draw(painter, {}, image.rect(), ink, marks);
        const auto colorAt = [&](qsizetype position) {
            return image.pixelColor(
                (layout.cursorAt(position).topRight() + QPointF(1, 1)).toPoint());
        };
        QCOMPARE(colorAt(4), QColor(Qt::yellow));
        QCOMPARE(colorAt(62), QColor(Qt::red));
        QCOMPARE(colorAt(110), QColor(Qt::green));
        QCOMPARE(colorAt(20), QColor(Qt::white));
    }
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::MessageLayoutTest)
#include "MessageLayoutTest.moc"
