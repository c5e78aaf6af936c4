#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/ChatService.h"

#include <QObject>

namespace pobblewig {

/// Lets the user choose a part of a picture of the screen, in a window of its own.
class RegionTaking : public QObject {
    Q_OBJECT

public:
    /// Both arguments must outlive this object.
    RegionTaking(ChatService& chat, QWidget& parent);

    void setTheme(const Palette& palette) { m_palette = palette; }

    /// Does nothing if no picture can be taken at this time.
    void begin();

Q_SIGNALS:
    void taken(const QImage& part);
    void refused(const QString& reason);

private:
    void choose(const QImage& picture);

    ChatService& m_chat;
    QWidget& m_parent;
    Palette m_palette;
};

} // namespace pobblewig
