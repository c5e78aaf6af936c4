#pragma once

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

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitHeight();

    QColor m_hintColor;
};

} // namespace pobblewig
