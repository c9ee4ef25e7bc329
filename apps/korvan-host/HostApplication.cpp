#include "HostApplication.h"

#include "document/DocumentContext.h"
#include "look/Appearance.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

HostApplication::HostApplication(const HostOptions &options)
    : m_options(options)
    , m_plugins(options)
    , m_recentFiles(m_plugins.environment().userDefaults())
    , m_pluginWindows(m_plugins)
{
    connect(&m_pluginWindows, &PluginWindows::quitRequested, this, &HostApplication::quit);
    m_plugins.environment().setOpenDocuments(this);
    const auto chosen = m_plugins.environment().userDefaults().stringForKey(QStringLiteral("Appearance"));
    applyAppearance(appearanceNamed(options.appearance.value_or(chosen.value_or(QString()))));
    qApp->installEventFilter(this);
}

HostApplication::~HostApplication()
{
    const auto windows = std::exchange(m_windows, {});
    for (auto *const window : windows)
        delete window;
    m_plugins.environment().setOpenDocuments(nullptr);
}

void HostApplication::start()
{
    const bool isRecovering = !m_options.safeMode && m_plugins.hasFailedToLoad() && wantsSafeMode();
    const bool isSafe = m_options.safeMode || isRecovering;
    m_plugins.load(isSafe ? PluginSystem::Enabling::NoPlugin : PluginSystem::Enabling::AsUsual);
    for (const auto &file : std::as_const(m_options.files))
        openDocument(file);
    if (m_windows.isEmpty())
        newDocument();
    if (isRecovering)
        m_pluginWindows.showPlugins();
}

bool HostApplication::wantsSafeMode()
{
    QMessageBox box(QMessageBox::Question, {}, tr("Start without plug-ins?"));
    box.setInformativeText(
        tr("Korvan has ended unexpectedly while plug-ins were loading the last time. In safe mode no "
           "plug-in is enabled, so that you can remove the one that is to blame."));
    auto *const safe = box.addButton(tr("Safe Mode"), QMessageBox::AcceptRole);
    box.addButton(tr("Load Plug-ins"), QMessageBox::RejectRole);
    box.setDefaultButton(safe);
    box.exec();
    return box.clickedButton() == safe;
}

DocumentWindow *HostApplication::newDocument()
{
    const auto session = std::make_shared<DocumentSession>();
    auto *const window = show(session);
    m_plugins.actions().tell(QStringLiteral("NewDocument"), window->commandContext());
    return window;
}

DocumentWindow *HostApplication::openDocument(const QString &path)
{
    const auto absolute = QFileInfo(path).absoluteFilePath();
    for (auto *const window : std::as_const(m_windows)) {
        if (window->session().isFile(absolute)) {
            window->bringToFront();
            return window;
        }
    }
    DocumentWindow *opened = nullptr;
    m_plugins.actions().during(QStringLiteral("OpenDocument"), {{QStringLiteral("path"), absolute}}, [&] {
        auto session = DocumentSession::open(absolute);
        if (!session) {
            showError(m_active, tr("The document was not opened."), session.error());
            return QVariantMap();
        }
        auto *const unused = m_active && m_active->session().isPristine() ? m_active : nullptr;
        opened = show(std::move(session).value());
        m_recentFiles.add(absolute);
        if (unused)
            unused->close();
        return opened->commandContext();
    });
    return opened;
}

void HostApplication::openDocuments(QStringList paths)
{
    if (paths.isEmpty()) {
        const auto folder = m_active ? QFileInfo(m_active->session().path()).path() : QString();
        paths = QFileDialog::getOpenFileNames(m_active, tr("Open Document"), folder, tr("Documents (*.json)"));
    }
    for (const auto &path : std::as_const(paths))
        openDocument(path);
}

DocumentWindow *HostApplication::show(std::shared_ptr<DocumentSession> session)
{
    auto *const window =
        new DocumentWindow(std::move(session), WindowServices{m_plugins, m_recentFiles, m_pluginWindows, m_windows});
    m_windows.append(window);
    connect(window, &DocumentWindow::newRequested, this, &HostApplication::newDocument);
    connect(window, &DocumentWindow::openRequested, this, &HostApplication::openDocuments);
    connect(window, &DocumentWindow::quitRequested, this, &HostApplication::quit);
    connect(window, &DocumentWindow::activated, this, [this, window] { activate(window); });
    connect(window, &DocumentWindow::aboutToClose, this, [this, window] { forget(window); });
    activate(window);
    window->show();
    window->activateWindow(); // which not every desktop does
    window->canvas().zoomToFit();
    window->canvas().setFocus();
    return window;
}

void HostApplication::activate(DocumentWindow *window)
{
    m_active = window;
    m_plugins.environment().setWindow(window);
}

void HostApplication::forget(DocumentWindow *window)
{
    m_windows.removeAll(window);
    if (m_active == window)
        activate(m_windows.isEmpty() ? nullptr : m_windows.last());
}

void HostApplication::quit()
{
    while (!m_windows.isEmpty()) {
        auto *const window = m_windows.first();
        window->close(); // answers true, too, for a window that is closing already and asks about its changes
        if (m_windows.contains(window))
            return window->bringToFront();
    }
    if (std::exchange(m_isEnding, true))
        return; // closing the last window has brought us here too
    m_plugins.shutDown();
    QApplication::quit();
}

/// The system asks the program to end: Qt itself would believe what close() answers.
bool HostApplication::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Quit || watched != qApp || m_isEnding)
        return QObject::eventFilter(watched, event);
    event->ignore();
    quit();
    return true;
}

QList<ScriptObjectPointer> HostApplication::documents() const
{
    QList<ScriptObjectPointer> documents;
    for (auto *const window : m_windows)
        documents.append(window->document());
    return documents;
}

ScriptObjectPointer HostApplication::activeDocument() const
{
    return m_active ? m_active->document() : nullptr;
}
