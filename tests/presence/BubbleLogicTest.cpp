#include "presence/BubbleLogic.h"

#include "support/TableRow.h"

namespace pobblewig {

using Kind = Bubble::Kind;

class BubbleLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFirstLineLosesItsSigns_data()
    {
        columns<QString, QString>("markdown", "line");
        row("plain", "Fine. *Almost* 3*4*5 = 60", "Fine. Almost 3*4*5 = 60");
        row("names with underscores", "_Set_ my_long_name", "Set my_long_name");
        row("heading", "\n\n## **Two** `ways`\nFirst", "Two ways");
        row("list in a quotation", "> - [ ] ~~buy~~ tea", "☐ buy tea");
        row("numbered", "12. Begin", "12. Begin");
        row("link", "See [the ***guide***](https://example.com/a_b) now",
            "See the guide (example.com) now");
        row("code", "```cpp\nint x = 0;\n```", "int x = 0;");
        row("table", "---\n| a | b |\n|---|---|", "a b");
        row("nothing but signs", "***\n\n```\n", "");
        row("long", QString(5000, u'a'), QString(120, u'a') + u'…');
    }
    void theFirstLineLosesItsSigns()
    {
        QFETCH(QString, markdown);
        QTEST(BubbleLogic::firstLine(markdown), "line");
    }

    void whatIsUrgentIsSaidFirst_data()
    {
        using Said = QList<std::pair<Kind, QString>>;
        columns<Said, QStringList>("said", "order");
        row("a reminder during the greeting",
            Said { { Kind::greeting, u"hi"_s }, { Kind::sight, u"see"_s },
                { Kind::reminder, u"due"_s } },
            QStringList { u"due"_s, u"hi"_s, u"see"_s });
        row("the latest answer counts",
            Said {
                { Kind::answer, u"1"_s }, { Kind::proposals, u"p"_s }, { Kind::answer, u"2"_s } },
            QStringList { u"2"_s, u"p"_s });
        row("reminders keep each other company, five at most",
            Said(7, { Kind::reminder, u"due"_s }), QStringList(5, u"due"_s));
    }
    void whatIsUrgentIsSaidFirst()
    {
        using Said = QList<std::pair<Kind, QString>>;
        QFETCH(Said, said);
        BubbleLogic::Bubbles waiting;
        for (const auto& [kind, text] : said)
            waiting = BubbleLogic::withAdded(waiting, { kind, text });
        QStringList order;
        for (const auto& bubble : waiting)
            order.append(bubble.text);
        QTEST(order, "order");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BubbleLogicTest)
#include "BubbleLogicTest.moc"
