#include "updates/UnpackingMark.h"

#include "platform/AtomicFile.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"

#include <unistd.h>

UnpackingMark::UnpackingMark(const QByteArray &folder)
    : m_path(pathByAppending(pathWithoutLastComponent(folder), "." + lastPathComponent(folder) + ".unpacking"))
{ }

bool UnpackingMark::isSet() const
{
    return hasEntry(m_path);
}

std::optional<KRError> UnpackingMark::set() const
{
    return writeFileAtomically(m_path, {});
}

void UnpackingMark::clear() const
{
    ::unlink(m_path.constData());
}
