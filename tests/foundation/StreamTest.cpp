#include "foundation/Stream.h"

#include "support/Awaited.h"

#include <QTest>

namespace pobblewig {

using Numbers = Stream<int, QString>;

namespace {

Task<qint64> sum(std::shared_ptr<Numbers> numbers)
{
    qint64 total = 0;
    while (const auto number = co_await numbers->next())
        total += *number;
    co_return total;
}

Task<> countResumptions(std::shared_ptr<Numbers> numbers, std::shared_ptr<int> count)
{
    while (co_await numbers->next())
        ++*count;
    *count += 100;
}

} // namespace

class StreamTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fiftyThousandBufferedValuesAreReadInOneGo()
    {
        const auto numbers = std::make_shared<Numbers>();
        for (int number = 0; number < 50'000; ++number)
            numbers->sink().push(number);
        numbers->sink().finish();
        QCOMPARE(awaited(sum(numbers)), 50'000LL * 49'999 / 2);
        QVERIFY(!numbers->error());
    }

    void anErrorComesAfterTheBufferedValues()
    {
        const auto numbers = std::make_shared<Numbers>();
        numbers->sink().push(7);
        numbers->sink().finish(QStringLiteral("broken"));
        numbers->sink().push(8);
        QCOMPARE(awaited(sum(numbers)), 7);
        QCOMPARE(numbers->error(), QStringLiteral("broken"));
    }

    void theConsumerIsResumedFromTheEventLoop()
    {
        const auto numbers = std::make_shared<Numbers>();
        const auto count = std::make_shared<int>(0);
        spawn(countResumptions(numbers, count));
        numbers->sink().push(1);
        numbers->sink().push(2);
        QCOMPARE(*count, 0);
        QTRY_COMPARE(*count, 2);
        numbers->close();
        QCOMPARE(*count, 2);
        QTRY_COMPARE(*count, 102);
    }

    void closingForgetsWhatIsBuffered()
    {
        const auto numbers = std::make_shared<Numbers>();
        numbers->sink().push(7);
        numbers->close();
        QCOMPARE(awaited(sum(numbers)), 0);
    }

    void aDropIsToldOnceAndOnlyBeforeTheEnd()
    {
        int drops = 0;
        const auto sinkOf = [&](const Numbers& numbers) {
            const auto sink = numbers.sink();
            sink.setOnDrop([&drops] { ++drops; });
            return sink;
        };
        std::optional<Numbers::Sink> survivor;
        {
            Numbers closed;
            survivor = sinkOf(closed);
            const auto moved = std::move(closed);
            moved.close();
            moved.close();
            QCOMPARE(drops, 1);
        }
        survivor->push(1);
        survivor->finish();
        QCOMPARE(drops, 1);
        {
            const Numbers finished;
            sinkOf(finished).finish();
        }
        QCOMPARE(drops, 1);
        {
            const Numbers dropped;
            sinkOf(dropped);
        }
        QCOMPARE(drops, 2);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::StreamTest)
#include "StreamTest.moc"
