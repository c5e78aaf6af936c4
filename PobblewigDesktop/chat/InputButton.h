#pragma once

#include <QString>

class QToolButton;
class QWidget;

namespace pobblewig {

/// A button beside the input. `name` is what assistive technology reads and the tooltip shows.
QToolButton* inputButton(const QString& name, QWidget* parent);

} // namespace pobblewig
