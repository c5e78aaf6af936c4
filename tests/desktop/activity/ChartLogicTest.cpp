#include "PobblewigDesktop/activity/ChartLogic.h"

#include "PobblewigDesktop/activity/ChartColors.h"
#include "support/TableRow.h"

namespace pobblewig {

class ChartLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyMarkAndLabelLiesWithinThePicture_data()
    {
        columns<ChartValues>("values");
        row("an empty line", ChartValues(LineChart()));
        row("a moment at midnight",
            ChartValues(LineChart { { { 0, 0, 0, {} }, { 1, 1, 1, {} } },
                { { 0, u"00:00"_s }, { 0.5, u"12:00"_s }, { 1, u"24:00"_s } } }));
        row("no bars", ChartValues(BarChart()));
        row("bars of nothing", ChartValues(BarChart { { { u"a"_s, 0, {}, 0 } } }));
        row("bars", ChartValues(BarChart { { { u"a"_s, 1e9, {}, 0 }, { u"b"_s, 1, {}, 1 } } }));
        row("no columns", ChartValues(ColumnChart()));
        row("columns",
            ChartValues(
                ColumnChart { { { u"Mo"_s, { { 2, 0, {} }, { 3, 1, {} } } }, { u"Tu"_s, {} } },
                    { { 0, {} }, { 5, u"5 h"_s } } }));
    }
    void everyMarkAndLabelLiesWithinThePicture()
    {
        QFETCH(ChartValues, values);
        const auto picture = ChartLogic::layout(values, 480, 20);
        const QRectF whole(QPointF(), picture.size);
        const auto mirrored = ChartLogic::mirrored(picture);
        for (const auto* const each : { &picture, &mirrored }) {
            for (const auto& mark : each->marks)
                QVERIFY(whole.contains(mark.box) || mark.box.isEmpty());
            for (const auto& label : each->labels)
                QVERIFY(whole.adjusted(0, -1, 0, 1).contains(label.box));
        }
        QVERIFY(ChartLogic::mirrored(mirrored).marks == picture.marks);
    }

    void sizesAreInProportion()
    {
        const auto line = ChartLogic::layout(LineChart { { { 0.25, 0.5, 0, {} } }, {} }, 400, 20);
        QCOMPARE(line.marks[0].box.left(), 100.0);
        QCOMPARE(line.marks[0].box.width(), 100.0);
        const auto bars =
            ChartLogic::layout(BarChart { { { {}, 4, {}, 0 }, { {}, 1, {}, 0 } } }, 400, 20);
        QCOMPARE(bars.marks[0].box.width(), 4 * bars.marks[1].box.width());
        const auto stack = ChartLogic::layout(
            ColumnChart { { { {}, { { 1, 0, {} }, { 3, 1, {} } } } }, { { 0, {} }, { 8, {} } } },
            400, 20);
        QCOMPARE(stack.marks[1].box.height(), 3 * stack.marks[0].box.height());
        QCOMPARE(stack.marks[1].box.bottom(), stack.marks[0].box.top());
    }

    void theAxisEndsAboveTheLargestValue_data()
    {
        columns<double, double, int>("most", "top", "count");
        row("nothing", 0.0, 1.0, 2);
        row("an hour", 1.0, 1.0, 6);
        row("a working day", 7.5, 8.0, 5);
        row("on a step", 10.0, 10.0, 6);
        row("tokens", 12345.0, 15000.0, 4);
    }
    void theAxisEndsAboveTheLargestValue()
    {
        QFETCH(double, most);
        const auto steps = ChartLogic::steps(most);
        QTEST(steps.back(), "top");
        QTEST(int(steps.size()), "count");
    }

    void coloursAreSeenAndToldApart()
    {
        for (const auto scheme : { ColorScheme::light, ColorScheme::dark }) {
            const auto palette = Theme::palette(scheme, u"coral"_s);
            for (int one = 0; one < ChartColors::count; ++one) {
                const auto color = ChartColors::color(one, scheme);
                QCOMPARE_GE(Theme::contrast(color, palette.surface), 3.0);
                for (int other = 0; other < one; ++other)
                    QCOMPARE_GE(Theme::contrast(color, ChartColors::color(other, scheme)), 1.15);
            }
        }
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChartLogicTest)

#include "ChartLogicTest.moc"
