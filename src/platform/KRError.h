#pragma once

#include <QString>

/// What an operation that can fail reports: a plain value, cheap to copy and to compare.
///
/// Functions that fill one take it as a last, optional `KRError *error = nullptr` and leave it untouched on success
/// unless they say otherwise.
struct KRError
{
    /// Who failed, for example "KRPluginMangerErrorDomain".
    QString domain;
    /// The domain's own number for the failure.
    int code = 0;
    /// A sentence for the user.
    QString localizedDescription;

    friend bool operator==(const KRError &, const KRError &) = default;
};
