#pragma once

#include "PobblewigDesktop/controls/DropContents.h"
#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/attachments/AttachmentReading.h"

#include <QWidget>

#include <vector>

class QGridLayout;

namespace pobblewig {

class AttachmentChip;

/// What goes with the next message, as chips. Invisible while there is nothing.
class AttachmentTray : public QWidget {
    Q_OBJECT

public:
    using Attachments = std::vector<Attachment>;

    explicit AttachmentTray(QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    bool isEmpty() const { return m_chips.empty(); }
    size_t count() const { return m_chips.size(); }

    /// Whether something has yet to be read before it can be sent.
    bool isReading() const;

    /// Reads what was dropped or pasted, as far as there is room for it.
    void add(const DropContents& contents);
    void add(const QImage& picture, const QString& name);

    /// Everything that was read; the tray is empty then.
    Attachments take();

    /// What was taken comes back.
    void putBack(const Attachments& attachments);

Q_SIGNALS:
    void changed();

    /// Something cannot be attached, and why.
    void refused(const QString& reason);

private:
    using Reading = Task<AttachmentReading::Result>;

    bool hasRoom();
    AttachmentChip* addChip(const QString& name);
    void await(Reading reading, const QString& name);
    void finish(AttachmentChip& chip, const AttachmentReading::Result& result);
    void remove(AttachmentChip& chip);
    void arrange();
    void tellRefusals();

    Palette m_palette;
    QGridLayout* m_grid;
    std::vector<AttachmentChip*> m_chips;
    QStringList m_refusals;
};

} // namespace pobblewig
