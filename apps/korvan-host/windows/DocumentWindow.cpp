#include "windows/DocumentWindow.h"

#include "document/DocumentContext.h"
#include "editing/LayerCommands.h"
#include "widgets/PluginText.h"
#include "windows/DocumentMenus.h"
#include "windows/DroppedFiles.h"
#include "windows/ErrorIndicator.h"
#include "windows/PluginWindows.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QStatusBar>
#include <QUrl>

DocumentWindow::DocumentWindow(std::shared_ptr<DocumentSession> session, const WindowServices &services)
    : m_session(std::move(session))
    , m_services(services)
    , m_files(*this, m_session, services.plugins.actions())
    , m_watch(services.plugins.actions(), m_session->document())
    , m_canvas(new CanvasView(m_session->document(), m_session->undo()))
    , m_layers(new LayersPanel(m_session->document()))
    , m_inspector(new Inspector(m_session->document()))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAcceptDrops(true);
    m_canvas->setAcceptDrops(false); // files go to the window
    setCentralWidget(m_canvas);
    addPanel(tr("Layers"), QStringLiteral("LayersPanel"), m_layers, Qt::LeftDockWidgetArea);
    addPanel(tr("Inspector"), QStringLiteral("InspectorPanel"), m_inspector, Qt::RightDockWidgetArea);
    resizeDocks(m_panels, {240, 270}, Qt::Horizontal);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->setContentsMargins(8, 0, 8, 0);
    m_menus = std::make_unique<DocumentMenus>(*this);
    resize(1180, 760);
    connectCanvas();
    connectLog();
    connect(&m_session->undo(), &QUndoStack::cleanChanged, this, &DocumentWindow::showTitle);
    connect(&m_files, &DocumentFiles::saved, this, [this](const QString &path) {
        m_services.recentFiles.add(path);
        showTitle();
    });
    showTitle();
}

DocumentWindow::~DocumentWindow() = default;

QDockWidget *DocumentWindow::addPanel(
    const QString &title, const QString &name, QWidget *content, Qt::DockWidgetArea area)
{
    auto *const dock = new QDockWidget(title, this);
    dock->setObjectName(name);
    dock->setWidget(content);
    auto *const heading = new QLabel(title);
    heading->setContentsMargins(14, 9, 14, 7);
    auto font = heading->font();
    font.setWeight(QFont::DemiBold);
    heading->setFont(font);
    dock->setTitleBarWidget(heading);
    dock->setFeatures(QDockWidget::DockWidgetClosable);
    addDockWidget(area, dock);
    m_panels.append(dock);
    return dock;
}

void DocumentWindow::connectCanvas()
{
    auto &interaction = m_canvas->interaction();
    connect(&interaction, &CanvasInteraction::textEditRequested, m_inspector, &Inspector::editText);
    connect(&interaction, &CanvasInteraction::dragStarted, this, [this](const QString &action) {
        m_watch.hold();
        m_services.plugins.actions().tell(action + QStringLiteral(".begin"), commandContext());
    });
    connect(&interaction, &CanvasInteraction::dragFinished, this, [this](const QString &action) {
        m_services.plugins.actions().tell(action + QStringLiteral(".finish"), commandContext());
        m_watch.release();
    });
}

/// What commands say last; the console has all of it.
void DocumentWindow::connectLog()
{
    statusBar()->insertPermanentWidget(0, new ErrorIndicator(*m_services.plugins.log(), m_services.pluginWindows));
    auto *const entries = &m_services.plugins.log()->entries();
    connect(entries, &LogModel::batchEnded, this, [this, entries] { // of thousands in a frame, one can be read
        const auto &latest = entries->entry(entries->rowCount() - 1);
        statusBar()->showMessage(plainLine(latest.text.section(u'\n', 0, 0)), 15000);
    });
}

void DocumentWindow::showTitle()
{
    setWindowTitle(m_session->title() + QStringLiteral("[*]"));
    setWindowModified(m_session->isModified());
    setWindowFilePath(m_session->path());
}

QVariantMap DocumentWindow::commandContext() const
{
    return contextWithDocument({}, document());
}

void DocumentWindow::commitEdits()
{
    auto *const focus = focusWidget();
    if (!focus || focus == m_canvas)
        return;
    focus->clearFocus();
    focus->setFocus();
}

void DocumentWindow::bringToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

void DocumentWindow::closeEvent(QCloseEvent *event)
{
    commitEdits();
    auto &actions = m_services.plugins.actions();
    actions.tellAndWait(QStringLiteral("CloseDocument.begin"), commandContext());
    const bool isClosed = m_files.mayClose(); // which asks about what the handlers have changed too
    event->setAccepted(isClosed);
    if (isClosed)
        emit aboutToClose();
    actions.tell(QStringLiteral("CloseDocument.finish"),
        {{QStringLiteral("name"), document()->name()}, {QStringLiteral("path"), m_session->path()},
            {QStringLiteral("closed"), isClosed}});
}

void DocumentWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        emit activated();
}

void DocumentWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void DocumentWindow::dropEvent(QDropEvent *event)
{
    const auto files = droppedFiles(*event->mimeData());
    event->acceptProposedAction();
    const auto place = m_canvas->mapToScene(m_canvas->mapFrom(this, event->position().toPoint()));
    for (const auto &image : files.images) {
        insertLayer(*document(), QStringLiteral("image"), place,
            {{QStringLiteral("name"), QFileInfo(image).completeBaseName()},
                {QStringLiteral("image"), QUrl::fromLocalFile(image).toString()}});
    }
    if (!files.plugins.isEmpty())
        m_services.pluginWindows.install(files.plugins);
    if (!files.documents.isEmpty())
        emit openRequested(files.documents);
}
