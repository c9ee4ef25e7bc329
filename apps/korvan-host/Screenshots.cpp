#include "Screenshots.h"

#include "HostApplication.h"
#include "ScreenshotStage.h"
#include "hosting/Examples.h"
#include "look/Appearance.h"
#include "widgets/console/ConsoleWindow.h"
#include "widgets/plugins/PluginsWindow.h"

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QTableView>

#include <cstdio>

namespace {

bool save(const QPixmap &picture, const QDir &folder, const QString &name)
{
    const auto path = folder.filePath(name + QStringLiteral(".png"));
    const bool isSaved = picture.save(path);
    std::fprintf(isSaved ? stdout : stderr, "%s%s\n", isSaved ? "" : "cannot write ", qPrintable(path));
    return isSaved;
}

/// The window with its Plugins menu open, and the submenu of that title.
QPixmap withPluginsMenu(DocumentWindow &window, const QString &submenuTitle)
{
    auto picture = window.grab();
    QPainter painter(&picture);
    const auto actions = window.menuBar()->actions();
    for (auto *const action : actions) {
        if (action->text().remove(u'&') != u"Plugins")
            continue;
        auto *const menu = action->menu();
        const auto place = window.menuBar()->mapTo(&window, window.menuBar()->actionGeometry(action).bottomLeft());
        menu->ensurePolished();
        menu->resize(menu->sizeHint());
        const auto items = menu->actions();
        for (auto *const item : items) {
            if (item->text() != submenuTitle)
                continue;
            menu->setActiveAction(item);
            auto *const submenu = item->menu();
            emit submenu->aboutToShow(); // which fills it
            submenu->resize(submenu->sizeHint());
            painter.drawPixmap(place + QPoint(menu->width() - 2, menu->actionGeometry(item).top()), submenu->grab());
        }
        painter.drawPixmap(place, menu->grab());
    }
    return picture;
}

void showExample(DocumentWindow &window, const QString &selected)
{
    window.resize(1180, 760);
    letWindowsSettle();
    const auto layer = window.document()->layerWithID(selected);
    layer->setUserInfo(QVariantMap{{QStringLiteral("com.example.style-brush"),
        QVariantMap{{QStringLiteral("paintedWith"), QStringLiteral("98.3")},
            {QStringLiteral("style"),
                QVariantMap{{QStringLiteral("fill"), QStringLiteral("#E8A33D")}, {QStringLiteral("opacity"), 1}}}}}});
    window.document()->setSelection({layer});
    window.layersPanel().expandAll();
    letWindowsSettle();
    window.canvas().zoomToFit();
    letWindowsSettle();
}

QPixmap pluginsPicture(HostApplication &host)
{
    auto &window = host.pluginWindows().plugins();
    host.pluginWindows().showPlugins();
    window.resize(920, 640);
    letWindowsSettle();
    return window.grab();
}

/// With an error selected.
QPixmap consolePicture(HostApplication &host)
{
    auto &window = host.pluginWindows().console();
    host.pluginWindows().showConsole();
    letWindowsSettle();
    auto &table = *window.findChild<QTableView *>(QStringLiteral("ConsoleTable"));
    for (int row = 0; row < table.model()->rowCount(); ++row) {
        const auto index = table.model()->index(row, LogModel::MessageColumn);
        if (index.data().toString().contains(u"promise"))
            table.setCurrentIndex(index);
    }
    letWindowsSettle();
    return window.grab();
}

} // namespace

int writeScreenshots(const HostOptions &options)
{
    const auto examples = examplesFolder();
    const QDir folder(*options.screenshotFolder);
    if (!examples || !folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "There are no examples, or the folder cannot be made.\n");
        return 1;
    }
    auto hostOptions = options;
    const ScreenshotStage stage(*examples + QStringLiteral("/plugins"));
    hostOptions.folders = QStringList{stage.pluginFolder()};
    hostOptions.files = {*examples + QStringLiteral("/documents/poster.json")};
    QCursor::setPos(0, 0); // or it would lie on something
    HostApplication host(hostOptions);
    host.start();
    auto &window = *host.windows().first();
    bool isComplete = stage.isComplete();
    stage.play(host);
    host.pluginWindows().showConsole(); // or the documents would tell of errors
    for (const auto appearance : {Appearance::Light, Appearance::Dark}) {
        applyAppearance(appearance);
        showExample(window, QStringLiteral("sun"));
        isComplete &= save(window.grab(), folder, QStringLiteral("host-") + nameOf(appearance));
        isComplete &= save(pluginsPicture(host), folder, QStringLiteral("plugins-") + nameOf(appearance));
        isComplete &= save(consolePicture(host), folder, QStringLiteral("console-") + nameOf(appearance));
    }
    applyAppearance(Appearance::Light);
    letWindowsSettle();
    isComplete &=
        save(withPluginsMenu(window, QStringLiteral("Tidy Layers")), folder, QStringLiteral("host-plugins-menu"));
    return isComplete ? 0 : 1;
}
