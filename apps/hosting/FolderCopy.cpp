#include "hosting/FolderCopy.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace {

std::filesystem::path pathOf(const QString &path)
{
    return std::filesystem::path(QFile::encodeName(path).toStdString());
}

} // namespace

bool copyFolder(const QString &from, const QString &to)
{
    using Options = std::filesystem::copy_options;
    std::error_code error;
    std::filesystem::create_directories(pathOf(to), error);
    const auto folder = QFileInfo(from).canonicalFilePath(); // else a link would be copied as one
    std::filesystem::copy(pathOf(folder), pathOf(to), Options::recursive | Options::copy_symlinks, error);
    return !error;
}
