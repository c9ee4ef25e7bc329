#pragma once

#include "HostOptions.h"
#include "platform/OpenDocuments.h"
#include "plugins/PluginSystem.h"
#include "windows/DocumentWindow.h"
#include "windows/PluginWindows.h"
#include "windows/RecentFiles.h"

#include <QObject>

/// The program: its plug-ins, and the windows of its documents. There is one.
class HostApplication final : public QObject, private OpenDocuments
{
    Q_OBJECT

public:
    explicit HostApplication(const HostOptions &options);
    ~HostApplication() override;

    /// Loads the plug-ins, after asking about safe mode where an earlier start has failed, and opens the documents of
    /// the options, or a new one.
    void start();
    /// Closes all windows, tells the plug-ins, once, and then ends the event loop. Stops at a window that stays open,
    /// or that is still asking about its changes, and brings that to the front.
    void quit();

    DocumentWindow *newDocument();
    /// Null when it cannot be read; that was said to the user. A document that is open already only comes to the front.
    DocumentWindow *openDocument(const QString &path);
    /// In the order in which they were opened.
    const QList<DocumentWindow *> &windows() const { return m_windows; }

    PluginSystem &plugins() { return m_plugins; }
    PluginWindows &pluginWindows() { return m_pluginWindows; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QList<ScriptObjectPointer> documents() const override;
    ScriptObjectPointer activeDocument() const override;

    /// Whether the user, asked because an earlier start has failed, wants no plug-in this time.
    static bool wantsSafeMode();
    void openDocuments(QStringList paths);
    DocumentWindow *show(std::shared_ptr<DocumentSession> session);
    void activate(DocumentWindow *window);
    void forget(DocumentWindow *window);

    HostOptions m_options;
    PluginSystem m_plugins;
    RecentFiles m_recentFiles;
    PluginWindows m_pluginWindows;
    QList<DocumentWindow *> m_windows;
    /// Null while there is no window.
    DocumentWindow *m_active = nullptr;
    bool m_isEnding = false;
};
