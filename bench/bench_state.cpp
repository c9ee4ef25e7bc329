// What reading and changing the state file of many plug-ins costs beside the parser and the disk alone: read the file,
// write it back, flush, rename.

#include "support/Interleaved.h"

#include "state/KRPluginManagingState.h"

#include <QFile>
#include <QTemporaryDir>
#include <plist/plist.h>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

void check(bool isDone)
{
    if (!isDone)
        qFatal("the disk does not take the file");
}

QByteArray readWhole(const QByteArray &path)
{
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    QByteArray bytes(qsizetype(::lseek(file, 0, SEEK_END)), Qt::Uninitialized);
    check(::pread(file, bytes.data(), size_t(bytes.size()), 0) == bytes.size());
    ::close(file);
    return bytes;
}

void writeWhole(const QByteArray &path, const char *text, uint32_t length)
{
    const auto temporary = path + ".new";
    const int file = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    check(::write(file, text, length) == ssize_t(length) && ::fsync(file) == 0);
    ::close(file);
    check(std::rename(temporary.constData(), path.constData()) == 0);
}

/// The same change of one entry with nothing but the parser and the system.
void changeBare(const QByteArray &path, const QByteArray &identifier)
{
    const auto bytes = readWhole(path);
    plist_t list = nullptr;
    ::plist_from_xml(bytes.constData(), uint32_t(bytes.size()), &list);
    plist_t entry = ::plist_new_dict();
    ::plist_dict_set_item(entry, "disabled", ::plist_new_bool(1));
    ::plist_dict_set_item(list, identifier.constData(), entry);
    char *text = nullptr;
    uint32_t length = 0;
    ::plist_to_xml(list, &text, &length);
    writeWhole(path, text, length);
    ::plist_to_xml_free(text);
    ::plist_free(list);
}

void changeOneOfMany(benchmark::State &state)
{
    const QTemporaryDir folder;
    const auto fileName = folder.filePath(QStringLiteral("PluginMetadata.plist"));
    KRPluginManagingState store(QUrl::fromLocalFile(fileName));
    QVariantMap metadata;
    for (int number = 0; number < state.range(0); ++number) {
        metadata.insert(QStringLiteral("com.example.plugin-%1").arg(number),
            QVariantMap{{QStringLiteral("disabled"), true},
                {QStringLiteral("PluginIncompatibleRegistered"), QStringLiteral("1.%1").arg(number)}});
    }
    store.setMetadata(metadata);
    const auto identifier = QStringLiteral("com.example.plugin-500");
    const QVariantMap disabled{{QStringLiteral("disabled"), true}};
    check(store.setPluginMetadaDictionary(disabled, identifier));
    measureInterleaved(
        state, [&] { changeBare(QFile::encodeName(fileName), identifier.toUtf8()); },
        [&] { check(store.setPluginMetadaDictionary(disabled, identifier)); });
}

} // namespace

BENCHMARK(changeOneOfMany)->Arg(1000)->Iterations(301)->UseManualTime()->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
