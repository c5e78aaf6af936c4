#pragma once

#include <QKeySequence>
#include <QString>

#include <vector>

/// The keys of the chat panel, in one table: the shortcuts are made from it, and the user reads it.
namespace pobblewig::PanelKeys {

enum class Act {
    showKeys,
    find,
    save,
    attach,
    attachPart,
    pastConversations,
    comingUp,
    newSession,
    settings,
    diagnostics,
    close,
    /// What the control with the focus does by itself.
    ofControl,
};

struct Key {
    Act act = Act::ofControl;
    QKeySequence sequence;
    QString words;
};

/// In the order in which the user reads them.
std::vector<Key> all();

/// The keys of an act that is no control's own.
QKeySequence sequence(Act act);

} // namespace pobblewig::PanelKeys
