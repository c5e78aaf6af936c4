#include "PobblewigDesktop/assistant/AssistantWindow.h"

#include "desktop/ScriptedParts.h"
#include "desktop/chat/PanelFixture.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedProvider.h"
#include "support/TableRow.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>

namespace pobblewig {

class AssistantWindowTest : public QObject {
    Q_OBJECT

    QPushButton& button(const QString& text) const
    {
        for (auto* const button : m_window->findChildren<QPushButton*>()) {
            if (button->text() == text && button->isVisible())
                return *button;
        }
        qFatal("There is no button %s.", qPrintable(text));
    }

    bool isSetUp() const
    {
        return m_coordinator->state().of<SettingsState>().settings.hasCompletedOnboarding;
    }

private Q_SLOTS:
    void init()
    {
        m_scratch.emplace();
        m_coordinator.emplace(scriptedParts(m_scratch->path().path(), m_model));
        m_window.emplace(*m_coordinator,
            AssistantWindow::Desktop {
                [] { return std::make_unique<QWidget>(); }, [] { return QKeySequence(); } });
        m_window->setTheme(Theme::palette(ColorScheme::light, {}));
        m_window->showState(m_coordinator->state());
        m_window->show();
    }

    void theKeyboardLeadsThroughAllPages()
    {
        const QSignalSpy links(&*m_window, &PageWindow::linkRequested);
        QStringList seen { m_window->currentPage() };
        QVERIFY(!button(u"Back"_s).isEnabled());
        while (!isSetUp() && seen.size() < 9) {
            auto* const next = m_window->findChildren<QPushButton*>().last();
            next->setFocus();
            QTest::keyClick(next, Qt::Key_Space);
            seen.append(m_window->currentPage());
        }
        QCOMPARE(seen,
            QStringList({ u"welcome"_s, u"model"_s, u"companion"_s, u"privacy"_s, u"desktop"_s,
                u"done"_s, u"welcome"_s }));
        QCOMPARE(links.front().front().toString(), u"pobblewig:chat");
        QVERIFY(isSetUp() && !m_window->isVisible());
    }

    void itCanBeLeftAndSkipped()
    {
        button(u"Continue"_s).click();
        QTest::keyClick(&*m_window, Qt::Key_Escape);
        QVERIFY(!m_window->isVisible() && !isSetUp());
        m_window->show();
        QCOMPARE(m_window->currentPage(), u"model");
        button(u"Skip all"_s).click();
        QVERIFY(!m_window->isVisible() && isSetUp());
    }

    void aVoiceIsHeardBeforeItIsChosen()
    {
        m_window->openPage(u"companion"_s);
        auto& persona = *PanelFixture::find<QComboBox>(*m_window, "Persona");
        QStringList examples;
        for (int number = 0; number < persona.count(); ++number) {
            persona.setCurrentIndex(number);
            Q_EMIT persona.activated(number);
            m_window->showState(m_coordinator->state());
            examples.append(PanelFixture::find<QLabel>(*m_window, "How that sounds")->text());
        }
        QVERIFY(examples.size() > 1 && examples.removeDuplicates() == 0);
        QVERIFY(examples.last().contains(u"You: ") && examples.last().contains(u"Pobblewig: "));
    }

private:
    ScriptedProvider m_model;
    std::optional<ScratchDirectory> m_scratch;
    std::optional<AppCoordinator> m_coordinator;
    std::optional<AssistantWindow> m_window;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::AssistantWindowTest)
#include "AssistantWindowTest.moc"
