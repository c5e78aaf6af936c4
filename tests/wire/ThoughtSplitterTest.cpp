#include "wire/ThoughtSplitter.h"

#include "support/TableRow.h"

#include <QTest>

namespace pobblewig {

class ThoughtSplitterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thoughtsAreFoundHoweverTheTextIsSplit_data()
    {
        columns<QString, QString, QString>("text", "thought", "reply");
        row("none", "Tea.", "", "Tea.");
        row("in tags", "<think>Hm</think>\n\nTea.", "Hm", "Tea.");
        row("in tags, and another closing one", "<think>Hm</think>Tea.</think>", "Hm",
            "Tea.</think>");
        row("without the opening tag", "Hm.\nSo\n</think>\n\nTea.", "Hm.\nSo\n", "Tea.");
        row("on one line", "Hm, so.</think>Tea.", "Hm, so.", "Tea.");
        row("only once", "Hm\n</think>a\n</think>b", "Hm\n", "a\n</think>b");
        row("of no words", "</think>\n\nTea.", "", "Tea.");
        row("with code in them", "`a` or\n```\nb\n```\n</think>\nTea.", "`a` or\n```\nb\n```\n",
            "Tea.");
        row("a tag that is spoken of", "It ends with </think> here.", "",
            "It ends with </think> here.");
        row("a quoted tag", "It ends with \"</think>\".", "", "It ends with \"</think>\".");
        row("both tags", "First <think>, then\n</think>.", "", "First <think>, then\n</think>.");
        row("in code", "```\na\n</think>\n```", "", "```\na\n</think>\n```");
        row("in a word of code", "Stop at `a</think>`.", "", "Stop at `a</think>`.");
        row("nearly", "a</thin", "", "a</thin");
    }
    void thoughtsAreFoundHoweverTheTextIsSplit()
    {
        QFETCH(QString, text);
        for (qsizetype first = 0; first <= text.size(); ++first) {
            for (auto second = first; second <= text.size(); ++second) {
                ThoughtSplitter splitter;
                QString thought;
                QString reply;
                const auto take = [&](const ThoughtSplitter::Parts& parts) {
                    if (parts.wasThought)
                        thought += std::exchange(reply, {});
                    thought += parts.thought;
                    reply += parts.reply;
                };
                take(splitter.add(text.first(first)));
                take(splitter.add(text.mid(first, second - first)));
                take(splitter.add(text.mid(second)));
                take(splitter.finish());
                QTEST(thought, "thought");
                QTEST(reply, "reply");
            }
        }
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ThoughtSplitterTest)
#include "ThoughtSplitterTest.moc"
