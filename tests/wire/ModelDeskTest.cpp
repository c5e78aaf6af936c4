#include "wire/ModelDesk.h"

#include "support/Awaited.h"
#include "support/FakeKeychain.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedHTTPClient.h"
#include "support/TableRow.h"

namespace pobblewig {

class ModelDeskTest : public QObject {
    Q_OBJECT

    using Choice = ModelDesk::Choice;

    QString path() const { return m_scratch->path(u"environment"_s); }
    Environment file() const { return EnvironmentFile::read(path()); }

    LaneState mainLane() { return awaited(m_desk->lanes()).front(); }

    bool choose(const Choice& choice)
    {
        const auto outcome = awaited(m_desk->choose(ModelUse::main, choice));
        m_refusal = outcome ? QString() : outcome.error();
        return outcome.has_value();
    }

    void open(const QString& path)
    {
        m_desk.emplace(ModelDesk::Dependencies { m_http, m_keychain, m_lanes, m_requests,
            [path] { return currentEnvironment(path); }, path, m_moment });
    }

private Q_SLOTS:
    void init()
    {
        m_scratch.emplace();
        m_keychain.entries.clear();
        m_keychain.isDisabled = false;
        open(path());
    }

    void aModelIsChosenWithAndWithoutAKey()
    {
        QVERIFY(mainLane().source == ModelSource::none);
        QVERIFY(choose({ u" http://127.0.0.1:8080/v1 "_s, u" owl "_s }));
        auto lane = mainLane();
        QVERIFY(lane.source == ModelSource::file && !lane.hasKey);
        QCOMPARE(lane.server + u' ' + lane.modelID, u"http://127.0.0.1:8080/v1 owl"_s);

        QVERIFY(choose({ u"https://models.example/v1"_s, u"emu"_s, u"sk-own"_s }));
        QVERIFY(mainLane().hasKey && mainLane().modelID == u"emu"_s);
        QCOMPARE(m_keychain.entries.at(u"main-model-api-key"_s), u"sk-own"_s);
        QVERIFY(!file().contains(u"MAIN_MODEL_API_KEY"_s));
        QVERIFY(!m_scratch->read(u"environment"_s).contains("sk-own"));
    }

    void whatCannotBeKeptChangesNothing_data()
    {
        columns<QString, QString, QString, QString>("address", "model", "key", "refusal");
        row("no address", u"localhost"_s, u"owl"_s, QString(), "The address must begin with");
        row("another scheme", u"file:///v1"_s, u"owl"_s, QString(), "The address must begin with");
        row("no model", u"http://h/v1"_s, u" "_s, QString(), "Name the model.");
        row("no keyring", u"http://h/v1"_s, u"owl"_s, u"sk"_s, "This desktop has no keyring.");
    }
    void whatCannotBeKeptChangesNothing()
    {
        QFETCH(QString, address);
        QFETCH(QString, model);
        QFETCH(QString, key);
        QFETCH(QString, refusal);
        m_keychain.isDisabled = true;
        QVERIFY(!choose({ address, model, key }));
        QVERIFY2(m_refusal.startsWith(refusal), qPrintable(m_refusal));
        QVERIFY(file().empty() && m_keychain.entries.empty());
    }

    void withoutAKeyringTheKeyCanStandInTheFile()
    {
        m_keychain.isDisabled = true;
        const Choice choice { u"http://h/v1"_s, u"owl"_s, u"sk$1"_s };
        QVERIFY(awaited(m_desk->choose(ModelUse::main, choice, ModelDesk::KeyPlace::file)));
        QCOMPARE(file().at(u"MAIN_MODEL_API_KEY"_s), u"sk$1"_s);
        QVERIFY(m_scratch->read(u"environment"_s)
                    .contains(ModelDesk::fileLines(ModelUse::main, choice).toUtf8()));
        const auto readers = QFile::permissions(path()) & (QFile::ReadGroup | QFile::ReadOther);
        QVERIFY(!readers && mainLane().hasKey);
    }

    void aFileThatCannotBeWrittenLeavesTheKeyAsItWas()
    {
        open(u"/proc/self/none/environment"_s);
        m_keychain.entries = { { u"main-model-api-key"_s, u"old"_s } };
        QVERIFY(!choose({ u"http://h/v1"_s, u"owl"_s, u"new"_s }));
        QCOMPARE(m_keychain.entries.at(u"main-model-api-key"_s), u"old"_s);
    }

    void aVariableOfTheSessionWins()
    {
        qputenv("MAIN_MODEL_ID", "theirs");
        const auto cleanup = qScopeGuard([] { qunsetenv("MAIN_MODEL_ID"); });
        QVERIFY(!choose({ u"http://h/v1"_s, u"owl"_s }));
        QVERIFY(m_refusal.contains(u"MAIN_MODEL_ID"));
    }

    void aTrialSaysWhyThereIsNoAnswer()
    {
        m_http.enqueue(401, "{}");
        const auto refused = awaited(m_desk->tryOut(Choice { u"http://h/v1"_s, u"owl"_s }));
        QVERIFY(!refused && std::holds_alternative<LLMError>(refused.error()));
        m_http.enqueue(200, "data: {\"choices\":[{\"delta\":{\"content\":\"Hi\"}}]}\ndata: [DONE]");
        QVERIFY(awaited(m_desk->tryOut(Choice { u"http://h/v1"_s, u"owl"_s })).has_value());
        QVERIFY(!awaited(m_desk->tryOut(ModelUse::main)));
    }

private:
    std::optional<ScratchDirectory> m_scratch;
    ScriptedHTTPClient m_http;
    FakeKeychain m_keychain;
    ModelLanes m_lanes { m_keychain, MarketConfig() };
    Moment m_moment;
    RequestLog m_requests { m_moment.clock };
    std::optional<ModelDesk> m_desk;
    QString m_refusal;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ModelDeskTest)
#include "ModelDeskTest.moc"
