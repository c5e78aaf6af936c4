#include "wire/ModelLanes.h"

#include "support/Awaited.h"
#include "support/FakeKeychain.h"
#include "support/TableRow.h"
#include "support/Variables.h"

namespace pobblewig {

namespace {

using ProviderRouting::Lane;

/// "key label model@url", or "none".
QString shown(const std::optional<LLMConfiguration>& configuration)
{
    if (!configuration)
        return QStringLiteral("none");
    return QStringLiteral("%1 %2 %3@%4")
        .arg(configuration->apiKey, configuration->providerName, configuration->modelID,
            configuration->baseURL.toString());
}

MarketConfig marketWithBackend()
{
    MarketConfig market;
    market.backendBaseUrl = QStringLiteral("https://backend/v1");
    market.managedMainModelID = QStringLiteral("mm");
    market.managedLibrarianModelID = QStringLiteral("ml");
    market.managedVisionModelID = QStringLiteral("mv");
    return market;
}

MarketConfig marketOfVendor()
{
    MarketConfig market;
    market.defaultVendorBaseUrl = QStringLiteral("https://vendor/v1");
    market.defaultVendorLabel = QStringLiteral("vendor");
    return market;
}

} // namespace

class ModelLanesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDirectLaneNeedsAKeyAModelAndAServer_data()
    {
        QTest::addColumn<ModelUse>("use");
        QTest::addColumn<QString>("environment");
        QTest::addColumn<QString>("keyring");
        QTest::addColumn<QString>("lane");
        using enum ModelUse;
        row("nothing set", main, "", "", "none");
        row("key without model", main, "MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=", "", "none");
        row("model without key", main, "MAIN_MODEL_API_KEY= MAIN_MODEL_ID=m", "", "none");
        row("default vendor", main, "MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m", "",
            "k vendor m@https://vendor/v1");
        row("all set", main,
            "MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m MAIN_MODEL_BASE_URL=http://s:1/v "
            "MAIN_MODEL_PROVIDER=p",
            "main-model-api-key=other", "k p m@http://s:1/v");
        row("key of the keyring", main, "MAIN_MODEL_API_KEY= MAIN_MODEL_ID=m",
            "main-model-api-key=k", "k vendor m@https://vendor/v1");
        for (const auto* url : { "not-a-url", "file:///x", "http://", "ftp://s", "http://s:99999" })
            row(url, main,
                QStringLiteral("MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m "
                               "MAIN_MODEL_BASE_URL=%1")
                    .arg(QLatin1String(url)),
                "", "none");

        row("vision without model", vision, "MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m", "", "none");
        row("vision with the main key", vision, "MAIN_MODEL_API_KEY=k VISION_MODEL_ID=v", "",
            "k vendor v@https://vendor/v1");
        row("vision's own", vision,
            "MAIN_MODEL_API_KEY=k VISION_MODEL_API_KEY=o "
            "VISION_MODEL_ID=v VISION_MODEL_PROVIDER=p",
            "", "o p v@https://vendor/v1");
        row("librarian's usual model", librarian, "MAIN_MODEL_API_KEY=k", "",
            "k vendor deepseek-ai/DeepSeek-V4-Flash@https://vendor/v1");
        row("memes share the librarian's model", meme,
            "MEME_MODEL_API_KEY=o LIBRARIAN_MODEL_API_KEY=l LIBRARIAN_MODEL_ID=m", "",
            "o vendor m@https://vendor/v1");
        row("but not its key", meme, "LIBRARIAN_MODEL_API_KEY=l", "librarian-model-api-key=l",
            "none");
        row("own keyring before main variable", librarian,
            "MAIN_MODEL_API_KEY=k LIBRARIAN_MODEL_ID=m", "librarian-model-api-key=o",
            "o vendor m@https://vendor/v1");
        row("main keyring last", meme, "LIBRARIAN_MODEL_ID=m", "main-model-api-key=k",
            "k vendor m@https://vendor/v1");
    }
    void aDirectLaneNeedsAKeyAModelAndAServer()
    {
        QFETCH(ModelUse, use);
        QFETCH(QString, environment);
        QFETCH(QString, keyring);
        FakeKeychain keychain(variables(keyring));
        ModelLanes lanes(keychain, marketOfVendor());
        const auto lane = awaited(lanes.configuration(use, variables(environment)));
        QTEST(shown(lane), "lane");
        if (lane) {
            QCOMPARE(lane->completionsPath, QStringLiteral("chat/completions"));
            QVERIFY(!lane->usesCloudAuth && !lane->sessionToken && !lane->lane);
        }
    }

    void aKeyTravelsOnlyToTheServerThatItBelongsTo_data()
    {
        QTest::addColumn<bool>("hasOwnKey");
        QTest::addColumn<QString>("mainURL");
        QTest::addColumn<QString>("ownURL");
        QTest::addColumn<QString>("used");
        row("own key, own server", true, "https://m/v1", "https://o/v1", "https://o/v1");
        row("own key, main server", true, "https://m/v1", "", "https://m/v1");
        row("own key, vendor", true, "", "", "https://vendor/v1");
        row("main key, main server", false, "https://m/v1", "", "https://m/v1");
        row("main key, vendor", false, "", "", "https://vendor/v1");
        row("other host", false, "https://m/v1", "https://o/v1", "https://m/v1");
        row("other host, vendor", false, "", "https://o/v1", "https://vendor/v1");
        row("other port", false, "https://m/v1", "https://m:444/v1", "https://m/v1");
        row("other scheme", false, "https://m/v1", "http://m/v1", "https://m/v1");
        row("sub-domain", false, "https://m/v1", "https://x.m/v1", "https://m/v1");
        row("host as user", false, "https://m/v1", "https://m@o/v1", "https://m/v1");
        row("same origin", false, "https://m/v1", "https://M:443/v2", "https://m:443/v2");
        row("usual http port", false, "http://m:80/v1", "http://m/v2", "http://m/v2");
        row("no URL", false, "https://m/v1", "nonsense", "https://m/v1");
    }
    void aKeyTravelsOnlyToTheServerThatItBelongsTo()
    {
        QFETCH(bool, hasOwnKey);
        QFETCH(QString, mainURL);
        QFETCH(QString, ownURL);
        FakeKeychain keychain;
        ModelLanes lanes(keychain, marketOfVendor());
        for (const auto use : { ModelUse::vision, ModelUse::librarian, ModelUse::meme }) {
            const auto stem = EnumNames::text(use).toUpper();
            const Environment environment {
                { QStringLiteral("MAIN_MODEL_API_KEY"), QStringLiteral("k") },
                { QStringLiteral("MAIN_MODEL_BASE_URL"), mainURL },
                { stem + QStringLiteral("_MODEL_API_KEY"),
                    hasOwnKey ? QStringLiteral("o") : QString() },
                { stem + QStringLiteral("_MODEL_BASE_URL"), ownURL },
                { QStringLiteral("VISION_MODEL_ID"), QStringLiteral("v") },
            };
            const auto lane = awaited(lanes.configuration(use, environment));
            QVERIFY(lane);
            QTEST(lane->baseURL.toString(), "used");
            QCOMPARE(lane->apiKey, hasOwnKey ? QStringLiteral("o") : QStringLiteral("k"));
        }
    }

    void aManagedLaneWinsAndCarriesTheAccount_data()
    {
        QTest::addColumn<ModelUse>("use");
        QTest::addColumn<QString>("lane");
        QTest::addColumn<QString>("path");
        using enum ModelUse;
        row("main", main, "mm main", "chat/completions");
        row("vision", vision, "mv vision", "vision/completions");
        row("librarian", librarian, "ml librarian", "chat/completions");
        row("meme", meme, "ml librarian", "chat/completions");
    }
    void aManagedLaneWinsAndCarriesTheAccount()
    {
        QFETCH(ModelUse, use);
        FakeKeychain keychain(variables(QStringLiteral("cloud-credential=c session-token=s")));
        ModelLanes lanes(keychain, marketWithBackend());
        const auto environment =
            variables(QStringLiteral("MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m VISION_MODEL_ID=v"));
        const auto lane = awaited(lanes.configuration(use, environment));
        QVERIFY(lane);
        QTEST(lane->modelID + u' ' + lane->lane.value_or(QString()), "lane");
        QTEST(lane->completionsPath, "path");
        QCOMPARE(lane->providerName, QStringLiteral("pobblewig-cloud"));
        QCOMPARE(lane->baseURL, QUrl(QStringLiteral("https://backend/v1")));
        QCOMPARE(lane->apiKey, QStringLiteral("c"));
        QCOMPARE(lane->sessionToken, QStringLiteral("s"));
        QVERIFY(lane->usesCloudAuth && lane->includeStreamUsage);
    }

    void theCloudCredentialHasThreeSources_data()
    {
        QTest::addColumn<QString>("environment");
        QTest::addColumn<QString>("keyring");
        QTest::addColumn<QString>("credential");
        row("all", "POBBLEWIG_CLOUD_CREDENTIAL=e", "cloud-credential=c session-token=s", "e");
        row("keyring", "POBBLEWIG_CLOUD_CREDENTIAL=", "cloud-credential=c session-token=s", "c");
        row("session", "", "cloud-credential= session-token=s", "s");
        row("none", "", "session-token=", "none");
    }
    void theCloudCredentialHasThreeSources()
    {
        QFETCH(QString, environment);
        QFETCH(QString, keyring);
        FakeKeychain keychain(variables(keyring));
        ModelLanes lanes(keychain, marketWithBackend());
        const auto credential = awaited(lanes.cloudCredential(variables(environment)));
        QTEST(credential.value_or(QStringLiteral("none")), "credential");
        const auto lane = awaited(lanes.managedConfiguration(Lane::main, variables(environment)));
        QCOMPARE(lane.has_value(), credential.has_value());
    }

    void withoutAUsableBackendTheDirectLaneServes_data()
    {
        QTest::addColumn<QString>("backend");
        QTest::addColumn<QString>("model");
        row("no model", "https://b", "");
        row("file", "file:///x", "m");
        row("no host", "https:///x", "m");
        row("no URL", "https://a b", "m");
        row("built in", MarketConfig().backendBaseUrl, "m");
    }
    void withoutAUsableBackendTheDirectLaneServes()
    {
        QFETCH(QString, backend);
        QFETCH(QString, model);
        FakeKeychain keychain(variables(QStringLiteral("cloud-credential=c")));
        auto market = marketOfVendor();
        market.backendBaseUrl = backend;
        market.managedMainModelID = model;
        ModelLanes lanes(keychain, market);
        const auto environment = variables(QStringLiteral("MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m"));
        const auto lane = awaited(lanes.configuration(ModelUse::main, environment));
        QCOMPARE(shown(lane), QStringLiteral("k vendor m@https://vendor/v1"));
        QVERIFY(keychain.accountsRead.isEmpty());
    }

    void theResolvedModelsTellWhatADirectLaneWouldUse()
    {
        FakeKeychain keychain(variables(QStringLiteral("meme-model-api-key=o")));
        ModelLanes lanes(keychain, marketOfVendor());
        const auto environment = variables(
            QStringLiteral("MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m LIBRARIAN_MODEL_ID=l "
                           "LIBRARIAN_MODEL_BASE_URL=https://l MEME_MODEL_BASE_URL=https://e"));
        const auto vendor = QStringLiteral("https://vendor/v1");
        const auto label = QStringLiteral("vendor");
        const MainModelConfig main { label, vendor, QStringLiteral("m"), 1024 };
        const MainModelConfig vision { label, vendor, QString(), 1024 };
        const LibrarianModelConfig librarian { vendor, QStringLiteral("l"), 0.2, 1200 };
        const LibrarianModelConfig meme { QStringLiteral("https://e"), QStringLiteral("l") };
        QVERIFY(awaited(lanes.resolvedMainModel(environment)) == main);
        QVERIFY(awaited(lanes.resolvedVisionModel(environment)) == vision);
        QVERIFY(awaited(lanes.resolvedLibrarianModel(environment)) == librarian);
        QVERIFY(awaited(lanes.resolvedMemeModel(environment)) == meme);
        QCOMPARE(awaited(lanes.mainAPIKey(environment)), QStringLiteral("k"));
        QCOMPARE(awaited(lanes.visionAPIKey(environment)), QStringLiteral("k"));
        QCOMPARE(awaited(lanes.librarianAPIKey(environment)), QStringLiteral("k"));
        QCOMPARE(awaited(lanes.memeAPIKey(environment)), QStringLiteral("o"));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ModelLanesTest)
#include "ModelLanesTest.moc"
