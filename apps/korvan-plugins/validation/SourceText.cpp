#include "validation/SourceText.h"

#include "platform/FileReading.h"

#include <QFile>

#include <algorithm>
#include <cerrno>

namespace {

SourceTextError unreadable(const KRError &error, qint64 largest)
{
    if (error.code == EFBIG)
        return {QStringLiteral("The file is larger than %1 MB.").arg(largest / (1024 * 1024)), {}};
    return {QStringLiteral("The file cannot be read: %1.").arg(error.localizedDescription), {}};
}

} // namespace

std::variant<QString, SourceTextError> readSourceText(const QString &path, qint64 largest)
{
    auto content = readFile(QFile::encodeName(path), largest);
    if (!content)
        return unreadable(content.error(), largest);
    auto bytes = std::move(content).value();
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    if (bytes.startsWith(byteOrderMark))
        bytes.remove(0, byteOrderMark.size());
    auto text = QString::fromUtf8(bytes.constData(), bytes.size());
    if (!text.contains(QChar::ReplacementCharacter) && !bytes.startsWith(byteOrderMark))
        return text;
    // Bytes that are no UTF-8, and a second mark, come back as others.
    const auto again = text.toUtf8();
    if (again == bytes)
        return text;
    const auto [wrong, other] = std::mismatch(bytes.begin(), bytes.end(), again.begin(), again.end());
    const auto before = QString::fromUtf8(bytes.constData(), wrong - bytes.begin());
    return SourceTextError{QStringLiteral("The file is not UTF-8."), positionIn(before, before.size())};
}
