#pragma once

#include <QByteArray>

#include <vector>

/// An entry of a folder that decides where a path leads: a link on the way, what the path ends at, or the component at
/// which it leads nowhere.
struct RoutePoint
{
    /// Without links.
    QByteArray folder;
    QByteArray name;

    bool operator==(const RoutePoint &other) const = default;
};

/// All of these of an absolute path, in the order in which they are met; the end is the last one. A link at the end is
/// followed too. Links in a circle are followed as often as the system does. Empty for the root.
std::vector<RoutePoint> routeOf(const QByteArray &path);
