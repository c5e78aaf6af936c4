#include "foundation/Stream.h"

#include "support/Awaited.h"
#include "support/TableRow.h"

namespace pobblewig {

using Numbers = Stream<int, QString>;

class StreamTest : public QObject {
    Q_OBJECT

    static Task<> read(std::shared_ptr<Numbers> numbers, std::shared_ptr<QList<int>> into)
    {
        while (const auto number = co_await numbers->next())
            into->append(*number);
        into->append(-1);
    }

    static Task<> produce(Numbers::Sink sink, std::shared_ptr<int> produced)
    {
        while (co_await sink.wanted())
            sink.push(++*produced);
        *produced = -1;
    }

private Q_SLOTS:
    void init()
    {
        m_numbers = std::make_shared<Numbers>();
        m_found = std::make_shared<QList<int>>();
    }

    void fiftyThousandBufferedValuesAreReadInOneGo()
    {
        for (int number = 0; number < 50'000; ++number)
            m_numbers->sink().push(number);
        m_numbers->sink().finish();
        awaited(read(m_numbers, m_found));
        QCOMPARE(m_found->size(), 50'001);
        QCOMPARE(m_found->at(49'999), 49'999);
        QVERIFY(!m_numbers->error());
    }

    void anErrorComesAfterTheBufferedValues()
    {
        m_numbers->sink().push(7);
        m_numbers->sink().finish(u"broken"_s);
        m_numbers->sink().push(8);
        awaited(read(m_numbers, m_found));
        QCOMPARE(*m_found, QList({ 7, -1 }));
        QCOMPARE(m_numbers->error(), u"broken"_s);
    }

    void theConsumerIsResumedFromTheEventLoop()
    {
        spawn(read(m_numbers, m_found));
        m_numbers->sink().push(1);
        QVERIFY(m_found->isEmpty());
        QTRY_COMPARE(*m_found, QList({ 1 }));
        m_numbers->sink().push(2);
        m_numbers->close();
        QCOMPARE(*m_found, QList({ 1 }));
        QTRY_COMPARE(*m_found, QList({ 1, -1 }));
    }

    void aProducerThatAsksIsNeverAhead()
    {
        const auto produced = std::make_shared<int>(0);
        spawn(produce(m_numbers->sink(), produced));
        for (auto taken = 0; taken < 3; ++taken) {
            QCoreApplication::processEvents();
            QCOMPARE(*produced, taken);
            awaited([](std::shared_ptr<Numbers> numbers) -> Task<> { co_await numbers->next(); }(
                                                             m_numbers));
        }
        m_numbers.reset();
        QTRY_COMPARE(*produced, -1);

        *produced = 0;
        m_numbers = std::make_shared<Numbers>();
        spawn(produce(m_numbers->sink(), produced));
        m_numbers->sink().finish(u"given up by somebody else"_s);
        QTRY_COMPARE(*produced, -1);
    }

    void aDropIsToldOnceAndOnlyBeforeTheEnd()
    {
        const auto drops = [](const std::function<void(Numbers&)>& end) {
            auto count = 0;
            auto numbers = std::make_unique<Numbers>();
            const auto survivor = numbers->sink();
            survivor.setOnDrop([&count] { ++count; });
            end(*numbers);
            numbers.reset();
            survivor.push(1);
            survivor.finish();
            return count;
        };
        QCOMPARE(drops([](Numbers&) {}), 1);
        QCOMPARE(drops([](Numbers& numbers) { numbers.close(); }), 1);
        QCOMPARE(drops([](Numbers& numbers) { Numbers(std::move(numbers)); }), 1);
        QCOMPARE(drops([](Numbers& numbers) { numbers.sink().finish(); }), 0);
    }

private:
    std::shared_ptr<Numbers> m_numbers;
    std::shared_ptr<QList<int>> m_found;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::StreamTest)
#include "StreamTest.moc"
