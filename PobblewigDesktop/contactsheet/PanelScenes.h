#pragma once

#include "PobblewigDesktop/chat/ChatPanel.h"
#include "PobblewigDesktop/contactsheet/StagedChat.h"
#include "PobblewigDesktop/controls/Theme.h"

#include <QAbstractButton>
#include <QImage>

#include <chrono>
#include <functional>
#include <vector>

namespace pobblewig {

/// The chat panel with a conversation of its own.
struct PanelStage {
    explicit PanelStage(ColorScheme scheme);

    /// The visible button of this name.
    QAbstractButton& button(const char* name);

    /// Lets what moves in the panel move.
    static void watch(std::chrono::milliseconds time);

    StagedChat talk;
    ChatPanel panel;
};

/// A state of the chat panel, to be looked at.
struct PanelScene {
    QString name;
    std::function<void(PanelStage&)> play;

    QImage picture(ColorScheme scheme) const;
};

namespace PanelScenes {

/// One for each state that the panel can be in.
std::vector<PanelScene> all();

} // namespace PanelScenes

} // namespace pobblewig
