#include "tools/ToolArguments.h"

#include "foundation/ISO8601.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

const auto it = u"it"_s;

ToolArguments argument(JSONValue value)
{
    return ToolArguments({ { it, std::move(value) } });
}

} // namespace

class ToolArgumentsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDateHasOneOfThreeForms_data()
    {
        QTest::addColumn<QString>("time");
        row("2026-03-01T08:15:00Z", "2026-03-01T08:15:00Z");
        row("2026-03-01T08:15:00.123456789-00:30", "2026-03-01T08:45:00Z");
        row("2026-03-01T00:00:00.25Z", "2026-03-01T00:00:00Z");
        row("2026-03-01T00:15:00+0200", "2026-02-28T22:15:00Z");
        row("2026-03-01", "2026-03-01T00:00:00Z");
        row("2026-02-29", "");
        row("2026-03-01T08:15:00", "");
        row("2026-03-01T08:15:00Z\n", "");
        row(" ", "");
    }
    void aDateHasOneOfThreeForms()
    {
        const auto text = QString::fromLatin1(QTest::currentDataTag());
        const auto date = argument(text).date(it);
        QTEST(date ? ISO8601::format(**date) : QString(), "time");
        if (date)
            QCOMPARE((*date)->time_since_epoch().count() % 1000 == 250, text.contains(u".25"));
        else
            QCOMPARE(date.error().description(), u"not an ISO-8601 date: "_s + text);
    }

    void aBareDateCanMeanTheEndOfTheDay()
    {
        const auto end = [](const char* text) {
            return **argument(QString::fromLatin1(text))
                         .date(it, ToolArguments::BareDate::endOfDay);
        };
        QVERIFY(end("2026-03-01") == end("2026-03-01T23:59:59.999Z"));
        QCOMPARE(ISO8601::format(end("2026-03-01 08:15Z")), u"2026-03-01T08:15:00Z"_s);
    }

    void aValueOfTheWrongTypeIsAbsent_data()
    {
        QTest::addColumn<JSONValue>("value");
        QTest::addColumn<QString>("readable");
        const JSONValue text(it);
        row("bool", JSONValue(true), "");
        row("number", JSONValue(5.5), "integer number");
        row("empty string", JSONValue(QString()), "");
        row("string", text, "string");
        row("digits", JSONValue(u"5"_s), "string");
        row("empty array", JSONValue(JSONValue::Array {}), "array of 0");
        row("array", JSONValue(JSONValue::Array { text, 5, {}, text }), "array of 2");
        row("object", JSONValue(JSONValue::Object { { it, text } }), "");
    }
    void aValueOfTheWrongTypeIsAbsent()
    {
        QFETCH(JSONValue, value);
        const auto arguments = argument(value);
        QStringList readable;
        if (arguments.integer(it, 1, 9) == 6)
            readable += u"integer"_s;
        if (arguments.number(it))
            readable += u"number"_s;
        if (arguments.string(it) && arguments.requiredString(it))
            readable += u"string"_s;
        if (const auto strings = arguments.requiredStrings(it))
            readable += u"array of %1"_s.arg(strings->size());
        QTEST(readable.join(u' '), "readable");
        // What is no string is no date, and no bad one either.
        QCOMPARE(arguments.date(it).has_value(), !arguments.string(it));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ToolArgumentsTest)
#include "ToolArgumentsTest.moc"
