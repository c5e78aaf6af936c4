#include "PobblewigDesktop/controls/PanelKeys.h"

#include <QCoreApplication>

#include <algorithm>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(PanelKeys)
};

} // namespace

std::vector<PanelKeys::Key> PanelKeys::all()
{
    using enum Act;
    return {
        { ofControl, Qt::Key_Return, Texts::tr("Send the message, after the reply under way") },
        { ofControl, Qt::SHIFT | Qt::Key_Return, Texts::tr("Begin a new line") },
        { ofControl, Qt::Key_Up, Texts::tr("Edit your last message, in an empty input") },
        { attach, QKeySequence::Open, Texts::tr("Attach files") },
        { attachPart, Qt::CTRL | Qt::SHIFT | Qt::Key_O, Texts::tr("Attach a part of the screen") },
        { find, QKeySequence::Find, Texts::tr("Find in the conversation") },
        { ofControl, Qt::Key_F3, Texts::tr("Next match, in the find bar") },
        { ofControl, Qt::SHIFT | Qt::Key_F3, Texts::tr("Previous match") },
        { ofControl, Qt::Key_Up, Texts::tr("Message above, in the conversation") },
        { ofControl, Qt::Key_Down, Texts::tr("Message below") },
        { ofControl, QKeySequence::Copy, Texts::tr("Copy what is selected") },
        { save, QKeySequence::Save, Texts::tr("Save the conversation as text") },
        { pastConversations, Qt::CTRL | Qt::Key_H, Texts::tr("Show past conversations") },
        { comingUp, Qt::CTRL | Qt::Key_D, Texts::tr("Show what is coming up") },
        { newSession, QKeySequence::New, Texts::tr("Begin a new session") },
        { settings, Qt::CTRL | Qt::Key_Comma, Texts::tr("Open the settings") },
        { ofControl, Qt::Key_Tab, Texts::tr("Next control") },
        { showKeys, Qt::CTRL | Qt::Key_Slash, Texts::tr("Show these keys") },
        { diagnostics, QKeySequence::HelpContents, Texts::tr("Show how Pobblewig fares") },
        { close, Qt::Key_Escape, Texts::tr("Close what is open, then the window") },
    };
}

QKeySequence PanelKeys::sequence(Act act)
{
    const auto keys = all();
    return std::ranges::find(keys, act, &Key::act)->sequence;
}

} // namespace pobblewig
