#pragma once

#include "platform/Result.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A copy of what is to be installed, in a folder of its own that goes with this object. Nothing of it has a place
/// among the plug-ins yet. Any thread, one at a time.
class StagedPlugin
{
public:
    /// From a folder that is a plug-in, or from an archive of one, in a new folder below `parent`. What leads out of
    /// itself by a link is refused.
    static Result<std::shared_ptr<StagedPlugin>> stage(const QString &path, const QString &parent);

    /// Holds the plug-in, or whatever the archive has held.
    QString folder() const { return m_folder.path(); }

private:
    explicit StagedPlugin(const QString &parent);

    std::optional<KRError> fill(const QString &path);

    QTemporaryDir m_folder;
};

/// Whether the path names a file or folder that can be tried: a plug-in, or a zip archive.
bool mayBePlugin(const QString &path);

/// An error of this library, with a text in the user's language.
KRError pluginFileError(const QString &text);
