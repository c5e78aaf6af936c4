#include "presence/FirstMinute.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FirstMinute)
};

std::vector<FirstMinute::Suggestion> withoutModel()
{
    return {
        { Texts::tr("How do I set up a model?"),
            Texts::tr("Put MAIN_MODEL_BASE_URL, MAIN_MODEL_ID and MAIN_MODEL_API_KEY into the file "
                      "~/.config/Pobblewig/environment, one per line, as in "
                      "MAIN_MODEL_ID=some-model. It counts from your next message on. Any server "
                      "that speaks the chat completions format will do, also one on this "
                      "computer.") },
        { Texts::tr("What do you notice?"),
            Texts::tr("Which application is in front, and for how long. I keep that in files on "
                      "this computer, and a model that you set up is told about it when you talk "
                      "with me. You can pause it in my menu: click me with the right button.") },
        { Texts::tr("What can you do without a model?"),
            Texts::tr("Keep you company. Carry me where you like, pet me with a double click, and "
                      "send me to sleep or choose a mode in my menu. To talk with you and to "
                      "remember things, I need a model.") },
    };
}

} // namespace

QString FirstMinute::greeting()
{
    return Texts::tr("Hello, I am Pobblewig.\nClick me to talk.");
}

QString FirstMinute::sight()
{
    return Texts::tr("I notice which application is in front. You can pause that in my menu.");
}

std::vector<FirstMinute::Suggestion> FirstMinute::suggestions(Model model)
{
    if (model == Model::missing)
        return withoutModel();
    return { { Texts::tr("Remember that my exam is on Friday") }, { Texts::tr("What can you do?") },
        { Texts::tr("Focus for 25 minutes") } };
}

} // namespace pobblewig
