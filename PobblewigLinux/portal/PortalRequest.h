#pragma once

#include "foundation/Stream.h"
#include "foundation/Task.h"

#include <QDBusConnection>
#include <QVariantMap>

#include <chrono>
#include <variant>

namespace pobblewig {

/// One request to the desktop portal, which replies with a signal after asking the user.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    struct Question {
        QString interface;
        QString method;
        /// The arguments before the options, which every method takes last.
        QVariantList arguments;
        QVariantMap options = {};
    };

    struct Answer {
        /// 0 for success; any other value is a refusal by the user or the desktop.
        uint response = 0;
        QVariantMap results;
    };

    /// Returns nothing if there is no such portal, or no answer in time. The request is then
    /// withdrawn.
    static Task<std::optional<Answer>> ask(
        QDBusConnection bus, Question question, std::chrono::milliseconds patience);

private Q_SLOTS:
    void respond(uint response, const QVariantMap& results);

private:
    using Answers = Stream<Answer, std::monostate>;

    explicit PortalRequest(QDBusConnection bus);
    void call(Question question);
    void withdraw();

    QDBusConnection m_bus;
    QString m_token;
    QString m_path;
    Answers m_answers;
    Answers::Sink m_sink = m_answers.sink();
};

} // namespace pobblewig
