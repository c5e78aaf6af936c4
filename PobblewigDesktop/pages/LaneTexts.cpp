#include "PobblewigDesktop/pages/LaneTexts.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(LaneTexts)
};

QString source(ModelSource source)
{
    switch (source) {
    case ModelSource::none:
        return Texts::tr("the main model answers");
    case ModelSource::account:
        return Texts::tr("from your account");
    case ModelSource::session:
        return Texts::tr("from a variable of this session");
    case ModelSource::file:
        return Texts::tr("from your choice or the environment file");
    case ModelSource::demo:
        return Texts::tr("built in");
    }
    Q_UNREACHABLE();
}

} // namespace

QString LaneTexts::name(ModelUse use)
{
    switch (use) {
    case ModelUse::main:
        return Texts::tr("Answers");
    case ModelUse::vision:
        return Texts::tr("Looks at pictures");
    case ModelUse::librarian:
        return Texts::tr("Takes notes");
    case ModelUse::meme:
        return Texts::tr("Reacts with memes");
    }
    Q_UNREACHABLE();
}

QString LaneTexts::state(const LaneState& lane)
{
    if (lane.modelID.isEmpty())
        return lane.use == ModelUse::main ? Texts::tr("No model is chosen yet.")
                                          : Texts::tr("No model.");
    const auto state = Texts::tr("%1 at %2, %3.")
                           .arg(lane.modelID, QUrl(lane.server).authority(), source(lane.source));
    return lane.lastError.isEmpty() ? state
                                    : Texts::tr("%1 Last error: %2").arg(state, lane.lastError);
}

QString LaneTexts::keyring(KeychainHelper::State state)
{
    switch (state) {
    case KeychainHelper::State::unknown:
        return Texts::tr("It has not been needed since the start.");
    case KeychainHelper::State::available:
        return Texts::tr("It is open. Keys are kept in it.");
    case KeychainHelper::State::locked:
        return Texts::tr("It is locked. Unlock it in your desktop's password manager to use the "
                         "keys in it.");
    case KeychainHelper::State::absent:
        return Texts::tr("This desktop has none. Install gnome-keyring or KWallet, or name keys in "
                         "the environment file.");
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
