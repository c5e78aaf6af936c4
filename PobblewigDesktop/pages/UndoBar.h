#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

#include <functional>

namespace pobblewig {

class Banner;

/// Says what has been done, and offers for a while to take it back.
class UndoBar : public QWidget {
    Q_OBJECT

public:
    static constexpr std::chrono::seconds time { 10 };

    explicit UndoBar(QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// Takes the place of an earlier offer.
    void offer(const QString& done, std::function<void()> undo);

private:
    void undo();
    void end();

    Banner* m_banner;
    QTimer m_timer;
    std::function<void()> m_undo;
};

} // namespace pobblewig
