#pragma once

#include <QString>

/// How far the update of one plug-in has come. A plain value.
struct PluginUpdateState
{
    enum class Phase {
        /// Nothing is known, or nothing newer is offered.
        Idle,
        Checking,
        Available,
        /// Another update is being downloaded first.
        Waiting,
        Downloading,
        Installing,
        Failed,
        Installed
    };

    Phase phase = Phase::Idle;
    /// The version that is offered, on its way, or installed; empty when it is not known.
    QString version;
    qint64 bytesReceived = 0;
    /// -1 while it is not known.
    qint64 bytesExpected = -1;
    /// Over the last seconds.
    double bytesPerSecond = 0;
    /// What has failed, in the user's language.
    QString message;

    /// Whether the update is on its way.
    bool isUnderWay() const
    {
        return phase == Phase::Waiting || phase == Phase::Downloading || phase == Phase::Installing;
    }

    friend bool operator==(const PluginUpdateState &, const PluginUpdateState &) = default;
};
