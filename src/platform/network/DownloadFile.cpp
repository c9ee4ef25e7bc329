#include "platform/network/DownloadFile.h"

#include "platform/network/URLError.h"

#include <QDir>

using namespace Qt::StringLiterals;

DownloadFile::DownloadFile(QUrl url, const QString &folder, Progress progress, DownloadCompletion completion)
    : m_url(std::move(url))
    , m_file(QDir(folder.isEmpty() ? QDir::tempPath() : folder).filePath(u"korvan-download-XXXXXX"_s))
    , m_progress(std::move(progress))
    , m_completion(std::move(completion))
{ }

std::optional<KRError> DownloadFile::openFile()
{
    if (m_file.isOpen() || m_file.open())
        return {};
    return urlError(URLErrorCode::CannotCreateFile, m_url, m_file.errorString());
}

std::optional<KRError> DownloadFile::receive(QByteArrayView bytes, qint64 expectedSize)
{
    if (auto error = openFile())
        return error;
    if (m_file.write(bytes.data(), bytes.size()) != bytes.size() || !m_file.flush())
        return urlError(URLErrorCode::CannotWriteToFile, m_url, m_file.errorString());
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
    const QString path = m_file.fileName(); // which gives the file its name
    m_file.close();
    m_completion(QUrl::fromLocalFile(path), response, {});
    m_file.remove();
}
