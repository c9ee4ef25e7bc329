#include "validation/BundlePath.h"

#include <QDir>
#include <QFileInfo>

bool isFileInBundle(const QString &bundle, const QString &relativePath)
{
    // Qt would pass over a slash at the end, and complain about a zero.
    return !relativePath.endsWith(u'/') && !relativePath.contains(QChar())
        && QFileInfo(bundle + u'/' + relativePath).isFile();
}

bool leadsOut(const QString &bundle, const QString &relativePath)
{
    const auto path = QDir::cleanPath(u'.' + (u'/' + relativePath));
    if (path == u".." || path.startsWith(u"../"))
        return true;
    const auto target = QFileInfo(bundle + u'/' + relativePath).canonicalFilePath();
    return !target.startsWith(QFileInfo(bundle).canonicalFilePath() + u'/');
}
