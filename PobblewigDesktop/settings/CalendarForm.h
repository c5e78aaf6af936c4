#pragma once

#include "PobblewigDesktop/settings/ConnectionTexts.h"
#include "connections/calendars/CalendarDataProviding.h"

#include <QWidget>

class QComboBox;
class QPushButton;

namespace pobblewig {

class WrappedLabel;

/// Where the calendars are read from, and how that is going.
class CalendarForm : public QWidget {
    Q_OBJECT

public:
    explicit CalendarForm(QWidget* parent = nullptr);

    /// Nothing where there is none to choose.
    void showSource(const std::optional<CalendarSource>& source);
    void showStatus(const ConnectionStatus& status, TimePoint now, const Calendar& calendar);

Q_SIGNALS:
    void sourceChosen(const pobblewig::CalendarSource& source);
    void syncRequested();

private:
    void arrange();
    void choose(int row);
    void askForFolder();

    QComboBox* m_kind;
    QPushButton* m_folder;
    QWidget* m_choice;
    QPushButton* m_sync;
    WrappedLabel* m_state;
    std::optional<CalendarSource> m_source;
};

} // namespace pobblewig
