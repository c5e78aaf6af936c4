#include "conversation/ProblemTexts.h"

#include "foundation/Text.h"
#include "foundation/ThisComputer.h"
#include "wire/LaneLogic.h"

#include <QCoreApplication>
#include <QDir>

namespace pobblewig {

namespace {

using Action = ChatProblem::Action;
using Kind = TransportError::Kind;
using ProblemLogic::Circumstances;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ProblemTexts)
};

constexpr qsizetype longestName = 60;

QString server(const Circumstances& at)
{
    return at.asked.server.adjusted(QUrl::RemoveUserInfo).authority();
}

ModelUse use(const Circumstances& at)
{
    return at.asked.isForPictures ? ModelUse::vision : ModelUse::main;
}

/// As people write it.
QString shown(const QString& path)
{
    const auto home = QDir::homePath() + u'/';
    return path.startsWith(home) ? QStringLiteral("~/") + path.mid(home.size()) : path;
}

QString file(const Circumstances& at)
{
    return shown(at.environmentFile);
}

QString addressVariable(const Circumstances& at)
{
    return at.asked.isForPictures ? QStringLiteral("VISION_MODEL_BASE_URL")
                                  : QStringLiteral("MAIN_MODEL_BASE_URL");
}

QString checkAddress(const Circumstances& at)
{
    return at.asked.isManaged
        ? Texts::tr("Try again later.")
        : Texts::tr("Check %1 in %2, then retry.").arg(addressVariable(at), file(at));
}

QString signIn()
{
    return Texts::tr("The network may want you to sign in first: open any page in a web browser, "
                     "then retry.");
}

QString notSecure(Kind kind, const QString& server)
{
    if (kind == Kind::untrusted)
        return Texts::tr("No secure connection to %1: its certificate is not trusted.").arg(server);
    if (kind == Kind::expired)
        return Texts::tr("No secure connection to %1: its certificate is not valid today.")
            .arg(server);
    if (kind == Kind::wrongHost)
        return Texts::tr("No secure connection to %1: its certificate is for another server.")
            .arg(server);
    return Texts::tr("No secure connection to %1.").arg(server);
}

QString notSecureAdvice(Kind kind, const Circumstances& at)
{
    if (kind == Kind::untrusted)
        return Texts::tr("Somebody may be in between, or the network wants you to sign in. The "
                         "certificate of your own server must be among this computer's.");
    if (kind == Kind::expired)
        return Texts::tr("Check this computer's date. If it is right, the server needs a new "
                         "certificate.");
    return kind == Kind::wrongHost ? checkAddress(at) : signIn();
}

ChatProblem nothingAnswers(const Circumstances& at)
{
    if (isThisComputer(at.asked.server.host()))
        return { .what = Texts::tr("Nothing answers at %1 on this computer.").arg(server(at)),
            .advice = Texts::tr("Is the model server running? Start it, then retry.") };
    return { .what = Texts::tr("Nothing answers at %1.").arg(server(at)),
        .advice = Texts::tr("Check that the server is running and that its address is right.") };
}

} // namespace

ChatProblem ProblemTexts::noModel(const QString& environmentFile)
{
    return {
        .what = Texts::tr("No model is set up yet."),
        .advice = Texts::tr("Pobblewig needs a model to talk. Name yours in %1; it counts from the "
                            "next message on.")
                      .arg(shown(environmentFile)),
        .action = Action::setUp,
        .details = QStringLiteral("# %1\n"
                                  "MAIN_MODEL_BASE_URL=http://127.0.0.1:11434/v1\n"
                                  "MAIN_MODEL_ID=%2\n"
                                  "MAIN_MODEL_API_KEY=none\n")
                       .arg(shown(environmentFile), Texts::tr("the-name-of-your-model")),
    };
}

ChatProblem ProblemTexts::keyRefused(const Circumstances& at)
{
    if (at.asked.isManaged)
        return { .what = Texts::tr("%1 does not know your account.").arg(server(at)),
            .advice = Texts::tr("Sign in again, then retry.") };
    return { .what = Texts::tr("%1 does not accept the key.").arg(server(at)),
        .advice =
            Texts::tr("Check %1 in %2, or “%3” in the keyring, then retry.")
                .arg(LaneLogic::keyVariable(use(at)), file(at), LaneLogic::keyAccount(use(at))) };
}

ChatProblem ProblemTexts::notAllowed(const Circumstances& at)
{
    return { .what = Texts::tr("%1 does not allow this request.").arg(server(at)),
        .advice = Texts::tr("The key may not use this model, or the server does not serve your "
                            "region. The provider's page tells more.") };
}

ChatProblem ProblemTexts::noCredit(const Circumstances& at)
{
    return { .what = Texts::tr("The account at %1 has no credit left.").arg(server(at)),
        .advice = Texts::tr("Add credit on the provider's page, then retry.") };
}

ChatProblem ProblemTexts::tooManyRequests(const Circumstances& at)
{
    return { .what = Texts::tr("%1 has had too many requests.").arg(server(at)),
        .advice = Texts::tr("Wait a moment, then retry.") };
}

ChatProblem ProblemTexts::modelUnknown(const Circumstances& at)
{
    const auto name = Text::plainLine(at.asked.modelID, longestName);
    return { .what = Texts::tr("%1 has no model named “%2”.").arg(server(at), name),
        .advice = at.asked.isManaged ? Texts::tr("Try again later.")
                                     : Texts::tr("Check %1 in %2, then retry.")
                                           .arg(LaneLogic::modelVariable(use(at)), file(at)) };
}

QString ProblemTexts::modelAdvice()
{
    return Texts::tr("Choose one that it has. Your choice counts until you quit.");
}

ChatProblem ProblemTexts::nothingThere(const Circumstances& at)
{
    return { .what = Texts::tr("%1 has no chat at this address.").arg(server(at)),
        .advice = at.asked.isManaged ? Texts::tr("Try again later.")
                                     : Texts::tr("Check %1 in %2; it often ends in “/v1”.")
                                           .arg(addressVariable(at), file(at)) };
}

ChatProblem ProblemTexts::refused(int status, const Circumstances& at)
{
    return { .what = Texts::tr("%1 refuses the request (error %2).").arg(server(at)).arg(status),
        .advice = Texts::tr("The details tell why.") };
}

ChatProblem ProblemTexts::serverTrouble(int status, const Circumstances& at)
{
    return { .what = Texts::tr("%1 is in trouble (error %2).").arg(server(at)).arg(status),
        .advice = Texts::tr("It is not your message. Wait a moment, then retry.") };
}

ChatProblem ProblemTexts::conversationTooLong()
{
    return { .what = Texts::tr("The conversation is too long for this model."),
        .advice = Texts::tr("Begin a new session; what matters of this one stays in the memory."),
        .action = Action::newSession };
}

ChatProblem ProblemTexts::tooLarge(const Circumstances& at)
{
    return { .what = Texts::tr("The request is too large for %1.").arg(server(at)),
        .advice = Texts::tr("Begin a new session, or send less at once."),
        .action = Action::newSession };
}

ChatProblem ProblemTexts::cannotSee(const Circumstances& at)
{
    return { .what = Texts::tr("This model cannot look at pictures."),
        .advice =
            Texts::tr("Name one that can as VISION_MODEL_ID in %1, then retry.").arg(file(at)) };
}

ChatProblem ProblemTexts::stillLoading()
{
    return { .what = Texts::tr("The model is still loading."),
        .advice = Texts::tr("Retry in a few minutes.") };
}

ChatProblem ProblemTexts::onlyThought(const Circumstances& at)
{
    return { .what = Texts::tr("The model used its whole reply for thinking."),
        .advice = Texts::tr("A higher %1_MODEL_MAX_OUTPUT_TOKENS in %2 leaves room for the answer.")
                      .arg(at.asked.isForPictures ? u"VISION" : u"MAIN", file(at)) };
}

ChatProblem ProblemTexts::page(const Circumstances& at)
{
    return { .what = Texts::tr("A web page answers in place of %1.").arg(server(at)),
        .advice = signIn() };
}

ChatProblem ProblemTexts::noReply(const Circumstances& at)
{
    return { .what = Texts::tr("%1 does not answer like a model.").arg(server(at)),
        .advice = checkAddress(at) };
}

ChatProblem ProblemTexts::brokeOff(const Circumstances& at)
{
    return { .what = Texts::tr("%1 broke off with an error.").arg(server(at)),
        .advice = Texts::tr("Retry; if it happens again, the details tell why.") };
}

ChatProblem ProblemTexts::noAnswer(const Circumstances& at)
{
    return { .what = Texts::tr("%1 did not answer in time.").arg(server(at)),
        .advice = Texts::tr("It may be busy. Wait a moment, then retry.") };
}

ChatProblem ProblemTexts::proxyRefuses(const Circumstances& at)
{
    return { .what = Texts::tr("The proxy on the way to %1 wants a password.").arg(server(at)),
        .advice = Texts::tr("Check the proxy settings, then retry.") };
}

ChatProblem ProblemTexts::transport(Kind kind, const Circumstances& at)
{
    switch (kind) {
    case Kind::notAWebAddress:
        return { .what = Texts::tr("The address of the model is no web address."),
            .advice = checkAddress(at) };
    case Kind::hostNotFound:
        return { .what = Texts::tr("%1 cannot be found.").arg(server(at)),
            .advice = Texts::tr("Check the internet connection, then the address.") };
    case Kind::refused:
        return nothingAnswers(at);
    case Kind::untrusted:
    case Kind::expired:
    case Kind::wrongHost:
    case Kind::notSecure:
        return { .what = notSecure(kind, server(at)), .advice = notSecureAdvice(kind, at) };
    case Kind::proxyIsSilent:
        return { .what = Texts::tr("The proxy on the way to %1 does not answer.").arg(server(at)),
            .advice = Texts::tr("Check the proxy settings, then retry.") };
    case Kind::proxyRefuses:
        return proxyRefuses(at);
    case Kind::timedOut:
        return noAnswer(at);
    case Kind::truncated:
        return { .what = Texts::tr("The connection to %1 was lost.").arg(server(at)),
            .advice = Texts::tr("Check the internet connection, then retry.") };
    case Kind::tooLarge:
    case Kind::notHTTP:
        return noReply(at);
    case Kind::unreachable:
        return { .what = Texts::tr("%1 cannot be reached.").arg(server(at)),
            .advice = Texts::tr("Check the internet connection, then retry.") };
    }
    Q_UNREACHABLE();
}

QString ProblemTexts::waitAdvice(int seconds, bool retriesByItself)
{
    if (seconds == 0)
        return Texts::tr("It can be asked again now.");
    return retriesByItself ? Texts::tr("Pobblewig asks again in %n s.", nullptr, seconds)
                           : Texts::tr("It can be asked again in %n s.", nullptr, seconds);
}

} // namespace pobblewig
