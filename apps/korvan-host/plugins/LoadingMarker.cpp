#include "plugins/LoadingMarker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

LoadingMarker::LoadingMarker(const QString &path)
    : m_path(path)
{ }

LoadingMarker::~LoadingMarker()
{
    finish();
}

bool LoadingMarker::wasLeftBehind() const
{
    const int file = open(QFile::encodeName(m_path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool isFree = flock(file, LOCK_EX | LOCK_NB) == 0; // the system unlocks it when its program ends
    close(file);
    return isFree;
}

void LoadingMarker::begin()
{
    if (m_file >= 0)
        return;
    QDir().mkpath(QFileInfo(m_path).path());
    m_file = open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (m_file >= 0 && flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        close(m_file); // another program is loading: the marker is its own
        m_file = -1;
    }
}

void LoadingMarker::finish()
{
    if (m_file < 0)
        return;
    QFile::remove(m_path);
    close(m_file);
    m_file = -1;
}
