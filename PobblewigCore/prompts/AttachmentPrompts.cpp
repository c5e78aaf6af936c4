#include "prompts/AttachmentPrompts.h"

#include <QStringBuilder>

namespace pobblewig {

QString Prompts::attachedFile(const QString& name, const QString& text, bool isCut)
{
    const auto end = isCut
        ? QStringLiteral("(Only the beginning of %1 is shown; the rest was too long.)").arg(name)
        : QStringLiteral("(End of %1)").arg(name);
    return u"Attached file " % name % u":\n" % text % u'\n' % end % u"\n\n";
}

} // namespace pobblewig
