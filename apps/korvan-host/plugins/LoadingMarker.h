#pragma once

#include <QString>

#include <memory>

/// Tells a later start that a program has ended while plug-ins were loading: a file that is there for as long as that
/// takes. It is locked meanwhile, so that one of a program that runs right now is told from one that was left behind.
class LoadingMarker
{
public:
    /// The file, in a folder that need not exist yet.
    explicit LoadingMarker(const QString &path);
    /// Removes what begin() has made.
    ~LoadingMarker();
    LoadingMarker(const LoadingMarker &) = delete;
    LoadingMarker &operator=(const LoadingMarker &) = delete;

    /// Whether an earlier program has not come to its finish(). False from begin() on.
    bool wasLeftBehind() const;
    /// Plug-ins are about to be loaded. Where no file can be made, nobody will be told.
    void begin();
    /// They are loaded. May be called again, and without begin().
    void finish();

private:
    QString m_path;
    /// Of the locked file; -1 for none.
    int m_file = -1;
};
