#include "wire/ModelLanes.h"

#include "support/Awaited.h"
#include "support/FakeKeychain.h"
#include "support/LogLines.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"
#include "support/Variables.h"

namespace pobblewig {

namespace {

/// "key label model@url", or "none".
QString shown(const std::optional<LLMConfiguration>& configuration)
{
    if (!configuration)
        return u"none"_s;
    return u"%1 %2 %3@%4"_s.arg(configuration->apiKey, configuration->providerName,
        configuration->modelID, configuration->baseURL.toString());
}

MarketConfig market(const QString& backend, const QString& mainModel)
{
    MarketConfig market;
    market.defaultVendorBaseUrl = u"https://vendor"_s;
    market.defaultVendorLabel = u"vendor"_s;
    market.backendBaseUrl = backend;
    market.managedMainModelID = mainModel;
    market.managedLibrarianModelID = u"ml"_s;
    market.managedVisionModelID = u"mv"_s;
    return market;
}

} // namespace

class ModelLanesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDirectLaneNeedsAKeyAModelAndAServer_data()
    {
        columns<ModelUse, QString, QString, QString>("use", "environment", "keyring", "lane");
        using enum ModelUse;
        row("key without model", main, "MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=", "", "none");
        row("model without key", main, "MAIN_MODEL_API_KEY= MAIN_MODEL_ID=m", "", "none");
        row("all set", main,
            "MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m MAIN_MODEL_BASE_URL=http://s:1/v "
            "MAIN_MODEL_PROVIDER=p",
            "main-model-api-key=other", "k p m@http://s:1/v");
        row("key of the keyring", main, "MAIN_MODEL_API_KEY= MAIN_MODEL_ID=m",
            "main-model-api-key=k", "k vendor m@https://vendor");
        for (const auto* url : { "not-a-url", "file:///x", "http://", "ftp://s", "http://s:99999" })
            row(url, main,
                u"MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m MAIN_MODEL_BASE_URL=%1"_s.arg(
                    QLatin1String(url)),
                "", "none");
        row("vision without model", vision, "MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m", "", "none");
        row("vision with the main key", vision, "MAIN_MODEL_API_KEY=k VISION_MODEL_ID=v", "",
            "k vendor v@https://vendor");
        row("vision's own", vision,
            "MAIN_MODEL_API_KEY=k VISION_MODEL_API_KEY=o VISION_MODEL_ID=v VISION_MODEL_PROVIDER=p",
            "", "o p v@https://vendor");
        row("librarian's usual model", librarian, "MAIN_MODEL_API_KEY=k", "",
            "k vendor deepseek-ai/DeepSeek-V4-Flash@https://vendor");
        row("a librarian with the main key", librarian, "MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m", "",
            "k vendor m@https://vendor");
        row("a librarian with its own key", librarian,
            "MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m LIBRARIAN_MODEL_API_KEY=o", "",
            "o vendor deepseek-ai/DeepSeek-V4-Flash@https://vendor");
        row("memes with the main key", meme, "MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m", "",
            "k vendor m@https://vendor");
        row("memes share the librarian's model", meme, "MEME_MODEL_API_KEY=o LIBRARIAN_MODEL_ID=m",
            "", "o vendor m@https://vendor");
        row("but not its key", meme, "LIBRARIAN_MODEL_API_KEY=l", "librarian-model-api-key=l",
            "none");
        row("own keyring before main variable", librarian,
            "MAIN_MODEL_API_KEY=k LIBRARIAN_MODEL_ID=m", "librarian-model-api-key=o",
            "o vendor m@https://vendor");
        row("main keyring last", meme, "LIBRARIAN_MODEL_ID=m", "main-model-api-key=k",
            "k vendor m@https://vendor");
    }
    void aDirectLaneNeedsAKeyAModelAndAServer()
    {
        QFETCH(ModelUse, use);
        QFETCH(QString, environment);
        QFETCH(QString, keyring);
        FakeKeychain keychain(variables(keyring));
        ModelLanes lanes(keychain, market({}, {}));
        const auto lane = awaited(lanes.configuration(use, variables(environment)));
        QTEST(shown(lane), "lane");
        if (lane) {
            QCOMPARE(lane->completionsPath, u"chat/completions"_s);
            QVERIFY(!lane->usesCloudAuth && !lane->sessionToken && !lane->lane);
        }
    }

    void aKeyTravelsOnlyToTheServerThatItBelongsTo_data()
    {
        columns<QString, QString, QString, QString>("ownKey", "mainURL", "ownURL", "used");
        row("own key, own server", "o", "https://m/v1", "https://o/v1", "https://o/v1");
        row("own key, vendor", "o", "", "", "https://vendor");
        row("own key, not the main server", "o", "https://m/v1", "", "https://vendor");
        row("main key, main server", "", "https://m/v1", "", "https://m/v1");
        row("other host", "", "https://m/v1", "https://o/v1", "https://m/v1");
        row("other port", "", "https://m/v1", "https://m:444/v1", "https://m/v1");
        row("other scheme", "", "https://m/v1", "http://m/v1", "https://m/v1");
        row("other scheme at the same port", "", "https://m:8/v1", "http://m:8/v1",
            "https://m:8/v1");
        row("sub-domain", "", "https://m/v1", "https://x.m/v1", "https://m/v1");
        row("host as user", "", "https://m/v1", "https://m@o/v1", "https://m/v1");
        row("same origin", "", "https://m/v1", "https://M:443/v2", "https://m:443/v2");
        row("usual http port", "", "http://m:80/v1", "http://m/v2", "http://m/v2");
        row("no URL", "", "https://m/v1", "nonsense", "https://m/v1");
    }
    void aKeyTravelsOnlyToTheServerThatItBelongsTo()
    {
        QFETCH(QString, ownKey);
        QFETCH(QString, mainURL);
        QFETCH(QString, ownURL);
        FakeKeychain keychain;
        ModelLanes lanes(keychain, market({}, {}));
        for (const auto use : { ModelUse::vision, ModelUse::librarian, ModelUse::meme }) {
            const auto given = u"MAIN_MODEL_API_KEY=k MAIN_MODEL_BASE_URL=%1 VISION_MODEL_ID=v "
                               "%2_MODEL_API_KEY=%3 %2_MODEL_BASE_URL=%4"_s.arg(
                                   mainURL, EnumNames::text(use).toUpper(), ownKey, ownURL);
            const auto lane = awaited(lanes.configuration(use, variables(given)));
            QVERIFY(lane);
            QTEST(lane->baseURL.toString(), "used");
            QCOMPARE(lane->apiKey, ownKey.isEmpty() ? u"k"_s : ownKey);
        }
    }

    void theKeyringIsLeftAloneWithoutAModel()
    {
        FakeKeychain keychain(variables(u"main-model-api-key=k librarian-model-api-key=l"_s));
        ModelLanes lanes(keychain, market({}, {}));
        for (const auto use :
            { ModelUse::main, ModelUse::vision, ModelUse::librarian, ModelUse::meme })
            QVERIFY(!awaited(lanes.configuration(use, {})));
        QVERIFY(!awaited(lanes.configuration(ModelUse::vision, variables(u"MAIN_MODEL_ID=m"_s))));
        QVERIFY(keychain.accountsRead.isEmpty());
    }

    void aLaneLimitsItsReplies()
    {
        FakeKeychain keychain;
        ModelLanes lanes(keychain, market({}, {}));
        for (const auto& [given, limit] : { std::pair("8192", 8192), { "0", 1024 }, { "-1", 1024 },
                 { "many", 1024 }, { "1000001", 1024 }, { "", 1024 } }) {
            const auto environment = variables(u"VISION_MODEL_MAX_OUTPUT_TOKENS="_s
                + QLatin1String(given) + u" MEME_MODEL_MAX_OUTPUT_TOKENS=7"_s);
            QCOMPARE(awaited(lanes.resolvedVisionModel(environment)).maxOutputTokens, limit);
            QCOMPARE(awaited(lanes.resolvedMainModel(environment)).maxOutputTokens, 1024);
            QCOMPARE(awaited(lanes.resolvedLibrarianModel(environment)).maxOutputTokens, 1200);
            QCOMPARE(awaited(lanes.resolvedMemeModel(environment)).maxOutputTokens, 7);
        }
    }

    void aManagedLaneWinsAndCarriesTheAccount_data()
    {
        columns<ModelUse, QString, QString, QString>("use", "environment", "keyring", "lane");
        using enum ModelUse;
        const auto both = "cloud-credential=c session-token=s";
        row("main", main, "", both, "c pobblewig-cloud mm@https://b/v1/chat/completions main s");
        row("vision", vision, "", both,
            "c pobblewig-cloud mv@https://b/v1/vision/completions vision s");
        row("librarian", librarian, "", both,
            "c pobblewig-cloud ml@https://b/v1/chat/completions librarian s");
        row("meme", meme, "POBBLEWIG_CLOUD_CREDENTIAL=e", both,
            "e pobblewig-cloud ml@https://b/v1/chat/completions librarian s");
        row("session alone", main,
            "POBBLEWIG_CLOUD_CREDENTIAL=", "cloud-credential= session-token=s",
            "s pobblewig-cloud mm@https://b/v1/chat/completions main s");
        row("no account", main, "", "session-token=", "k vendor m@https://vendor/chat/completions");
    }
    void aManagedLaneWinsAndCarriesTheAccount()
    {
        QFETCH(ModelUse, use);
        QFETCH(QString, environment);
        QFETCH(QString, keyring);
        FakeKeychain keychain(variables(keyring));
        ModelLanes lanes(keychain, market(u"https://b/v1"_s, u"mm"_s));
        environment += u" MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m"_s;
        const auto lane = awaited(lanes.configuration(use, variables(environment)));
        QVERIFY(lane);
        auto text = shown(lane) + u'/' + lane->completionsPath;
        if (lane->usesCloudAuth)
            text += u' ' + lane->lane.value_or(QString()) + u' '
                + lane->sessionToken.value_or(QString());
        QTEST(text, "lane");
        QVERIFY(lane->includeStreamUsage);
    }

    void withoutAUsableBackendTheDirectLaneServes()
    {
        const auto model = u"mm"_s;
        const auto environment = variables(u"MAIN_MODEL_API_KEY=k MAIN_MODEL_ID=m"_s);
        for (const auto& given : { market(u"https://b"_s, {}), market(u"file:///x"_s, model),
                 market(u"https:///x"_s, model), market({}, model) }) {
            FakeKeychain keychain(variables(u"cloud-credential=c"_s));
            ModelLanes lanes(keychain, given);
            const auto lane = awaited(lanes.configuration(ModelUse::main, environment));
            QCOMPARE(shown(lane), u"k vendor m@https://vendor");
            QVERIFY(keychain.accountsRead.isEmpty());
        }
    }

    void theResolvedModelsTellWhatADirectLaneWouldUse()
    {
        FakeKeychain keychain(variables(u"meme-model-api-key=o"_s));
        ModelLanes lanes(keychain, market({}, {}));
        const auto environment =
            variables(u"MAIN_MODEL_API_KEY=k VISION_MODEL_ID=v LIBRARIAN_MODEL_ID=l "
                      "VISION_MODEL_BASE_URL=https://e MEME_MODEL_BASE_URL=https://e"_s);
        const auto vision = awaited(lanes.resolvedVisionModel(environment));
        QCOMPARE(vision.provider + vision.baseURL + vision.modelID, u"vendorhttps://vendorv");
        const auto meme = awaited(lanes.resolvedMemeModel(environment));
        QCOMPARE(meme.baseURL + meme.modelID, u"https://el");
        QCOMPARE(awaited(lanes.visionAPIKey(environment)), u"k"_s);
        QCOMPARE(awaited(lanes.memeAPIKey(environment)), u"o"_s);
    }

    /// A file is null for none, else its contents.
    void theFirstFileThatDecodesWins_data()
    {
        columns<QByteArray, QByteArray, QString, QString>("named", "working", "label", "complaint");
        const QByteArray n = R"({"defaultVendorLabel": "named"})";
        const QByteArray w = R"({"defaultVendorLabel": "working"})";
        row("both", n, w, "named", "");
        row("none named", QByteArray(), w, "working", "");
        row("none", QByteArray(), QByteArray(), "local", "");
        row("broken", QByteArray("{"), w, "working", "unterminated object");
        row("empty", QByteArray(""), QByteArray(), "local", "illegal value");
        row("an array", QByteArray("[]"), w, "working", "$: expected an object, found an array");
        row("wrong type", QByteArray(R"({"downloadUrl": 1})"), w, "working",
            "$.downloadUrl: expected a string, found a number");
        row("too large", n + QByteArray(1024 * 1024, ' '), w, "working", "larger than 1 MiB");
    }
    void theFirstFileThatDecodesWins()
    {
        QFETCH(QByteArray, named);
        QFETCH(QByteArray, working);
        QFETCH(QString, complaint);
        const ScratchDirectory scratch;
        const auto file = [&](const QString& name, const QByteArray& text) {
            if (!text.isNull())
                scratch.write(name, text);
            return scratch.path(name);
        };
        const auto path = file(u"named"_s, named);
        const LogLines log;
        const auto config = MarketConfig::load({ { u"MARKET_CONFIG_PATH"_s, path } },
            { scratch.path().path(), file(u"working"_s, working) });
        auto expected = MarketConfig::placeholder();
        expected.defaultVendorLabel = config.defaultVendorLabel;
        QTEST(config.defaultVendorLabel, "label");
        QVERIFY(config == expected);
        QCOMPARE(log.lines().size(), complaint.isEmpty() ? 0 : 1);
        if (!complaint.isEmpty())
            QCOMPARE(log.lines()[0],
                u"buddy: market config %1 didn't decode, ignoring it: %2"_s.arg(path, complaint));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ModelLanesTest)
#include "ModelLanesTest.moc"
