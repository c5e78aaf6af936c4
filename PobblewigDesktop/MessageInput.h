#pragma once

#include <QPlainTextEdit>

namespace pobblewig {

/// Where the user writes: Enter sends, Shift+Enter begins a new line. Grows to six lines.
class MessageInput : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit MessageInput(QWidget* parent = nullptr);

    bool isBlank() const;

Q_SIGNALS:
    void submitted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitHeight();
};

} // namespace pobblewig
