#include "validation/BundlePath.h"

#include <QDir>

bool leadsOut(const QString &relativePath)
{
    const auto path = QDir::cleanPath(u'.' + (u'/' + relativePath));
    return path == u".." || path.startsWith(u"../");
}
