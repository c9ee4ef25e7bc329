#pragma once

#include <QString>

#include <chrono>
#include <optional>

/// The limits that a group of transfers keeps to. A plain value.
///
/// Not to be configured, because they hold for all: only http and https; plain HTTP only for this computer itself;
/// never from https to http.
struct SessionConfiguration
{
    /// What suits downloads on behalf of the user. Where the environment variable SSL_CERT_FILE is set, it names the
    /// `certificateAuthorityFile`, as it does for other programs.
    static SessionConfiguration defaultSessionConfiguration();

    /// How many redirects one request may follow.
    int maximumRedirects = 10;

    /// For looking up the host, connecting to it and agreeing on the encryption, all together.
    std::chrono::milliseconds connectTimeout{30'000};

    /// A transfer fails when, once connected, fewer than `stallMinimumBytes` arrive within this time. The second number
    /// keeps a server from holding a transfer for ever with a byte now and then.
    std::chrono::milliseconds stallTimeout{60'000};
    qint64 stallMinimumBytes = 60;

    /// A transfer fails when it is not at its end after this time, counted from its first connection; nil: however long
    /// it takes.
    std::optional<std::chrono::milliseconds> longestTransfer;

    /// The largest body, in bytes, as it is after decoding; nil: any size.
    std::optional<qint64> maximumSize;

    /// A PEM file of certificate authorities that takes the place of the system's file; its folder of authorities stays
    /// trusted. Empty: the system's file.
    QString certificateAuthorityFile;

    /// Where downloads are written while they run. Empty: the system's folder for temporary files.
    QString temporaryFolder;
};
