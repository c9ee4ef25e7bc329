#pragma once

#include <QEventLoop>

#include <functional>

/// Calls `start`, and runs the event loop until the function that it was given has been called, on any thread.
inline void waitUntilCalled(const std::function<void(std::function<void()> done)> &start)
{
    QEventLoop loop;
    start([&loop] { QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection); });
    loop.exec();
}
