#include "memes/reactions/MemesFeature.h"

#include "support/Awaited.h"
#include "support/LogLines.h"
#include "support/PlainPictures.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedModels.h"
#include "support/ScriptedProvider.h"
#include "support/ScriptedStores.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using Role = ChatMessage::Role;

ChatMessage said(Role role, const QString& text)
{
    return { .id = QUuid::createUuid(), .role = role, .text = text };
}

struct Desk : OccupationProviding {
    Occupation now = Occupation::none;

    Task<Occupation> occupation() override { co_return Occupation(now); }
};

/// A library with two smug memes and a shocked one.
struct Fixture {
    ScratchDirectory scratch;
    std::optional<DataDirectory> directory { scratch };
    ScriptedStores stores;
    ScriptedProvider model;
    ScriptedModels models;
    Desk desk;
    std::optional<MemesFeature> memes;
    QStringList shown;

    Fixture()
    {
        const QDir user(scratch.path().filePath(u"memes"_s));
        for (const auto& file : { u"a.png"_s, u"b.png"_s, u"c.png"_s })
            putPicture(user, file);
        putManifest(user,
            { { .file = u"a.png"_s, .emotions = { u"smug"_s }, .name = u"Told you"_s },
                { .file = u"b.png"_s, .emotions = { u"smug"_s } },
                { .file = u"c.png"_s, .emotions = { u"shocked"_s } } });
        models.librarian = &model;
        memes.emplace(MemesFeature::Parts { .stores = stores.all,
            .moment = stores.moment,
            .models = models,
            .directory = directory,
            .bundledMemes = {},
            .pictures = std::make_shared<PlainPictures>(),
            .occupation = &desk });
        memes->onMemeReaction = [this](const auto& reaction) { shown << reaction.meme.id; };
    }

    void talk(const QString& user = u"It works!"_s)
    {
        stores.history.append(said(Role::user, user));
        stores.history.append(said(Role::assistant, u"I said so."_s));
    }

    QString outcome()
    {
        awaited(memes->reactWithMemeIfAppropriate());
        PublishedState state;
        memes->publish(state);
        return state.of<MemesState>().memeLastOutcome.value_or(QString());
    }

    QString outcomeOf(const QString& answer)
    {
        model.enqueue(answer);
        talk();
        return outcome();
    }
};

} // namespace

class MemeClassifierTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anAnswerHasAnOutcome_data()
    {
        columns<QString, QString>("answer", "outcome");
        const auto passed = u"model passed on this one (none/unparseable)"_s;
        row("none", u"{\"emotion\":\"none\",\"confidence\":0.9}"_s, passed);
        row("no JSON", u"smug!"_s, passed);
        row("cut", u"{\"emotion\":\"smug\",\"confid"_s, passed);
        row("unknown", u"{\"emotion\":\"Smug\",\"confidence\":1}"_s, passed);
        row("a wrong type", u"{\"emotion\":[\"smug\"],\"confidence\":1}"_s, passed);
        row("does not say how sure it is", u"{\"emotion\":\"amused\"}"_s,
            u"\"amused\" at 0.30 — below the 0.4 bar"_s);
        row("unsure", u"{\"emotion\":\"smug\",\"confidence\":-1}"_s,
            u"\"smug\" at 0.00 — below the 0.4 bar"_s);
        row("no such meme", u"{\"emotion\":\"sad\",\"confidence\":0.8}"_s,
            u"no meme tagged \"sad\" in the library"_s);
        row("more than sure, in prose", u"Well: {\"emotion\":\"shocked\",\"confidence\":1.7} ok"_s,
            u"reacted \"shocked\" (1.00) with c.png"_s);
    }
    void anAnswerHasAnOutcome()
    {
        QFETCH(QString, answer);
        QFETCH(QString, outcome);
        Fixture world;
        QCOMPARE(world.outcomeOf(answer), outcome);
        QCOMPARE(world.shown.size(), outcome.startsWith(u"reacted") ? 1 : 0);
        QCOMPARE(world.stores.usage.snapshot().librarianCalls, 1);
    }

    void aReplyIsTakenUpOnceAndAMemeRests()
    {
        Fixture world;
        const auto smug = u"{\"emotion\":\"smug\",\"confidence\":0.8}"_s;
        QVERIFY(world.outcomeOf(smug).startsWith(u"reacted \"smug\" (0.80) with "_s));
        QCOMPARE(world.outcome(), u"reply already classified"_s);
        world.stores.time += 3s;
        QCOMPARE(world.outcomeOf(smug), u"cooldown — a meme just showed"_s);
        world.stores.time += 60s;
        QCOMPARE(world.outcome(), u"reply already classified"_s);
        QCOMPARE(world.model.requests().size(), 1u);
        world.talk();
        world.outcome();
        QCOMPARE(world.shown.size(), 2);
        QVERIFY2(world.shown[0] != world.shown[1], "another of the two");
    }

    void whatForbidsAMemeCostsNothing_data()
    {
        columns<CoachMode, Occupation, bool, QString>("mode", "occupation", "isOn", "outcome");
        using enum CoachMode;
        row("off", openEnded, Occupation::none, false, u"meme mode is off"_s);
        row("do not disturb", doNotDisturb, Occupation::none, true,
            u"not now: do not disturb is on"_s);
        row("full screen", openEnded, Occupation::fullScreen, true,
            u"not now: a window fills the screen"_s);
        row("call", openEnded, Occupation::call, true, u"not now: you are in a call"_s);
    }
    void whatForbidsAMemeCostsNothing()
    {
        QFETCH(bool, isOn);
        QFETCH(CoachMode, mode);
        QFETCH(Occupation, occupation);
        Fixture world;
        world.stores.settings.update([&](AppSettings& settings) {
            settings.memeModeEnabled = isOn;
            settings.mode = mode;
        });
        world.desk.now = occupation;
        world.talk();
        QTEST(world.outcome(), "outcome");
        QVERIFY(world.model.requests().empty());
    }

    void aFilmThatBeginsMeanwhileIsNotDisturbed()
    {
        Fixture world;
        world.model.onReply = [&] { world.desk.now = Occupation::fullScreen; };
        QCOMPARE(world.outcomeOf(u"{\"emotion\":\"shocked\",\"confidence\":1}"_s),
            u"not shown: a window fills the screen"_s);
        QVERIFY(world.shown.isEmpty());
    }

    void aServerWithoutSchemasIsAskedOnceMore()
    {
        Fixture world;
        world.model.enqueue(LLMError::http(422, u"no schemas"_s));
        QCOMPARE(world.outcomeOf(u"{\"emotion\":\"shocked\",\"confidence\":1}"_s),
            u"reacted \"shocked\" (1.00) with c.png"_s);
        QCOMPARE(world.model.requests()[0].responseFormat.name, u"meme_reaction"_s);
        QVERIFY(
            world.model.requests()[1].responseFormat.kind == LLMResponseFormat::Kind::jsonObject);
        QCOMPARE(world.model.requests()[1].maxTokens, 200);
    }

    void aFailureIsToldButNotLoggedInTheServersWords()
    {
        Fixture world;
        world.model.enqueue(LLMError::http(500, u"the key sk-secret is bad"_s));
        world.talk(QString(1'201, u'x'));
        const LogLines log;
        QVERIFY(world.outcome().startsWith(u"classification failed: "_s));
        QCOMPARE(world.model.requests().size(), 1u);
        QCOMPARE(log.lines().filter(u"classification failed"_s).size(), 1);
        QVERIFY(log.lines().filter(u"secret"_s).isEmpty());
        const auto prompt = world.model.requests()[0].messages[0].content;
        QVERIFY(prompt.contains(u"\"\"\""_s + QString(1'200, u'x') + u"…\"\"\""_s));
        QVERIFY(prompt.contains(u"Classic — a warm, plain companion"_s));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemeClassifierTest)
#include "MemeClassifierTest.moc"
