#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

/// Header fields as name and value, in their order; a name may come more than once.
using HTTPHeaders = QList<QPair<QByteArray, QByteArray>>;

/// Whether the field can be sent: a name of the characters that names may have, a value without line ends and zeros.
bool isSendableHeader(const QByteArray &name, const QByteArray &value);

/// Whether two names are the same, which case does not matter for.
inline bool isHeaderNamed(const QByteArray &name, const char *other)
{
    return name.compare(other, Qt::CaseInsensitive) == 0;
}
