#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/attachments/Attachment.h"

#include <QFrame>

#include <optional>

class QLabel;
class QToolButton;

namespace pobblewig {

class SteadyLabel;

/// Something that goes with the next message: its name, its kind and size, and a button that takes
/// it away.
class AttachmentChip : public QFrame {
    Q_OBJECT

public:
    /// `name` is shown while the attachment is still being read.
    explicit AttachmentChip(const QString& name, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// Nothing while it is being read.
    const std::optional<Attachment>& attachment() const { return m_attachment; }
    void setAttachment(const Attachment& attachment);

    void focusRemove();

Q_SIGNALS:
    void removed();

private:
    void setName(const QString& name);
    void showFace();

    Palette m_palette;
    std::optional<Attachment> m_attachment;
    QLabel* m_face;
    SteadyLabel* m_name;
    SteadyLabel* m_detail;
    QToolButton* m_remove;
};

} // namespace pobblewig
