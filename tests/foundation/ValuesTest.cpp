#include "foundation/IDPrefix.h"
#include "foundation/ISO8601.h"
#include "foundation/JSONValue.h"
#include "foundation/Text.h"
#include "support/TableRow.h"

#include <limits>

namespace pobblewig {

using namespace std::chrono_literals;

/// The small values that everything else is made of.
class ValuesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anInstantIsReadOnlyInTheFormItIsWritten()
    {
        for (const auto& text : { u"9999-12-31T23:59:59Z"_s, u"2024-02-29T23:59:59Z"_s })
            QCOMPARE(ISO8601::format(ISO8601::parse(text).value()), text);
        for (const auto& text :
            { u"2026-02-29T00:00:00Z"_s, u"2026-03-01T24:00:00Z"_s, u"2026-03-01T08:15:60Z"_s,
                u"2026-03-01T08:15:00.5Z"_s, u"2026-03-01T08:15:00+00:00"_s,
                u"2026-03-01t08:15:00Z"_s, u"+026-03-01T08:15:00Z"_s, QString() })
            QVERIFY2(!ISO8601::parse(text), qPrintable(text));
    }

    void anInstantIsCutToItsSecond()
    {
        QCOMPARE(ISO8601::format(TimePoint(-1ms)), u"1969-12-31T23:59:59Z"_s);
        QCOMPARE(ISO8601::format(TimePoint(1999ms)), u"1970-01-01T00:00:01Z"_s);
        QCOMPARE(ISO8601::format(TimePoint::max()), u"9999-12-31T23:59:59Z"_s);
    }

    void aValueIsShownForPeople()
    {
        const auto document = QJsonDocument::fromJson(
            R"({"z": [0.1, -2.50, 9007199254740992], "a": ["a b", true, null, [], {"k": 1e300}]})");
        const auto value = JSONValue::fromJson(document.object());
        QCOMPARE(value.displayString(),
            u"{a: [a b, true, null, [], {k: 1e+300}], z: [0.1, -2.5, 9007199254740992]}"_s);
        QVERIFY(JSONValue::fromJson(value.toJson()) == value);
    }

    void aNumberIsClampedAndRoundedHalfAwayFromZero()
    {
        const auto clamped = [](double number) { return JSONValue::clampedInt(number, -10, 360); };
        QCOMPARE(clamped(59.5), 60);
        QCOMPARE(clamped(-2.5), -3);
        QCOMPARE(clamped(-1e30), -10);
        QCOMPARE(clamped(1e30), 360);
        QCOMPARE(clamped(std::numeric_limits<double>::quiet_NaN()), -10);
    }

    void charactersAreWhatPeopleCount()
    {
        QCOMPARE(Text::characterCount({}), 0);
        const std::pair<QString, QString> firstTwoAndMore[] { { u"👩‍👩‍👧x"_s, u"!"_s },
            { u"🇩🇪🇫🇷"_s, u"🇯🇵"_s }, { u"e\u0301e\u0301"_s, u"a"_s }, { u"a\r\n"_s, u"b"_s } };
        for (const auto& [firstTwo, more] : firstTwoAndMore) {
            QCOMPARE(Text::characterCount(firstTwo + more), 3);
            QCOMPARE(Text::firstCharacters(firstTwo + more, 2), firstTwo);
        }
    }

    void nothingHidesInAPlainLine_data()
    {
        columns<QString, QString>("text", "line");
        row("blanks and controls", " a\u2028\t\u00a0b\x1b[0m\u0000\n", "a b [0m");
        row("turned around", "\u202eabc\u2067d\u200f\u061ce", "abcde");
        row("invisible", "\u200b\ufeffa\u00ad\u2060b\U000E0061", "ab");
        row("joined once", "\u200da\u200d\u200c\ufe0f\u200db \u200dc", "a\u200db c");
        row("families stay", "👩‍👩‍👧‍👦❤️", "👩‍👩‍👧‍👦❤️");
        row("as long as may be", "👩‍👩‍👧‍👦234567890",
            "👩‍👩‍👧‍👦234567890");
        row("one too long", "👩‍👩‍👧‍👦2345678901",
            "👩‍👩‍👧‍👦234567890…");
        QTest::newRow("half a pair") << QString(QChar(0xD83D)) + u'a' << u"\ufffda"_s;
        QTest::newRow("late") << QString(1 << 20, QChar(0x200B)) + u'a' << u"a"_s;
        QTest::newRow("long") << QString(1 << 20, u'a') << QString(10, u'a') + u'…';
    }
    void nothingHidesInAPlainLine()
    {
        QFETCH(QString, text);
        QTEST(Text::plainLine(text, 10), "line");
    }

    void whatOthersWroteIsALineOfBoundedLength()
    {
        QCOMPARE(Text::foreignLine(u"a\r\nb\u202ec\x1b\t"_s), u"a bc "_s);
        QCOMPARE(Text::foreignLine(QString(200, u'x')), QString(200, u'x'));
        QCOMPARE(Text::foreignLine(QString(201, u'x')), QString(199, u'x') + u'…');
    }

    void aStatementIsTheSameInAnyCaseAndSpacing()
    {
        QCOMPARE(Text::normalized(u" \n\u00a0"_s), u"");
        QCOMPARE(Text::normalized(u"\tAZ @[`{\r\n az "_s), u"az @[`{ az");
        QCOMPARE(Text::normalized(u"ÄÖ Große ΣΑΣ"_s), u"äö große σασ");
        QCOMPARE(Text::normalized(u"İİ-\u212a\u2003İ"_s), u"i\u0307i\u0307-k i\u0307");
        QCOMPARE(Text::normalized(u"X𐐀😀Y"_s), u"x𐐨😀y");
    }

    void aHandleStandsForOneRecordOrNone()
    {
        struct Record {
            QUuid id;
        };
        const Record first { QUuid::fromString(u"ABCDEF12-0000-4000-8000-000000000001") };
        const Record second { QUuid::fromString(u"abcdef12-0000-4000-8000-000000000002") };
        QCOMPARE(IDPrefix::shortID(first.id), u"abcdef12"_s);
        const auto resolve = [&](const char* prefix) {
            return IDPrefix::resolve(QString::fromLatin1(prefix), std::vector { first, second });
        };
        const QByteArray whole("ABCDEF12-0000-4000-8000-000000000002");
        for (const auto& handle : { whole, "[id:" + whole + ']', "ID:" + whole }) {
            const auto meant = resolve(handle);
            QVERIFY(meant.found() && meant.found()->id == second.id);
        }
        for (const auto* handle : { "bcdef12", "[id:]", "[]" }) {
            const auto unknown = resolve(handle);
            QVERIFY(!unknown.found() && !unknown.isAmbiguous());
        }
        for (const auto* shared : { "ABCDEF12", "abcdef12-0000", "[id:abcdef12]", "" })
            QVERIFY(resolve(shared).isAmbiguous());
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ValuesTest)
#include "ValuesTest.moc"
