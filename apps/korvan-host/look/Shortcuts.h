#pragma once

#include <QKeySequence>

/// What the desktop uses for it, else `usual`: some desktops have no keys of their own for quitting or saving as.
inline QKeySequence shortcutFor(QKeySequence::StandardKey key, const QKeySequence &usual)
{
    const auto keys = QKeySequence::keyBindings(key);
    return keys.isEmpty() ? usual : keys.first();
}

inline QKeySequence closeShortcut()
{
    return shortcutFor(QKeySequence::Close, QKeySequence(Qt::CTRL | Qt::Key_W));
}

inline QKeySequence quitShortcut()
{
    return shortcutFor(QKeySequence::Quit, QKeySequence(Qt::CTRL | Qt::Key_Q));
}

inline QKeySequence saveAsShortcut()
{
    return shortcutFor(QKeySequence::SaveAs, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
}
