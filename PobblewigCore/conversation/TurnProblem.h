#pragma once

#include "conversation/ChatProblem.h"
#include "foundation/Moment.h"
#include "wire/LLMError.h"
#include "wire/ModelProviding.h"

#include <QObject>

namespace pobblewig {

/// Why the last turn failed, for the user. Asks a server that does not have the model for those
/// that it has. Lives as long as the process.
class TurnProblem : public QObject {
    Q_OBJECT

public:
    /// `models` and `moment` must outlive this object.
    TurnProblem(ModelProviding& models, const Moment& moment, QString environmentFile);

    const std::optional<ChatProblem>& current() const { return m_current; }

    /// The same as a text with all particulars, for other purposes than to be shown.
    const std::optional<QString>& text() const { return m_text; }

    /// When it was reported.
    TimePoint since() const { return m_since; }

    void report(const LLMFailure& failure, const AskedModel& asked);

    /// A problem without a model's part in it, in a text for the user.
    void report(const QString& text);
    void clear();

    /// Lets the model serve until the program ends.
    void chooseModel(const QString& modelID);

Q_SIGNALS:
    void changed();

private:
    void begin(ChatProblem problem, const QString& text);
    void show(std::optional<ChatProblem> problem);
    Task<> offerModels(AskedModel asked);

    ModelProviding& m_models;
    const Moment& m_moment;
    QString m_environmentFile;
    std::optional<ChatProblem> m_current;
    std::optional<QString> m_text;
    AskedModel m_asked;
    TimePoint m_since;
};

} // namespace pobblewig
