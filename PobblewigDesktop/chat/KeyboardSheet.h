#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QFrame>
#include <QPointer>

class QToolButton;

namespace pobblewig {

/// The list of the panel's keys, over the panel. When it closes, the focus returns to where it was.
class KeyboardSheet : public QFrame {
    Q_OBJECT

public:
    explicit KeyboardSheet(QWidget& panel);

    void setTheme(const Palette& palette);
    void open();
    void close();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* list();
    void cover();

    QWidget& m_panel;
    QToolButton* m_close;
    QWidget* m_rows;
    QPointer<QWidget> m_before;
};

} // namespace pobblewig
