#pragma once

#include "platform/KRError.h"

#include <QByteArray>

#include <optional>

/// Says of a version's folder in the warehouse that its update is being unpacked, or was until something broke off:
/// what is there must not be taken for the update. A hidden file beside the folder, where no entry of an archive comes.
///
/// Any thread; one archive at a time per folder.
class UnpackingMark
{
public:
    /// `folder` without a slash at its end.
    explicit UnpackingMark(const QByteArray &folder);

    bool isSet() const;
    /// Why it could not be set; nil when it is.
    std::optional<KRError> set() const;
    void clear() const;

private:
    QByteArray m_path;
};
