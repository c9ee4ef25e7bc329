#include "validation/SourceText.h"

#include <QFile>

#include <algorithm>

std::variant<QString, SourceTextError> readSourceText(const QString &path, qint64 largest)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return SourceTextError{QStringLiteral("The file cannot be read: %1.").arg(file.errorString()), {}};
    if (file.size() > largest)
        return SourceTextError{QStringLiteral("The file is larger than %1 MB.").arg(largest / (1024 * 1024)), {}};
    auto bytes = file.readAll();
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
