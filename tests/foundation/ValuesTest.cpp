#include "foundation/ISO8601.h"
#include "foundation/JSONValue.h"
#include "foundation/Text.h"

#include <QJsonDocument>
#include <QTest>

#include <limits>

namespace pobblewig {

using namespace std::chrono_literals;

/// The small values that everything else is made of.
class ValuesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anInstantIsReadOnlyInTheFormItIsWritten_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        const auto row = [](const char* text, bool valid) {
            QTest::newRow(text) << QString::fromLatin1(text) << valid;
        };
        row("2026-03-01T08:15:00Z", true);
        row("0000-01-01T00:00:00Z", true);
        row("9999-12-31T23:59:59Z", true);
        row("2024-02-29T23:59:59Z", true);
        row("2026-02-29T00:00:00Z", false);
        row("2026-03-01T24:00:00Z", false);
        row("2026-03-01T08:15:60Z", false);
        row("2026-03-01T08:15:00.5Z", false);
        row("2026-03-01T08:15:00+00:00", false);
        row("2026-03-01t08:15:00Z", false);
        row("+026-03-01T08:15:00Z", false);
        row("", false);
    }
    void anInstantIsReadOnlyInTheFormItIsWritten()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        const auto time = ISO8601::parse(text);
        QCOMPARE(time.has_value(), valid);
        if (time)
            QCOMPARE(ISO8601::format(*time), text);
    }

    void anInstantIsCutToItsSecond()
    {
        const auto before1970 = TimePoint(-1ms);
        QCOMPARE(ISO8601::format(before1970), QStringLiteral("1969-12-31T23:59:59Z"));
        QCOMPARE(ISO8601::format(TimePoint(1999ms)), QStringLiteral("1970-01-01T00:00:01Z"));
        QCOMPARE(ISO8601::format(TimePoint::max()), QStringLiteral("9999-12-31T23:59:59Z"));
    }

    void aValueIsShownForPeople_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char* json, const char* shown) {
            QTest::newRow(json) << QByteArray(json) << QString::fromLatin1(shown);
        };
        row("[30]", "[30]");
        row("[0.1, -2.50, 1e300]", "[0.1, -2.5, 1e+300]");
        row("[9007199254740992]", "[9007199254740992]");
        row(R"(["a b", true, null, []])", "[a b, true, null, []]");
        row(R"({"z": {"k": false}, "a": "x"})", "{a: x, z: {k: false}}");
    }
    void aValueIsShownForPeople()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, shown);
        const auto document = QJsonDocument::fromJson(json);
        const auto value = JSONValue::fromJson(
            document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object()));
        QCOMPARE(value.displayString(), shown);
        QVERIFY(JSONValue::fromJson(value.toJson()) == value);
    }

    void aNumberIsClampedAndRoundedHalfAwayFromZero_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<int>("clamped");
        QTest::newRow("half") << 59.5 << 60;
        QTest::newRow("negative half") << -2.5 << -3;
        QTest::newRow("below") << -1e30 << -10;
        QTest::newRow("above") << 1e30 << 360;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << -10;
        QTest::newRow("rounds onto the bound") << 359.7 << 360;
    }
    void aNumberIsClampedAndRoundedHalfAwayFromZero()
    {
        QFETCH(double, number);
        QFETCH(int, clamped);
        QCOMPARE(JSONValue::clampedInt(number, -10, 360), clamped);
    }

    void charactersAreWhatPeopleCount_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qsizetype>("count");
        QTest::addColumn<QString>("firstTwo");
        const auto row = [](const char* name, QString text, qsizetype count, QString firstTwo) {
            QTest::newRow(name) << text << count << firstTwo;
        };
        row("empty", QString(), 0, QString());
        row("family", QStringLiteral("👩‍👩‍👧x!"), 3,
            QStringLiteral("👩‍👩‍👧x"));
        row("flag", QStringLiteral("🇩🇪🇫🇷🇯🇵"), 3, QStringLiteral("🇩🇪🇫🇷"));
        row("combining mark", QStringLiteral("e\u0301e\u0301"), 2,
            QStringLiteral("e\u0301e\u0301"));
        row("line end", QStringLiteral("a\r\nb"), 3, QStringLiteral("a\r\n"));
    }
    void charactersAreWhatPeopleCount()
    {
        QFETCH(QString, text);
        QFETCH(qsizetype, count);
        QFETCH(QString, firstTwo);
        QCOMPARE(Text::characterCount(text), count);
        QCOMPARE(Text::firstCharacters(text, 2), firstTwo);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ValuesTest)
#include "ValuesTest.moc"
