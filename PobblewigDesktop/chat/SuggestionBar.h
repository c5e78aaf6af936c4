#pragma once

#include "presence/FirstMinute.h"

#include <QWidget>

namespace pobblewig {

/// A few things to try, each on a button of its own.
class SuggestionBar : public QWidget {
    Q_OBJECT

public:
    explicit SuggestionBar(QWidget* parent = nullptr);

    void setSuggestions(const std::vector<FirstMinute::Suggestion>& suggestions);

Q_SIGNALS:
    void chosen(const FirstMinute::Suggestion& suggestion);

private:
    std::vector<FirstMinute::Suggestion> m_suggestions;
};

} // namespace pobblewig
