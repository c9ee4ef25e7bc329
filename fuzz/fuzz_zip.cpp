// Any archive: unpacking it changes nothing outside of the destination.
//
// The bytes are an archive, or lines that describe one, so that the search gets past checksums: "fNAME=CONTENT" for a
// file, "z" for a deflated one, "lNAME=TARGET" for a link.

#include "support/archives/ZipBuilder.h"
#include "updates/ArchiveExtraction.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace {

/// In memory where the system has such a folder.
QString scratchPattern()
{
    const auto memory = QStringLiteral("/dev/shm");
    const auto folder = QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
    return folder + QStringLiteral("/korvan-fuzz-XXXXXX");
}

QByteArray archiveOf(const QByteArray &bytes)
{
    if (bytes.startsWith("PK"))
        return bytes;
    ZipBuilder builder;
    for (const auto &line : bytes.split('\n')) {
        const auto equals = line.indexOf('=');
        if (equals < 1)
            continue;
        ZipPart part(line.mid(1, equals - 1), line.mid(equals + 1), line.at(0) == 'l' ? ZipPart::link : ZipPart::file);
        if (line.at(0) == 'z')
            part.deflated();
        builder.add(part);
    }
    return builder.bytes();
}

class Sandbox
{
public:
    Sandbox()
        : m_folder(scratchPattern())
    {
        QDir(m_folder.path()).mkdir(QStringLiteral("outside"));
        write(QStringLiteral("outside/kept"), "kept");
    }

    void unpack(const QByteArray &archive)
    {
        write(QStringLiteral("archive"), archive);
        const auto destination = m_folder.filePath(QStringLiteral("in"));
        KRError error;
        const bool isDone = decompressPluginZip(QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("archive"))),
            QUrl::fromLocalFile(destination + u'/'), &error);
        if (isDone && !error.domain.isEmpty())
            qFatal("done, and an error: %s", qPrintable(error.localizedDescription));
        std::error_code ignored;
        std::filesystem::remove_all(destination.toStdString(), ignored);
        check();
    }

private:
    void write(const QString &name, const QByteArray &content)
    {
        QFile file(m_folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
    }

    void check() const
    {
        const auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
        const QStringList expected{QStringLiteral("archive"), QStringLiteral("outside")};
        if (QDir(m_folder.path()).entryList(all, QDir::Name) != expected)
            qFatal("something appeared beside the destination");
        if (QDir(m_folder.filePath(QStringLiteral("outside"))).entryList(all) != QStringList{QStringLiteral("kept")})
            qFatal("something appeared outside, or is gone");
        QFile kept(m_folder.filePath(QStringLiteral("outside/kept")));
        if (!kept.open(QIODevice::ReadOnly) || kept.readAll() != "kept")
            qFatal("a file outside was changed");
    }

    QTemporaryDir m_folder;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Sandbox sandbox;
    sandbox.unpack(archiveOf(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size))));
    return 0;
}
