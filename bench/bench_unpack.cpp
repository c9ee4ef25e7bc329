// What unpacking an archive costs beside the library for archives alone: read each entry, make its folder, write its
// file. Beside it what other programs take for the same archive, where they are installed.

#include "support/Interleaved.h"

#include "updates/ArchiveExtraction.h"

#include <QDir>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <limits>
#include <random>
#include <unistd.h>
#include <zip.h>

#ifdef KORVAN_HAS_LIBDEFLATE
#include <libdeflate.h>
#endif

namespace {

void check(bool isDone, const char *what)
{
    if (!isDone)
        qFatal("cannot %s", what);
}

/// Text as plug-ins carry it: words that come again.
QByteArray someText(qsizetype size, unsigned seed)
{
    constexpr int wordCount = 4000;
    constexpr int longestWord = 12;
    std::mt19937 random(seed);
    std::vector<QByteArray> words(wordCount);
    for (auto &word : words) {
        for (auto length = 1 + random() % longestWord; length > 0; --length)
            word.append(char('a' + random() % 26));
    }
    QByteArray text;
    text.reserve(size + longestWord);
    while (text.size() < size)
        text += words[random() % words.size()] + ' ';
    text.truncate(size);
    return text;
}

/// An archive in memory's file system, and folders beside it that are fresh each time.
class UnpackBench
{
public:
    UnpackBench(int count, qsizetype size)
        : m_folder(QStringLiteral("/dev/shm/korvan-bench-XXXXXX"))
        , m_archive(m_folder.filePath(QStringLiteral("archive.zip")).toUtf8())
    {
        check(m_folder.isValid(), "make a folder in memory");
        int error = 0;
        zip_t *archive = ::zip_open(m_archive.constData(), ZIP_CREATE | ZIP_EXCL, &error);
        check(archive != nullptr, "make the archive");
        std::vector<QByteArray> texts; // the library reads them when the archive is closed
        for (int number = 0; number < count; ++number) {
            texts.push_back(
                someText(count == 1 ? size : 1 + qsizetype(number * 7919LL % (2 * size)), unsigned(number)));
            const auto name = QByteArray("Plugin.korvanplugin/Contents/Resources/folder-")
                + QByteArray::number(number / 50) + "/file-" + QByteArray::number(number) + ".js";
            zip_source_t *source =
                ::zip_source_buffer(archive, texts.back().constData(), zip_uint64_t(texts.back().size()), 0);
            check(::zip_file_add(archive, name.constData(), source, ZIP_FL_ENC_UTF_8) >= 0, "add an entry");
        }
        check(::zip_close(archive) == 0, "write the archive");
    }

    QByteArray archive() const { return m_archive; }

    /// A folder that does not exist yet.
    QByteArray freshFolder() { return m_folder.filePath(QStringLiteral("out-%1").arg(++m_number)).toUtf8(); }
    void removeFolders()
    {
        for (int number = m_removed + 1; number <= m_number; ++number)
            std::filesystem::remove_all(m_folder.filePath(QStringLiteral("out-%1").arg(number)).toStdString());
        m_removed = m_number;
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_archive;
    int m_number = 0;
    int m_removed = 0;
};

using ReadEntry = std::function<QByteArray(zip_t *archive, const zip_stat_t &status)>;

/// Unpacks without any of the checks, each entry read as the caller likes.
void unpackBare(const QByteArray &path, const QByteArray &folder, const ReadEntry &read)
{
    int error = 0;
    zip_t *archive = ::zip_open(path.constData(), ZIP_RDONLY, &error);
    check(archive != nullptr, "open the archive");
    QSet<QByteArray> folders;
    for (zip_int64_t index = 0; index < ::zip_get_num_entries(archive, 0); ++index) {
        zip_stat_t status;
        check(::zip_stat_index(archive, zip_uint64_t(index), 0, &status) == 0, "ask for an entry");
        const auto target = folder + '/' + status.name;
        const auto parent = target.left(target.lastIndexOf('/'));
        if (!folders.contains(parent)) {
            std::filesystem::create_directories(parent.toStdString());
            folders.insert(parent);
        }
        const auto data = read(archive, status);
        const int file = ::open(target.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        check(
            ::write(file, data.constData(), size_t(data.size())) == data.size() && ::close(file) == 0, "write a file");
    }
    ::zip_discard(archive);
}

QByteArray readBytes(zip_t *archive, zip_uint64_t index, zip_uint64_t size, zip_flags_t flags)
{
    zip_file_t *entry = ::zip_fopen_index(archive, index, flags);
    QByteArray data(qsizetype(size), Qt::Uninitialized);
    check(::zip_fread(entry, data.data(), size) == zip_int64_t(size), "read an entry");
    char further = 0;
    check(::zip_fread(entry, &further, 1) == 0, "verify an entry");
    ::zip_fclose(entry);
    return data;
}

/// The library alone.
QByteArray readWithLibrary(zip_t *archive, const zip_stat_t &status)
{
    return readBytes(archive, status.index, status.size, 0);
}

#ifdef KORVAN_HAS_LIBDEFLATE
/// Another decompressor and checksum below the library's directory.
QByteArray readWithLibdeflate(zip_t *archive, const zip_stat_t &status)
{
    static libdeflate_decompressor *const decompressor = ::libdeflate_alloc_decompressor();
    auto data = readBytes(archive, status.index, status.comp_size, ZIP_FL_COMPRESSED);
    if (status.comp_method == ZIP_CM_DEFLATE) {
        QByteArray unpacked(qsizetype(status.size), Qt::Uninitialized);
        check(::libdeflate_deflate_decompress(decompressor, data.constData(), size_t(data.size()), unpacked.data(),
                  size_t(unpacked.size()), nullptr)
                == LIBDEFLATE_SUCCESS,
            "unpack an entry");
        data = unpacked;
    }
    check(::libdeflate_crc32(0, data.constData(), size_t(data.size())) == status.crc, "verify an entry");
    return data;
}
#endif

void unpackOurs(const QByteArray &path, const QByteArray &folder)
{
    check(decompressPluginZip(
              QUrl::fromLocalFile(QString::fromUtf8(path)), QUrl::fromLocalFile(QString::fromUtf8(folder) + u'/')),
        "unpack the archive");
}

/// The best of some runs, in microseconds.
double bestTime(UnpackBench &bench, const std::function<void(const QString &folder)> &unpack)
{
    constexpr int runs = 5;
    double best = std::numeric_limits<double>::max();
    for (int run = 0; run < runs; ++run) {
        const auto folder = QString::fromUtf8(bench.freshFolder());
        QDir().mkpath(folder);
        const auto start = std::chrono::steady_clock::now();
        unpack(folder);
        const auto end = std::chrono::steady_clock::now();
        best = std::min(best, std::chrono::duration<double, std::micro>(end - start).count());
        bench.removeFolders();
    }
    return best;
}

/// 0 where the program is not installed.
double programTime(const QString &program, const QStringList &arguments, UnpackBench &bench)
{
    if (QStandardPaths::findExecutable(program).isEmpty())
        return 0;
    return bestTime(bench, [&](const QString &folder) {
        check(QProcess::execute(program, QStringList(arguments) << folder) == 0, "run another program");
    });
}

void measure(benchmark::State &state, UnpackBench &bench)
{
    measureInterleaved(
        state, [&] { unpackBare(bench.archive(), bench.freshFolder(), readWithLibrary); },
        [&] { unpackOurs(bench.archive(), bench.freshFolder()); }, [&] { bench.removeFolders(); });
    bench.removeFolders();
    const auto archive = QString::fromUtf8(bench.archive());
    state.counters["bsdtar_us"] =
        programTime(QStringLiteral("bsdtar"), {QStringLiteral("-xf"), archive, QStringLiteral("-C")}, bench);
    state.counters["unzip_us"] =
        programTime(QStringLiteral("unzip"), {QStringLiteral("-q"), archive, QStringLiteral("-d")}, bench);
#ifdef KORVAN_HAS_LIBDEFLATE
    state.counters["libdeflate_us"] = bestTime(
        bench, [&](const QString &folder) { unpackBare(bench.archive(), folder.toUtf8(), readWithLibdeflate); });
#endif
}

void manySmallFiles(benchmark::State &state)
{
    UnpackBench bench(5000, 4 * 1024);
    measure(state, bench);
}

void oneLargeFile(benchmark::State &state)
{
    UnpackBench bench(1, qsizetype(200) * 1000 * 1000);
    measure(state, bench);
}

} // namespace

BENCHMARK(manySmallFiles)->Iterations(21)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(oneLargeFile)->Iterations(7)->UseManualTime()->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
