#pragma once

#include "PobblewigDesktop/settings/ConnectionTexts.h"

#include <QWidget>

class QComboBox;
class QPushButton;

namespace pobblewig {

class WrappedLabel;

/// Where the calendars are read from, and how that is going.
class CalendarForm : public QWidget {
    Q_OBJECT

public:
    /// A folder, or the desktop's own service.
    struct Source {
        bool isFolder = false;
        QString folder = {};

        bool operator==(const Source&) const = default;
    };

    explicit CalendarForm(QWidget* parent = nullptr);

    /// Nothing where there is none to choose.
    void showSource(const std::optional<Source>& source);
    void showStatus(const ConnectionStatus& status, TimePoint now, const Calendar& calendar);

Q_SIGNALS:
    void sourceChosen(const pobblewig::CalendarForm::Source& source);
    void syncRequested();

private:
    void arrange();
    void choose(int kind);
    void askForFolder();

    QComboBox* m_kind;
    QPushButton* m_folder;
    QWidget* m_choice;
    QPushButton* m_sync;
    WrappedLabel* m_state;
    std::optional<Source> m_source;
};

} // namespace pobblewig
