#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QToolButton;

namespace pobblewig {

/// Names a day or a week, and leads to the one before and the one after.
class DateSteps : public QWidget {
    Q_OBJECT

public:
    struct Words {
        QString earlier;
        QString later;
        QString present;
    };

    explicit DateSteps(const Words& words);

    void setTheme(const Palette& palette);

    /// What is shown; `isPresent` if nothing comes after it.
    void setShown(const QString& name, bool isPresent);

Q_SIGNALS:
    /// -1 for the one before, 1 for the one after.
    void stepped(int direction);
    void presentRequested();

private:
    QToolButton* m_earlier;
    QLabel* m_name;
    QToolButton* m_later;
    QPushButton* m_present;
};

} // namespace pobblewig
