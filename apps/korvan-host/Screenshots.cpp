#include "Screenshots.h"

#include "HostApplication.h"
#include "hosting/Examples.h"
#include "look/Appearance.h"

#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>

#include <cstdio>

namespace {

void settle()
{
    for (int turn = 0; turn < 5; ++turn)
        QApplication::processEvents();
}

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
    settle();
    const auto layer = window.document()->layerWithID(selected);
    layer->setUserInfo(QVariantMap{{QStringLiteral("com.example.style-brush"),
        QVariantMap{{QStringLiteral("paintedWith"), QStringLiteral("98.3")},
            {QStringLiteral("style"),
                QVariantMap{{QStringLiteral("fill"), QStringLiteral("#E8A33D")}, {QStringLiteral("opacity"), 1}}}}}});
    window.document()->setSelection({layer});
    window.layersPanel().expandAll();
    settle();
    window.canvas().zoomToFit();
    settle();
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
    if (!hostOptions.folders)
        hostOptions.folders = QStringList{*examples + QStringLiteral("/plugins")};
    hostOptions.files = {*examples + QStringLiteral("/documents/poster.json")};
    HostApplication host(hostOptions);
    host.start();
    auto &window = *host.windows().first();
    bool isComplete = true;
    for (const auto appearance : {Appearance::Light, Appearance::Dark}) {
        applyAppearance(appearance);
        showExample(window, QStringLiteral("sun"));
        isComplete &= save(window.grab(), folder, QStringLiteral("host-") + nameOf(appearance));
    }
    applyAppearance(Appearance::Light);
    settle();
    isComplete &=
        save(withPluginsMenu(window, QStringLiteral("Tidy Layers")), folder, QStringLiteral("host-plugins-menu"));
    return isComplete ? 0 : 1;
}
