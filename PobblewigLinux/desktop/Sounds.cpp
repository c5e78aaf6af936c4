#include "PobblewigLinux/desktop/Sounds.h"

#include "PobblewigLinux/desktop/SoundLogic.h"

#include <QLibrary>

#include <canberra.h>

#include <algorithm>

namespace pobblewig {

/// The library and its connection to the sound server, both created for the first sound.
class Sounds::Canberra {
public:
    explicit Canberra(QString library)
        : m_library(std::move(library))
    {
    }

    ~Canberra()
    {
        if (m_context)
            m_destroy(m_context);
    }
    Q_DISABLE_COPY_MOVE(Canberra)

    void playAny(const QByteArrayList& sounds)
    {
        if (!m_context)
            open();
        if (m_context)
            std::ranges::find_if(sounds, [this](const auto& sound) { return play(sound); });
    }

private:
    void open()
    {
        const auto create = resolve<decltype(&ca_context_create)>("ca_context_create");
        m_destroy = resolve<decltype(&ca_context_destroy)>("ca_context_destroy");
        m_play = resolve<decltype(&ca_context_play)>("ca_context_play");
        if (create && m_destroy && m_play)
            create(&m_context);
    }

    template <typename Function>
    Function resolve(const char* name)
    {
        return reinterpret_cast<Function>(m_library.resolve(name));
    }

    bool play(const QByteArray& sound)
    {
        constexpr const char* end = nullptr;
        return m_play(m_context, 0, CA_PROP_EVENT_ID, sound.constData(), CA_PROP_APPLICATION_NAME,
                   "Pobblewig", end)
            == CA_SUCCESS;
    }

    QLibrary m_library;
    ca_context* m_context = nullptr;
    decltype(&ca_context_destroy) m_destroy = nullptr;
    decltype(&ca_context_play) m_play = nullptr;
};

Sounds::Sounds(QString library)
    : m_canberra(std::make_unique<Canberra>(std::move(library)))
{
    m_background.setMaxThreadCount(1);
}

Sounds::~Sounds() = default;

void Sounds::play(QStringView name)
{
    m_background.start([this, sounds = SoundLogic::nearest(name)] { m_canberra->playAny(sounds); });
}

} // namespace pobblewig
