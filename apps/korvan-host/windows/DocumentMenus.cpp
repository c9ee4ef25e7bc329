// The menus and the tool bar themselves; those about the document's file are in DocumentMenuFiles.cpp, those about
// windows and plug-ins in DocumentMenuPlugins.cpp.

#include "windows/DocumentMenus.h"

#include "editing/LayerClipboard.h"
#include "editing/LayerCommands.h"
#include "look/Appearance.h"
#include "look/Icons.h"
#include "platform/UserDefaults.h"
#include "windows/DataMenu.h"
#include "windows/ZoomControl.h"

#include <QActionGroup>
#include <QClipboard>
#include <QDockWidget>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>

#include <algorithm>

DocumentMenus::DocumentMenus(DocumentWindow &window)
    : m_window(window)
{
    addFileMenu();
    addEditMenu();
    addInsertMenu();
    addArrangeMenu();
    addViewMenu();
    addWindowMenu();
    addHelpMenu();
    addPluginsMenu();
    addToolBar();
    m_window.statusBar()->addPermanentWidget(new ZoomControl(m_window.canvas()));
    connect(&m_window.canvas().canvasScene(), &CanvasScene::changedOnCanvas, this, &DocumentMenus::updateEnabled);
    updateEnabled();
}

DocumentMenus::~DocumentMenus() = default;

QMenu *DocumentMenus::addMenu(const QString &title)
{
    return m_window.menuBar()->addMenu(title);
}

QAction *DocumentMenus::add(QMenu &menu, const QString &title, const QKeySequence &shortcut, const Work &work)
{
    auto *const action = menu.addAction(title);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, work);
    return action;
}

QAction *DocumentMenus::add(
    QMenu &menu, const QString &icon, const QString &title, const QKeySequence &shortcut, const Work &work)
{
    auto *const action = add(menu, title, shortcut, work);
    action->setIcon(lineIcon(icon));
    action->setIconVisibleInMenu(false);
    m_actions.insert(icon, action);
    return action;
}

void DocumentMenus::addEditMenu()
{
    auto &menu = *addMenu(tr("&Edit"));
    auto &undo = m_window.session().undo();
    const auto adopt = [&](QAction *action, const QString &icon, QKeySequence::StandardKey key) {
        action->setShortcuts(key);
        action->setIcon(lineIcon(icon));
        action->setIconVisibleInMenu(false);
        menu.addAction(action);
        m_actions.insert(icon, action);
    };
    adopt(undo.createUndoAction(&menu, tr("Undo")), QStringLiteral("undo"), QKeySequence::Undo);
    adopt(undo.createRedoAction(&menu, tr("Redo")), QStringLiteral("redo"), QKeySequence::Redo);
    menu.addSeparator();
    addClipboardItems(menu);
    m_selectionActions += add(menu, QStringLiteral("duplicate"), tr("&Duplicate"), QKeySequence(Qt::CTRL | Qt::Key_D),
        [this] { duplicateSelection(document()); });
    m_selectionActions += add(
        menu, QStringLiteral("delete"), tr("De&lete"), QKeySequence::Delete, [this] { removeSelection(document()); });
    menu.addSeparator();
    add(menu, tr("Select &All"), QKeySequence::SelectAll, [this] { selectAll(document()); });
    m_selectionActions += add(menu, tr("Select &Nothing"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A),
        [this] { document().setSelection({}); });
}

void DocumentMenus::addClipboardItems(QMenu &menu)
{
    const auto copy = [this] {
        if (auto *const data = copyOfSelection(document()))
            QGuiApplication::clipboard()->setMimeData(data);
    };
    m_selectionActions += add(menu, tr("Cu&t"), QKeySequence::Cut, [this, copy] {
        copy();
        removeSelection(document());
    });
    m_selectionActions += add(menu, tr("&Copy"), QKeySequence::Copy, copy);
    add(menu, tr("&Paste"), QKeySequence::Paste,
        [this] { pasteLayers(document(), QGuiApplication::clipboard()->mimeData()); });
}

void DocumentMenus::addInsertMenu()
{
    auto &menu = *addMenu(tr("&Insert"));
    const auto addType = [&](const QString &type, const QString &title, Qt::Key key) {
        add(menu, QStringLiteral("layer-") + type, title, key, [this, type] { insert(type); });
    };
    addType(QStringLiteral("rectangle"), tr("&Rectangle"), Qt::Key_R);
    addType(QStringLiteral("oval"), tr("&Oval"), Qt::Key_O);
    addType(QStringLiteral("text"), tr("&Text"), Qt::Key_T);
    addType(QStringLiteral("image"), tr("&Image"), Qt::Key_I);
    menu.addSeparator();
    menu.addMenu(new DataMenu(m_window.services().plugins, m_window.document(), &menu));
}

void DocumentMenus::insert(const QString &type)
{
    insertLayer(document(), type, m_window.canvas().centreOfView());
    m_window.canvas().setFocus();
}

void DocumentMenus::addArrangeMenu()
{
    auto &menu = *addMenu(tr("&Arrange"));
    m_selectionActions += add(menu, QStringLiteral("layer-group"), tr("&Group"), QKeySequence(Qt::CTRL | Qt::Key_G),
        [this] { groupSelection(document()); });
    m_ungroup = add(
        menu, tr("&Ungroup"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_G), [this] { ungroupSelection(document()); });
    menu.addSeparator();
    const auto addStep = [&](const QString &title, const QKeySequence &shortcut, StackingStep step) {
        m_selectionActions += add(menu, title, shortcut, [this, step] { restackSelection(document(), step); });
    };
    addStep(tr("Bring to &Front"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_Up), StackingStep::ToFront);
    addStep(tr("Bring For&ward"), QKeySequence(Qt::CTRL | Qt::Key_Up), StackingStep::Forward);
    addStep(tr("Send &Backward"), QKeySequence(Qt::CTRL | Qt::Key_Down), StackingStep::Backward);
    addStep(tr("Send to Bac&k"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_Down), StackingStep::ToBack);
}

void DocumentMenus::addViewMenu()
{
    auto &menu = *addMenu(tr("&View"));
    auto &canvas = m_window.canvas();
    constexpr double step = 1.25;
    add(menu, QStringLiteral("zoom-in"), tr("Zoom &In"), {}, [&canvas] {
        canvas.zoomBy(step);
    })->setShortcuts({QKeySequence(QKeySequence::ZoomIn), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    add(menu, QStringLiteral("zoom-out"), tr("Zoom &Out"), QKeySequence::ZoomOut,
        [&canvas] { canvas.zoomBy(1 / step); });
    add(menu, tr("&Actual Size"), QKeySequence(Qt::CTRL | Qt::Key_0), [&canvas] { canvas.setZoom(1); });
    add(menu, QStringLiteral("zoom-fit"), tr("&Fit in Window"), QKeySequence(Qt::CTRL | Qt::Key_1),
        [&canvas] { canvas.zoomToFit(); });
    m_selectionActions +=
        add(menu, tr("Fit &Selection"), QKeySequence(Qt::CTRL | Qt::Key_2), [&canvas] { canvas.zoomToSelection(); });
    menu.addSeparator();
    const auto panels = m_window.panels();
    for (auto *const panel : panels)
        menu.addAction(panel->toggleViewAction());
    addAppearanceMenu(menu);
}

void DocumentMenus::addAppearanceMenu(QMenu &menu)
{
    const auto key = QStringLiteral("Appearance");
    auto &defaults = m_window.services().plugins.environment().userDefaults();
    auto *const submenu = menu.addMenu(tr("A&ppearance"));
    auto *const group = new QActionGroup(this);
    for (const auto &[title, appearance] : {std::pair(tr("&System"), Appearance::System),
             std::pair(tr("&Light"), Appearance::Light), std::pair(tr("&Dark"), Appearance::Dark)}) {
        auto *const action = add(*submenu, title, {}, [&defaults, key, appearance = appearance] {
            defaults.setValue(key, nameOf(appearance));
            applyAppearance(appearance);
        });
        action->setCheckable(true);
        group->addAction(action);
        connect(submenu, &QMenu::aboutToShow, action, // each window has a menu of its own
            [action, appearance = appearance] { action->setChecked(appearance == currentAppearance()); });
    }
}

void DocumentMenus::addHelpMenu()
{
    auto &menu = *addMenu(tr("&Help"));
    auto *const about = add(menu, tr("&About Korvan"), {}, [this] {
        QMessageBox::about(&m_window, tr("About Korvan"),
            tr("The reference host of KorvanPluginManager, as version %1 of the application.")
                .arg(m_window.services().plugins.environment().bundleShortVersion()));
    });
    about->setMenuRole(QAction::AboutRole);
}

void DocumentMenus::addToolBar()
{
    auto *const bar = m_window.addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("ToolBar"));
    bar->setMovable(false);
    bar->setIconSize({20, 20});
    const auto group = [&](std::initializer_list<const char *> names) {
        if (!bar->actions().isEmpty())
            bar->addSeparator();
        for (const auto *const name : names)
            bar->addAction(m_actions.value(QString::fromLatin1(name)));
    };
    group({"new", "open", "save"});
    group({"undo", "redo"});
    group({"layer-rectangle", "layer-oval", "layer-text", "layer-image"});
    group({"layer-group", "duplicate", "delete"});
    group({"zoom-out", "zoom-in", "zoom-fit"});
}

void DocumentMenus::updateEnabled()
{
    const auto selected = document().selection();
    for (auto *const action : std::as_const(m_selectionActions))
        action->setEnabled(!selected.isEmpty());
    m_ungroup->setEnabled(std::any_of(
        selected.begin(), selected.end(), [](const LayerPointer &layer) { return layer->type() == u"group"; }));
}
