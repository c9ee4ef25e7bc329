#pragma once

#include "widgets/Export.h"
#include "widgets/plugins/PluginUpdateState.h"

#include <QUrl>
#include <QWidget>

#include <memory>

class CommandList;
class KRPluginBundle;
class PluginUpdateRow;
class QLabel;
class QPushButton;
class QScrollArea;

/// Everything about one plug-in, and what can be done with it. Shows and asks; whoever made it acts. Its texts are the
/// plug-in's own and shown as plain text. Main thread only.
class KORVAN_WIDGETS_EXPORT PluginDetailsPane final : public QWidget
{
    Q_OBJECT

public:
    enum class Compatibility { Compatible, Incompatible };

    explicit PluginDetailsPane(QWidget *parent = nullptr);

    /// Null shows nothing but a hint.
    void setPlugin(const std::shared_ptr<KRPluginBundle> &plugin, Compatibility compatibility);
    void showUpdate(const PluginUpdateState &state);
    const std::shared_ptr<KRPluginBundle> &plugin() const { return m_plugin; }

    /// The homepage that is offered: the plug-in's, when a browser shows it (http or https); else empty.
    static QUrl homepage(const KRPluginBundle &plugin);

signals:
    void editRequested();
    void showInFolderRequested();
    void removeRequested();
    void updateRequested();
    void cancelUpdateRequested();

private:
    QWidget *makeHead();
    QWidget *makeButtons();
    void openHomepage();

    std::shared_ptr<KRPluginBundle> m_plugin;
    QScrollArea *m_area;
    QLabel *m_hint;
    QLabel *m_icon;
    QLabel *m_name;
    QLabel *m_origin;
    QLabel *m_versions;
    QLabel *m_warning;
    QLabel *m_description;
    PluginUpdateRow *m_update;
    CommandList *m_commands;
    QPushButton *m_homepage;
    QPushButton *m_edit;
};
