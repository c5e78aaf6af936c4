#include "tools/MemoryToolExecutor.h"

#include "foundation/Text.h"
#include "support/Awaited.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

constexpr TimePoint now(std::chrono::seconds(1772352900));

Task<Tool::Outcome> say(QString text, ToolArguments)
{
    co_return text;
}

MemoryToolExecutor saying(const QString& text)
{
    return MemoryToolExecutor({ { .name = u"say"_s, .run = Tool::runner(say, text) },
                                  { .group = Tool::Group::action, .name = u"act"_s } },
        [] { return now; });
}

} // namespace

class MemoryToolExecutorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFifthCallOfABatchIsRefused()
    {
        auto executor = saying(u"hello"_s);
        const MemoryToolCall call { u"say"_s, { { u"to"_s, u"Ana"_s } } };
        const auto results =
            awaited(executor.executeAll({ call, { {}, {} }, { u"act"_s, {} }, call, call }));
        const std::vector<MemoryToolResult> expected { { u"say"_s, true, u"hello"_s },
            { {}, false, u"error: unknown tool: "_s },
            { u"act"_s, false, u"error: unknown tool: act"_s }, { u"say"_s, true, u"hello"_s },
            { u"say"_s, false, u"refused: max 4 tool calls per request"_s } };
        QVERIFY(results == expected);
        QCOMPARE(executor.totalCalls(), 5);
        QCOMPARE(executor.recentLog(1).front().argsSummary, u"to=Ana"_s);
    }

    void whatIsHugeIsCut_data()
    {
        QTest::addColumn<QString>("character");
        QTest::addColumn<int>("times");
        QTest::addColumn<int>("kept");
        row("as much as fits", "e\u0301", 4000, 4000);
        row("one too many", "e\u0301", 4001, 4000);
        row("families", "👩‍👩‍👧‍👦", 5000, 4000);
        row("fifty megabytes", "x", 50'000'000, 4000);
        row("a single character", "\u0301", 5'000'000, 1);
    }
    void whatIsHugeIsCut()
    {
        QFETCH(QString, character);
        QFETCH(int, times);
        const auto huge = character.repeated(times);
        auto executor = saying(huge);
        const auto result = awaited(executor.execute({ u"say"_s, { { huge, huge } } }));
        QTEST(int(Text::characterCount(result.text)), "kept");
        QVERIFY(huge.startsWith(result.text) && result.text.size() < 200'000);
        QVERIFY(awaited(executor.execute({ huge, {} })).text.size() < 200'000);
        const auto log = executor.recentLog(2);
        QCOMPARE(log[0].resultBytes, int(result.text.toUtf8().size()));
        QVERIFY(log[0].argsSummary.size() < 20'000 && log[1].name.size() < 20'000);
    }

    void theLatestTwoHundredCallsAreKept()
    {
        auto executor = saying(u"hello"_s);
        const JSONValue list(JSONValue::Array { 1, {} });
        for (int number = 0; number < 205; ++number)
            awaited(executor.execute({ QString::number(number), { { u"b"_s, list } } }));
        QCOMPARE(executor.totalCalls(), 205);
        QCOMPARE(executor.recentLog(-1).size(), 0u);
        const auto log = executor.recentLog(1000);
        QCOMPARE(log.size(), 200u);
        QCOMPARE(log[0].name, u"5"_s);
        const MemoryToolLogEntry latest { u"204"_s, u"b=[1, null]"_s, false, 24, now };
        QVERIFY(log.back() == latest);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemoryToolExecutorTest)
#include "MemoryToolExecutorTest.moc"
