#include "platform/network/DownloadFile.h"

#include "platform/FileDescriptor.h"
#include "platform/network/AbandonedDownloads.h"
#include "platform/network/URLError.h"

#include <QDir>

#include <cerrno>

using namespace Qt::StringLiterals;

DownloadFile::DownloadFile(QUrl url, const QString &folder, Progress progress, DownloadCompletion completion)
    : m_url(std::move(url))
    , m_folder(folder.isEmpty() ? QDir::tempPath() : folder)
    , m_file(QDir(m_folder).filePath(downloadFilePrefix + u"XXXXXX"_s))
    , m_progress(std::move(progress))
    , m_completion(std::move(completion))
{ }

std::optional<KRError> DownloadFile::openFile()
{
    if (m_file.isOpen())
        return {};
    removeAbandonedDownloads(m_folder);
    if (m_file.open()) {
        markAsInUse(m_file.handle());
        return {};
    }
    return urlError(URLErrorCode::CannotCreateFile, m_url, m_file.errorString());
}

std::optional<KRError> DownloadFile::receive(QByteArrayView bytes, qint64 expectedSize)
{
    if (auto error = openFile())
        return error;
    if (m_file.write(bytes.data(), bytes.size()) != bytes.size() || !m_file.flush())
        return urlError(URLErrorCode::CannotWriteToFile, m_url, qt_error_string(errno));
    m_written += bytes.size();
    m_progress(m_written, expectedSize);
    return {};
}

void DownloadFile::finish(const URLResponse &response, const std::optional<KRError> &error)
{
    std::optional<KRError> failure = error;
    if (!failure)
        failure = openFile(); // an empty body makes a file too
    if (failure) {
        if (m_file.isOpen())
            m_file.remove();
        m_completion({}, response, failure);
        return;
    }
    const FileDescriptor inUse(::dup(m_file.handle())); // until the completion has returned
    const QString path = m_file.fileName(); // which gives the file its name
    m_file.close();
    m_completion(QUrl::fromLocalFile(path), response, {});
    m_file.remove();
}
