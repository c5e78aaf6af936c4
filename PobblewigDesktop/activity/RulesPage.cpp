#include "PobblewigDesktop/activity/RulesPage.h"

#include "PobblewigDesktop/activity/ActivityCharts.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/Switch.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/pages/FieldRow.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int gap = 8;

QString watched(const RuleTrigger& trigger)
{
    if (trigger.category)
        return ActivityCharts::name(*trigger.category);
    QStringList names(trigger.applicationNames.begin(), trigger.applicationNames.end());
    names.append(QStringList(trigger.domains.begin(), trigger.domains.end()));
    return names.join(QStringLiteral(", "));
}

QString description(const AccountabilityRule& rule)
{
    return RulesPage::tr("After %1 of %2, then not again for %3.")
        .arg(ActivityCharts::duration(rule.trigger.thresholdMinutes * 60.0), watched(rule.trigger),
            ActivityCharts::duration(rule.cooldownMinutes * 60.0));
}

/// A verdict begins with the name of its rule.
QString withoutName(const QString& verdict, const QString& name)
{
    return verdict.mid(name.size() + 2);
}

} // namespace

RulesPage::RulesPage(AppCoordinator& coordinator)
    : FormPage(tr("Rules"))
    , m_coordinator(coordinator)
    , m_list(new QWidget)
    , m_offer(&offer())
{
    addExplanation(tr("A rule lets Pobblewig check in when you have spent a long time with "
                      "something. Ask in the chat for a new one, in your own words."));
    auto* const column = new QVBoxLayout(m_list);
    column->setContentsMargins(0, gap, 0, gap);
    column->setSpacing(0);
    add(*m_list);
    add(*m_offer);
}

void RulesPage::showState(const PublishedState& state)
{
    const auto& rules = state.of<ActivityState>().ruleList;
    std::vector<QUuid> ids;
    std::ranges::transform(rules, std::back_inserter(ids), &AccountabilityRule::id);
    if (ids != m_shown)
        showRules(rules);
    m_shown = std::move(ids);
    m_offer->setVisible(rules.empty());
    const auto verdicts = m_coordinator.diagnostics().ruleVerdicts;
    for (size_t number = 0; number < rules.size(); ++number) {
        const auto& rule = rules[number];
        m_rows[number].isOn->showOn(rule.enabled);
        m_rows[number].row->setExplanation(
            tr("%1 Now: %2.")
                .arg(description(rule), withoutName(verdicts.value(qsizetype(number)), rule.name)));
    }
}

void RulesPage::setTheme(const Palette& palette)
{
    m_palette = palette;
    for (const auto& row : m_rows)
        row.isOn->setTheme(palette);
    for (auto* const remove : m_list->findChildren<QToolButton*>())
        remove->setIcon(Icons::icon(Icons::Name::close, palette.text, palette.muted));
}

QWidget& RulesPage::offer()
{
    auto* const offer = new QWidget;
    auto* const column = new QVBoxLayout(offer);
    column->setContentsMargins(0, gap, 0, gap);
    auto* const words = new WrappedLabel(
        tr("There is no rule yet. One to begin with: a check-in after 90 minutes of YouTube. It "
           "comes switched off."));
    PanelStyle::setRole(*words, QStringLiteral("detail"));
    column->addWidget(words);
    auto* const begin = new QPushButton(tr("Add this rule"));
    begin->setAutoDefault(false);
    column->addWidget(begin, 0, Qt::AlignLeading);
    connect(begin, &QPushButton::clicked, this, [this] {
        auto& desk = m_coordinator.activityDesk();
        desk.saveRule(AccountabilityRule::youtubeTemplate(desk.now()));
    });
    return *offer;
}

void RulesPage::showRules(const std::vector<AccountabilityRule>& rules)
{
    while (auto* const item = m_list->layout()->takeAt(0)) {
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
    m_rows.clear();
    for (const auto& rule : rules) {
        m_rows.push_back(line(rule));
        m_list->layout()->addWidget(m_rows.back().row);
    }
}

RulesPage::Row RulesPage::line(const AccountabilityRule& rule)
{
    auto* const isOn = new Switch;
    isOn->setTheme(m_palette);
    auto* const remove = new QToolButton;
    remove->setIcon(Icons::icon(Icons::Name::close, m_palette.text, m_palette.muted));
    remove->setAccessibleName(tr("Delete %1").arg(rule.name));
    remove->setToolTip(remove->accessibleName());
    auto* const controls = new QWidget;
    auto* const row = new QHBoxLayout(controls);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    row->addWidget(isOn);
    row->addWidget(remove);
    connect(isOn, &Switch::switched, this, [this, id = rule.id](bool isEnabled) {
        m_coordinator.activityDesk().setRuleEnabled(id, isEnabled);
    });
    connect(remove, &QToolButton::clicked, this, [this, rule] { deleteRule(rule); });
    return { isOn, new FieldRow({ rule.name }, *controls, *isOn) };
}

void RulesPage::deleteRule(const AccountabilityRule& rule)
{
    auto& desk = m_coordinator.activityDesk();
    desk.deleteRule(rule.id);
    Q_EMIT undoOffered(tr("%1 is deleted.").arg(rule.name), [&desk, rule] { desk.saveRule(rule); });
}

} // namespace pobblewig
