#include "PobblewigDesktop/pages/ModelForm.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/pages/FieldRow.h"
#include "conversation/ProblemLogic.h"

#include <QComboBox>
#include <QCoroTask>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include <utility>

namespace pobblewig {

namespace {

constexpr int gap = 8;
constexpr int fieldWidth = 280;

QPushButton* button(const QString& name, const QString& role = {})
{
    auto* const button = new QPushButton(name);
    button->setAccessibleName(name);
    button->setAutoDefault(false);
    PanelStyle::setRole(*button, role);
    return button;
}

} // namespace

ModelForm::ModelForm(ModelDesk& desk, ModelUse use, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_use(use)
    , m_servers(new QComboBox)
    , m_again(button(tr("Look again")))
    , m_address(new QLineEdit)
    , m_model(new QComboBox)
    , m_key(new QLineEdit)
    , m_try(button(tr("Test")))
    , m_choose(button(tr("Use this model"), QStringLiteral("primary")))
    , m_outcome(new WrappedLabel({}))
    , m_lines(new QLabel)
    , m_useFile(button(tr("Write these lines into the file")))
{
    m_address->setPlaceholderText(QStringLiteral("http://127.0.0.1:11434/v1"));
    m_model->setEditable(true);
    m_key->setEchoMode(QLineEdit::Password);
    m_lines->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_lines->setTextFormat(Qt::PlainText);
    m_lines->setAccessibleName(tr("Lines for the file"));
    m_lines->hide();
    m_useFile->hide();
    for (QWidget* const field :
        { static_cast<QWidget*>(m_servers), static_cast<QWidget*>(m_address),
            static_cast<QWidget*>(m_model), static_cast<QWidget*>(m_key) })
        field->setFixedWidth(fieldWidth);
    arrange();
    connectControls();
}

void ModelForm::findServers()
{
    m_again->setEnabled(false);
    m_servers->clear();
    m_servers->addItem(tr("Looking for servers…"));
    QCoro::connect(m_desk.localServers(), this,
        [this](const std::vector<LocalServers::Server>& servers) { showServers(servers); });
}

ModelDesk::Choice ModelForm::choice() const
{
    return { .baseURL = m_address->text().trimmed(),
        .modelID = m_model->currentText().trimmed(),
        .key = m_key->text().trimmed() };
}

void ModelForm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!std::exchange(m_hasLooked, true))
        findServers();
}

void ModelForm::arrange()
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* const found = new QWidget;
    auto* const foundRow = new QHBoxLayout(found);
    foundRow->setContentsMargins(0, 0, 0, 0);
    foundRow->setSpacing(gap);
    foundRow->addWidget(m_servers);
    foundRow->addWidget(m_again);
    foundRow->addStretch(1);
    column->addWidget(new FieldRow(
        { tr("On this computer"), tr("Programs that run models here are found by themselves.") },
        *found, *m_servers, FieldRow::Place::below));
    column->addWidget(new FieldRow({ tr("Address") }, *m_address));
    column->addWidget(new FieldRow({ tr("Model") }, *m_model));
    m_model->lineEdit()->setAccessibleName(m_model->accessibleName());
    column->addWidget(new FieldRow(
        { tr("Key"), tr("It goes into the keyring. Servers on this computer usually want none.") },
        *m_key));
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(gap);
    buttons->addWidget(m_choose);
    buttons->addWidget(m_try);
    buttons->addStretch(1);
    column->addSpacing(gap);
    column->addLayout(buttons);
    column->addSpacing(gap);
    column->addWidget(m_outcome);
    column->addWidget(m_lines);
    column->addWidget(m_useFile, 0, Qt::AlignLeading);
}

void ModelForm::connectControls()
{
    connect(m_again, &QPushButton::clicked, this, &ModelForm::findServers);
    connect(m_servers, &QComboBox::activated, this, &ModelForm::takeServer);
    connect(m_address, &QLineEdit::editingFinished, this, &ModelForm::askForModels);
    connect(m_try, &QPushButton::clicked, this, &ModelForm::tryOut);
    connect(m_choose, &QPushButton::clicked, this, [this] { use(ModelDesk::KeyPlace::keyring); });
    connect(m_useFile, &QPushButton::clicked, this, [this] { use(ModelDesk::KeyPlace::file); });
}

void ModelForm::showServers(const std::vector<LocalServers::Server>& servers)
{
    m_again->setEnabled(true);
    m_servers->clear();
    if (servers.empty())
        m_servers->addItem(tr("No server was found"));
    for (const auto& server : servers) {
        for (const auto& model : server.models)
            m_servers->addItem(tr("%1 at %2").arg(model, QUrl(server.baseURL).authority()),
                QStringList { server.baseURL, model });
    }
    if (m_address->text().isEmpty() && !servers.empty())
        takeServer(0);
}

void ModelForm::takeServer(int row)
{
    const auto found = m_servers->itemData(row).toStringList();
    if (found.size() != 2)
        return;
    m_address->setText(found[0]);
    m_model->setCurrentText(found[1]);
    tell({}, {});
}

void ModelForm::askForModels()
{
    if (m_address->text().trimmed().isEmpty())
        return;
    QCoro::connect(m_desk.models(choice()), this, [this](const std::vector<QString>& models) {
        const auto written = m_model->currentText();
        m_model->clear();
        for (const auto& model : models)
            m_model->addItem(model);
        if (!written.isEmpty() || models.empty())
            m_model->setCurrentText(written);
    });
}

void ModelForm::tryOut()
{
    const auto tried = choice();
    setBusy(true);
    tell(tr("Asking the model…"), QStringLiteral("detail"));
    QCoro::connect(m_desk.tryOut(tried), this,
        [this, tried](const ModelDesk::Trial& trial) { showTrial(tried, trial); });
}

void ModelForm::use(ModelDesk::KeyPlace place)
{
    const auto wanted = choice();
    setBusy(true);
    QCoro::connect(m_desk.choose(m_use, wanted, place), this,
        [this, wanted](const tl::expected<void, QString>& outcome) {
            setBusy(false);
            if (!outcome) {
                tell(outcome.error(), QStringLiteral("problem"));
                offerFile(wanted);
                return;
            }
            m_key->clear();
            tell(tr("%1 answers from your next message on.").arg(wanted.modelID),
                QStringLiteral("detail"));
            Q_EMIT chosen(wanted.modelID);
        });
}

void ModelForm::showTrial(const ModelDesk::Choice& tried, const ModelDesk::Trial& trial)
{
    setBusy(false);
    if (trial) {
        const auto seconds = double(trial->count()) / 1000;
        tell(tr("It answered after %1 s.").arg(locale().toString(seconds, 'f', 1)),
            QStringLiteral("detail"));
        return;
    }
    const auto problem = ProblemLogic::problem(trial.error(),
        { .asked = { .server = QUrl(tried.baseURL), .modelID = tried.modelID },
            .environmentFile = m_desk.environmentFile(),
            .now = systemNow() });
    tell(QStringList({ problem.what, problem.advice }).join(u' ').trimmed(),
        QStringLiteral("problem"));
}

void ModelForm::offerFile(const ModelDesk::Choice& refused)
{
    using enum KeychainHelper::State;
    const auto isForKey =
        !refused.key.isEmpty() && (m_desk.keyring() == absent || m_desk.keyring() == locked);
    m_lines->setText(ModelDesk::fileLines(m_use, refused).trimmed());
    m_lines->setVisible(isForKey);
    m_useFile->setVisible(isForKey);
}

void ModelForm::tell(const QString& text, const QString& role)
{
    PanelStyle::setRole(*m_outcome, role);
    m_outcome->setText(text);
    m_lines->hide();
    m_useFile->hide();
    m_outcome->setAccessibleName(text);
}

void ModelForm::setBusy(bool isBusy)
{
    m_try->setEnabled(!isBusy);
    m_choose->setEnabled(!isBusy);
}

} // namespace pobblewig
