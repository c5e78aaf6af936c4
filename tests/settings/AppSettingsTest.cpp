#include "settings/AppSettings.h"

#include "support/JSONObject.h"
#include "support/TableRow.h"

#include <QJsonDocument>

namespace pobblewig {

namespace {

/// Every optional set, every other field as it is at first.
AppSettings filledSettings()
{
    AppSettings settings;
    settings.modeRevertAt = TimePoint(std::chrono::seconds(1772352900));
    settings.pausedUntil = settings.modeRevertAt;
    settings.lastDailyBriefingDayKey = QStringLiteral("2026-03-01");
    return settings;
}

json::Decoded<AppSettings> decoded(const QByteArray& text)
{
    return json::decode<AppSettings>(QJsonDocument::fromJson(text).object());
}

} // namespace

class AppSettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatAFileLacksKeepsItsDefault()
    {
        AppSettings expected;
        expected.mode = CoachMode::focus;
        QVERIFY(decoded(R"({"mode": "focus", "someday": [1]})") == expected);
    }

    void eachKeyCanBeNullButNotOfAnotherType()
    {
        const auto whole = jsonObject(filledSettings());
        QCOMPARE(whole.size(), 37);
        for (const auto& key : whole.keys()) {
            auto object = whole;
            object.insert(key, QJsonValue::Null);
            auto expected = whole;
            if (!jsonObject(AppSettings()).contains(key))
                expected.remove(key);
            const auto withNull = json::decode<AppSettings>(object);
            QVERIFY2(withNull && jsonObject(*withNull) == expected, qPrintable(key));

            object.insert(key, QJsonArray { QJsonArray { 1 } });
            const auto withArray = json::decode<AppSettings>(object);
            QVERIFY2(!withArray && withArray.error().path.startsWith(QStringLiteral("$.") + key),
                qPrintable(key));
        }
    }

    void theRoleOfAnEarlyVersionIsUnderstood_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("roles");
        row("tutor", R"({"persona": "codingTutor"})", "tutor");
        row("any other", R"({"persona": "coach"})", "accountabilityPartner");
        row("null roles", R"({"persona": "codingTutor", "roles": null})", "tutor");
        row("roles win", R"({"persona": "codingTutor", "roles": ["accountabilityPartner"]})",
            "accountabilityPartner");
        row("empty roles win", R"({"persona": "codingTutor", "roles": []})", "");
        row("no text", R"({"persona": 3})", "");
        row("neither", "{}", "");
    }
    void theRoleOfAnEarlyVersionIsUnderstood()
    {
        QFETCH(QString, text);
        const auto settings = decoded(text.toUtf8());
        QVERIFY(settings);
        QStringList roles;
        for (const auto role : settings->roles)
            roles.append(EnumNames::text(role));
        QTEST(roles.join(u','), "roles");
        QVERIFY(!jsonObject(*settings).contains(u"persona"));
    }

    void anUnknownNameOfAModeIsNotGuessedAt()
    {
        QCOMPARE(decoded(R"({"mode": "napping"})").error().path, QStringLiteral("$.mode"));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::AppSettingsTest)
#include "AppSettingsTest.moc"
