#pragma once

#include "PobblewigDesktop/pages/SettingControl.h"

class QLineEdit;
class QListWidget;
class QPushButton;

namespace pobblewig {

class TextControl : public SettingControl {
public:
    explicit TextControl(const TextSetting& kind);

    void show(const AppSettings& settings) override;
    QWidget& field() override;
    bool isWide() const override { return true; }

private:
    TextSetting m_kind;
    QLineEdit* m_text;
    QString m_shown;
};

/// The entries, and a field for another one.
class ListControl : public SettingControl {
    Q_OBJECT

public:
    explicit ListControl(const ListSetting& kind);

    void show(const AppSettings& settings) override;
    QWidget& field() override;
    bool isWide() const override { return true; }

private:
    void add();
    void removeSelected();
    void propose(const QStringList& entries);
    void fitHeight();

    ListSetting m_kind;
    QStringList m_entries;
    QListWidget* m_list;
    QLineEdit* m_new;
    QPushButton* m_remove;
};

} // namespace pobblewig
