#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/ChatService.h"

#include <QUrl>
#include <QWidget>

class QAction;
class QToolButton;

namespace pobblewig {

class RegionTaking;

/// The buttons beside the input that let something go with a message: files, a picture of the
/// screen, or a part of one.
class AttachmentControls : public QWidget {
    Q_OBJECT

public:
    explicit AttachmentControls(ChatService& chat, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// Whether pictures of the screen are offered.
    void setScreenEnabled(bool isEnabled);

Q_SIGNALS:
    void filesChosen(const QList<QUrl>& files);
    void screenRequested();
    void partTaken(const QImage& part);
    void refused(const QString& reason);

private:
    void askForFiles();

    QToolButton* m_attach;
    QToolButton* m_screen;
    QToolButton* m_more;
    QAction* m_part;
    RegionTaking* m_regions;
};

} // namespace pobblewig
