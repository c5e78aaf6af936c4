#pragma once

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/Theme.h"
#include "features/PublishedState.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace pobblewig {

/// A page of one of the program's windows. It shows what is published and passes on what the user
/// does. It is made when it is first opened.
class Page : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Called before the page is seen, and at each change from then on.
    virtual void showState(const PublishedState& state) = 0;
    virtual void setTheme(const Palette&) { }

    /// Brings a part of the page into sight, such as one setting. Ignores what it does not have.
    virtual void reveal(const QString&) { }

Q_SIGNALS:
    /// The user has done something that hurts and can be taken back for a while. `done` says what,
    /// as a sentence; an empty one withdraws an earlier offer.
    void undoOffered(const QString& done, const std::function<void()>& undo);

    /// Something is to be opened, such as "pobblewig:settings/models".
    void linkRequested(const QString& link);
};

/// What a window knows of a page before it is made.
struct PageEntry {
    /// As links name it.
    QString id;
    QString title;
    Icons::Name icon;
    std::function<std::unique_ptr<Page>()> make;
};

using PageEntries = std::vector<PageEntry>;

} // namespace pobblewig
