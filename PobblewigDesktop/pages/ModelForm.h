#pragma once

#include "wire/ModelDesk.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace pobblewig {

class WrappedLabel;

/// Where the user names a model: one of those that servers on this computer have, or an address, a
/// name and a key. It can be tried out before it is used; what came of that is said in words.
class ModelForm : public QWidget {
    Q_OBJECT

public:
    /// The desk must outlive the form.
    ModelForm(ModelDesk& desk, ModelUse use, QWidget* parent = nullptr);

    /// Looks for servers on this computer. Called by itself when the form is shown first.
    void findServers();

    /// What the fields say.
    ModelDesk::Choice choice() const;

Q_SIGNALS:
    /// The model is in use from the next message on.
    void chosen(const QString& modelID);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void arrange();
    void connectControls();
    void showServers(const std::vector<LocalServers::Server>& servers);
    void takeServer(int row);
    void askForModels();
    void tryOut();
    void use(ModelDesk::KeyPlace place);
    void offerFile(const ModelDesk::Choice& refused);
    void showTrial(const ModelDesk::Choice& tried, const ModelDesk::Trial& trial);
    void tell(const QString& text, const QString& role);
    void setBusy(bool isBusy);

    ModelDesk& m_desk;
    ModelUse m_use;
    bool m_hasLooked = false;
    QComboBox* m_servers;
    QPushButton* m_again;
    QLineEdit* m_address;
    QComboBox* m_model;
    QLineEdit* m_key;
    QPushButton* m_try;
    QPushButton* m_choose;
    WrappedLabel* m_outcome;
    /// The file's lines, where the keyring does not take the key.
    QLabel* m_lines;
    QPushButton* m_useFile;
};

} // namespace pobblewig
