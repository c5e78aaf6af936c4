#include "Greeting.h"

#include <QObject>

namespace pobblewig {

class GreetingModule : public QObject, public Greeting {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.pobblewig.Greeting")
    Q_INTERFACES(pobblewig::Greeting)

public:
    int greet() override { return ++m_count; }

private:
    int m_count = 0;
};

} // namespace pobblewig

#include "GreetingModule.moc"
