#pragma once

#include "platform/Export.h"
#include "platform/KRError.h"
#include "platform/archive/ZipBudget.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <memory>
#include <optional>

/// Reads a zip archive that strangers made. One thread at a time.
///
/// Entries are addressed by their path, or by their index in contents(), which also tells entries of the same path
/// apart. Nothing is read of an entry that is encrypted, packed by another method than "stored" or "deflated", larger
/// than the budget, in another entry's place, or not what its own header or its checksum says.
class KORVAN_EXPORT LTZipReader
{
public:
    /// Never null. The file is opened here and stays the same if another takes its name; one that cannot be opened or
    /// is no archive (or whose end was cut off) has no contents.
    static std::unique_ptr<LTZipReader> readerWithURL(const QUrl &url, const ZipBudget &budget = {});
    ~LTZipReader();

    /// The paths of all entries in the archive's order, those of folders ending in "/".
    ///
    /// A path that is not UTF-8 is taken for code page 437, the format's other encoding; an archive with a path that is
    /// marked as UTF-8 without being it, or that is neither and holds a zero, has no contents.
    const QStringList &contents() const;

    /// Whether there are more entries than the budget allows. The contents are then the first ones, and none of them
    /// can be read.
    bool hasTooManyEntries() const;

    /// Of several entries of the same path the last one counts, which is the one that extracting leaves behind. False
    /// where there is none.
    bool isSymbolicLink(const QString &path) const;
    bool isSymbolicLink(qsizetype index) const;

    /// The whole content, its checksum verified; of a link the path it leads to. Nil with an error otherwise.
    std::optional<QByteArray> rawDataAtSubpath(const QString &path, KRError *error = nullptr);
    std::optional<QByteArray> rawDataAtIndex(qsizetype index, KRError *error = nullptr);

    /// The index of the last entry of that path; -1 where there is none.
    qsizetype indexOf(const QString &path) const;

private:
    struct Archive;
    explicit LTZipReader(std::unique_ptr<Archive> archive);

    std::unique_ptr<Archive> m_archive;
};
