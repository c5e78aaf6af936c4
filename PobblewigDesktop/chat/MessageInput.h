#pragma once

#include "PobblewigDesktop/controls/DropContents.h"
#include "PobblewigDesktop/controls/Theme.h"

#include <QPlainTextEdit>

namespace pobblewig {

/// The field for a new message: Enter sends it, Shift+Enter begins a new line, Up in an empty
/// field asks for what was sent last. Grows to six lines.
class MessageInput : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit MessageInput(QWidget* parent = nullptr);

    bool isBlank() const;
    void setTheme(const Palette& palette);

Q_SIGNALS:
    void submitted();
    void recalled();

    /// The user has pasted or dropped something that goes with a message.
    void offered(const DropContents& contents);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void fitHeight();

    QColor m_hintColor;
};

} // namespace pobblewig
