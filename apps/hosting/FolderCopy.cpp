#include "hosting/FolderCopy.h"

#include <QFile>

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
    std::filesystem::copy(pathOf(from), pathOf(to), Options::recursive | Options::copy_symlinks, error);
    return !error;
}
