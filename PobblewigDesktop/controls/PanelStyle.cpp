#include "PobblewigDesktop/controls/PanelStyle.h"

#include "PobblewigDesktop/controls/Icons.h"

#include <QApplication>
#include <QLabel>
#include <QStyle>

#include <algorithm>

namespace pobblewig {

namespace {

/// Names in braces are filled in.
constexpr auto sheet = R"(
QFrame#header { background: {window}; border: none; border-bottom: 1px solid {hairline}; }
QFrame#banner, QFrame#findBar, QFrame#chip {
    background: {surface}; border: 1px solid {hairline}; border-radius: 10px; }
QFrame#banner[role="danger"] { border-color: {danger}; }
QFrame#chip { border-radius: 8px; }
QFrame#chip[role="danger"] { border-color: {danger}; }
QFrame#chip QToolButton { min-width: 24px; min-height: 24px; }
QFrame#banner[role="danger"] QLabel { color: {danger}; }
QFrame#banner QLabel[role="advice"] { color: {text}; }
QFrame#sheet {
    background: {surface}; border: 1px solid {outline}; border-radius: 14px; }
QFrame#sheet QScrollArea > QWidget > QWidget { background: {surface}; }
QFrame#thinking { background: transparent; border: none; }
QFrame#thinking QPushButton { text-align: left; padding: 0 4px; }
QGroupBox#proposal {
    background: {surface}; border: 1px solid {hairline}; border-radius: 10px; margin: 0; }
* { color: {text}; }
QDialog { background: {window}; }
QLabel { background: transparent; }
QLabel[role="title"] { font-size: {titleSize}pt; font-weight: 600; }
QLabel[role="caption"] { font-size: {captionSize}pt; color: {muted}; }
QLabel[role="detail"] { color: {muted}; }
QScrollArea { background: transparent; border: none; }
QListView { background: {window}; border: none; outline: none; }
QFileDialog QListView { selection-background-color: {selection}; selection-color: {text}; }
QTreeView, QTableView, QComboBox, QComboBox QAbstractItemView {
    background: {surface}; border: 1px solid {outline}; outline: none;
    selection-background-color: {selection}; selection-color: {text}; }
QComboBox { border-radius: 8px; padding: 0 8px; min-height: 28px; }
QComboBox::drop-down { border: none; width: 22px; }
QComboBox::down-arrow, QSpinBox::down-arrow { image: url({arrowDown}); width: 10px; }
QSpinBox::up-arrow { image: url({arrowUp}); width: 10px; }
QSpinBox::up-button, QSpinBox::down-button { border: none; background: transparent; width: 20px; }
QTreeView#entries { border-radius: 8px; padding: 4px; selection-background-color: transparent; }
QTableView { border-radius: 8px; padding: 4px; }
QTreeView#entries:focus, QTableView:focus { border-color: {accent}; }
QCheckBox { spacing: 8px; min-height: 24px; }
QCheckBox::indicator {
    width: 16px; height: 16px; background: {surface}; border: 1px solid {outline};
    border-radius: 4px; }
QCheckBox::indicator:checked {
    background: {accent}; border-color: {accent}; image: url({tick}); }
QCheckBox::indicator:focus { border: 2px solid {accent}; width: 14px; height: 14px; }
QHeaderView { background: {window}; border: none; }
QHeaderView::section {
    background: {window}; border: none; border-bottom: 1px solid {hairline}; padding: 4px 8px; }
QListView#days::item { padding: 8px; border-radius: 8px; }
QListView#days::item:selected { background: {bubble}; color: {text}; }
QListView#pages { background: transparent; }
QListView#pages::item { padding: 8px; border-radius: 8px; }
QListView#pages::item:selected { background: {bubble}; color: {text}; }
QListView[role="list"] {
    background: {surface}; border: 1px solid {outline}; border-radius: 8px; padding: 4px;
    selection-background-color: {selection}; selection-color: {text}; }
QLabel[role="heading"] { font-weight: 600; }
QLabel[role="problem"] { color: {danger}; }
QSpinBox, QKeySequenceEdit > QLineEdit {
    background: {surface}; border: 1px solid {outline}; border-radius: 8px; padding: 0 8px;
    min-height: 28px; }
QSpinBox:focus, QComboBox:focus, QListView[role="list"]:focus { border-color: {accent}; }
QSlider::groove:horizontal { background: {hairline}; height: 4px; border-radius: 2px; }
QSlider::sub-page:horizontal { background: {accent}; border-radius: 2px; }
QSlider::handle:horizontal {
    background: {surface}; border: 1px solid {outline}; width: 16px; margin: -7px 0;
    border-radius: 8px; }
QSlider::handle:horizontal:focus { border: 2px solid {accent}; }
QPlainTextEdit, QLineEdit {
    background: {surface}; border: 1px solid {outline}; border-radius: 10px;
    selection-background-color: {selection}; selection-color: {text}; }
QPlainTextEdit { padding: 2px 6px; }
QLineEdit { padding: 0 8px; min-height: 28px; }
QPlainTextEdit:focus, QLineEdit:focus { border: 2px solid {accent}; }
QPlainTextEdit:focus { padding: 1px 5px; }
QLineEdit:focus { padding: 0 7px; min-height: 26px; }
QToolButton, QPushButton {
    background: transparent; border: 1px solid transparent; border-radius: 8px;
    min-height: 30px; min-width: 30px; padding: 0; }
QPushButton { background: {surface}; border-color: {outline}; padding: 0 11px; }
QToolButton:hover, QPushButton:hover { background: {hairline}; }
QToolButton:pressed, QPushButton:pressed { background: {selection}; }
QToolButton:focus, QPushButton:focus { border: 2px solid {accent}; }
QLineEdit > QToolButton { border: none; min-width: 0; min-height: 0; }
QToolButton::menu-indicator, QPushButton::menu-indicator { image: none; }
QToolButton[role="primary"] { background: {accent}; border-radius: 10px; }
QToolButton[role="primary"]:disabled { background: {hairline}; }
QToolButton[role="primary"]:focus { border: 2px solid {text}; }
QPushButton[role="primary"] {
    background: {accent}; border-color: {accent}; color: {onAccent}; font-weight: 600; }
QPushButton[role="primary"]:hover { border-color: {text}; }
QPushButton[role="primary"]:pressed { background: {text}; color: {window}; }
QPushButton[role="primary"]:focus { border: 2px solid {text}; }
QPushButton[role="danger"] { border-color: {danger}; color: {danger}; }
QPushButton[role="quiet"] { background: transparent; border-color: transparent; color: {muted}; }
QPushButton[role="quiet"]:hover { background: {hairline}; color: {text}; }
QPushButton[role="quiet"]:focus { border-color: {accent}; }
QPushButton:disabled { background: {hairline}; border-color: {hairline}; color: {muted}; }
QPushButton[role="quiet"]:disabled {
    background: transparent; border-color: transparent; color: {outline}; }
QToolButton#opener { min-width: 12px; }
QToolButton#expander { min-height: 20px; min-width: 20px; }
QWidget#messageButtons { background: transparent; }
QWidget#messageButtons QToolButton { min-height: 22px; min-width: 22px; }
QToolButton#jumpToLatest {
    background: {surface}; border: 1px solid {outline}; border-radius: 16px; }
QToolButton#jumpToLatest:hover { background: {hairline}; }
QMenu { background: {surface}; border: 1px solid {hairline}; padding: 4px; }
QMenu::item { padding: 6px 20px 6px 8px; border-radius: 6px; }
QMenu::item:disabled { color: {muted}; }
QMenu::separator { height: 1px; background: {hairline}; margin: 4px 8px; }
QMenu::item:selected { background: {bubble}; }
QToolTip { background: {surface}; color: {text}; border: 1px solid {hairline}; padding: 4px; }
QScrollBar:vertical { background: transparent; width: 10px; margin: 2px; }
QScrollBar::handle:vertical { background: {outline}; border-radius: 3px; min-height: 32px; }
QScrollBar::handle:vertical:hover { background: {muted}; }
QScrollBar::handle:vertical:disabled { background: transparent; }
QScrollBar:horizontal { background: transparent; height: 10px; margin: 2px; }
QScrollBar::handle:horizontal { background: {outline}; border-radius: 3px; min-width: 32px; }
QScrollBar::handle:horizontal:hover { background: {muted}; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)";

Icons::Name tick(const Palette& palette)
{
    constexpr int half = 128;
    return palette.onAccent.lightness() < half ? Icons::Name::tick : Icons::Name::tickLight;
}

QString filledIn(QString text, const Palette& palette, double fontSize)
{
    const std::pair<QLatin1String, QString> values[] = {
        { QLatin1String("{window}"), palette.window.name() },
        { QLatin1String("{surface}"), palette.surface.name() },
        { QLatin1String("{text}"), palette.text.name() },
        { QLatin1String("{muted}"), palette.muted.name() },
        { QLatin1String("{hairline}"), palette.hairline.name() },
        { QLatin1String("{outline}"), palette.outline.name() },
        { QLatin1String("{danger}"), palette.danger.name() },
        { QLatin1String("{accent}"), palette.accent.name() },
        { QLatin1String("{onAccent}"), palette.onAccent.name() },
        { QLatin1String("{bubble}"), palette.bubble.name() },
        { QLatin1String("{selection}"), palette.selection.name() },
        { QLatin1String("{tick}"), Icons::resource(tick(palette)) },
        { QLatin1String("{arrowUp}"), Icons::resource(Icons::Name::arrowUp) },
        { QLatin1String("{arrowDown}"), Icons::resource(Icons::Name::arrowDown) },
        { QLatin1String("{titleSize}"), QString::number(fontSize + 2) },
        { QLatin1String("{captionSize}"), QString::number(std::max(6.0, fontSize - 1.5)) },
    };
    for (const auto& [name, value] : values)
        text.replace(name, value);
    return text;
}

} // namespace

void PanelStyle::apply(QWidget& window, const Palette& palette)
{
    const auto wanted =
        filledIn(QString::fromUtf8(sheet), palette, QApplication::font().pointSizeF());
    if (wanted == window.styleSheet())
        return;
    // What an earlier sheet has replaced in the palette would come back over the new one. Before
    // the window is shown, its children would keep the earlier sheet instead.
    if (window.testAttribute(Qt::WA_WState_Polished))
        window.setStyleSheet({});
    window.setPalette(Theme::widgetPalette(palette));
    window.setStyleSheet(wanted);
}

void PanelStyle::setRole(QWidget& widget, const QString& role)
{
    if (widget.property("role").toString() == role)
        return;
    widget.setProperty("role", role);
    if (!widget.testAttribute(Qt::WA_WState_Polished))
        return;
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
}

void PanelStyle::setText(QLabel& label, const QString& text)
{
    label.setText(text);
    label.setAccessibleDescription(text);
}

bool PanelStyle::isStill(const QWidget& widget)
{
    return widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget) == 0;
}

} // namespace pobblewig
