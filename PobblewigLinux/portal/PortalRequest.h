#pragma once

#include "foundation/Stream.h"
#include "foundation/Task.h"

#include <QDBusConnection>
#include <QVariantMap>

#include <chrono>
#include <variant>

namespace pobblewig {

/// One question to the desktop portal, which answers by a signal once it has asked the user.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    struct Question {
        QString interface;
        QString method;
        /// Those before the options, which every method has last.
        QVariantList arguments;
        QVariantMap options = {};
    };

    struct Answer {
        /// 0 if all went well; anything else is a refusal, by the user or by the desktop.
        uint response = 0;
        QVariantMap results;
    };

    /// Nothing if there is no such portal or no answer in time; then the question is withdrawn.
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
