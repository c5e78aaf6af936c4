#pragma once

#include "PobblewigDesktop/contactsheet/PanelScenes.h"

namespace pobblewig {

/// A window that is to be looked at.
struct WindowScene {
    QString name;
    std::function<QImage(ColorScheme)> picture;
};

namespace WindowScenes {

/// The bubbles and the past conversations.
std::vector<WindowScene> all();

std::vector<WindowScene> of(const std::vector<PanelScene>& scenes);

} // namespace WindowScenes

} // namespace pobblewig
