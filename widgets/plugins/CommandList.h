#pragma once

#include <QWidget>

class KRPluginBundle;
class QTreeWidget;

/// The commands of a plug-in with their shortcuts.
class CommandList final : public QWidget
{
    Q_OBJECT

public:
    explicit CommandList(QWidget *parent = nullptr);

    /// Null empties the list.
    void setPlugin(const KRPluginBundle *bundle);

private:
    QTreeWidget *m_tree;
};
